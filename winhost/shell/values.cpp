// The registry's short forms, made of the Reg… calls so that their faults and rules apply.
#include <shlwapi.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "winhost/machine/faults.h"
#include "winhost/registry/keys.h"

namespace {

using Bytes = std::vector<BYTE>;

bool IsText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

LSTATUS Planned(const char* function, HKEY handle, LPCWSTR sub_key, LPCWSTR value) {
  const auto key = winhost::FindKey(handle);
  winhost::OpenKey named;
  if (!key || SubKeyPath(*key, sub_key, 0, &named) != ERROR_SUCCESS)
    return ERROR_SUCCESS;  // the call itself will say so
  return static_cast<LSTATUS>(winhost::PlannedFault(function, FaultSubject(named, value)).value_or(ERROR_SUCCESS));
}

// The calls below may run out of memory; nothing else is thrown.
LSTATUS Guarded(const std::function<LSTATUS()>& work) {
  try {
    return work();
  } catch (const std::exception&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  }
}

class KeyOwner {
 public:
  ~KeyOwner() {
    if (key) RegCloseKey(key);
  }
  HKEY key = nullptr;
};

// The whole value, whatever its size, also when another process changes it between the two calls.
LSTATUS ReadWhole(HKEY key, LPCWSTR name, DWORD* type, Bytes* data) {
  DWORD size = 0;
  LSTATUS status = RegQueryValueExW(key, name, nullptr, type, nullptr, &size);
  while (status == ERROR_SUCCESS) {
    data->resize(size + 1);  // never a null pointer, which would only ask for the size
    status = RegQueryValueExW(key, name, nullptr, type, data->data(), &size);
    data->resize(size);
    if (status != ERROR_MORE_DATA) break;
    status = ERROR_SUCCESS;
  }
  return status;
}

// Text always reaches the caller with its terminator (a list with two), however it was stored.
void Terminate(DWORD type, Bytes* data) {
  if (data->size() % 2 != 0) data->push_back(0);
  const std::size_t wanted = type == REG_MULTI_SZ ? 4 : 2;
  std::size_t zeros = 0;
  while (zeros < std::min(wanted, data->size()) && (*data)[data->size() - 1 - zeros] == 0) ++zeros;
  data->insert(data->end(), wanted - zeros / 2 * 2, 0);
}

void Expand(Bytes* data) {
  std::u16string text(data->size() / 2, u'\0'), expanded;
  std::memcpy(text.data(), data->data(), text.size() * 2);
  DWORD chars = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
  while (chars > expanded.size()) {
    expanded.resize(chars);
    chars = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), chars);
  }
  data->resize(chars * sizeof(WCHAR));
  std::memcpy(data->data(), expanded.data(), data->size());
}

}  // namespace

DWORD SHQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, void* data, DWORD* bytes) {
  if (reserved || (data && !bytes)) return ERROR_INVALID_PARAMETER;
  const auto work = [&]() -> LSTATUS {
    DWORD stored_type = REG_NONE;
    Bytes value;
    if (const LSTATUS status = ReadWhole(key, name, &stored_type, &value)) return status;
    if (IsText(stored_type)) Terminate(stored_type, &value);
    if (stored_type == REG_EXPAND_SZ) {
      Expand(&value);
      stored_type = REG_SZ;
    }
    const DWORD room = bytes ? *bytes : 0;
    if (type) *type = stored_type;
    if (bytes) *bytes = static_cast<DWORD>(value.size());
    if (!data) return ERROR_SUCCESS;
    if (room < value.size()) return ERROR_MORE_DATA;
    if (!value.empty()) std::memcpy(data, value.data(), value.size());
    return ERROR_SUCCESS;
  };
  return static_cast<DWORD>(Guarded(work));
}

DWORD SHGetValueW(HKEY handle, LPCWSTR sub_key, LPCWSTR value, DWORD* type, void* data, DWORD* bytes) {
  const auto work = [&]() -> LSTATUS {
    if (const LSTATUS error = Planned("SHGetValueW", handle, sub_key, value)) return error;
    KeyOwner opened;
    const LSTATUS status = RegOpenKeyExW(handle, sub_key, 0, KEY_QUERY_VALUE, &opened.key);
    if (status != ERROR_SUCCESS) return status;
    return static_cast<LSTATUS>(SHQueryValueExW(opened.key, value, nullptr, type, data, bytes));
  };
  return static_cast<DWORD>(Guarded(work));
}

DWORD SHSetValueW(HKEY handle, LPCWSTR sub_key, LPCWSTR value, DWORD type, LPCVOID data, DWORD bytes) {
  const auto work = [&]() -> LSTATUS {
    if (const LSTATUS error = Planned("SHSetValueW", handle, sub_key, value)) return error;
    const BYTE* raw = static_cast<const BYTE*>(data);
    if (!sub_key || !*sub_key) return RegSetValueExW(handle, value, 0, type, raw, bytes);
    KeyOwner made;
    const LSTATUS status = RegCreateKeyExW(handle, sub_key, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr,
                                           &made.key, nullptr);
    if (status != ERROR_SUCCESS) return status;
    return RegSetValueExW(made.key, value, 0, type, raw, bytes);
  };
  return static_cast<DWORD>(Guarded(work));
}

DWORD SHDeleteValueW(HKEY handle, LPCWSTR sub_key, LPCWSTR value) {
  const auto work = [&]() -> LSTATUS {
    if (const LSTATUS error = Planned("SHDeleteValueW", handle, sub_key, value)) return error;
    KeyOwner opened;
    const LSTATUS status = RegOpenKeyExW(handle, sub_key, 0, KEY_SET_VALUE, &opened.key);
    return status != ERROR_SUCCESS ? status : RegDeleteValueW(opened.key, value);
  };
  return static_cast<DWORD>(Guarded(work));
}

DWORD SHDeleteKeyW(HKEY handle, LPCWSTR sub_key) {
  const auto work = [&]() -> LSTATUS {
    if (const LSTATUS error = Planned("SHDeleteKeyW", handle, sub_key, nullptr)) return error;
    {
      KeyOwner opened;
      const LSTATUS status = RegOpenKeyExW(handle, sub_key, 0, KEY_READ, &opened.key);
      if (status != ERROR_SUCCESS) return status;
      WCHAR name[256];
      DWORD chars = 256;
      while (RegEnumKeyExW(opened.key, 0, name, &chars, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        if (const DWORD error = SHDeleteKeyW(opened.key, name)) return static_cast<LSTATUS>(error);
        chars = 256;
      }
    }
    return RegDeleteKeyW(handle, sub_key);
  };
  return static_cast<DWORD>(Guarded(work));
}
