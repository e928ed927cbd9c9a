// The archive reader: any bytes as an archive. Every entry is listed, found, and extracted both ways.

#include <memory>
#include <vector>

#include "base/text.h"
#include "install/zip/entry_name.h"
#include "install/zip/zip_index.h"
#include "install/zip/zip_reader.h"
#include "tests/fuzz/fuzz.h"

namespace {

using vanta::ZipError;
using vanta::ZipMore;
using vanta::ZipOk;

constexpr LONG kMostEntries = 32;
constexpr DWORD kMostBytes = 1 << 20;

bool HasParentReference(vanta::StringView name) {
  while (!name.empty()) {
    const size_t end = name.find_first_of(TEXT("\\/"));
    if (name.substr(0, end) == TEXT("..")) return true;
    if (end == vanta::StringView::npos) return false;
    name.remove_prefix(end + 1);
  }
  return false;
}

void CheckInfo(const vanta::ZipEntryInfo& info) {
  const vanta::StringView name = info.name;
  FUZZ_EXPECT(name.size() < MAX_PATH);
  FUZZ_EXPECT(!HasParentReference(name));
  FUZZ_EXPECT(name.empty() || (name[0] != TEXT('\\') && name[0] != TEXT('/')));
  FUZZ_EXPECT(name.size() < 2 || name[1] != TEXT(':'));
  FUZZ_EXPECT((info.attributes & ~DWORD{0x37}) == 0);
}

void ReadWhole(vanta::ZipReader* reader, const vanta::ZipEntryInfo& info, DWORD room) {
  const auto buffer = std::make_unique<BYTE[]>(room);
  DWORD sum = 0;
  ZipError error = ZipMore;
  while (error == ZipMore && sum < kMostBytes) {
    DWORD delivered = 0;
    error = vanta::ExtractToMemory(reader, info.index, buffer.get(), room, &delivered);
    FUZZ_EXPECT(delivered <= room);
    FUZZ_EXPECT(error != ZipMore || delivered == room);
    sum += delivered;
  }
  FUZZ_EXPECT(error != ZipOk || sum == info.uncompressed_size);
  FUZZ_EXPECT(sum <= info.uncompressed_size);
}

// What was written is never longer than declared, and nothing at all for a name that is no path below the folder.
void WriteFileOf(vanta::ZipReader* reader, const vanta::ZipEntryInfo& info) {
  const WCHAR* const target = TEXT("C:\\fuzz\\file");
  SetFileAttributesW(target, FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(target);
  const ZipError error = vanta::ExtractToFile(reader, info.index, target);
  WIN32_FILE_ATTRIBUTE_DATA written = {};
  const bool there = GetFileAttributesExW(target, GetFileExInfoStandard, &written);
  FUZZ_EXPECT(!there || (written.nFileSizeHigh == 0 && written.nFileSizeLow <= info.uncompressed_size));
  FUZZ_EXPECT(error != ZipOk || written.nFileSizeLow == info.uncompressed_size);
  if (!vanta::IsExtractableName(info.name)) FUZZ_EXPECT(error == vanta::ZipNoFile && !there);
}

void UseEntry(vanta::ZipReader* reader, LONG index) {
  vanta::ZipEntryInfo info;
  if (vanta::GetEntry(reader, index, &info) != ZipOk) {
    BYTE byte;
    FUZZ_EXPECT(vanta::ExtractToMemory(reader, index, &byte, 1) != ZipOk);
    return;
  }
  CheckInfo(info);
  LONG found = -1;
  vanta::FindEntry(reader, info.name, true, &found, nullptr);
  if (info.uncompressed_size <= kMostBytes) {
    ReadWhole(reader, info, 4096);
    ReadWhole(reader, info, info.uncompressed_size ? info.uncompressed_size : 1);
    if (!(info.attributes & FILE_ATTRIBUTE_DIRECTORY)) WriteFileOf(reader, info);
  } else {
    ReadWhole(reader, info, 60000);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> archive(data, data + size);  // so that a read beyond its end shows
  vanta::ZipReader* const reader = vanta::OpenFromMemory(archive.data(), archive.size(), "secret");
  if (!reader) return 0;
  vanta::ZipEntryInfo count;
  FUZZ_EXPECT(vanta::GetEntry(reader, -1, &count) == ZipOk);
  for (LONG index = 0; index < count.index && index < kMostEntries; ++index) UseEntry(reader, index);
  if (count.index > 0) UseEntry(reader, count.index - 1);
  vanta::ZipIndex names;
  names.Build(reader);
  if (const vanta::ZipPlace* place = names.Find(TEXT("a.txt"))) {
    vanta::MoveTo(reader, *place);
    UseEntry(reader, place->index);
  }
  FUZZ_EXPECT(vanta::Close(reader) == ZipOk);
  return 0;
}
