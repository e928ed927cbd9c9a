// Finds archive entries by name without regard to the case of ASCII letters, at the same cost in an archive of ten and
// of sixty thousand entries. Holds views of the names, so their memory (the archive) must outlive the index.
#pragma once

#include <windows.h>

#include <string_view>
#include <unordered_map>

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
  void Clear() { places_.clear(); }

 private:
  struct NoCaseHash {
    size_t operator()(std::string_view name) const;
  };
  struct NoCaseEqual {
    bool operator()(std::string_view a, std::string_view b) const;
  };
  std::unordered_map<std::string_view, ZipPlace, NoCaseHash, NoCaseEqual> places_;
};

}  // namespace vanta
