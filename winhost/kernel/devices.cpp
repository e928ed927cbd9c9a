#include "winhost/kernel/devices.h"

#include <windows.h>

#include <mutex>
#include <vector>

#include "winhost/devices/adapter_device.h"
#include "winhost/devices/disk_device.h"
#include "winhost/kernel/file_object.h"
#include "winhost/machine/faults.h"
#include "winhost/trust/protection_device.h"

namespace winhost {
namespace {

struct Openers {
  std::mutex lock;
  std::vector<DeviceOpener> added{OpenDrive, OpenScsiPort, OpenAdapterDevice, OpenProtectionDevice};
};

Openers& TheOpeners() {
  static Openers* openers = new Openers;
  return *openers;
}

}  // namespace

void AddDeviceOpener(DeviceOpener opener) {
  std::scoped_lock lock(TheOpeners().lock);
  TheOpeners().added.insert(TheOpeners().added.begin(), opener);
}

std::shared_ptr<Device> OpenDevice(std::u16string_view name, DWORD access, DWORD* error) {
  std::vector<DeviceOpener> openers;
  {
    std::scoped_lock lock(TheOpeners().lock);
    openers = TheOpeners().added;
  }
  *error = 0;
  for (DeviceOpener opener : openers) {
    if (std::shared_ptr<Device> device = opener(name, access, error)) return device;
    if (*error != 0) return nullptr;
  }
  *error = ERROR_FILE_NOT_FOUND;
  return nullptr;
}

}  // namespace winhost

BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD in_bytes, LPVOID out, DWORD out_bytes,
                     LPDWORD returned, LPOVERLAPPED) {
  using namespace winhost;
  if (returned) *returned = 0;
  if (const auto error = PlannedFault("DeviceIoControl")) {
    SetLastError(*error);
    return FALSE;
  }
  const std::shared_ptr<KernelObject> object = FindObject(device);
  if (!object) return FALSE;
  const auto opened = std::dynamic_pointer_cast<DeviceObject>(object);
  if (!opened) {
    SetLastError(ERROR_INVALID_FUNCTION);
    return FALSE;
  }
  DWORD filled = 0;
  const std::span<const BYTE> given(static_cast<const BYTE*>(in), in ? in_bytes : 0);
  const std::span<BYTE> room(static_cast<BYTE*>(out), out ? out_bytes : 0);
  const DWORD error = opened->device->Control(code, given, room, &filled);
  if (returned) *returned = filled;
  if (error != 0) SetLastError(error);
  return error == 0;
}
