#include "report/identity/ndis_queries.h"

#include <winioctl.h>

#include <ntddndis.h>

#include <cstring>

#include "report/identity/ascii.h"
#include "report/identity/disk_queries.h"

namespace vanta {
namespace {

// Numbers of NDIS_PHYSICAL_MEDIUM and NDIS_MEDIUM, whose names depend on the NDIS version that is compiled for.
enum PhysicalMedium : DWORD {
  PhysicalUnspecified = 0,
  PhysicalWirelessLan = 1,
  PhysicalWirelessWan = 8,
  PhysicalNative802_11 = 9,
  Physical802_3 = 14,
};
enum MediumInUse : DWORD { Medium802_3 = 0, MediumWirelessWan = 9, MediumNative802_11 = 16 };

// The bytes of the answer that came; none when the driver refuses.
size_t Query(Device& adapter, DWORD oid, void* answer, size_t room) {
  size_t returned = 0;
  return adapter.Ask(IOCTL_NDIS_QUERY_GLOBAL_STATS, &oid, sizeof oid, answer, room, &returned) ? returned : 0;
}

Medium PhysicalMediumOf(Device& adapter) {
  DWORD medium = PhysicalUnspecified;
  if (Query(adapter, OID_GEN_PHYSICAL_MEDIUM, &medium, sizeof medium) < sizeof medium) return Medium::Unknown;
  switch (medium) {
    case PhysicalUnspecified:
      return Medium::Unknown;
    case Physical802_3:
      return Medium::Wired;
    case PhysicalWirelessLan:
    case PhysicalWirelessWan:
    case PhysicalNative802_11:
      return Medium::Wireless;
    default:
      return Medium::Other;
  }
}

Medium MediumInUseOf(Device& adapter) {
  DWORD media[16] = {};
  if (Query(adapter, OID_GEN_MEDIA_IN_USE, media, sizeof media) < sizeof media[0]) return Medium::Unknown;
  switch (media[0]) {
    case Medium802_3:
      return Medium::Wired;
    case MediumWirelessWan:
    case MediumNative802_11:
      return Medium::Wireless;
    default:
      return Medium::Other;
  }
}

}  // namespace

Device OpenAdapter(const String& service) { return Device(TEXT("\\\\.\\") + service, GENERIC_READ, kShareData); }

std::string PermanentAddress(Device& adapter) {
  BYTE answer[32];
  BYTE address[6];
  if (Query(adapter, OID_802_3_PERMANENT_ADDRESS, answer, sizeof answer) < sizeof address) return {};
  std::memcpy(address, answer, sizeof address);
  return AddressText(address);
}

Medium MediumOf(Device& adapter) {
  const Medium physical = PhysicalMediumOf(adapter);
  return physical == Medium::Unknown ? MediumInUseOf(adapter) : physical;
}

}  // namespace vanta
