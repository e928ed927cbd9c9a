// The machine's services: what its facts say, and over it what programs have changed since, kept in
// <machine>/services.json for all processes. A service whose fact says the state "absent" is not there.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include "winhost/machine/machine.h"

namespace winhost {

struct ServiceRecord {
  std::u16string name;  // as the facts spell it
  DWORD type = SERVICE_WIN32_SHARE_PROCESS;
  DWORD state = SERVICE_RUNNING;
  DWORD start_type = SERVICE_AUTO_START;
  std::vector<std::byte> security;  // self-relative descriptor
  bool security_changed = false;
  DWORD full_access_error = 0;
  DWORD start_error = 0;
};

// All services by name, for tools and enumeration.
std::vector<ServiceRecord> ListServices(Machine& machine);
// Names are compared without regard to case.
std::optional<ServiceRecord> FindService(Machine& machine, std::u16string_view name);
// Reads the service, lets `change` alter state, start type or security, and keeps the outcome, alone among all
// processes of the machine. `change` answers an error to keep nothing. ERROR_SERVICE_DOES_NOT_EXIST where there is
// none.
DWORD ChangeService(Machine& machine, std::u16string_view name, const std::function<DWORD(ServiceRecord&)>& change);

SERVICE_STATUS StatusOf(const ServiceRecord& record);

// "running", "auto" … as the facts name them.
const char* ServiceStateName(DWORD state);
const char* StartTypeName(DWORD start_type);

}  // namespace winhost
