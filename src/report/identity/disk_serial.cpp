#include "report/identity/disk_serial.h"

#include "base/format.h"
#include "report/identity/ascii.h"
#include "report/identity/disk_queries.h"
#include "report/identity/identify_data.h"
#include "report/identity/storage_descriptor.h"

namespace vanta {
namespace {

constexpr DWORD kPorts = 16;
constexpr BYTE kTargets = 2;

std::string BySmart(DWORD share) {
  for (DWORD drive = 0; drive < kDrives; ++drive) {
    const std::string data = SmartIdentify(drive, share, IdentifyCommand::ByDriveMap, kIdentifySerialEnd);
    std::string serial = SerialOfIdentify(data);
    if (!serial.empty()) return serial;
  }
  return {};
}

std::string ByMiniport() {
  for (DWORD number = 0; number < kPorts; ++number) {
    Device port(Format(TEXT("\\\\.\\Scsi%d:"), number), GENERIC_READ | GENERIC_WRITE, kShareData);
    for (BYTE target = 0; port && target < kTargets; ++target) {
      std::string serial = SerialOfIdentify(MiniportIdentify(port, target, kIdentifySerialEnd));
      if (!serial.empty()) return serial;
    }
  }
  return {};
}

std::string ByDescriptor() {
  for (DWORD drive = 0; drive < kDrives; ++drive) {
    StorageDescriptor descriptor;
    if (!ParseStorageDescriptor(DescribeDrive(drive), &descriptor)) continue;
    std::string serial(WithoutTrailingBlanks(descriptor.serial));
    if (!serial.empty()) return serial;
  }
  return {};
}

}  // namespace

std::string FirstDiskSerial() {
  std::string serial = BySmart(kShareData);
  if (serial.empty()) serial = ByMiniport();
  if (serial.empty()) serial = ByDescriptor();
  if (serial.empty()) serial = BySmart(kShareAll);
  return serial;
}

}  // namespace vanta
