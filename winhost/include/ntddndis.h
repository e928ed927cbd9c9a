// Questions to network adapters' drivers.
//
// Promises: "\\.\{…}" is the adapter of the machine's fact "adapters" that has this id; the object identifiers below
// are answered as the fact says. Every other one is ERROR_NOT_SUPPORTED. To fail: the fact's "answers"; the fault plan:
// "CreateFileW" with the adapter's id, "DeviceIoControl".
#pragma once

#include <winioctl.h>

#define IOCTL_NDIS_QUERY_GLOBAL_STATS CTL_CODE(FILE_DEVICE_PHYSICAL_NETCARD, 0, METHOD_OUT_DIRECT, FILE_ANY_ACCESS)

#define OID_GEN_MEDIA_IN_USE 0x00010104
#define OID_GEN_PHYSICAL_MEDIUM 0x00010202
#define OID_802_3_PERMANENT_ADDRESS 0x01010101
