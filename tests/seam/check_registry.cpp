// The registry: types, lengths and errors on which Windows and this side agree.
#include <windows.h>

#include <shlwapi.h>

#include "seam_check.h"

namespace {

static_assert(KEY_READ == 0x20019 && KEY_WRITE == 0x20006 && KEY_ALL_ACCESS == 0xF003F);
static_assert(REG_SZ == 1 && REG_EXPAND_SZ == 2 && REG_DWORD == 4 && REG_QWORD == 11);
static_assert(sizeof(OSVERSIONINFOW) == 276 && sizeof(OSVERSIONINFOEXW) == 284);
static_assert(sizeof(SERVICE_STATUS) == 28 && SERVICE_ALL_ACCESS == 0xF01FF && SC_MANAGER_ALL_ACCESS == 0xF003F);

constexpr const WCHAR* kKey = TEXT("Software\\VantaSeamCheck");

// A key of its own, gone with the check.
class ScratchKey {
 public:
  ScratchKey() { RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, &disposition); }
  ~ScratchKey() {
    RegCloseKey(key);
    SHDeleteKeyW(HKEY_CURRENT_USER, kKey);
  }
  LSTATUS Set(const WCHAR* name, DWORD type, const void* data, DWORD bytes) const {
    return RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes);
  }
  DWORD SizeOf(const WCHAR* name, DWORD* type = nullptr) const {
    DWORD bytes = 0xFFFF;
    return RegQueryValueExW(key, name, nullptr, type, nullptr, &bytes) == ERROR_SUCCESS ? bytes : 0xFFFF;
  }
  HKEY key = nullptr;
  DWORD disposition = 0;
};

bool TypesAndLengthsAreKept() {
  const ScratchKey scratch;
  // Something follows the counted characters: Windows adds a terminator that it finds there.
  const WCHAR text[] = {'a', 'b', 'c', '|', 0};
  const ULONGLONG number = 0x1122334455667788ULL;
  DWORD type = 0;
  return scratch.Set(TEXT("text"), REG_SZ, text, 6) == ERROR_SUCCESS && scratch.SizeOf(TEXT("TEXT"), &type) == 6 &&
         type == REG_SZ && scratch.Set(TEXT("q"), REG_QWORD, &number, 8) == ERROR_SUCCESS &&
         scratch.SizeOf(TEXT("q"), &type) == 8 && type == REG_QWORD &&
         scratch.Set(TEXT("odd"), REG_DWORD, text, 1) == ERROR_SUCCESS && scratch.SizeOf(TEXT("odd")) == 1;
}

bool SmallBuffersTellTheSize() {
  const ScratchKey scratch;
  const BYTE data[10] = {};
  BYTE small[9];
  DWORD bytes = sizeof small;
  scratch.Set(TEXT("x"), REG_BINARY, data, sizeof data);
  return RegQueryValueExW(scratch.key, TEXT("x"), nullptr, nullptr, small, &bytes) == ERROR_MORE_DATA && bytes == 10;
}

bool ErrorsAreTheSystems() {
  const ScratchKey scratch;
  HKEY key = nullptr;
  const bool opened = RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
  const bool refused = RegSetValueExW(key, TEXT("x"), 0, REG_SZ, nullptr, 0) == ERROR_ACCESS_DENIED;
  RegCloseKey(key);
  return opened && refused && RegOpenKeyExW(scratch.key, TEXT("none"), 0, KEY_READ, &key) == ERROR_FILE_NOT_FOUND &&
         RegOpenKeyExW(HKEY_CURRENT_USER, TEXT("\\Software"), 0, KEY_READ, &key) == ERROR_BAD_PATHNAME &&
         RegDeleteValueW(scratch.key, TEXT("none")) == ERROR_FILE_NOT_FOUND;
}

bool KeysAreMadeOnce() {
  const ScratchKey first;
  const ScratchKey second;
  return first.disposition == REG_CREATED_NEW_KEY && second.disposition == REG_OPENED_EXISTING_KEY;
}

bool ShortFormsMakeAndReadKeys() {
  const ScratchKey scratch;
  const DWORD number = 7;
  DWORD read = 0, type = 0, bytes = sizeof read;
  const WCHAR* inner = TEXT("Software\\VantaSeamCheck\\deep\\er");
  return SHSetValueW(HKEY_CURRENT_USER, inner, TEXT("n"), REG_DWORD, &number, sizeof number) == ERROR_SUCCESS &&
         SHGetValueW(HKEY_CURRENT_USER, inner, TEXT("N"), &type, &read, &bytes) == ERROR_SUCCESS && read == 7 &&
         type == REG_DWORD &&
         SHGetValueW(HKEY_CURRENT_USER, inner, TEXT("none"), &type, &read, &bytes) == ERROR_FILE_NOT_FOUND;
}

constexpr SeamCheck kChecks[] = {
    {"registry types and byte lengths are kept", TypesAndLengthsAreKept},
    {"a registry buffer that is too small is told the size", SmallBuffersTellTheSize},
    {"registry errors are the system's", ErrorsAreTheSystems},
    {"a registry key is made once", KeysAreMadeOnce},
    {"SHSetValueW makes keys, SHGetValueW reads them", ShortFormsMakeAndReadKeys},
};

}  // namespace

std::span<const SeamCheck> RegistryChecks() { return kChecks; }
