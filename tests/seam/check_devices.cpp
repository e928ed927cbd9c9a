// Hardware: the layouts and codes by which devices are asked, and the calls that every machine answers.
#include <windows.h>

#include <winioctl.h>

#include <intrin.h>
#include <iphlpapi.h>
#include <nb30.h>
#include <ntddndis.h>
#include <ntddscsi.h>
#include <shlwapi.h>

#include <stddef.h>
#include <string.h>

#include "seam_check.h"

namespace {

static_assert(SMART_GET_VERSION == 0x74080 && SMART_RCV_DRIVE_DATA == 0x7C088 && IOCTL_SCSI_MINIPORT == 0x4D008);
static_assert(IOCTL_STORAGE_QUERY_PROPERTY == 0x2D1400 && IOCTL_NDIS_QUERY_GLOBAL_STATS == 0x170002);
static_assert(OID_GEN_MEDIA_IN_USE == 0x10104 && OID_GEN_PHYSICAL_MEDIUM == 0x10202);
static_assert(OID_802_3_PERMANENT_ADDRESS == 0x1010101 && ID_CMD == 0xEC && ATAPI_ID_CMD == 0xA1);
static_assert(sizeof(GETVERSIONINPARAMS) == 24 && offsetof(GETVERSIONINPARAMS, bIDEDeviceMap) == 3);
static_assert(sizeof(SENDCMDINPARAMS) == 33 && offsetof(SENDCMDINPARAMS, bBuffer) == 32);
static_assert(offsetof(SENDCMDINPARAMS, bDriveNumber) == 12);
static_assert(offsetof(SENDCMDOUTPARAMS, DriverStatus) == 4 && offsetof(SENDCMDOUTPARAMS, bBuffer) == 16);
static_assert(sizeof(SRB_IO_CONTROL) == 28 && offsetof(SRB_IO_CONTROL, ControlCode) == 16);
static_assert(sizeof(STORAGE_PROPERTY_QUERY) == 12 && StorageDeviceProperty == 0 && PropertyStandardQuery == 0);
static_assert(offsetof(STORAGE_DEVICE_DESCRIPTOR, RemovableMedia) == 10);
static_assert(offsetof(STORAGE_DEVICE_DESCRIPTOR, SerialNumberOffset) == 24);
static_assert(offsetof(STORAGE_DEVICE_DESCRIPTOR, BusType) == 28);
static_assert(offsetof(STORAGE_DEVICE_DESCRIPTOR, RawDeviceProperties) == 36);
static_assert(BusTypeScsi == 1 && BusType1394 == 4 && BusTypeUsb == 7 && BusTypeSas == 10 && BusTypeSata == 11);
static_assert(BusTypeVirtual == 14 && BusTypeFileBackedVirtual == 15);
static_assert(sizeof(NCB) == (sizeof(void*) == 8 ? 96 : 64) && sizeof(ADAPTER_STATUS) == 60);
static_assert(sizeof(LANA_ENUM) == 256 && sizeof(NAME_BUFFER) == 18);
static_assert(NCBENUM == 0x37 && NCBRESET == 0x32 && NCBASTAT == 0x33 && NRC_GOODRET == 0);
static_assert(offsetof(IP_ADAPTER_INFO, AdapterName) == 4 + sizeof(void*));
static_assert(offsetof(IP_ADAPTER_INFO, Type) - offsetof(IP_ADAPTER_INFO, AdapterName) == 408);

bool ProcessorNamesItsVendor() {
  int leaf[4] = {};
  __cpuid(leaf, 0);
  int extended[4] = {};
  __cpuid(extended, static_cast<int>(0x80000000));
  return leaf[0] >= 1 && leaf[1] != 0 && leaf[2] != 0 && leaf[3] != 0 && static_cast<DWORD>(extended[0]) >= 0x80000000;
}

bool MissingDevicesAreNotFound() {
  const HANDLE none =
      CreateFileW(TEXT("\\\\.\\VantaNoSuchDevice"), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  return none == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool NarrowTextsBecomeWide() {
  HKEY key = nullptr;
  const WCHAR* name = TEXT("Software\\VantaSeamCheckNarrow");
  RegCreateKeyExW(HKEY_CURRENT_USER, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
  BYTE read[8] = {};
  DWORD wide = 0, small = 2, narrow = sizeof read, type = 0;
  const bool holds = RegSetValueExA(key, "t", 0, REG_SZ, reinterpret_cast<const BYTE*>("abc"), 4) == ERROR_SUCCESS &&
                     RegQueryValueExW(key, TEXT("t"), nullptr, nullptr, nullptr, &wide) == ERROR_SUCCESS && wide == 8 &&
                     RegQueryValueExA(key, "t", nullptr, &type, read, &small) == ERROR_MORE_DATA &&
                     RegQueryValueExA(key, "t", nullptr, &type, read, &narrow) == ERROR_SUCCESS && narrow == 4 &&
                     type == REG_SZ && memcmp(read, "abc", 4) == 0;
  RegCloseKey(key);
  SHDeleteKeyW(HKEY_CURRENT_USER, name);
  return holds;
}

constexpr SeamCheck kChecks[] = {
    {"the processor names its vendor", ProcessorNamesItsVendor},
    {"devices that are not there are files not found", MissingDevicesAreNotFound},
    {"narrow registry texts are stored wide", NarrowTextsBecomeWide},
};

}  // namespace

std::span<const SeamCheck> DeviceChecks() { return kChecks; }
