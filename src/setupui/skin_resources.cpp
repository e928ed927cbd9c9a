#include "setupui/skin_resources.h"

#include "setupui/skin_package.h"
#include "setupui/string_table.h"

namespace vanta {
namespace {

class PackagedSkin final : public lumo::ResourceSource {
 public:
  bool IsPackaged() const override { return IsSkinPackaged(); }
  const String& ThemeFolder() const override { return SkinThemeFolder(); }

  bool Read(StringView path, std::vector<BYTE>* bytes) const override {
    bytes->clear();
    DWORD size = 0;
    const UniqueGlobal block = ReadSkinFile(path, &size);
    if (!block) return false;
    const auto* const data = static_cast<const BYTE*>(GlobalLock(block.Get()));
    if (!data) return false;
    bytes->assign(data, data + size);
    GlobalUnlock(block.Get());
    return true;
  }

  bool Exists(StringView path) const override { return SkinFileExists(path); }
  String GetString(StringView key) const override { return vanta::GetString(key); }
};

constinit const PackagedSkin packaged_skin;

}  // namespace

const lumo::ResourceSource& SkinResources() { return packaged_skin; }

}  // namespace vanta
