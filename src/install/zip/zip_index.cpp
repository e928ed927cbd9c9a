#include "install/zip/zip_index.h"

#include <algorithm>

namespace vanta {
namespace {

constexpr char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

}  // namespace

size_t ZipIndex::NoCaseHash::operator()(std::string_view name) const {
  DWORD hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<BYTE>(AsciiLowerByte(c))) * 16777619u;
  return hash;
}

bool ZipIndex::NoCaseEqual::operator()(std::string_view a, std::string_view b) const {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLowerByte(x) == AsciiLowerByte(y); });
}

void ZipIndex::Build(ZipReader* reader) {
  ZipEntryInfo count;
  if (GetEntry(reader, -1, &count) != ZipOk) return;
  places_.reserve(static_cast<size_t>(count.index));
  for (LONG index = 0; index < count.index; ++index) {
    std::string_view name;
    ZipPlace place;
    const ZipError error = GetStoredName(reader, index, &name, &place);
    if (error && place.index != index) return;
    if (!error) Add(name, place);
  }
}

void ZipIndex::Add(std::string_view stored_name, const ZipPlace& place) { places_.try_emplace(stored_name, place); }

const ZipPlace* ZipIndex::Find(StringView name) const {
  const auto found = places_.find(ToUtf8(name));
  return found == places_.end() ? nullptr : &found->second;
}

}  // namespace vanta
