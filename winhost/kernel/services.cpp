#include <windows.h>

#include "winhost/kernel/service_handles.h"
#include "winhost/kernel/service_table.h"
#include "winhost/machine/text.h"

namespace {

using winhost::FailService;
using winhost::GuardedService;
using winhost::Machine;
using winhost::ServiceFault;
using winhost::ServiceHandle;
using winhost::ServiceManagerHandle;
using winhost::ServiceRecord;

constexpr DWORD kManagerForAll = SC_MANAGER_CONNECT | SC_MANAGER_ENUMERATE_SERVICE | SC_MANAGER_QUERY_LOCK_STATUS |
                                 static_cast<DWORD>(READ_CONTROL) | GENERIC_READ;
constexpr DWORD kServiceForAll = SERVICE_QUERY_CONFIG | SERVICE_QUERY_STATUS | SERVICE_ENUMERATE_DEPENDENTS |
                                 SERVICE_INTERROGATE | SERVICE_USER_DEFINED_CONTROL | static_cast<DWORD>(READ_CONTROL) |
                                 GENERIC_READ;

SC_HANDLE NewHandle(std::shared_ptr<winhost::KernelObject> object) {
  return reinterpret_cast<SC_HANDLE>(winhost::MakeHandle(std::move(object)));
}

DWORD MapGeneric(DWORD access, DWORD read, DWORD all) {
  if (access & GENERIC_READ) access |= read;
  if (access & GENERIC_ALL) access |= all;
  return access & ~(GENERIC_READ | GENERIC_ALL);
}

DWORD CheckAccess(const ServiceRecord& record, DWORD access) {
  // What the administrators lack on such a service is a part of full access that nothing else asks for.
  const bool beyond_theirs = (access & WRITE_OWNER) != 0;
  if (beyond_theirs && record.full_access_error != 0 && !record.security_changed) return record.full_access_error;
  const bool elevated = Machine::Current().facts().elevated;
  return elevated || (access & ~kServiceForAll) == 0 ? DWORD{ERROR_SUCCESS} : DWORD{ERROR_ACCESS_DENIED};
}

}  // namespace

SC_HANDLE OpenSCManagerW(LPCWSTR, LPCWSTR database, DWORD access) {
  if (ServiceFault("OpenSCManagerW")) return nullptr;
  if (database && !winhost::EqualNoCase(database, u"ServicesActive")) {
    SetLastError(winhost::EqualNoCase(database, u"ServicesFailed") ? ERROR_DATABASE_DOES_NOT_EXIST
                                                                   : ERROR_INVALID_NAME);
    return nullptr;
  }
  const DWORD wanted =
      MapGeneric(access, SC_MANAGER_ENUMERATE_SERVICE | SC_MANAGER_QUERY_LOCK_STATUS, SC_MANAGER_ALL_ACCESS);
  if (!Machine::Current().facts().elevated && (wanted & ~kManagerForAll) != 0) {
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
  }
  return NewHandle(std::make_shared<ServiceManagerHandle>(wanted | SC_MANAGER_CONNECT));
}

SC_HANDLE OpenServiceW(SC_HANDLE manager, LPCWSTR name, DWORD access) {
  if (ServiceFault("OpenServiceW", name ? name : u"")) return nullptr;
  if (!winhost::ObjectAs<ServiceManagerHandle>(reinterpret_cast<HANDLE>(manager))) {
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
  }
  SC_HANDLE handle = nullptr;
  GuardedService([&] {
    if (!name || !*name || std::u16string_view(name).find_first_of(u"/\\") != std::u16string_view::npos) {
      return FailService(ERROR_INVALID_NAME);
    }
    const auto record = FindService(Machine::Current(), name);
    if (!record) return FailService(ERROR_SERVICE_DOES_NOT_EXIST);
    const DWORD wanted = MapGeneric(
        access, SERVICE_QUERY_CONFIG | SERVICE_QUERY_STATUS | SERVICE_INTERROGATE | SERVICE_ENUMERATE_DEPENDENTS,
        SERVICE_ALL_ACCESS);
    if (const DWORD error = CheckAccess(*record, wanted)) return FailService(error);
    handle = NewHandle(std::make_shared<ServiceHandle>(record->name, wanted));
    return TRUE;
  });
  return handle;
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  const auto object = winhost::FindObject(reinterpret_cast<HANDLE>(handle));
  const bool ours =
      std::dynamic_pointer_cast<ServiceManagerHandle>(object) || std::dynamic_pointer_cast<ServiceHandle>(object);
  return ours ? CloseHandle(reinterpret_cast<HANDLE>(handle)) : FailService(ERROR_INVALID_HANDLE);
}
