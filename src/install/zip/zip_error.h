// What the archive reader answers. The numbers are fixed: they are logged and compared by other programs.
#pragma once

#include <windows.h>

namespace vanta {

enum ZipError : DWORD {
  ZipOk = 0x00000000,
  ZipNoFile = 0x00000200,     // not readable as a ZIP archive or entry, or an output file could not be created
  ZipWrite = 0x00000400,      // writing an output file failed
  ZipNotFound = 0x00000500,   // no entry of that name
  ZipMore = 0x00000600,       // the buffer was full before the entry ended
  ZipPassword = 0x00001000,   // the check byte of an encrypted entry did not match
  ZipArgs = 0x00010000,       // no handle, index out of range, missing argument
  ZipMode = 0x00080000,       // the handle is not a reader, or no longer one
  ZipNotInited = 0x01000000,  // the reader was already opened
  ZipSeek = 0x02000000,       // a file handle that cannot seek
  ZipFlate = 0x05000000,      // damaged data: not inflatable, of another length than declared, or of another CRC-32
};

}  // namespace vanta
