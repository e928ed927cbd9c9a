// Run-time exports about windows: what newer systems have in user32.dll and shcore.dll.
#pragma once

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> WindowExports();

}  // namespace winhost
