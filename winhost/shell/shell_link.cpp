#include <windows.h>
#include <shobjidl.h>

#include <algorithm>

#include "winhost/com/class_table.h"
#include "winhost/com/object.h"
#include "winhost/shell/link_file.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IShellLinkW> = {&IID_IShellLinkW};
template <>
inline constexpr std::array kIids<IPersistFile> = {&IID_IPersistFile, &IID_IPersist};

namespace {

// The most of a .lnk file that Load looks at; real ones are a few kilobytes.
constexpr DWORD kMostBytes = 1 << 20;

HRESULT LastFailure() {
  const DWORD error = GetLastError();
  return error ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

class OpenFile {
 public:
  OpenFile(LPCWSTR path, DWORD access, DWORD share, DWORD disposition)
      : handle_(CreateFileW(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~OpenFile() {
    if (*this) CloseHandle(handle_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

HRESULT WriteWhole(LPCWSTR path, const std::string& bytes) {
  OpenFile file(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
  if (!file) return LastFailure();
  DWORD written = 0;
  if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) return LastFailure();
  return written == bytes.size() ? S_OK : E_FAIL;
}

HRESULT ReadWhole(LPCWSTR path, std::string* bytes) {
  OpenFile file(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  if (!file) return LastFailure();
  bytes->resize(kMostBytes);
  DWORD read = 0;
  if (!ReadFile(file.get(), bytes->data(), kMostBytes, &read, nullptr)) return LastFailure();
  bytes->resize(read);
  return S_OK;
}

// Cuts to the buffer, as the shell does.
HRESULT CopyOut(const std::u16string& text, LPWSTR out, int capacity) {
  if (!out || capacity <= 0) return E_INVALIDARG;
  const std::size_t count = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
  text.copy(out, count);
  out[count] = 0;
  return S_OK;
}

class ShellLink final : public ComObject<IShellLinkW, IPersistFile> {
 public:
  HRESULT GetPath(LPWSTR path, int capacity, WIN32_FIND_DATAW* found, DWORD) override {
    if (found) *found = WIN32_FIND_DATAW{};
    const HRESULT copied = CopyOut(link_.target, path, capacity);
    return copied == S_OK && link_.target.empty() ? S_FALSE : copied;
  }
  HRESULT SetPath(LPCWSTR path) override {
    if (auto failed = PlannedFailure("IShellLinkW::SetPath", path)) return *failed;
    if (!path || std::u16string_view(path).size() >= MAX_PATH) return E_INVALIDARG;
    dirty_ = true;
    link_.target = path;
    RememberTarget();
    return S_OK;
  }

  HRESULT GetDescription(LPWSTR text, int capacity) override { return CopyOut(link_.description, text, capacity); }
  HRESULT SetDescription(LPCWSTR text) override { return Set("IShellLinkW::SetDescription", text, &link_.description); }
  HRESULT GetWorkingDirectory(LPWSTR folder, int capacity) override {
    return CopyOut(link_.working_directory, folder, capacity);
  }
  HRESULT SetWorkingDirectory(LPCWSTR folder) override {
    return Set("IShellLinkW::SetWorkingDirectory", folder, &link_.working_directory);
  }
  HRESULT GetArguments(LPWSTR text, int capacity) override { return CopyOut(link_.arguments, text, capacity); }
  HRESULT SetArguments(LPCWSTR text) override { return Set("IShellLinkW::SetArguments", text, &link_.arguments); }
  HRESULT SetRelativePath(LPCWSTR path, DWORD) override {
    return Set("IShellLinkW::SetRelativePath", path, &link_.relative_path);
  }

  HRESULT GetHotkey(WORD* key) override {
    if (!key) return E_POINTER;
    *key = link_.hot_key;
    return S_OK;
  }
  HRESULT SetHotkey(WORD key) override {
    if (auto failed = PlannedFailure("IShellLinkW::SetHotkey")) return *failed;
    link_.hot_key = key;
    dirty_ = true;
    return S_OK;
  }
  HRESULT GetShowCmd(int* show) override {
    if (!show) return E_POINTER;
    *show = static_cast<int>(link_.show_command);
    return S_OK;
  }
  HRESULT SetShowCmd(int show) override {
    if (auto failed = PlannedFailure("IShellLinkW::SetShowCmd")) return *failed;
    link_.show_command = static_cast<std::uint32_t>(show);
    dirty_ = true;
    return S_OK;
  }
  HRESULT GetIconLocation(LPWSTR file, int capacity, int* index) override {
    if (!index) return E_POINTER;
    *index = link_.icon_index;
    return CopyOut(link_.icon, file, capacity);
  }
  HRESULT SetIconLocation(LPCWSTR file, int index) override {
    const HRESULT set = Set("IShellLinkW::SetIconLocation", file, &link_.icon);
    if (set == S_OK) link_.icon_index = index;
    return set;
  }

  HRESULT GetClassID(CLSID* class_id) override {
    if (!class_id) return E_POINTER;
    *class_id = CLSID_ShellLink;
    return S_OK;
  }
  HRESULT IsDirty() override { return dirty_ ? S_OK : S_FALSE; }
  HRESULT Load(LPCOLESTR file, DWORD) override {
    if (auto failed = PlannedFailure("IPersistFile::Load", file)) return *failed;
    if (!file) return E_INVALIDARG;
    std::string bytes;
    if (const HRESULT read = ReadWhole(file, &bytes); FAILED(read)) return read;
    auto loaded = ReadLink(bytes);
    if (!loaded) return E_FAIL;
    link_ = std::move(*loaded);
    file_ = file;
    dirty_ = false;
    return S_OK;
  }
  HRESULT Save(LPCOLESTR file, BOOL remember) override {
    if (auto failed = PlannedFailure("IPersistFile::Save", file)) return *failed;
    const std::u16string path = file ? std::u16string(file) : file_;
    if (path.empty()) return E_INVALIDARG;
    if (const HRESULT written = WriteWhole(path.c_str(), WriteLink(link_)); FAILED(written)) return written;
    if (remember) file_ = path;
    dirty_ = false;
    return S_OK;
  }
  HRESULT SaveCompleted(LPCOLESTR) override { return S_OK; }
  HRESULT GetCurFile(LPOLESTR* file) override {
    if (!file) return E_POINTER;
    *file = nullptr;
    return file_.empty() ? S_FALSE : ReturnTaskText(file_, file);
  }

 private:
  HRESULT Set(const char* operation, LPCWSTR text, std::u16string* into) {
    if (auto failed = PlannedFailure(operation, text)) return *failed;
    *into = text ? text : TEXT("");
    dirty_ = true;
    return S_OK;
  }

  void RememberTarget() {
    const DWORD error = GetLastError();
    WIN32_FILE_ATTRIBUTE_DATA target{};
    if (!GetFileAttributesExW(link_.target.c_str(), GetFileExInfoStandard, &target)) target = {};
    link_.attributes = target.dwFileAttributes;
    link_.size = target.nFileSizeLow;
    link_.created = target.ftCreationTime;
    link_.accessed = target.ftLastAccessTime;
    link_.written = target.ftLastWriteTime;
    SetLastError(error);
  }

  LinkFile link_;
  std::u16string file_;
  bool dirty_ = false;
};

}  // namespace

HRESULT MakeShellLink(REFIID iid, void** object) { return MakeObject<ShellLink>(iid, object); }

}  // namespace winhost
