// Where an archive's central directory lies.
#pragma once

#include "install/zip/records.h"

namespace vanta {

struct CentralDirectory {
  ULONGLONG start = 0;   // bytes from the first byte of the memory
  ULONGLONG end = 0;     // where the end record stands
  ULONGLONG prefix = 0;  // bytes in front of the archive; every stored offset is shifted by them
  LONG entries = 0;
};

// Searches the end record backwards over the last 65,535 bytes. False: none, or one of a multi-disk archive.
bool FindCentralDirectory(ByteSpan archive, CentralDirectory* directory);

}  // namespace vanta
