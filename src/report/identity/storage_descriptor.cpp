#include "report/identity/storage_descriptor.h"

#include <winioctl.h>

#include <cstddef>
#include <cstring>

#include "report/identity/ascii.h"

namespace vanta {
namespace {

constexpr size_t kHeader = offsetof(STORAGE_DEVICE_DESCRIPTOR, RawDeviceProperties);
constexpr size_t kHexSerial = 40;
constexpr size_t kMostSerial = 48;

std::string TextAt(std::string_view answer, DWORD offset) {
  if (offset < kHeader || offset >= answer.size()) return {};
  return std::string(UpToZero(answer.substr(offset)));
}

// Forty hexadecimal digits hold twenty characters.
bool DecodeHex(std::string_view digits, std::string* bytes) {
  if (digits.size() != kHexSerial) return false;
  for (size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(static_cast<BYTE>(digits[i]));
    const int low = HexDigit(static_cast<BYTE>(digits[i + 1]));
    if (high < 0 || low < 0) return false;
    *bytes += static_cast<char>(high * 16 + low);
  }
  return true;
}

}  // namespace

bool ParseStorageDescriptor(std::string_view answer, StorageDescriptor* descriptor) {
  STORAGE_DEVICE_DESCRIPTOR header = {};
  if (answer.size() < kHeader) return false;
  std::memcpy(&header, answer.data(), kHeader);
  descriptor->removable = header.RemovableMedia != 0;
  descriptor->bus = static_cast<DWORD>(header.BusType);
  descriptor->vendor = TextAt(answer, header.VendorIdOffset);
  descriptor->product = TextAt(answer, header.ProductIdOffset);
  descriptor->serial = TextAt(answer, header.SerialNumberOffset);
  return true;
}

std::string DiskStringOf(const StorageDescriptor& descriptor, bool swaps) {
  std::string serial;
  if (!DecodeHex(descriptor.serial, &serial)) serial = descriptor.serial.substr(0, kMostSerial);
  if (swaps) serial = WithSwappedPairs(serial);
  std::string text(WithoutWhiteSpace(UpToZero(serial)));
  if (!text.empty()) text += WithoutBlanks(descriptor.vendor + descriptor.product);
  return text;
}

bool CountsForMid2(const StorageDescriptor& descriptor) {
  if (descriptor.removable) return false;
  switch (descriptor.bus) {
    case BusTypeScsi:
    case BusType1394:
    case BusTypeUsb:
    case BusTypeSas:
    case BusTypeVirtual:
    case BusTypeFileBackedVirtual:
      return false;
    default:
      return true;
  }
}

}  // namespace vanta
