// The maker's self-protection driver, "\\.\VantaSelfProtection". The fact "protection_device" says how it answers:
// "vouches", "refuses" or "fails" (every control code is ERROR_GEN_FAILURE); without the fact there is no such device.
#pragma once

#include "winhost/kernel/devices.h"

namespace winhost {

// A DeviceOpener.
std::shared_ptr<Device> OpenProtectionDevice(std::u16string_view name, DWORD access, DWORD* error);

}  // namespace winhost
