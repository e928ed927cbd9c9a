#include <windows.h>

#include <algorithm>
#include <cstring>

#include "winhost/registry/keys.h"

namespace {

using winhost::FaultSubject;
using winhost::FindKey;
using winhost::KeyId;
using winhost::RegistryCall;
using winhost::RegistryStore;
using winhost::StoredValue;
using Kind = winhost::Transaction::Kind;

constexpr std::size_t kLongestValueName = 16'383;

std::u16string_view NameOf(LPCWSTR value) { return value ? std::u16string_view(value) : std::u16string_view(); }

// The common end of reading: type, and data as far as it is asked for. `*bytes` becomes the value's length either way.
LSTATUS PutValue(const StoredValue& value, LPDWORD type, LPBYTE data, LPDWORD bytes) {
  if (type) *type = value.type;
  if (!bytes) return ERROR_SUCCESS;
  const DWORD room = *bytes;
  *bytes = static_cast<DWORD>(value.data.size());
  if (!data) return ERROR_SUCCESS;
  if (room < value.data.size()) return ERROR_MORE_DATA;
  if (!value.data.empty()) std::memcpy(data, value.data.data(), value.data.size());
  return ERROR_SUCCESS;
}

}  // namespace

LSTATUS RegQueryValueExW(HKEY handle, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD bytes) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (reserved || (data && !bytes)) return ERROR_INVALID_PARAMETER;
  if (!(key->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
  const auto work = [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    const auto value = store.Value(id, NameOf(name));
    return value ? PutValue(*value, type, data, bytes) : ERROR_FILE_NOT_FOUND;
  };
  return RegistryCall("RegQueryValueExW", FaultSubject(*key, name), Kind::Read, work);
}

LSTATUS RegSetValueExW(HKEY handle, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD bytes) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!data && bytes != 0) return ERROR_NOACCESS;
  if (NameOf(name).size() > kLongestValueName) return ERROR_INVALID_PARAMETER;
  if (!(key->access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
  const auto work = [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    store.SetValue(id, NameOf(name), type, std::as_bytes(std::span(data, bytes)));
    return ERROR_SUCCESS;
  };
  return RegistryCall("RegSetValueExW", FaultSubject(*key, name), Kind::Write, work);
}

LSTATUS RegDeleteValueW(HKEY handle, LPCWSTR name) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!(key->access & KEY_SET_VALUE)) return ERROR_ACCESS_DENIED;
  const auto work = [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    return store.DeleteValue(id, NameOf(name)) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
  };
  return RegistryCall("RegDeleteValueW", FaultSubject(*key, name), Kind::Write, work);
}

LSTATUS RegEnumValueW(HKEY handle, DWORD index, LPWSTR name, LPDWORD name_chars, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD bytes) {
  const auto key = FindKey(handle);
  if (!key) return ERROR_INVALID_HANDLE;
  if (!name || !name_chars || reserved || (data && !bytes)) return ERROR_INVALID_PARAMETER;
  if (!(key->access & KEY_QUERY_VALUE)) return ERROR_ACCESS_DENIED;
  const auto work = [&](RegistryStore& store) -> LSTATUS {
    KeyId id;
    if (const LSTATUS status = ResolveKey(store, *key, &id)) return status;
    const std::vector<StoredValue> values = store.Values(id);
    if (index >= values.size()) return ERROR_NO_MORE_ITEMS;
    const StoredValue& value = values[index];
    if (*name_chars < value.name.size() + 1) return ERROR_MORE_DATA;
    std::copy_n(value.name.c_str(), value.name.size() + 1, name);
    *name_chars = static_cast<DWORD>(value.name.size());
    return PutValue(value, type, data, bytes);
  };
  return RegistryCall("RegEnumValueW", FaultSubject(*key), Kind::Read, work);
}
