// Devices that "\\.\Name" opens and DeviceIoControl talks to. Every machine has its hardware's
// (winhost/devices/) and perhaps the self-protection driver; what no opener knows is ERROR_FILE_NOT_FOUND.
#pragma once

#include <minwindef.h>

#include <memory>
#include <span>
#include <string_view>

namespace winhost {

class Device {
 public:
  virtual ~Device() = default;
  // Answers one control code: a system error number, 0 for success; `returned` is how many bytes of `out` are filled.
  // May be called from several threads at once.
  virtual DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) = 0;
};

// Opens the device of that name (what follows "\\.\", compared without case by the opener) with a desired access, or
// answers none: not mine (error untouched), or mine but refused (error set).
using DeviceOpener = std::shared_ptr<Device> (*)(std::u16string_view name, DWORD access, DWORD* error);

// Adds an opener for the rest of the process, asked before the earlier ones.
void AddDeviceOpener(DeviceOpener opener);
// Asks every opener. None with `error` set when there is no such device.
std::shared_ptr<Device> OpenDevice(std::u16string_view name, DWORD access, DWORD* error);

}  // namespace winhost
