// Listing and finding: the cursor in the central directory, and what an entry's two headers say of it.

#include <algorithm>

#include "install/zip/entry_attributes.h"
#include "install/zip/entry_name.h"
#include "install/zip/entry_times.h"
#include "install/zip/reader_state.h"

namespace vanta {
namespace {

constexpr WORD kEncryptedFlag = 1;
constexpr WORD kSizesFollowFlag = 8;
constexpr WORD kStored = 0;
constexpr WORD kDeflated = 8;

constexpr char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool SameName(std::string_view a, std::string_view b, bool ignore_case) {
  if (!ignore_case) return a == b;
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLowerByte(x) == AsciiLowerByte(y); });
}

String CurrentDirectoryWithSeparator() {
  String folder(GetCurrentDirectoryW(0, nullptr), 0);
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  if (folder.empty() || (folder.back() != TEXT('\\') && folder.back() != TEXT('/'))) folder += TEXT('\\');
  return folder;
}

// Most names are ASCII, and an archive may have tens of thousands. UTF-8 of at most 259 bytes is as many units or
// fewer.
StringView DecodeName(std::string_view stored, WCHAR (&buffer)[MAX_PATH]) {
  if (std::all_of(stored.begin(), stored.end(), [](char c) { return static_cast<BYTE>(c) < 0x80; })) {
    std::copy(stored.begin(), stored.end(), buffer);
    return {buffer, stored.size()};
  }
  const String decoded = FromUtf8(stored);
  std::copy(decoded.begin(), decoded.end(), buffer);
  return {buffer, decoded.size()};
}

BYTE CheckByte(const CentralHeader& header) {
  return static_cast<BYTE>(header.flags & kSizesFollowFlag ? header.dos_time >> 8 : header.crc >> 24);
}

}  // namespace

ZipError ZipReader::Open(const void* data, size_t size, const char* password) {
  if (opened_) return ZipNotInited;
  if (!data) return ZipNoFile;
  archive_ = {static_cast<const BYTE*>(data), size};
  if (!FindCentralDirectory(archive_, &directory_)) return ZipNoFile;
  opened_ = true;
  if (password) password_ = password;
  base_ = CurrentDirectoryWithSeparator();
  bias_minutes_ = LocalBiasMinutes();
  cursor_ = {0, directory_.start};
  return ZipOk;
}

ZipError ZipReader::ReadCentral(LONG index, CentralHeader* header, std::string_view* name) {
  if (!HasIndex(index)) return ZipArgs;
  const ByteSpan readable = archive_.first(static_cast<size_t>(directory_.end));
  if (index < cursor_.index) cursor_ = {0, directory_.start};
  for (;; ++cursor_.index, cursor_.header += header->WholeSize()) {
    if (!ReadRecord(readable, cursor_.header, header)) return ZipNoFile;
    if (cursor_.index == index) break;
  }
  const BYTE* stored = archive_.data() + static_cast<size_t>(cursor_.header) + CentralHeader::kSize;
  *name = {reinterpret_cast<const char*>(stored), header->name_length};
  return header->name_length < MAX_PATH ? ZipOk : ZipNoFile;
}

ZipError ZipReader::LoadLocal(const CentralHeader& header, ByteSpan* extra, EntryData* data) const {
  const ULONGLONG at = directory_.prefix + header.local_offset;
  LocalHeader local;
  if (!ReadRecord(archive_, at, &local)) return ZipNoFile;
  if (local.method != header.method || (local.method != kStored && local.method != kDeflated)) return ZipNoFile;
  const size_t extra_start = static_cast<size_t>(at) + LocalHeader::kSize + local.name_length;
  *extra = archive_.subspan(extra_start, local.extra_length);
  const ByteSpan rest = archive_.subspan(extra_start + local.extra_length);
  data->stored = rest.first(std::min<size_t>(rest.size(), header.compressed_size));
  data->encrypted = header.flags & kEncryptedFlag;
  data->check_byte = CheckByte(header);
  data->method = header.method;
  data->compressed_size = header.compressed_size;
  data->uncompressed_size = header.uncompressed_size;
  data->crc = header.crc;
  return ZipOk;
}

ZipError ZipReader::Load(LONG index) {
  if (HasIndex(index) && entry_.info.index == index) return ZipOk;
  CentralHeader header;
  std::string_view stored_name;
  if (const ZipError error = ReadCentral(index, &header, &stored_name)) return error;
  ByteSpan extra;
  EntryData data;
  if (const ZipError error = LoadLocal(header, &extra, &data)) return error;
  entry_.data = data;
  entry_.info.index = index;
  LoadName(stored_name);
  const EntryTimes times = TimesFrom(header.dos_date, header.dos_time, bias_minutes_, extra);
  entry_.info.attributes = AttributesFromHost(header.host, header.external_attributes);
  entry_.info.access_time = times.access;
  entry_.info.creation_time = times.creation;
  entry_.info.modification_time = times.modification;
  entry_.info.compressed_size = header.compressed_size;
  entry_.info.uncompressed_size = header.uncompressed_size;
  return ZipOk;
}

void ZipReader::LoadName(std::string_view stored_name) {
  WCHAR buffer[MAX_PATH];
  const StringView decoded = DecodeName(stored_name, buffer);
  // Sanitised as callers see it, which is up to the first NUL: what stands behind must not protect a ".." ahead of it.
  const StringView visible = decoded.substr(0, decoded.find(WCHAR{0}));
  const StringView name = SanitiseName(visible);
  *std::copy(name.begin(), name.end(), entry_.info.name) = 0;
  entry_.extractable = visible.size() == decoded.size() && IsExtractableName(name);
}

ZipError ZipReader::GetEntry(LONG index, ZipEntryInfo* info) {
  if (!info) return ZipArgs;
  if (index == -1) {
    *info = {};
    info->index = directory_.entries;
    return ZipOk;
  }
  const ZipError error = Load(index);
  if (error) {
    *info = {};
  } else {
    *info = entry_.info;
  }
  return error;
}

ZipError ZipReader::GetStoredName(LONG index, std::string_view* name, ZipPlace* place) {
  CentralHeader header;
  const ZipError error = ReadCentral(index, &header, name);
  *place = cursor_;
  return error;
}

ZipError ZipReader::MoveTo(const ZipPlace& place) {
  if (!HasIndex(place.index)) return ZipArgs;
  cursor_ = place;
  return ZipOk;
}

ZipError ZipReader::FindEntry(const WCHAR* name, bool ignore_case, LONG* index, ZipEntryInfo* info) {
  if (index) *index = kNone;
  if (info) *info = {kNone, {}, 0, {}, {}, {}, 0, 0};
  if (!name) return ZipArgs;
  const std::string wanted = ToUtf8(name);
  for (LONG i = 0; i < directory_.entries; ++i) {
    CentralHeader header;
    std::string_view stored_name;
    const ZipError error = ReadCentral(i, &header, &stored_name);
    if (error && cursor_.index != i) break;
    if (error || !SameName(stored_name, wanted, ignore_case)) continue;
    if (index) *index = i;
    return info ? GetEntry(i, info) : ZipOk;
  }
  return ZipNotFound;
}

}  // namespace vanta
