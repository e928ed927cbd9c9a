// Finds archive entries by name without regard to the case of ASCII letters, at the same cost in an archive of ten and
// of sixty thousand entries. Holds views of the names, so their memory (the archive) must outlive the index.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

#include "base/text.h"
#include "install/zip/zip_reader.h"

namespace vanta {

class ZipIndex {
 public:
  // Takes in all names of the archive that are not longer than 259 bytes. Stops without complaint where the central
  // directory becomes unreadable.
  void Build(ZipReader* reader);
  // The first entry of a name wins. `stored_name` is UTF-8 and is not copied.
  void Add(std::string_view stored_name, const ZipPlace& place);
  // Null: no such entry. MoveTo with the result makes reading the entry cheap as well.
  const ZipPlace* Find(StringView name) const;
  void Clear();

 private:
  struct Slot {
    std::string_view name;
    ZipPlace place;
    bool taken = false;
  };
  // Where a name stands, or the free slot where it would. There is one: a quarter of the slots stays free.
  size_t SlotOf(std::string_view name) const;
  void MakeRoom(size_t names);  // for so many in all

  std::vector<Slot> slots_;  // none or a power of two; a name stands at its hash or after it, behind others
  size_t taken_ = 0;
};

}  // namespace vanta
