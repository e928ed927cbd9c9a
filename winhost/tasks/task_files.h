// Where the schedulers keep their tasks on a machine's system drive. They are the system's own doing, so they touch the
// drive directly: no redirection for 32-bit programs, no planned faults of file calls.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "winhost/machine/machine.h"

namespace winhost {

// <Windows>\System32\Tasks and <Windows>\Tasks; they need not exist.
std::filesystem::path TaskXmlFolder(const Machine& machine);
std::filesystem::path JobFolder(const Machine& machine);

// `path` below `folder`, with "\" between components, each found without regard to case; a part that is not there
// gives where it would be made. `path` has no "..", empty or forbidden components: see IsTaskPath.
std::filesystem::path FindTaskFile(const std::filesystem::path& folder, std::u16string_view path);
// One or more components of 1 to 238 characters without \ / : * ? " < > | and control characters, none of them dots
// only.
bool IsTaskPath(std::u16string_view path);

// Makes the folders above, writes beside and renames, so that nobody sees half a file.
HRESULT WriteTaskFile(const std::filesystem::path& file, const std::string& bytes);
std::optional<std::string> ReadTaskFile(const std::filesystem::path& file);
// ERROR_FILE_NOT_FOUND as an HRESULT when there is none.
HRESULT DeleteTaskFile(const std::filesystem::path& file);
std::vector<std::filesystem::path> ListTaskFiles(const std::filesystem::path& folder);

}  // namespace winhost
