#include "report/identity/disk_string.h"

#include "report/identity/disk_queries.h"
#include "report/identity/identify_data.h"
#include "report/identity/storage_descriptor.h"
#include "report/probes/os_version.h"

namespace vanta {
namespace {

bool SerialsComeSwapped() {
  const OsRecord& os = GetOsVersion();
  return os.major < 6 || (os.major == 6 && os.minor <= 1);
}

std::string DiskString(DWORD drive) {
  StorageDescriptor descriptor;
  if (!ParseStorageDescriptor(DescribeDrive(drive), &descriptor) || !CountsForMid2(descriptor)) return {};
  std::string text =
      SerialAndModelOfIdentify(SmartIdentify(drive, kShareData, IdentifyCommand::Ata, kIdentifyModelEnd));
  return text.empty() ? DiskStringOf(descriptor, SerialsComeSwapped()) : text;
}

}  // namespace

std::string FirstDiskString() {
  for (DWORD drive = 0; drive < kDrives; ++drive) {
    std::string text = DiskString(drive);
    if (!text.empty()) return text;
  }
  return {};
}

}  // namespace vanta
