// Where a machine's special folders lie, by its Windows version, bitness and facts. Windows paths.
#pragma once

#include <optional>
#include <string>

#include "winhost/machine/machine.h"

namespace winhost {

// "CSIDL_PROGRAMS" …; null for an id that is no file-system folder.
const char* FolderName(int csidl);
// The folder as this machine's process sees it; empty where the facts say that it cannot be found. None: unknown id.
std::optional<std::u16string> FolderPath(const Facts& facts, int csidl);

std::u16string WindowsFolder(const Facts& facts);  // "C:\Windows"
std::u16string SystemFolder(const Facts& facts);   // "C:\Windows\system32"
std::u16string ProfileFolder(const Facts& facts);  // "C:\Users\user"

// Makes the folders that a computer with one user has: Windows, Program Files, desktop, start menu, application data,
// temporary files, downloads … Once in a machine's life, so what is removed later stays removed. Any process and
// thread.
void MakeStandardFolders(Machine& machine);
// The same for the machine that this process lives on; costs nothing from the second call on.
void EnsureStandardFolders();

}  // namespace winhost
