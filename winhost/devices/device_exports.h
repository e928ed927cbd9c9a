// Run-time exports about hardware: netapi32.dll's Netbios, iphlpapi.dll's GetAdaptersInfo.
#pragma once

#include "winhost/kernel/exports.h"

namespace winhost {

std::span<const BuiltInExport> DeviceExports();

}  // namespace winhost
