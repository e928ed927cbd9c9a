#include "base/registry.h"

#include "base/unique.h"

#include <shlwapi.h>

namespace vanta {
namespace {

bool Write(HKEY root, const String& key, const String& name, DWORD type, const void* data, size_t size) {
  if (!root || key.empty()) return false;
  return SHSetValueW(root, key.c_str(), name.c_str(), type, data, static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

bool RegWriteString(HKEY root, const String& key, const String& name, StringView text) {
  // The system counts a terminator in when a zero happens to follow the text, whatever size it is told; anything else
  // behind it keeps the stored length at two bytes a character.
  String data(text);
  data += TEXT('.');
  return Write(root, key, name, REG_SZ, data.data(), text.size() * sizeof(WCHAR));
}

bool RegWriteDword(HKEY root, const String& key, const String& name, DWORD number) {
  return Write(root, key, name, REG_DWORD, &number, sizeof number);
}

bool RegWriteQword(HKEY root, const String& key, const String& name, ULONGLONG number) {
  return Write(root, key, name, REG_QWORD, &number, sizeof number);
}

bool RegReadString(HKEY root, const String& key, const String& name, String* text) {
  text->clear();
  if (!root || key.empty()) return false;
  constexpr DWORD kRoom = 1024;
  // Values are stored without their terminator, and not every version adds one: the buffer ends in zeros of its own.
  WCHAR buffer[kRoom / sizeof(WCHAR) + 1] = {};
  DWORD type = REG_NONE;
  DWORD size = kRoom;
  if (SHGetValueW(root, key.c_str(), name.c_str(), &type, buffer, &size) != ERROR_SUCCESS) return false;
  if (type != REG_SZ && type != REG_EXPAND_SZ) return false;
  *text = buffer;
  return true;
}

bool RegKeyExists(HKEY root, const String& key, REGSAM view) {
  UniqueKey opened;
  return RegOpenKeyExW(root, key.c_str(), 0, KEY_READ | view, opened.Put()) == ERROR_SUCCESS;
}

}  // namespace vanta
