// "\\.\{…}": a network adapter's driver.
#pragma once

#include "winhost/kernel/devices.h"

namespace winhost {

// A DeviceOpener. Opening needs no rights.
std::shared_ptr<Device> OpenAdapterDevice(std::u16string_view name, DWORD access, DWORD* error);

}  // namespace winhost
