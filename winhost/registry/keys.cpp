#include "winhost/registry/keys.h"

#include <cstdio>

#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

struct Root {
  HKEY handle;
  const char16_t* name;
  bool machine_wide;  // changing it needs elevation
};

const Root* FindRoot(HKEY handle) {
  static const Root kRoots[] = {{HKEY_LOCAL_MACHINE, u"HKLM", true},
                                {HKEY_CURRENT_USER, u"HKCU", false},
                                {HKEY_CLASSES_ROOT, u"HKCR", true},
                                {HKEY_USERS, u"HKU", true}};
  for (const Root& root : kRoots) {
    if (root.handle == handle) return &root;
  }
  return nullptr;
}

constexpr REGSAM kMaximumAllowed = 0x02000000;
constexpr REGSAM kReadable = KEY_READ;

constexpr REGSAM MapGeneric(REGSAM access) {
  REGSAM mapped = access & ~static_cast<REGSAM>(GENERIC_READ | GENERIC_WRITE | GENERIC_EXECUTE | GENERIC_ALL);
  if (access & (GENERIC_READ | GENERIC_EXECUTE)) mapped |= KEY_READ;
  if (access & GENERIC_WRITE) mapped |= KEY_WRITE;
  if (access & GENERIC_ALL) mapped |= KEY_ALL_ACCESS;
  return mapped;
}

bool MayChange(const OpenKey& key) { return key.path[0] == u"HKCU" || Machine::Current().facts().elevated; }

}  // namespace

std::shared_ptr<OpenKey> FindKey(HKEY handle) {
  if (const Root* root = FindRoot(handle)) {
    auto key = std::make_shared<OpenKey>();
    key->path = {root->name};
    key->view = DefaultView(Machine::Current().facts());
    key->access = GrantedAccess(*key, kMaximumAllowed);
    return key;
  }
  const DWORD last_error = GetLastError();
  auto key = ObjectAs<OpenKey>(reinterpret_cast<HANDLE>(handle));
  SetLastError(last_error);
  return key;
}

HKEY MakeKeyHandle(OpenKey key) {
  return reinterpret_cast<HKEY>(MakeHandle(std::make_shared<OpenKey>(std::move(key))));
}

LSTATUS ResolveKey(RegistryStore& store, const OpenKey& key, KeyId* id) {
  if (key.id != 0) {
    *id = key.id;
    return store.Exists(key.id) ? ERROR_SUCCESS : ERROR_KEY_DELETED;
  }
  const auto found = store.Find(StoredPath(key.path, key.view, Machine::Current().facts()));
  if (!found) return ERROR_FILE_NOT_FOUND;
  *id = *found;
  return ERROR_SUCCESS;
}

LSTATUS SubKeyPath(const OpenKey& key, LPCWSTR sub_key, REGSAM access, OpenKey* result) {
  if ((access & KEY_WOW64_RES) == KEY_WOW64_RES) return ERROR_INVALID_PARAMETER;
  *result = key;
  result->id = 0;
  if (access & KEY_WOW64_32KEY) result->view = View::Bits32;
  if (access & KEY_WOW64_64KEY) result->view = View::Bits64;
  if (!sub_key) return ERROR_SUCCESS;
  if (sub_key[0] == u'\\') return ERROR_BAD_PATHNAME;
  for (std::u16string& part : SplitKeyPath(sub_key)) result->path.push_back(std::move(part));
  return ERROR_SUCCESS;
}

REGSAM GrantedAccess(const OpenKey& key, REGSAM wanted) {
  const REGSAM mapped = MapGeneric(wanted & ~static_cast<REGSAM>(KEY_WOW64_RES));
  const bool may_change = MayChange(key);
  if (mapped & kMaximumAllowed) return may_change ? KEY_ALL_ACCESS : kReadable;
  if (mapped & ~static_cast<REGSAM>(KEY_ALL_ACCESS)) return 0;
  if (!may_change && (mapped & ~kReadable)) return 0;
  return mapped;
}

std::u16string FaultSubject(const OpenKey& key, LPCWSTR value) {
  std::u16string subject = JoinKeyPath(key.path);
  if (value && *value) subject.append(u"\\").append(value);
  return subject;
}

LSTATUS RegistryCall(const char* function, const std::u16string& subject, Transaction::Kind kind,
                     const std::function<LSTATUS(RegistryStore&)>& work) {
  try {
    if (const auto error = PlannedFault(function, subject)) return static_cast<LSTATUS>(*error);
    auto& store = Machine::Current().Get<RegistryStore>();
    RegistryStore::Session session(store, kind);
    const LSTATUS status = work(store);
    if (kind == Transaction::Kind::Write && status == ERROR_SUCCESS) session.Commit();
    return status;
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  } catch (const std::exception& wrong) {
    std::fprintf(stderr, "registry: %s: %s\n", function, wrong.what());
    return ERROR_REGISTRY_IO_FAILED;
  }
}

}  // namespace winhost
