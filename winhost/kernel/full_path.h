// Windows path text: from what a caller passes to one absolute spelling. Pure text; nothing is looked up on disk.
#pragma once

#include <minwindef.h>

#include <string>
#include <string_view>

namespace winhost {

struct FullPath {
  enum class Kind { Disk, Unc, Device };
  Kind kind = Kind::Disk;
  // "C:\a\b" or "\\server\share\a": single backslashes, no "." or "..", none at the end except after a root. For a
  // device its name alone: "NUL", "PhysicalDrive0".
  std::u16string text;
  std::size_t root = 0;             // characters of the root, its separator included ("C:\": 3); text.size() at most
  bool trailing_separator = false;  // the caller's path ended in one (and is no root)

  bool IsRoot() const { return text.size() <= root; }
  std::u16string_view Name() const;    // last component; empty for a root
  std::u16string_view Parent() const;  // the rest, as text's own spelling ("C:\" for "C:\a"); the root for a root
};

// How long a full path may be, in characters without terminator, and what a longer one means.
struct PathLimit {
  std::size_t length = 259;
  DWORD error = 3;  // ERROR_PATH_NOT_FOUND
};

// 0, or the error with which every call on the path fails: ERROR_PATH_NOT_FOUND for an empty or too long path,
// ERROR_INVALID_NAME for forbidden characters. A "\\?\" path is taken literally and may be of any length.
DWORD ParsePath(std::u16string_view path, std::u16string_view current_directory, FullPath* full, PathLimit limit = {});

// Whether a last component is taken as it stands: nothing forbidden, no separator, nothing to trim, no device.
bool IsPlainName(std::u16string_view name);

// The device that a last component names ("nul.txt": "NUL"); empty for an ordinary name.
std::u16string_view DeviceName(std::u16string_view component);

}  // namespace winhost
