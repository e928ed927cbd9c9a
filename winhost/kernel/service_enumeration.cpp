#include <windows.h>

#include <cstring>
#include <vector>

#include "winhost/kernel/service_handles.h"
#include "winhost/kernel/service_table.h"

namespace {

using winhost::FailService;
using winhost::GuardedService;
using winhost::Machine;
using winhost::OpenedWith;
using winhost::ServiceManagerHandle;
using winhost::ServiceRecord;

bool Matches(const ServiceRecord& record, DWORD type, DWORD state) {
  const DWORD activity = record.state == SERVICE_STOPPED ? SERVICE_INACTIVE : SERVICE_ACTIVE;
  return (record.type & type) != 0 && (activity & state) != 0;
}

void FillStatus(ENUM_SERVICE_STATUSW& row, const ServiceRecord& record) { row.ServiceStatus = StatusOf(record); }
void FillStatus(ENUM_SERVICE_STATUS_PROCESSW& row, const ServiceRecord& record) {
  const SERVICE_STATUS status = StatusOf(record);
  row.ServiceStatusProcess = {status.dwServiceType,
                              status.dwCurrentState,
                              status.dwControlsAccepted,
                              NO_ERROR,
                              0,
                              0,
                              0,
                              record.state == SERVICE_STOPPED ? 0U : 800U,
                              0};
}

// Rows from the buffer's start, their texts from its end, as many as fit from `*resume` on.
template <class Row>
BOOL Enumerate(DWORD type, DWORD state, LPBYTE buffer, DWORD bytes, LPDWORD needed, LPDWORD count, LPDWORD resume) {
  if (!needed || !count) return FailService(ERROR_INVALID_PARAMETER);
  if (type == 0 || (state & ~SERVICE_STATE_ALL) != 0 || state == 0) return FailService(ERROR_INVALID_PARAMETER);
  std::vector<ServiceRecord> all = ListServices(Machine::Current());
  std::erase_if(all, [&](const ServiceRecord& record) { return !Matches(record, type, state); });
  std::size_t index = resume ? *resume : 0, room = buffer ? bytes / 2 * 2 : 0;
  *count = 0;
  *needed = 0;
  for (; index < all.size(); ++index) {
    const std::size_t text = (all[index].name.size() + 1) * sizeof(WCHAR);
    if (*needed != 0 || room < sizeof(Row) + 2 * text) {
      *needed += static_cast<DWORD>(sizeof(Row) + 2 * text);
      continue;
    }
    Row row{};
    const auto put = [&] {
      room -= text;
      auto* place = reinterpret_cast<LPWSTR>(buffer + *count * sizeof(Row) + room);
      std::memcpy(place, all[index].name.c_str(), text);
      return place;
    };
    row.lpServiceName = put();
    row.lpDisplayName = put();
    FillStatus(row, all[index]);
    std::memcpy(buffer + *count * sizeof(Row), &row, sizeof row);
    room -= sizeof(Row);
    ++*count;
  }
  const bool complete = *needed == 0;
  if (resume) *resume = complete ? 0 : *resume + *count;
  return complete || FailService(ERROR_MORE_DATA);
}

}  // namespace

BOOL EnumServicesStatusW(SC_HANDLE handle, DWORD type, DWORD state, LPENUM_SERVICE_STATUSW services, DWORD bytes,
                         LPDWORD needed, LPDWORD count, LPDWORD resume) {
  if (!OpenedWith<ServiceManagerHandle>(handle, SC_MANAGER_ENUMERATE_SERVICE, "EnumServicesStatusW")) return FALSE;
  return GuardedService([&] {
    return Enumerate<ENUM_SERVICE_STATUSW>(type, state, reinterpret_cast<LPBYTE>(services), bytes, needed, count,
                                           resume);
  });
}

BOOL EnumServicesStatusExW(SC_HANDLE handle, SC_ENUM_TYPE level, DWORD type, DWORD state, LPBYTE services, DWORD bytes,
                           LPDWORD needed, LPDWORD count, LPDWORD resume, LPCWSTR) {
  if (!OpenedWith<ServiceManagerHandle>(handle, SC_MANAGER_ENUMERATE_SERVICE, "EnumServicesStatusExW")) return FALSE;
  if (level != SC_ENUM_PROCESS_INFO) return FailService(ERROR_INVALID_LEVEL);
  return GuardedService(
      [&] { return Enumerate<ENUM_SERVICE_STATUS_PROCESSW>(type, state, services, bytes, needed, count, resume); });
}
