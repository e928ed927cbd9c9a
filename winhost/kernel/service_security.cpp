#include <windows.h>

#include <cstring>

#include "winhost/kernel/security_descriptor.h"
#include "winhost/kernel/service_handles.h"
#include "winhost/kernel/service_table.h"

namespace {

using winhost::FailService;
using winhost::GuardedService;
using winhost::Machine;
using winhost::OpenedWith;
using winhost::ServiceHandle;
using winhost::ServiceRecord;
using winhost::ServiceResult;

}  // namespace

BOOL QueryServiceObjectSecurity(SC_HANDLE handle, SECURITY_INFORMATION, PSECURITY_DESCRIPTOR descriptor, DWORD bytes,
                                LPDWORD needed) {
  const auto service = OpenedWith<ServiceHandle>(handle, READ_CONTROL, "QueryServiceObjectSecurity");
  if (!service) return FALSE;
  if (!needed) return FailService(ERROR_NOACCESS);
  return GuardedService([&] {
    const auto record = FindService(Machine::Current(), service->name);
    if (!record) return FailService(ERROR_SERVICE_DOES_NOT_EXIST);
    *needed = static_cast<DWORD>(record->security.size());
    if (!descriptor || bytes < *needed) return FailService(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(descriptor, record->security.data(), record->security.size());
    return TRUE;
  });
}

BOOL SetServiceObjectSecurity(SC_HANDLE handle, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR descriptor) {
  const DWORD rights =
      (parts & DACL_SECURITY_INFORMATION ? static_cast<DWORD>(WRITE_DAC) : 0) |
      (parts & (OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION) ? static_cast<DWORD>(WRITE_OWNER) : 0);
  const auto service = OpenedWith<ServiceHandle>(handle, rights, "SetServiceObjectSecurity");
  if (!service) return FALSE;
  const auto length = winhost::DescriptorLength(descriptor);
  if (!length || rights == 0) return FailService(length ? ERROR_INVALID_PARAMETER : ERROR_INVALID_SECURITY_DESCR);
  return GuardedService([&] {
    return ServiceResult(ChangeService(Machine::Current(), service->name, [&](ServiceRecord& record) -> DWORD {
      const auto* bytes = static_cast<const std::byte*>(descriptor);
      record.security.assign(bytes, bytes + *length);
      return ERROR_SUCCESS;
    }));
  });
}
