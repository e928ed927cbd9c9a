// "\\.\PhysicalDriveN" and "\\.\ScsiN:".
#pragma once

#include "winhost/kernel/devices.h"

namespace winhost {

// DeviceOpeners. Opening with any right to the data needs an administrator's rights.
std::shared_ptr<Device> OpenDrive(std::u16string_view name, DWORD access, DWORD* error);
std::shared_ptr<Device> OpenScsiPort(std::u16string_view name, DWORD access, DWORD* error);

}  // namespace winhost
