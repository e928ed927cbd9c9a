#include "base/resource.h"

namespace vanta {

std::string_view FindOwnResource(const WCHAR* name, const WCHAR* type) {
  const HRSRC place = FindResourceW(nullptr, name, type);
  if (!place) return {};
  const HGLOBAL loaded = LoadResource(nullptr, place);
  const DWORD size = SizeofResource(nullptr, place);
  const void* const bytes = loaded ? LockResource(loaded) : nullptr;
  if (!bytes || !size) return {};
  return {static_cast<const char*>(bytes), size};
}

}  // namespace vanta
