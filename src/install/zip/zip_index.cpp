#include "install/zip/zip_index.h"

#include <algorithm>
#include <utility>

namespace vanta {
namespace {

constexpr char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

size_t HashOf(std::string_view name) {
  DWORD hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<BYTE>(AsciiLowerByte(c))) * 16777619u;
  return hash;
}

bool Equal(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return AsciiLowerByte(x) == AsciiLowerByte(y); });
}

}  // namespace

void ZipIndex::Build(ZipReader* reader) {
  ZipEntryInfo count;
  if (GetEntry(reader, -1, &count) != ZipOk) return;
  for (LONG index = 0; index < count.index; ++index) {
    std::string_view name;
    ZipPlace place;
    const ZipError error = GetStoredName(reader, index, &name, &place);
    if (error && place.index != index) return;
    if (!error) Add(name, place);
  }
}

void ZipIndex::Add(std::string_view stored_name, const ZipPlace& place) {
  MakeRoom(taken_ + 1);
  Slot& slot = slots_[SlotOf(stored_name)];
  if (slot.taken) return;
  slot = {stored_name, place, true};
  ++taken_;
}

const ZipPlace* ZipIndex::Find(StringView name) const {
  if (slots_.empty()) return nullptr;
  const Slot& slot = slots_[SlotOf(ToUtf8(name))];
  return slot.taken ? &slot.place : nullptr;
}

void ZipIndex::Clear() {
  slots_.clear();
  taken_ = 0;
}

size_t ZipIndex::SlotOf(std::string_view name) const {
  const size_t mask = slots_.size() - 1;
  size_t at = HashOf(name) & mask;
  while (slots_[at].taken && !Equal(slots_[at].name, name)) at = (at + 1) & mask;
  return at;
}

void ZipIndex::MakeRoom(size_t names) {
  size_t size = slots_.empty() ? 16 : slots_.size();
  while (names > size / 4 * 3) size *= 2;
  if (size == slots_.size()) return;
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(size));
  for (const Slot& slot : old) {
    if (slot.taken) slots_[SlotOf(slot.name)] = slot;
  }
}

}  // namespace vanta
