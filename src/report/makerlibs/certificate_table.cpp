#include "report/makerlibs/certificate_table.h"

#include <cstring>

namespace vanta {
namespace {

constexpr ULONGLONG kAlignment = 8;  // of the table's entries

bool ReadAt(HANDLE file, ULONGLONG at, void* into, DWORD size) {
  LARGE_INTEGER offset;
  offset.QuadPart = static_cast<LONGLONG>(at);
  DWORD read = 0;
  return SetFilePointerEx(file, offset, nullptr, FILE_BEGIN) && ReadFile(file, into, size, &read, nullptr) &&
         read == size;
}

template <class T>
bool ReadAt(HANDLE file, ULONGLONG at, T& into) {
  return ReadAt(file, at, &into, sizeof(T));
}

struct Table {
  DWORD offset = 0;
  DWORD size = 0;
};

// Offsets in a PE file: the first from its beginning, the next from the PE signature, the rest from the optional
// header.
constexpr ULONGLONG kHeadersAt = 0x3C;
constexpr ULONGLONG kOptionalSizeAt = 20;
constexpr ULONGLONG kOptionalAt = 24;
constexpr ULONGLONG kDirectories32 = 96;
constexpr ULONGLONG kDirectories64 = 112;
constexpr DWORD kSecurityDirectory = 4;
constexpr WORD kDosSignature = 0x5A4D;
constexpr DWORD kPeSignature = 0x4550;
constexpr WORD kMagic32 = 0x10B;
constexpr WORD kMagic64 = 0x20B;

// Where the optional header of either width says the table is. False: no PE headers, or cut short.
bool FindTable(HANDLE file, Table& table) {
  WORD dos = 0;
  DWORD headers = 0;
  DWORD signature = 0;
  WORD optional_size = 0;
  WORD magic = 0;
  if (!ReadAt(file, 0, dos) || dos != kDosSignature || !ReadAt(file, kHeadersAt, headers)) return false;
  if (!ReadAt(file, headers, signature) || signature != kPeSignature) return false;
  const ULONGLONG optional = headers + kOptionalAt;
  if (!ReadAt(file, headers + kOptionalSizeAt, optional_size) || !ReadAt(file, optional, magic)) return false;
  if (magic != kMagic32 && magic != kMagic64) return false;

  const ULONGLONG directories = magic == kMagic64 ? kDirectories64 : kDirectories32;
  const ULONGLONG entry = directories + kSecurityDirectory * sizeof(Table);
  DWORD count = 0;  // stands right before the directories
  if (!ReadAt(file, optional + directories - sizeof(count), count)) return false;
  if (count <= kSecurityDirectory || entry + sizeof(Table) > optional_size) return true;
  return ReadAt(file, optional + entry, table);  // unlike the other directories, a file offset and a size
}

// Bytes of the DER value that begins at `at`, its header included; 0: no definite, sane length.
ULONGLONG DerSize(const BYTE (&start)[6]) {
  constexpr BYTE kSequence = 0x30;
  if (start[0] != kSequence) return 0;
  if (start[1] < 0x80) return 2u + start[1];
  const unsigned length_bytes = start[1] & 0x7Fu;
  if (length_bytes == 0 || length_bytes > 4) return 0;
  ULONGLONG length = 0;
  for (unsigned i = 0; i < length_bytes; ++i) length = length << 8 | start[2 + i];
  return 2 + length_bytes + length;
}

bool IsZero(HANDLE file, ULONGLONG begin, ULONGLONG end) {
  BYTE padding[kAlignment] = {};
  static constexpr BYTE kZero[kAlignment] = {};
  const auto size = static_cast<DWORD>(end - begin);
  return size == 0 || (ReadAt(file, begin, padding, size) && std::memcmp(padding, kZero, size) == 0);
}

// One entry that holds one signed message; nothing but alignment's zeros around it.
bool IsWhole(HANDLE file, const Table& table, ULONGLONG file_size) {
  struct {
    DWORD length;
    WORD revision;
    WORD type;
  } header;
  constexpr WORD kRevision2 = 0x0200;
  constexpr WORD kSignedData = 0x0002;
  const ULONGLONG begin = table.offset;
  const ULONGLONG end = begin + table.size;
  BYTE der[6];
  if (end != file_size || table.size < sizeof(header) + sizeof(der)) return false;
  if (!ReadAt(file, begin, header) || header.revision != kRevision2 || header.type != kSignedData) return false;
  if (header.length > table.size || table.size - header.length >= kAlignment) return false;
  if (!ReadAt(file, begin + sizeof(header), der)) return false;
  const ULONGLONG message = DerSize(der);
  const ULONGLONG room = table.size - sizeof(header);
  if (message == 0 || message > header.length - sizeof(header) || room - message >= kAlignment) return false;
  return IsZero(file, begin + sizeof(header) + message, end);
}

}  // namespace

CertificateTable ReadCertificateTable(HANDLE file) {
  LARGE_INTEGER size;
  Table table;
  if (!GetFileSizeEx(file, &size) || !FindTable(file, table)) return CertificateTable::NoProgram;
  if (table.offset == 0 && table.size == 0) return CertificateTable::None;
  return IsWhole(file, table, static_cast<ULONGLONG>(size.QuadPart)) ? CertificateTable::Present
                                                                     : CertificateTable::Damaged;
}

}  // namespace vanta
