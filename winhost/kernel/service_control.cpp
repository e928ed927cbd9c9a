#include <windows.h>

#include <cstring>

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

BOOL QueryServiceStatus(SC_HANDLE handle, LPSERVICE_STATUS status) {
  const auto service = OpenedWith<ServiceHandle>(handle, SERVICE_QUERY_STATUS, "QueryServiceStatus");
  if (!service) return FALSE;
  if (!status) return FailService(ERROR_NOACCESS);
  return GuardedService([&] {
    const auto record = FindService(Machine::Current(), service->name);
    if (!record) return FailService(ERROR_SERVICE_DOES_NOT_EXIST);
    *status = StatusOf(*record);
    return TRUE;
  });
}

BOOL QueryServiceConfigW(SC_HANDLE handle, LPQUERY_SERVICE_CONFIGW config, DWORD bytes, LPDWORD needed) {
  const auto service = OpenedWith<ServiceHandle>(handle, SERVICE_QUERY_CONFIG, "QueryServiceConfigW");
  if (!service) return FALSE;
  if (!needed) return FailService(ERROR_NOACCESS);
  return GuardedService([&] {
    const auto record = FindService(Machine::Current(), service->name);
    if (!record) return FailService(ERROR_SERVICE_DOES_NOT_EXIST);
    const std::size_t name_bytes = (service->name.size() + 1) * sizeof(WCHAR);
    *needed = static_cast<DWORD>(sizeof(QUERY_SERVICE_CONFIGW) + name_bytes + sizeof(WCHAR));
    if (!config || bytes < *needed) return FailService(ERROR_INSUFFICIENT_BUFFER);
    auto* name = reinterpret_cast<LPWSTR>(config + 1);
    std::memcpy(name, service->name.c_str(), name_bytes);
    const LPWSTR nothing = name + service->name.size() + 1;
    *nothing = 0;
    *config = {record->type, record->start_type, 1, nothing, nothing, 0, nothing, nothing, name};
    return TRUE;
  });
}

BOOL ChangeServiceConfigW(SC_HANDLE handle, DWORD, DWORD start_type, DWORD, LPCWSTR, LPCWSTR, LPDWORD, LPCWSTR, LPCWSTR,
                          LPCWSTR, LPCWSTR) {
  const auto service = OpenedWith<ServiceHandle>(handle, SERVICE_CHANGE_CONFIG, "ChangeServiceConfigW");
  if (!service) return FALSE;
  if (start_type == SERVICE_NO_CHANGE) return TRUE;
  if (start_type > SERVICE_DISABLED) return FailService(ERROR_INVALID_PARAMETER);
  return GuardedService([&] {
    return ServiceResult(ChangeService(Machine::Current(), service->name, [&](ServiceRecord& record) -> DWORD {
      record.start_type = start_type;
      return ERROR_SUCCESS;
    }));
  });
}

BOOL StartServiceW(SC_HANDLE handle, DWORD, LPCWSTR*) {
  const auto service = OpenedWith<ServiceHandle>(handle, SERVICE_START, "StartServiceW");
  if (!service) return FALSE;
  return GuardedService([&] {
    return ServiceResult(ChangeService(Machine::Current(), service->name, [&](ServiceRecord& record) -> DWORD {
      if (record.state != SERVICE_STOPPED) return ERROR_SERVICE_ALREADY_RUNNING;
      if (record.start_type == SERVICE_DISABLED) return ERROR_SERVICE_DISABLED;
      if (record.start_error != 0) return record.start_error;
      record.state = SERVICE_RUNNING;
      return ERROR_SUCCESS;
    }));
  });
}
