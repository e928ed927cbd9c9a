// The questions that both identifiers ask of drives. Answers are bytes as they came.
#pragma once

#include <windows.h>

#include <string>

#include "report/identity/device.h"

namespace vanta {

inline constexpr DWORD kDrives = 16;
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
inline constexpr DWORD kShareData = FILE_SHARE_READ | FILE_SHARE_WRITE;

String DrivePath(DWORD drive);

// Which IDENTIFY command a drive understands.
enum class IdentifyCommand {
  Ata,
  ByDriveMap,  // ATAPI's where the SMART version's drive map marks the drive so, else ATA's
};

// The drive's IDENTIFY data, through SMART. Empty when the drive knows no SMART, refuses, reports an error or answers
// with fewer than `least` bytes of data. Needs an administrator's rights.
std::string SmartIdentify(DWORD drive, DWORD share, IdentifyCommand command, size_t least);

// The IDENTIFY data of target 0 or 1 of a SCSI port, through its miniport driver; as above.
std::string MiniportIdentify(Device& port, BYTE target, size_t least);

// The drive's storage device descriptor; empty when there is none. Needs no rights.
std::string DescribeDrive(DWORD drive);

}  // namespace vanta
