// Control codes to drives: SMART and the storage stack's description.
//
// Promises: "\\.\PhysicalDriveN" is the Nth of the machine's fact "disks"; a handle must have been opened with the
// rights that the code names; IDENTIFY data and descriptor are laid out as drives and Windows lay them out.
// Simplifies: no other SMART commands, no other properties, no sharing rules among handles of one drive.
// To fail: the fact's "answers" (docs/machine.md); the fault plan: "CreateFileW" with "\\.\PhysicalDrive0",
// "DeviceIoControl".
#pragma once

#include <windef.h>

#define CTL_CODE(device, function, method, access) (((device) << 16) | ((access) << 14) | ((function) << 2) | (method))
#define METHOD_BUFFERED 0
#define METHOD_OUT_DIRECT 2
#define FILE_ANY_ACCESS 0
#define FILE_READ_ACCESS 0x0001
#define FILE_WRITE_ACCESS 0x0002
#define FILE_DEVICE_DISK 0x00000007
#define FILE_DEVICE_PHYSICAL_NETCARD 0x00000017
#define FILE_DEVICE_MASS_STORAGE 0x0000002d

#define SMART_GET_VERSION CTL_CODE(FILE_DEVICE_DISK, 0x0020, METHOD_BUFFERED, FILE_READ_ACCESS)
#define SMART_RCV_DRIVE_DATA CTL_CODE(FILE_DEVICE_DISK, 0x0022, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS)
#define IOCTL_STORAGE_QUERY_PROPERTY CTL_CODE(FILE_DEVICE_MASS_STORAGE, 0x0500, METHOD_BUFFERED, FILE_ANY_ACCESS)

#define ATAPI_ID_CMD 0xA1
#define ID_CMD 0xEC
#define CAP_ATA_ID_CMD 1
#define CAP_ATAPI_ID_CMD 2
#define CAP_SMART_CMD 4

#pragma pack(push, 1)
struct GETVERSIONINPARAMS {
  BYTE bVersion;
  BYTE bRevision;
  BYTE bReserved;
  BYTE bIDEDeviceMap;
  DWORD fCapabilities;
  DWORD dwReserved[4];
};

struct IDEREGS {
  BYTE bFeaturesReg;
  BYTE bSectorCountReg;
  BYTE bSectorNumberReg;
  BYTE bCylLowReg;
  BYTE bCylHighReg;
  BYTE bDriveHeadReg;
  BYTE bCommandReg;
  BYTE bReserved;
};

struct SENDCMDINPARAMS {
  DWORD cBufferSize;
  IDEREGS irDriveRegs;
  BYTE bDriveNumber;
  BYTE bReserved[3];
  DWORD dwReserved[4];
  BYTE bBuffer[1];
};

struct DRIVERSTATUS {
  BYTE bDriverError;
  BYTE bIDEError;
  BYTE bReserved[2];
  DWORD dwReserved[2];
};

struct SENDCMDOUTPARAMS {
  DWORD cBufferSize;
  DRIVERSTATUS DriverStatus;
  BYTE bBuffer[1];
};
#pragma pack(pop)

enum STORAGE_BUS_TYPE {
  BusTypeUnknown = 0x00,
  BusTypeScsi = 0x1,
  BusTypeAtapi = 0x2,
  BusTypeAta = 0x3,
  BusType1394 = 0x4,
  BusTypeSsa = 0x5,
  BusTypeFibre = 0x6,
  BusTypeUsb = 0x7,
  BusTypeRAID = 0x8,
  BusTypeiScsi = 0x9,
  BusTypeSas = 0xA,
  BusTypeSata = 0xB,
  BusTypeSd = 0xC,
  BusTypeMmc = 0xD,
  BusTypeVirtual = 0xE,
  BusTypeFileBackedVirtual = 0xF,
  BusTypeSpaces = 0x10,
  BusTypeNvme = 0x11,
  BusTypeMaxReserved = 0x7F,
};
enum STORAGE_PROPERTY_ID { StorageDeviceProperty = 0 };
enum STORAGE_QUERY_TYPE { PropertyStandardQuery = 0 };

struct STORAGE_PROPERTY_QUERY {
  STORAGE_PROPERTY_ID PropertyId;
  STORAGE_QUERY_TYPE QueryType;
  BYTE AdditionalParameters[1];
};

struct STORAGE_DEVICE_DESCRIPTOR {
  DWORD Version;
  DWORD Size;
  BYTE DeviceType;
  BYTE DeviceTypeModifier;
  BOOLEAN RemovableMedia;
  BOOLEAN CommandQueueing;
  DWORD VendorIdOffset;
  DWORD ProductIdOffset;
  DWORD ProductRevisionOffset;
  DWORD SerialNumberOffset;
  STORAGE_BUS_TYPE BusType;
  DWORD RawPropertiesLength;
  BYTE RawDeviceProperties[1];
};
