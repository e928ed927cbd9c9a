// The .lnk file: what a shell link says, and its bytes.
//
//   76  header: size 0x4C, class id, flags, target's attributes and three FILETIMEs, size, icon index, show, hot key,
//   10 zero var identifier list: u16 size, items (u16 size, data) for This PC, drive, folders, file; u16 0 var link
//   info: sizes and offsets (u32 each), volume id, local base path in ANSI and UTF-16 var strings, each u16 count +
//   UTF-16 without terminator: description, relative path, working folder, arguments, icon 4   zero: no extra data
//   blocks
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace winhost {

struct LinkFile {
  std::u16string target;  // "C:\…"; empty: the link names none that is a path on a drive
  std::u16string description;
  std::u16string relative_path;
  std::u16string working_directory;
  std::u16string arguments;
  std::u16string icon;
  std::int32_t icon_index = 0;
  std::uint32_t show_command = 1;  // SW_SHOWNORMAL
  std::uint16_t hot_key = 0;
  // Of the target when the link was made; all zero when it did not exist. Size: the low 32 bits.
  std::uint32_t attributes = 0;
  std::uint32_t size = 0;
  FILETIME created{}, accessed{}, written{};
};

// The whole file. Strings beyond 65,535 characters are cut.
std::string WriteLink(const LinkFile& link);
// None when the bytes are no shell link or end early in what is read. The target comes from the link info, else from
// the identifier list, else from an environment block; ANSI text is taken as Latin-1.
std::optional<LinkFile> ReadLink(std::string_view bytes);

}  // namespace winhost
