// The storage stack's description of a drive (STORAGE_DEVICE_DESCRIPTOR with the strings behind it). Pure.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vanta {

struct StorageDescriptor {
  bool removable = false;
  DWORD bus = 0;  // STORAGE_BUS_TYPE
  std::string vendor;
  std::string product;
  std::string serial;
};

// False when the answer is too short to tell bus and serial. A text that lies outside the answer is empty; one without
// its terminator ends with the answer.
bool ParseStorageDescriptor(std::string_view answer, StorageDescriptor* descriptor);

// Identifier 2's disk string of a descriptor; empty without a serial number. `swaps` says that this Windows hands
// serial numbers out with the two bytes of every pair exchanged, as Windows 7 and earlier do.
std::string DiskStringOf(const StorageDescriptor& descriptor, bool swaps);

// Whether identifier 2 looks at the drive: fixed, and on no bus of drives that come and go.
bool CountsForMid2(const StorageDescriptor& descriptor);

}  // namespace vanta
