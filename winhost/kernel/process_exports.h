// Run-time exports about processes: QueryFullProcessImageNameW, IsWow64Process.
#pragma once

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> ProcessExports();

}  // namespace winhost
