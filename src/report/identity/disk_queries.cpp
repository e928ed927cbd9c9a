#include "report/identity/disk_queries.h"

#include <ntddscsi.h>
#include <winioctl.h>

#include <cstddef>
#include <cstring>

#include "base/format.h"
#include "report/identity/identify_data.h"

namespace vanta {
namespace {

constexpr size_t kAnswerHeader = offsetof(SENDCMDOUTPARAMS, bBuffer);
constexpr size_t kRequest = offsetof(SENDCMDINPARAMS, bBuffer);  // the commands here send no data along
constexpr size_t kDescriptorRoom = 1000;
constexpr DWORD kMiniportIdentify = 0x001B0501;  // IOCTL_SCSI_MINIPORT_IDENTIFY of the driver kit
constexpr ULONG kMiniportTimeOutS = 10;

struct IdentifyAnswer {
  BYTE header[kAnswerHeader];
  char data[kIdentifySize];
};
static_assert(sizeof(IdentifyAnswer) == 528);

struct MiniportRequest {
  SRB_IO_CONTROL control;
  BYTE command[kRequest];
};
struct MiniportAnswer {
  SRB_IO_CONTROL control;
  IdentifyAnswer identify;
};
static_assert(sizeof(MiniportRequest) == 60 && sizeof(MiniportAnswer) == 28 + 528);

bool MarksAtapi(const GETVERSIONINPARAMS& version, DWORD drive) { return (version.bIDEDeviceMap >> drive & 0x10) != 0; }

// `returned` counts from the answer's header.
std::string DataOf(const IdentifyAnswer& answer, size_t returned, size_t least) {
  SENDCMDOUTPARAMS head = {};
  std::memcpy(&head, answer.header, kAnswerHeader);
  if (returned < kAnswerHeader + least || head.DriverStatus.bDriverError != 0) return {};
  return std::string(answer.data, returned - kAnswerHeader);
}

}  // namespace

String DrivePath(DWORD drive) { return Format(TEXT("\\\\.\\PhysicalDrive%d"), drive); }

std::string SmartIdentify(DWORD drive, DWORD share, IdentifyCommand command, size_t least) {
  Device device(DrivePath(drive), GENERIC_READ | GENERIC_WRITE, share);
  GETVERSIONINPARAMS version = {};
  size_t returned = 0;
  if (!device.Ask(SMART_GET_VERSION, nullptr, 0, &version, sizeof version, &returned)) return {};
  SENDCMDINPARAMS request = {};
  request.cBufferSize = kIdentifySize;
  request.irDriveRegs.bSectorCountReg = 1;
  request.irDriveRegs.bSectorNumberReg = 1;
  request.irDriveRegs.bDriveHeadReg = static_cast<BYTE>(0xA0 | (drive & 1) << 4);
  const bool atapi = command == IdentifyCommand::ByDriveMap && MarksAtapi(version, drive);
  request.irDriveRegs.bCommandReg = static_cast<BYTE>(atapi ? ATAPI_ID_CMD : ID_CMD);
  request.bDriveNumber = static_cast<BYTE>(drive);
  IdentifyAnswer answer;
  if (!device.Ask(SMART_RCV_DRIVE_DATA, &request, kRequest, &answer, sizeof answer, &returned)) return {};
  return DataOf(answer, returned, least);
}

std::string MiniportIdentify(Device& port, BYTE target, size_t least) {
  MiniportRequest request = {};
  request.control.HeaderLength = sizeof(SRB_IO_CONTROL);
  std::memcpy(request.control.Signature, "SCSIDISK", sizeof request.control.Signature);
  request.control.Timeout = kMiniportTimeOutS;
  request.control.ControlCode = kMiniportIdentify;
  request.control.Length = sizeof(IdentifyAnswer);
  SENDCMDINPARAMS command = {};
  command.irDriveRegs.bCommandReg = ID_CMD;
  command.bDriveNumber = target;
  std::memcpy(request.command, &command, kRequest);
  MiniportAnswer answer;
  size_t returned = 0;
  if (!port.Ask(IOCTL_SCSI_MINIPORT, &request, sizeof request, &answer, sizeof answer, &returned)) return {};
  const size_t head = sizeof(SRB_IO_CONTROL);
  return returned < head ? std::string() : DataOf(answer.identify, returned - head, least);
}

std::string DescribeDrive(DWORD drive) {
  Device device(DrivePath(drive), 0, kShareData);
  STORAGE_PROPERTY_QUERY query = {};
  query.PropertyId = StorageDeviceProperty;
  query.QueryType = PropertyStandardQuery;
  char answer[kDescriptorRoom];
  size_t returned = 0;
  if (!device.Ask(IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, answer, sizeof answer, &returned)) return {};
  return std::string(answer, returned);
}

}  // namespace vanta
