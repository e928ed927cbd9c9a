// The product's names on the machine.
#pragma once

#include "base/text.h"

namespace vanta {

inline constexpr const WCHAR* kProductFolder = TEXT("VantaPictor");
inline constexpr const WCHAR* kDisplayName = TEXT("VantaView");

inline constexpr const WCHAR* kViewerProgram = TEXT("VantaPictor.exe");
inline constexpr const WCHAR* kSiblingProgram = TEXT("VantaGlimpse.exe");
inline constexpr const WCHAR* kUpdaterProgram = TEXT("VantaPictorUpdate.exe");
inline constexpr const WCHAR* kUninstaller = TEXT("uninst.exe");
inline constexpr const WCHAR* kShellExtension32 = TEXT("ShellExt.dll");
inline constexpr const WCHAR* kShellExtension64 = TEXT("ShellExt64.dll");

// A file of the product in the install directory.
String InstalledFile(StringView name);

// The program that shortcuts and the launch start: the sibling program from Windows 7 on, the viewer before.
String ChosenProgram();

}  // namespace vanta
