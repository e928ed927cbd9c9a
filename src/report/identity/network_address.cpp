#include "report/identity/network_address.h"

#include "report/identity/ndis_queries.h"
#include "report/identity/netbios_address.h"
#include "report/identity/registry_walk.h"

namespace vanta {
namespace {

constexpr DWORD kAll = 0xFFFFFFFF;

}  // namespace

std::string LowestNetworkAddress() {
  std::string lowest;
  for (const String& service : NetworkCardServices(kAll)) {
    Device adapter = OpenAdapter(service);
    std::string address = PermanentAddress(adapter);
    if (!address.empty() && (lowest.empty() || address < lowest)) lowest = std::move(address);
  }
  return lowest.empty() ? NetbiosAddress() : lowest;
}

}  // namespace vanta
