// The names in a folder, as hashes in a small table: enough to say that a name is surely not there. Four to eleven
// bytes a name, so that a folder of 60,000 takes half a megabyte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace winhost {

class NameSet {
 public:
  // A hash may be in it several times; Remove() takes one of them out.
  void Add(std::uint64_t hash);
  void Remove(std::uint64_t hash);
  // False: no such name. True: there may be one.
  bool MayHold(std::uint64_t hash) const;
  void Clear();
  std::size_t bytes() const { return capacity_ * sizeof(std::uint32_t); }

 private:
  std::size_t Next(std::size_t at) const { return (at + 1) & (capacity_ - 1); }
  // Where the entry lies, or the empty place that ends the search for it.
  std::size_t Search(std::uint32_t entry) const;
  void Put(std::uint32_t entry);
  void Grow();

  std::unique_ptr<std::uint32_t[]> entries_;  // 0: empty
  std::size_t capacity_ = 0;                  // a power of two, or 0
  std::size_t size_ = 0;
};

}  // namespace winhost
