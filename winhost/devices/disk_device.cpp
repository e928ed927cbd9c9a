#include "winhost/devices/disk_device.h"

#include <windows.h>

#include <ntddscsi.h>
#include <winioctl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "winhost/devices/descriptor.h"
#include "winhost/devices/device_number.h"
#include "winhost/devices/hardware.h"

namespace winhost {
namespace {

constexpr std::size_t kCommand = offsetof(SENDCMDINPARAMS, bBuffer);
constexpr std::size_t kAnswerHeader = offsetof(SENDCMDOUTPARAMS, bBuffer);
constexpr DWORD kMiniportIdentify = 0x001B0501;

template <class T>
Bytes BytesOf(const T& record) {
  const auto* first = reinterpret_cast<const BYTE*>(&record);
  return Bytes(first, first + sizeof record);
}

// SENDCMDOUTPARAMS and the sector behind it.
Bytes IdentifyAnswer(const DiskFacts& disk) {
  Bytes answer(kAnswerHeader, 0);
  const DWORD size = static_cast<DWORD>(disk.identify.size());
  std::memcpy(answer.data(), &size, sizeof size);
  answer.insert(answer.end(), disk.identify.begin(), disk.identify.end());
  return answer;
}

// A drive aborts the other kind's command.
bool Understands(const DiskFacts& disk, BYTE command) { return command == (disk.atapi ? ATAPI_ID_CMD : ID_CMD); }

class Drive final : public Device {
 public:
  Drive(const DiskFacts& disk, unsigned number, DWORD access) : disk_(disk), number_(number), access_(access) {}

  DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) override {
    if (const DWORD error = CheckRights(code, access_)) return error;
    if (code == IOCTL_STORAGE_QUERY_PROPERTY) return Describe(in, out, returned);
    if ((code != SMART_GET_VERSION && code != SMART_RCV_DRIVE_DATA) || !disk_.smart) return ERROR_INVALID_FUNCTION;
    return code == SMART_GET_VERSION ? Version(out, returned) : Identify(in, out, returned);
  }

 private:
  DWORD Version(std::span<BYTE> out, DWORD* returned) const {
    GETVERSIONINPARAMS version = {};
    version.bVersion = 1;
    version.bRevision = 1;
    version.bIDEDeviceMap = static_cast<BYTE>((disk_.atapi ? 0x10 : 0x01) << (number_ & 3));
    version.fCapabilities = CAP_ATA_ID_CMD | CAP_ATAPI_ID_CMD | CAP_SMART_CMD;
    if (out.size() < sizeof version) return ERROR_INSUFFICIENT_BUFFER;
    return disk_.answers.Send("version", BytesOf(version), out, returned);
  }

  DWORD Identify(std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) const {
    SENDCMDINPARAMS command = {};
    if (in.size() < kCommand) return ERROR_INVALID_PARAMETER;
    std::memcpy(&command, in.data(), kCommand);
    const Bytes answer = IdentifyAnswer(disk_);
    if (out.size() < answer.size()) return ERROR_INSUFFICIENT_BUFFER;
    if (!Understands(disk_, command.irDriveRegs.bCommandReg)) return ERROR_IO_DEVICE;
    return disk_.answers.Send("identify", answer, out, returned);
  }

  DWORD Describe(std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) const {
    STORAGE_PROPERTY_QUERY query = {};
    constexpr std::size_t kQuery = offsetof(STORAGE_PROPERTY_QUERY, AdditionalParameters);
    if (in.size() < kQuery) return ERROR_INVALID_PARAMETER;
    std::memcpy(&query, in.data(), kQuery);
    if (query.PropertyId != StorageDeviceProperty || query.QueryType != PropertyStandardQuery) {
      return ERROR_INVALID_PARAMETER;
    }
    // A descriptor that does not fit is cut; its own size field tells.
    Bytes answer = MakeDescriptor(disk_);
    answer.resize(std::min(answer.size(), out.size()));
    return disk_.answers.Send("descriptor", answer, out, returned);
  }

  const DiskFacts disk_;
  const unsigned number_;
  const DWORD access_;
};

class ScsiPort final : public Device {
 public:
  ScsiPort(unsigned port, DWORD access) : port_(port), access_(access) {}

  DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) override {
    if (const DWORD error = CheckRights(code, access_)) return error;
    if (code != IOCTL_SCSI_MINIPORT) return ERROR_INVALID_FUNCTION;
    SRB_IO_CONTROL control = {};
    SENDCMDINPARAMS command = {};
    if (in.size() < sizeof control + kCommand) return ERROR_INVALID_PARAMETER;
    std::memcpy(&control, in.data(), sizeof control);
    std::memcpy(&command, in.data() + sizeof control, kCommand);
    const bool known = control.HeaderLength == sizeof control && control.ControlCode == kMiniportIdentify &&
                       std::memcmp(control.Signature, "SCSIDISK", sizeof control.Signature) == 0;
    if (!known) return ERROR_INVALID_FUNCTION;
    const DiskFacts* disk = TargetAt(command.bDriveNumber);
    if (!disk || !Understands(*disk, command.irDriveRegs.bCommandReg)) return ERROR_IO_DEVICE;
    Bytes answer = BytesOf(control);
    const Bytes identify = IdentifyAnswer(*disk);
    answer.insert(answer.end(), identify.begin(), identify.end());
    return disk->answers.Send("miniport", answer, out, returned);
  }

 private:
  const DiskFacts* TargetAt(unsigned target) const {
    for (const auto& disk : Hardware::Current().disks) {
      if (disk && disk->scsi && disk->scsi->port == port_ && disk->scsi->target == target) return &*disk;
    }
    return nullptr;
  }

  const unsigned port_;
  const DWORD access_;
};

bool MayOpen(DWORD access, DWORD* error) {
  constexpr DWORD kData = GENERIC_READ | GENERIC_WRITE | GENERIC_ALL | FILE_READ_DATA | FILE_WRITE_DATA;
  const bool may = (access & kData) == 0 || HasAdministratorRights();
  if (!may) *error = ERROR_ACCESS_DENIED;
  return may;
}

}  // namespace

std::shared_ptr<Device> OpenDrive(std::u16string_view name, DWORD access, DWORD* error) {
  const auto number = DeviceNumber(name, u"PhysicalDrive", u"");
  const auto& disks = Hardware::Current().disks;
  if (!number || *number >= disks.size() || !disks[*number] || !MayOpen(access, error)) return nullptr;
  return std::make_shared<Drive>(*disks[*number], *number, access);
}

std::shared_ptr<Device> OpenScsiPort(std::u16string_view name, DWORD access, DWORD* error) {
  const auto number = DeviceNumber(name, u"Scsi", u":");
  if (!number) return nullptr;
  const auto lies_there = [&](const auto& disk) { return disk && disk->scsi && disk->scsi->port == *number; };
  if (std::ranges::none_of(Hardware::Current().disks, lies_there) || !MayOpen(access, error)) return nullptr;
  return std::make_shared<ScsiPort>(*number, access);
}

}  // namespace winhost
