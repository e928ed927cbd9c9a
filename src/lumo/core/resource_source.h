// Where layouts, pictures and texts come from: the library's only view of what carries its skin.
//
// Installed once before InitLibrary and asked on the UI thread only.
#pragma once

#include "lumo/core/types.h"

#include <vector>

namespace lumo {

class ResourceSource {
 public:
  // A package is open: files are looked up in it; otherwise they lie on disk.
  virtual bool IsPackaged() const = 0;
  // Root and theme, ending in a separator: "resources\themes\default\".
  virtual const String& ThemeFolder() const = 0;
  // The whole file in the package, by a path as layouts write it; false leaves `bytes` empty.
  virtual bool Read(StringView path, std::vector<BYTE>* bytes) const = 0;
  virtual bool Exists(StringView path) const = 0;
  // The text of a string-table key, "" when there is none.
  virtual String GetString(StringView key) const = 0;

 protected:
  ~ResourceSource() = default;
};

// Not owned; must outlive every window. With none, nothing is packaged, the theme folder is "" and texts are empty.
void SetResourceSource(const ResourceSource* source);
const ResourceSource& Resources();

}  // namespace lumo
