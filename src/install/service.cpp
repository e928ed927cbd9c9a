#include "install/service.h"

#include "base/unique.h"

namespace vanta {
namespace {

struct Access {
  DWORD manager;
  DWORD service;
};

// Services of the system often refuse full access even to administrators. Rather than change who may do what, ask for
// no more than is needed, and at last without the right to set the start type.
constexpr Access kAccesses[] = {
    {SC_MANAGER_ALL_ACCESS, SERVICE_ALL_ACCESS},
    {SC_MANAGER_CONNECT, SERVICE_QUERY_STATUS | SERVICE_CHANGE_CONFIG | SERVICE_START},
    {SC_MANAGER_CONNECT, SERVICE_QUERY_STATUS | SERVICE_START},
};

UniqueService Open(const String& name) {
  for (const Access& access : kAccesses) {
    const UniqueService manager(OpenSCManagerW(nullptr, nullptr, access.manager));
    if (!manager) continue;
    UniqueService service(OpenServiceW(manager.Get(), name.c_str(), access.service));
    if (service) return service;
  }
  return {};
}

}  // namespace

bool EnsureServiceRunning(const String& name) {
  const UniqueService service = Open(name);
  SERVICE_STATUS status = {};
  if (!service || !QueryServiceStatus(service.Get(), &status)) return false;
  if (status.dwCurrentState != SERVICE_STOPPED) return true;
  ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, SERVICE_AUTO_START, SERVICE_NO_CHANGE, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr, nullptr);
  return StartServiceW(service.Get(), 0, nullptr);
}

}  // namespace vanta
