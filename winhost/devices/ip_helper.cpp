#include <windows.h>

#include <iphlpapi.h>

#include <cstring>

#include "winhost/devices/hardware.h"
#include "winhost/machine/faults.h"

namespace {

template <std::size_t N>
void PutText(char (&room)[N], const std::string& text) {
  text.copy(room, N - 1);  // the rest is zeros already
}

IP_ADAPTER_INFO InfoOf(const winhost::AdapterFacts& adapter, DWORD index) {
  IP_ADAPTER_INFO info = {};
  PutText(info.AdapterName, adapter.id);
  PutText(info.Description, adapter.description);
  info.Index = index;
  info.Type = adapter.type;
  if (adapter.address) {
    info.AddressLength = static_cast<UINT>(adapter.address->size());
    std::memcpy(info.Address, adapter.address->data(), adapter.address->size());
  }
  return info;
}

}  // namespace

ULONG GetAdaptersInfo(PIP_ADAPTER_INFO list, PULONG bytes) {
  if (const auto error = winhost::PlannedFault("GetAdaptersInfo")) return *error;
  if (!bytes) return ERROR_INVALID_PARAMETER;
  std::vector<IP_ADAPTER_INFO> infos;
  for (const winhost::AdapterFacts& adapter : winhost::Hardware::Current().adapters) {
    if (adapter.in_ip_helper) infos.push_back(InfoOf(adapter, static_cast<DWORD>(infos.size() + 1)));
  }
  if (infos.empty()) return ERROR_NO_DATA;
  const ULONG room = *bytes;
  const std::size_t size = infos.size() * sizeof(IP_ADAPTER_INFO);
  *bytes = static_cast<ULONG>(size);
  if (!list || room < size) return ERROR_BUFFER_OVERFLOW;
  for (std::size_t i = 0; i + 1 < infos.size(); ++i) infos[i].Next = list + i + 1;
  std::memcpy(list, infos.data(), size);
  return ERROR_SUCCESS;
}
