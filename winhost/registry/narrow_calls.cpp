// The calls in bytes of the ANSI code page, made of the wide ones so that their faults and rules apply.
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "winhost/machine/text.h"

namespace {

bool IsText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

// The stored bytes of a value, read until they hold still.
LSTATUS ReadWhole(HKEY key, const std::u16string& name, DWORD* type, std::vector<BYTE>* data) {
  DWORD size = 0;
  LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, type, nullptr, &size);
  while (status == ERROR_SUCCESS) {
    data->resize(size + 1);  // never empty, so that there is a place to read to
    size = static_cast<DWORD>(data->size());
    status = RegQueryValueExW(key, name.c_str(), nullptr, type, data->data(), &size);
    if (status == ERROR_MORE_DATA)
      status = ERROR_SUCCESS;
    else
      break;
  }
  if (status == ERROR_SUCCESS) data->resize(size);
  return status;
}

std::vector<BYTE> Narrowed(const std::vector<BYTE>& wide) {
  std::u16string text(wide.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), wide.data(), text.size() * sizeof(char16_t));
  const std::string bytes = winhost::Narrow(text);
  return {bytes.begin(), bytes.end()};
}

std::u16string NameOf(LPCSTR value) { return winhost::Wide(value ? value : ""); }

}  // namespace

LSTATUS RegQueryValueExA(HKEY key, LPCSTR value, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD bytes) {
  if (reserved || (data && !bytes)) return ERROR_INVALID_PARAMETER;
  DWORD stored_type = REG_NONE;
  std::vector<BYTE> stored;
  if (const LSTATUS status = ReadWhole(key, NameOf(value), &stored_type, &stored)) return status;
  if (IsText(stored_type)) stored = Narrowed(stored);
  if (type) *type = stored_type;
  if (!bytes) return ERROR_SUCCESS;
  const DWORD room = *bytes;
  *bytes = static_cast<DWORD>(stored.size());
  if (!data) return ERROR_SUCCESS;
  if (room < stored.size()) return ERROR_MORE_DATA;
  if (!stored.empty()) std::memcpy(data, stored.data(), stored.size());
  return ERROR_SUCCESS;
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR value, DWORD reserved, DWORD type, const BYTE* data, DWORD bytes) {
  if (!data && bytes != 0) return ERROR_NOACCESS;
  if (!IsText(type)) return RegSetValueExW(key, NameOf(value).c_str(), reserved, type, data, bytes);
  const std::u16string text = winhost::Wide({reinterpret_cast<const char*>(data), bytes});
  return RegSetValueExW(key, NameOf(value).c_str(), reserved, type, reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>(text.size() * sizeof(char16_t)));
}
