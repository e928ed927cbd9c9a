#include "report/identity/identity_key.h"

#include "base/unique.h"

namespace vanta {
namespace {

constexpr WCHAR kKey[] = TEXT("Software\\Bastion\\Freshen");
constexpr DWORD kWideRoom = 1024;

UniqueKey OpenForReading(REGSAM view) {
  UniqueKey key;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_QUERY_VALUE | view, key.Put()) != ERROR_SUCCESS) key.Reset();
  return key;
}

UniqueKey OpenForWriting(REGSAM view) {
  UniqueKey key;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE | view, nullptr,
                      key.Put(), nullptr) != ERROR_SUCCESS) {
    key.Reset();
  }
  return key;
}

bool IsText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

}  // namespace

bool ReadSharedNarrow(const char* name, size_t room, std::string* text) {
  text->clear();
  const UniqueKey key = OpenForReading(0);
  if (!key) return false;
  std::string buffer(room, '\0');
  DWORD type = REG_NONE;
  DWORD size = static_cast<DWORD>(room);
  auto* const bytes = reinterpret_cast<BYTE*>(buffer.data());
  if (RegQueryValueExA(key.Get(), name, nullptr, &type, bytes, &size) != ERROR_SUCCESS || !IsText(type)) return false;
  *text = buffer.c_str();  // what lies behind the value is zeros
  return true;
}

void WriteSharedNarrow(const char* name, const std::string& text) {
  const UniqueKey key = OpenForWriting(0);
  if (!key) return;
  RegSetValueExA(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                 static_cast<DWORD>(text.size() + 1));
}

String ReadShared64(const WCHAR* name) {
  const UniqueKey key = OpenForReading(KEY_WOW64_64KEY);
  if (!key) return {};
  WCHAR buffer[kWideRoom / sizeof(WCHAR) + 1] = {};
  DWORD type = REG_NONE;
  DWORD size = kWideRoom;
  auto* const bytes = reinterpret_cast<BYTE*>(buffer);
  if (RegQueryValueExW(key.Get(), name, nullptr, &type, bytes, &size) != ERROR_SUCCESS || !IsText(type)) return {};
  return buffer;
}

void WriteShared64(const WCHAR* name, const String& text) {
  const UniqueKey key = OpenForWriting(KEY_WOW64_64KEY);
  if (!key) return;
  RegSetValueExW(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                 static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR)));
}

}  // namespace vanta
