#include "report/identity/physical_address.h"

#include "report/identity/adapter_class.h"
#include "report/identity/ip_helper_address.h"
#include "report/identity/lowest_address.h"
#include "report/identity/ndis_queries.h"
#include "report/identity/registry_walk.h"

namespace vanta {
namespace {

constexpr DWORD kMostCards = 100;

// A driver that tells no medium at all is taken at the word of its class entry.
void AddCard(const String& service, const ClassAdapter* known, LowestAddress* lowest) {
  Device adapter = OpenAdapter(service);
  const Medium medium = MediumOf(adapter);
  if (medium == Medium::Other) return;
  const std::string address = PermanentAddress(adapter);
  if (!address.empty()) lowest->Add(address, medium == Medium::Wireless || (known && known->wireless));
}

}  // namespace

std::string PhysicalNetworkAddress() {
  const std::vector<ClassAdapter> adapters = ReadAdapterClass();
  LowestAddress lowest;
  for (const String& service : NetworkCardServices(kMostCards)) {
    const ClassAdapter* known = FindAdapter(adapters, service);
    if (!known || known->physical) AddCard(service, known, &lowest);
  }
  return lowest.Get().empty() ? IpHelperAddress(adapters) : lowest.Get();
}

}  // namespace vanta
