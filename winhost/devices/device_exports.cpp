#include "winhost/devices/device_exports.h"

#include <windows.h>

#include <iphlpapi.h>
#include <nb30.h>

#include <array>

namespace winhost {

std::span<const BuiltInExport> DeviceExports() {
  static const std::array rows = {
      BuiltInExport{"netapi32.dll", "Netbios", AsExport(&Netbios), nullptr},
      BuiltInExport{"iphlpapi.dll", "GetAdaptersInfo", AsExport(&GetAdaptersInfo), nullptr},
  };
  return rows;
}

}  // namespace winhost
