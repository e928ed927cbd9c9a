// System-information functions that programs look up at run time: RtlGetVersion, GetNativeSystemInfo …
#pragma once

#include <span>

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> SystemExports();

}  // namespace winhost
