#include <windows.h>

#include <algorithm>

#include "winhost/machine/faults.h"
#include "winhost/registry/keys.h"

namespace {

using winhost::FaultSubject;
using winhost::FindKey;
using winhost::KeyId;
using winhost::Machine;
using winhost::OpenKey;
using winhost::RegistryCall;
using winhost::RegistryStore;
using Kind = winhost::Transaction::Kind;

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kDeepestKey = 512;

winhost::KeyPath Stored(const OpenKey& key) { return StoredPath(key.path, key.view, Machine::Current().facts()); }

// A handle on a key that is gone leads nowhere, whatever is made under its path afterwards.
LSTATUS CheckAlive(RegistryStore& store, const OpenKey& key) {
  KeyId ignored;
  return key.id == 0 ? ERROR_SUCCESS : ResolveKey(store, key, &ignored);
}

bool ValidNames(const winhost::KeyPath& path) {
  return path.size() <= kDeepestKey &&
         std::all_of(path.begin(), path.end(), [](const auto& name) { return name.size() <= kLongestKeyName; });
}

// Copies a name with its terminator; `*chars` counts the terminator in and not out.
LSTATUS PutName(const std::u16string& name, LPWSTR buffer, LPDWORD chars) {
  if (*chars < name.size() + 1) return ERROR_MORE_DATA;
  std::copy_n(name.c_str(), name.size() + 1, buffer);
  *chars = static_cast<DWORD>(name.size());
  return ERROR_SUCCESS;
}

FILETIME ToFileTime(std::uint64_t time) { return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)}; }

LSTATUS DeleteSubKey(const char* function, HKEY handle, LPCWSTR sub_key, REGSAM view) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!sub_key) return ERROR_INVALID_PARAMETER;
  OpenKey doomed;
  if (const LSTATUS status = SubKeyPath(*key, sub_key, view, &doomed)) return status;
  return RegistryCall(function, FaultSubject(doomed), Kind::Write, [&](RegistryStore& store) -> LSTATUS {
    if (const LSTATUS status = CheckAlive(store, *key)) return status;
    const auto id = store.Find(Stored(doomed));
    if (!id) return ERROR_FILE_NOT_FOUND;
    if (!GrantedAccess(doomed, DELETE) || doomed.path.size() == 1) return ERROR_ACCESS_DENIED;
    if (!store.SubKeys(*id).empty()) return ERROR_ACCESS_DENIED;
    store.Delete(*id);
    return ERROR_SUCCESS;
  });
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY handle, LPCWSTR sub_key, DWORD, REGSAM access, PHKEY result) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!result) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  OpenKey opened;
  if (const LSTATUS status = SubKeyPath(*key, sub_key, access, &opened)) return status;
  return RegistryCall("RegOpenKeyExW", FaultSubject(opened), Kind::Read, [&](RegistryStore& store) -> LSTATUS {
    if (const LSTATUS status = CheckAlive(store, *key)) return status;
    const auto id = store.Find(Stored(opened));
    if (!id) return ERROR_FILE_NOT_FOUND;
    opened.id = *id;
    opened.access = GrantedAccess(opened, access);
    if (opened.access == 0) return ERROR_ACCESS_DENIED;
    *result = MakeKeyHandle(opened);
    return ERROR_SUCCESS;
  });
}

LSTATUS RegCreateKeyExW(HKEY handle, LPCWSTR sub_key, DWORD reserved, LPWSTR, DWORD, REGSAM access,
                        const LPSECURITY_ATTRIBUTES, PHKEY result, LPDWORD disposition) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!result || !sub_key || reserved != 0) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  OpenKey opened;
  if (const LSTATUS status = SubKeyPath(*key, sub_key, access, &opened)) return status;
  if (!ValidNames(opened.path)) return ERROR_INVALID_PARAMETER;
  return RegistryCall("RegCreateKeyExW", FaultSubject(opened), Kind::Write, [&](RegistryStore& store) -> LSTATUS {
    if (const LSTATUS status = CheckAlive(store, *key)) return status;
    // Making keys is checked against the root's rights, whatever the handle was opened for.
    const bool exists = store.Find(Stored(opened)).has_value();
    opened.access = GrantedAccess(opened, access);
    if (opened.access == 0 || (!exists && !GrantedAccess(opened, KEY_CREATE_SUB_KEY))) return ERROR_ACCESS_DENIED;
    opened.id = store.Make(Stored(opened)).key;
    if (disposition) *disposition = exists ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    *result = MakeKeyHandle(opened);
    return ERROR_SUCCESS;
  });
}

