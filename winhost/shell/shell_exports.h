// What later versions of Windows added to shell32.dll, for programs that look it up.
#pragma once

#include <span>

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> ShellExports();

}  // namespace winhost
