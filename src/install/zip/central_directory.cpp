#include "install/zip/central_directory.h"

namespace vanta {
namespace {

constexpr ULONGLONG kSearched = 65535;

// An archive comment may hold the signature by chance: what cannot be an end record for its sizes is passed over. A
// record that fits decides, so that the archive inside a refused one is never opened in its stead.
bool Fits(const EndRecord& record, ULONGLONG at) {
  return ULONGLONG{record.directory_offset} + record.directory_size <= at;
}

}  // namespace

bool FindCentralDirectory(ByteSpan archive, CentralDirectory* directory) {
  if (archive.size() < EndRecord::kSize) return false;
  const ULONGLONG lowest = archive.size() > kSearched ? archive.size() - kSearched : 0;
  EndRecord record;
  for (ULONGLONG at = archive.size() - EndRecord::kSize + 1; at-- > lowest;) {
    if (!ReadRecord(archive, at, &record) || !Fits(record, at)) continue;
    if (record.disk != 0 || record.directory_disk != 0 || record.entries_on_disk != record.entries) return false;
    directory->start = at - record.directory_size;
    directory->end = at;
    directory->prefix = directory->start - record.directory_offset;
    directory->entries = record.entries;
    return true;
  }
  return false;
}

}  // namespace vanta
