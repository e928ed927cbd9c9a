#include "winhost/shell/shell_item.h"

#include <shlwapi.h>
#include <windows.h>

#include "winhost/com/object.h"
#include "winhost/kernel/file_system.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IShellItem> = {&IID_IShellItem};

namespace {

class ShellItem final : public ComObject<IShellItem> {
 public:
  explicit ShellItem(std::u16string path) : path_(std::move(path)) {}

  HRESULT GetDisplayName(SIGDN kind, LPWSTR* name) override {
    if (!name) return E_POINTER;
    *name = nullptr;
    if (auto failed = PlannedFailure("IShellItem::GetDisplayName", path_.c_str())) return *failed;
    switch (kind) {
      case SIGDN_FILESYSPATH:
      case SIGDN_DESKTOPABSOLUTEPARSING:
        return ReturnTaskText(path_, name);
      case SIGDN_NORMALDISPLAY:
        return ReturnTaskText(PlaceName(path_), name);
      default:
        return E_INVALIDARG;
    }
  }

  const std::u16string& path() const { return path_; }

 private:
  std::u16string path_;
};

}  // namespace

HRESULT MakeShellItem(const std::u16string& path, REFIID iid, void** item) {
  return MakeObject<ShellItem>(iid, item, path);
}

std::u16string PathOfShellItem(IShellItem* item) {
  if (!item) return {};
  // Our own is not asked: what a program plans to fail is its own question.
  if (const auto* mine = dynamic_cast<ShellItem*>(item)) return mine->path();
  LPWSTR text = nullptr;
  if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &text)) || !text) return {};
  std::u16string path = text;
  CoTaskMemFree(text);
  return path;
}

std::u16string PlaceName(const std::u16string& path) {
  FullPath full;
  if (ParsePath(path, u"C:\\", &full) != 0 || full.IsRoot()) return path;
  return std::u16string(full.Name());
}

}  // namespace winhost

using namespace winhost;

HRESULT SHCreateItemFromParsingName(PCWSTR path, IBindCtx*, REFIID iid, void** item) {
  if (!item) return E_POINTER;
  *item = nullptr;
  if (!path) return E_INVALIDARG;
  if (auto failed = PlannedFailure("SHCreateItemFromParsingName", path)) return *failed;
  FileSystem& files = FileSystem::Current();
  FullPath full;
  DWORD attributes = 0;
  // A relative name would be looked for on the desktop, where no items are.
  DWORD error = PathIsRelativeW(path) ? DWORD{ERROR_FILE_NOT_FOUND} : files.Parse(path, &full);
  if (error == 0 && full.kind == FullPath::Kind::Device) error = ERROR_FILE_NOT_FOUND;
  if (error == 0) error = files.Attributes(full, &attributes);
  if (error != 0) return HRESULT_FROM_WIN32(error);
  return MakeShellItem(full.text, iid, item);
}
