#include "winhost/devices/hardware.h"

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "winhost/devices/adapter_facts.h"
#include "winhost/devices/disk_facts.h"
#include "winhost/devices/fact_fields.h"

namespace winhost {
namespace {

using Json = nlohmann::json;

const Json* Named(const Facts& facts, const char* key) {
  if (!facts.raw) return nullptr;
  const auto found = facts.raw->find(key);
  return found == facts.raw->end() ? nullptr : &*found;
}

const Json& ListOf(const Json& fact, const char* key) {
  if (!fact.is_array()) throw std::runtime_error(std::string(key) + " must be a list");
  return fact;
}

std::optional<ProcessorFacts> ReadProcessorFacts(const Json* fact) {
  ProcessorFacts processor{"GenuineIntel", 22,         0x000906ea,
                           0xbfebfbff,     0x80000008, "Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz"};
  if (!fact) return processor;
  if (fact->is_null()) return std::nullopt;
  FactFields(*fact, "cpuid")
      .Read("vendor", processor.vendor)
      .ReadHex("highest", processor.highest)
      .ReadHex("signature", processor.signature)
      .ReadHex("features", processor.features)
      .ReadHex("highest_extended", processor.highest_extended)
      .Read("brand", processor.brand)
      .NothingElse();
  return processor;
}

NetbiosFacts ReadNetbiosFacts(const Json& fact) {
  NetbiosFacts adapter;
  FactFields(fact, "netbios")
      .Read("lana", adapter.lana)
      .With("address", [&](const Json& text) { adapter.address = ParseMac(text.get<std::string>()); })
      .Read("reset", adapter.reset)
      .Read("status", adapter.status)
      .NothingElse();
  return adapter;
}

// Without a fact NetBIOS runs over the adapters that the IP helper knows.
std::vector<NetbiosFacts> NetbiosOver(const std::vector<AdapterFacts>& adapters) {
  std::vector<NetbiosFacts> list;
  for (const AdapterFacts& adapter : adapters) {
    if (!adapter.in_ip_helper || !adapter.address) continue;
    list.push_back({static_cast<BYTE>(list.size()), *adapter.address, 0, 0});
  }
  return list;
}

struct CurrentHardware {
  explicit CurrentHardware(Machine& machine) : hardware(Read(machine)) {}
  static Hardware Read(Machine& machine) {
    try {
      return Hardware(machine.facts());
    } catch (const std::exception& wrong) {
      std::fprintf(stderr, "machine: %s/machine.json: %s\n", machine.folder().c_str(), wrong.what());
      std::exit(3);
    }
  }
  const Hardware hardware;
};

}  // namespace

Hardware::Hardware(const Facts& facts) {
  if (const Json* fact = Named(facts, "disks")) {
    for (const Json& disk : ListOf(*fact, "disks")) {
      disks.push_back(disk.is_null() ? std::nullopt : std::optional(ReadDiskFacts(disk, facts)));
    }
  } else {
    disks.push_back(ReadDiskFacts(Json::object(), facts));
  }
  const Json* fact = Named(facts, "adapters");
  const Json plain = Json::array({Json::object()});
  for (const Json& adapter : fact ? ListOf(*fact, "adapters") : plain) {
    adapters.push_back(ReadAdapterFacts(adapter, adapters.size()));
  }
  if (const Json* list = Named(facts, "netbios")) {
    for (const Json& adapter : ListOf(*list, "netbios")) netbios.push_back(ReadNetbiosFacts(adapter));
  } else {
    netbios = NetbiosOver(adapters);
  }
  processor = ReadProcessorFacts(Named(facts, "cpuid"));
}

const Hardware& Hardware::Current() { return Machine::Current().Get<CurrentHardware>().hardware; }

}  // namespace winhost