LSTATUS RegCloseKey(HKEY handle) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (key->id != 0) CloseHandle(reinterpret_cast<HANDLE>(handle));
  return ERROR_SUCCESS;
}

LSTATUS RegFlushKey(HKEY handle) { return FindKey(handle) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE; }

LSTATUS RegDeleteKeyW(HKEY handle, LPCWSTR sub_key) { return DeleteSubKey("RegDeleteKeyW", handle, sub_key, 0); }

LSTATUS RegDeleteKeyExW(HKEY handle, LPCWSTR sub_key, REGSAM view, DWORD) {
  return DeleteSubKey("RegDeleteKeyExW", handle, sub_key, view);
}

LSTATUS RegEnumKeyExW(HKEY handle, DWORD index, LPWSTR name, LPDWORD name_chars, LPDWORD reserved, LPWSTR class_name,
                      LPDWORD class_chars, PFILETIME last_write) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!name || !name_chars || reserved || (class_name && !class_chars)) return ERROR_INVALID_PARAMETER;
  if (!(key->access & KEY_ENUMERATE_SUB_KEYS)) return ERROR_ACCESS_DENIED;
  return RegistryCall("RegEnumKeyExW", FaultSubject(*key), Kind::Read, [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    const std::vector<std::u16string> names = store.SubKeys(id);
    if (index >= names.size()) return ERROR_NO_MORE_ITEMS;
    if (class_name && *class_chars > 0) class_name[0] = 0;
    if (class_chars) *class_chars = 0;
    OpenKey child = *key;
    child.path.push_back(names[index]);
    const auto child_id = store.Find(Stored(child));
    if (last_write) *last_write = ToFileTime(child_id ? store.LastWrite(*child_id) : 0);
    return PutName(names[index], name, name_chars);
  });
}

LSTATUS RegQueryInfoKeyW(HKEY handle, LPWSTR class_name, LPDWORD class_chars, LPDWORD reserved, LPDWORD sub_keys,
                         LPDWORD longest_sub_key, LPDWORD longest_class, LPDWORD values, LPDWORD longest_value,
                         LPDWORD most_bytes, LPDWORD security_bytes, PFILETIME last_write) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (reserved || (class_name && !class_chars)) return ERROR_INVALID_PARAMETER;
  if (!(key->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
  return RegistryCall("RegQueryInfoKeyW", FaultSubject(*key), Kind::Read, [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    DWORD key_chars = 0, value_chars = 0, bytes = 0;
    const auto names = store.SubKeys(id);
    for (const auto& name : names) key_chars = std::max(key_chars, static_cast<DWORD>(name.size()));
    const auto stored = store.Values(id);
    for (const auto& value : stored) {
      value_chars = std::max(value_chars, static_cast<DWORD>(value.name.size()));
      bytes = std::max(bytes, static_cast<DWORD>(value.data.size()));
    }
    const auto put = [](LPDWORD into, std::size_t number) {
      if (into) *into = static_cast<DWORD>(number);
    };
    if (class_name && *class_chars > 0) class_name[0] = 0;
    put(class_chars, 0);
    put(sub_keys, names.size());
    put(longest_sub_key, key_chars);
    put(longest_class, 0);
    put(values, stored.size());
    put(longest_value, value_chars);
    put(most_bytes, bytes);
    put(security_bytes, 0);
    if (last_write) *last_write = ToFileTime(store.LastWrite(id));
    return ERROR_SUCCESS;
  });
}
