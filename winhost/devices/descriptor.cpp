#include "winhost/devices/descriptor.h"

#include <windows.h>

#include <winioctl.h>

#include <cstddef>
#include <cstring>

namespace winhost {
namespace {

constexpr std::size_t kHeader = offsetof(STORAGE_DEVICE_DESCRIPTOR, RawDeviceProperties);
constexpr std::size_t kRawProperties = 36;  // an INQUIRY answer, which nothing here looks at

// Where the text was put; 0, as Windows says "none", without one.
DWORD PutText(Bytes* bytes, const std::optional<std::string>& text) {
  if (!text) return 0;
  const DWORD offset = static_cast<DWORD>(bytes->size());
  bytes->insert(bytes->end(), text->begin(), text->end());
  bytes->push_back(0);
  return offset;
}

std::optional<std::string> NoneIfEmpty(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

}  // namespace

Bytes MakeDescriptor(const DiskFacts& disk) {
  Bytes bytes(kHeader + kRawProperties, 0);
  STORAGE_DEVICE_DESCRIPTOR header = {};
  header.Version = sizeof header;
  header.RemovableMedia = disk.removable;
  header.VendorIdOffset = PutText(&bytes, NoneIfEmpty(disk.vendor));
  header.ProductIdOffset = PutText(&bytes, NoneIfEmpty(disk.product));
  header.ProductRevisionOffset = PutText(&bytes, NoneIfEmpty(disk.revision));
  header.SerialNumberOffset = PutText(&bytes, disk.descriptor_serial);
  std::memcpy(&header.BusType, &disk.bus, sizeof disk.bus);  // any number, also one that has no name
  header.RawPropertiesLength = kRawProperties;
  header.Size = static_cast<DWORD>(bytes.size());
  std::memcpy(bytes.data(), &header, kHeader);
  return bytes;
}

}  // namespace winhost
