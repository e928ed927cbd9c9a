#include "setupui/skin_package.h"

#include "base/lock.h"
#include "base/resource.h"
#include "lumo/core/library.h"
#include "setupui/skin_path.h"
#include "setupui/skin_resources.h"
#include "setupui/string_table.h"

namespace vanta {
namespace {

struct Skin {
  ZipReader* archive = nullptr;
  ZipIndex index;
  String theme_folder;
  String language_folder;

  void Close() {
    index.Clear();
    if (archive) vanta::Close(archive);
    archive = nullptr;
  }
};
constinit Lazy<Skin> process_skin;

bool Inflate(LONG index, HGLOBAL block, DWORD size) {
  void* const bytes = GlobalLock(block);
  if (!bytes) return false;
  // An empty entry is read too, so that a damaged one does not pass for it.
  const ZipError result = ExtractToMemory(process_skin.Get().archive, index, bytes, size ? size : 1);
  GlobalUnlock(block);
  return result == ZipOk || result == ZipMore;
}

}  // namespace

int LoadSkinResource(WORD id, const WCHAR* type, const char* password) {
  const std::string_view bytes = FindOwnResource(MAKEINTRESOURCEW(id), type);
  return bytes.empty() ? SkinResourceFailure : LoadSkinArchive(bytes, password);
}

int LoadSkinArchive(std::string_view bytes, const char* password) {
  Skin& skin = process_skin.Get();
  skin.Close();
  skin.archive = OpenFromMemory(bytes.data(), bytes.size(), password);
  if (!skin.archive) return SkinResourceFailure;
  skin.index.Build(skin.archive);
  return SkinOk;
}

int InitSkin(const WCHAR* root, const WCHAR* theme, const WCHAR* language, bool dpi_aware) {
  if (!root || !theme || !language) return SkinMissingArgument;
  Skin& skin = process_skin.Get();
  skin.theme_folder = WithSeparator(root) + WithSeparator(theme);
  skin.language_folder = WithSeparator(root) + WithSeparator(language);
  lumo::InitLibrary(SkinResources(), dpi_aware, [] { LoadStringTable(SkinLanguageFolder()); });
  return SkinOk;
}

bool IsSkinPackaged() { return process_skin.Get().archive != nullptr; }

const String& SkinThemeFolder() { return process_skin.Get().theme_folder; }
const String& SkinLanguageFolder() { return process_skin.Get().language_folder; }

UniqueGlobal ReadSkinFile(StringView path, DWORD* size) {
  *size = 0;
  const ZipPlace* const place = FindSkinEntry(process_skin.Get().index, path);
  if (!place) return {};
  ZipReader* const archive = process_skin.Get().archive;
  ZipEntryInfo info = {};
  MoveTo(archive, *place);
  if (GetEntry(archive, place->index, &info) != ZipOk) return {};
  // A block of no bytes could not be locked; one byte more does no harm.
  UniqueGlobal block(GlobalAlloc(GMEM_MOVEABLE, SIZE_T{info.uncompressed_size} + 1));
  if (!block || !Inflate(place->index, block.Get(), info.uncompressed_size)) return {};
  *size = info.uncompressed_size;
  return block;
}

bool SkinFileExists(StringView path) { return FindSkinEntry(process_skin.Get().index, path) != nullptr; }

const ZipPlace* FindSkinEntry(const ZipIndex& entries, StringView path) {
  const std::optional<String> name = NormaliseSkinPath(path);
  return name ? entries.Find(*name) : nullptr;
}

int ShutdownSkin() {
  process_skin.Get().Close();
  lumo::ShutdownLibrary();
  return SkinOk;
}

}  // namespace vanta
