// The archive's records, little-endian and unaligned, each with its signature, its fixed size and one checked read.
//
//   end of central directory (22 + comment)            central header (46 + name + extra + comment)
//    0 4 signature 0x06054b50                            0 4 signature 0x02014b50     24 4 uncompressed size
//    4 2 number of this disk                             4 2 version made by          28 2 name length
//    6 2 disk with the central directory                 6 2 version needed           30 2 extra length
//    8 2 entries on this disk                            8 2 flags                    32 2 comment length
//   10 2 entries in all                                 10 2 method                   34 2 disk number start
//   12 4 central directory size                         12 2 DOS time                 36 2 internal attributes
//   16 4 central directory offset                       14 2 DOS date                 38 4 external attributes
//   20 2 comment length                                 16 4 CRC-32                   42 4 local header offset
//                                                       20 4 compressed size
//   local header (30 + name + extra): 0 4 signature 0x04034b50, 6 2 flags, 8 2 method, 26 2 name length, 28 2 extra
//   length
//
// Offsets are 64-bit throughout, so that no sum of hostile fields can wrap on a 32-bit system.
#pragma once

#include <windows.h>

#include <span>

namespace vanta {

struct EndRecord {
  static constexpr DWORD kSignature = 0x06054b50;
  static constexpr DWORD kSize = 22;

  WORD disk;
  WORD directory_disk;
  WORD entries_on_disk;
  WORD entries;
  DWORD directory_size;
  DWORD directory_offset;
  WORD comment_length;
};

struct CentralHeader {
  static constexpr DWORD kSignature = 0x02014b50;
  static constexpr DWORD kSize = 46;

  BYTE host;
  WORD flags;
  WORD method;
  WORD dos_time;
  WORD dos_date;
  DWORD crc;
  DWORD compressed_size;
  DWORD uncompressed_size;
  WORD name_length;
  WORD extra_length;
  WORD comment_length;
  DWORD external_attributes;
  DWORD local_offset;

  DWORD WholeSize() const { return kSize + name_length + extra_length + comment_length; }
};

struct LocalHeader {
  static constexpr DWORD kSignature = 0x04034b50;
  static constexpr DWORD kSize = 30;

  WORD method;
  WORD name_length;
  WORD extra_length;
};

using ByteSpan = std::span<const BYTE>;

WORD ReadWord(const BYTE* at);
DWORD ReadDword(const BYTE* at);
// Whether [offset, offset + length) lies inside.
bool Holds(ByteSpan bytes, ULONGLONG offset, ULONGLONG length);

// False: the record does not lie wholly (with its name, extra field and comment) in `bytes`, or has another signature.
bool ReadRecord(ByteSpan bytes, ULONGLONG offset, EndRecord* record);
bool ReadRecord(ByteSpan bytes, ULONGLONG offset, CentralHeader* record);
bool ReadRecord(ByteSpan bytes, ULONGLONG offset, LocalHeader* record);

}  // namespace vanta
