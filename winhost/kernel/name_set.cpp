#include "winhost/kernel/name_set.h"

#include <utility>

namespace winhost {
namespace {

constexpr std::size_t kLeast = 16;

std::uint32_t EntryOf(std::uint64_t hash) {
  const auto entry = static_cast<std::uint32_t>(hash ^ (hash >> 32));
  return entry ? entry : 1;
}

}  // namespace

std::size_t NameSet::Search(std::uint32_t entry) const {
  std::size_t at = entry & (capacity_ - 1);
  while (entries_[at] != 0 && entries_[at] != entry) at = Next(at);
  return at;
}

void NameSet::Put(std::uint32_t entry) {
  std::size_t at = entry & (capacity_ - 1);
  while (entries_[at] != 0) at = Next(at);
  entries_[at] = entry;
}

void NameSet::Grow() {
  const std::size_t before = capacity_;
  const std::unique_ptr<std::uint32_t[]> old = std::move(entries_);
  capacity_ = before ? before * 2 : kLeast;
  entries_ = std::make_unique<std::uint32_t[]>(capacity_);
  for (std::size_t i = 0; i < before; ++i) {
    if (old[i] != 0) Put(old[i]);
  }
}

void NameSet::Add(std::uint64_t hash) {
  if ((size_ + 1) * 4 > capacity_ * 3) Grow();
  Put(EntryOf(hash));
  ++size_;
}

void NameSet::Remove(std::uint64_t hash) {
  if (capacity_ == 0) return;
  std::size_t hole = Search(EntryOf(hash));
  if (entries_[hole] == 0) return;
  --size_;
  // What follows without a gap moves up when the hole would cut it off from where its search begins.
  for (std::size_t at = Next(hole); entries_[at] != 0; at = Next(at)) {
    const std::size_t home = entries_[at] & (capacity_ - 1);
    if (((at - home) & (capacity_ - 1)) < ((at - hole) & (capacity_ - 1))) continue;
    entries_[hole] = entries_[at];
    hole = at;
  }
  entries_[hole] = 0;
}

bool NameSet::MayHold(std::uint64_t hash) const { return capacity_ != 0 && entries_[Search(EntryOf(hash))] != 0; }

void NameSet::Clear() {
  entries_.reset();
  capacity_ = size_ = 0;
}

}  // namespace winhost
