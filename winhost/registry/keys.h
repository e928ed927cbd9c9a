// Open registry keys: what an HKEY stands for, and the rules of access that every call begins with.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "winhost/kernel/object.h"
#include "winhost/registry/store.h"
#include "winhost/registry/views.h"

namespace winhost {

struct OpenKey final : KernelObject {
  KeyPath path;  // logical, root first
  View view = View::Bits64;
  REGSAM access = 0;
  // The stored key; 0 for a predefined root, which is looked up at each use.
  KeyId id = 0;
};

// The key behind a handle, predefined ones included; null: ERROR_INVALID_HANDLE. Leaves the last error alone.
std::shared_ptr<OpenKey> FindKey(HKEY handle);
HKEY MakeKeyHandle(OpenKey key);

// The stored key of an open one. ERROR_KEY_DELETED when it is gone.
LSTATUS ResolveKey(RegistryStore& store, const OpenKey& key, KeyId* id);

// `key` with the components of `sub_key` added and the view that `access` asks for (else `key`'s own).
LSTATUS SubKeyPath(const OpenKey& key, LPCWSTR sub_key, REGSAM access, OpenKey* result);

// What `wanted` amounts to under this root for this process; 0: refused.
REGSAM GrantedAccess(const OpenKey& key, REGSAM wanted);

// "HKLM\Software\Vendor" or "HKLM\Software\Vendor\Value", as the fault plan names it.
std::u16string FaultSubject(const OpenKey& key, LPCWSTR value = nullptr);

// Runs one registry call: a planned fault first, then `work` on the store; a database that cannot be read or written is
// ERROR_REGISTRY_IO_FAILED. Nothing is thrown past it.
LSTATUS RegistryCall(const char* function, const std::u16string& subject, Transaction::Kind kind,
                     const std::function<LSTATUS(RegistryStore&)>& work);

}  // namespace winhost
