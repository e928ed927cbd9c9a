// Requests to a SCSI port's miniport driver.
//
// Promises: "\\.\ScsiN:" is there when a drive of the machine's fact "disks" lies on that port, and identifies its
// targets 0 and 1. To fail: as in <winioctl.h>; the fault plan: "CreateFileW" with "\\.\Scsi0:".
#pragma once

#include <winioctl.h>

#define IOCTL_SCSI_BASE 0x00000004
#define IOCTL_SCSI_MINIPORT CTL_CODE(IOCTL_SCSI_BASE, 0x0402, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS)

struct SRB_IO_CONTROL {
  ULONG HeaderLength;
  UCHAR Signature[8];
  ULONG Timeout;
  ULONG ControlCode;
  ULONG ReturnCode;
  ULONG Length;
};
