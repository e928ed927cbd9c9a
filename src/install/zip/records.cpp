#include "install/zip/records.h"

namespace vanta {
namespace {

template <class Record>
const BYTE* Find(ByteSpan bytes, ULONGLONG offset) {
  if (!Holds(bytes, offset, Record::kSize)) return nullptr;
  const BYTE* at = bytes.data() + static_cast<size_t>(offset);
  return ReadDword(at) == Record::kSignature ? at : nullptr;
}

}  // namespace

WORD ReadWord(const BYTE* at) { return static_cast<WORD>(at[0] | at[1] << 8); }

DWORD ReadDword(const BYTE* at) { return ReadWord(at) | static_cast<DWORD>(ReadWord(at + 2)) << 16; }

bool Holds(ByteSpan bytes, ULONGLONG offset, ULONGLONG length) {
  return offset <= bytes.size() && length <= bytes.size() - offset;
}

bool ReadRecord(ByteSpan bytes, ULONGLONG offset, EndRecord* record) {
  const BYTE* at = Find<EndRecord>(bytes, offset);
  if (!at) return false;
  record->disk = ReadWord(at + 4);
  record->directory_disk = ReadWord(at + 6);
  record->entries_on_disk = ReadWord(at + 8);
  record->entries = ReadWord(at + 10);
  record->directory_size = ReadDword(at + 12);
  record->directory_offset = ReadDword(at + 16);
  record->comment_length = ReadWord(at + 20);
  return Holds(bytes, offset, ULONGLONG{EndRecord::kSize} + record->comment_length);
}

bool ReadRecord(ByteSpan bytes, ULONGLONG offset, CentralHeader* record) {
  const BYTE* at = Find<CentralHeader>(bytes, offset);
  if (!at) return false;
  record->host = at[5];
  record->flags = ReadWord(at + 8);
  record->method = ReadWord(at + 10);
  record->dos_time = ReadWord(at + 12);
  record->dos_date = ReadWord(at + 14);
  record->crc = ReadDword(at + 16);
  record->compressed_size = ReadDword(at + 20);
  record->uncompressed_size = ReadDword(at + 24);
  record->name_length = ReadWord(at + 28);
  record->extra_length = ReadWord(at + 30);
  record->comment_length = ReadWord(at + 32);
  record->external_attributes = ReadDword(at + 38);
  record->local_offset = ReadDword(at + 42);
  return Holds(bytes, offset, record->WholeSize());
}

bool ReadRecord(ByteSpan bytes, ULONGLONG offset, LocalHeader* record) {
  const BYTE* at = Find<LocalHeader>(bytes, offset);
  if (!at) return false;
  record->method = ReadWord(at + 8);
  record->name_length = ReadWord(at + 26);
  record->extra_length = ReadWord(at + 28);
  return Holds(bytes, offset, ULONGLONG{LocalHeader::kSize} + record->name_length + record->extra_length);
}

}  // namespace vanta
