#include "winhost/devices/adapter_facts.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "winhost/devices/fact_fields.h"

namespace winhost {
namespace {

using Json = nlohmann::json;
constexpr const char* kRequests[] = {"physical_medium", "media_in_use", "address"};

struct KindRow {
  const char* name;
  const char* description;
  const char* bus_type;     // null: none
  const char* lower_range;  // null: none
  DWORD type;
  DWORD medium;
};
constexpr KindRow kKinds[] = {
    {"wired", "Gigabit Network Connection", "5", "ethernet", 6, 14},
    {"wireless", "Dual Band Wireless AC", "5", "wlan,ethernet,vwifi", 71, 9},
    {"virtual", "Virtual Private Network Adapter", nullptr, "ethernet", 6, 0},
    {"hyper-v", "Microsoft Hyper-V Network Adapter", "0", "ethernet", 6, 14},
};

const KindRow& KindOf(const Json& fact) {
  const std::string name = fact.is_object() ? fact.value("kind", "wired") : "wired";
  const auto found = std::ranges::find_if(kKinds, [&](const KindRow& row) { return name == row.name; });
  if (found == std::end(kKinds)) throw std::runtime_error("adapters.kind: wired, wireless, virtual or hyper-v");
  return *found;
}

std::optional<std::string> TextOrNone(const char* text) {
  return text ? std::optional<std::string>(text) : std::nullopt;
}

AdapterFacts Plain(const KindRow& kind, std::size_t index) {
  AdapterFacts adapter;
  char id[40];
  std::snprintf(id, sizeof id, "{6B6E1D3A-5B1C-4E0F-9A00-%012zX}", index + 1);
  adapter.id = id;
  adapter.description = kind.description;
  adapter.address = MacAddress{0x02, 0x56, 0x50, 0x00, 0x00, static_cast<BYTE>(index + 1)};
  adapter.bus_type = TextOrNone(kind.bus_type);
  adapter.lower_range = TextOrNone(kind.lower_range);
  adapter.type = kind.type;
  adapter.medium = kind.medium;
  adapter.media_in_use = 0;
  return adapter;
}

}  // namespace

MacAddress ParseMac(const std::string& text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return c != ':' && c != '-'; });
  const Bytes bytes = BytesOfHex("address", digits);
  MacAddress address;
  if (bytes.size() != address.size()) throw std::runtime_error("address: six bytes");
  std::ranges::copy(bytes, address.begin());
  return address;
}

AdapterFacts ReadAdapterFacts(const Json& fact, std::size_t index) {
  std::string kind;
  AdapterFacts adapter = Plain(KindOf(fact), index);
  FactFields(fact, "adapters")
      .Read("kind", kind)
      .Read("id", adapter.id)
      .Read("description", adapter.description)
      .With("address",
            [&](const Json& text) {
              adapter.address = text.is_null() ? std::nullopt : std::optional(ParseMac(text.get<std::string>()));
            })
      .Read("bus_type", adapter.bus_type)
      .Read("lower_range", adapter.lower_range)
      .Read("type", adapter.type)
      .Read("medium", adapter.medium)
      .Read("media_in_use", adapter.media_in_use)
      .Read("class", adapter.in_class)
      .Read("card", adapter.is_card)
      .Read("device", adapter.has_device)
      .Read("ip_helper", adapter.in_ip_helper)
      .With("answers", [&](const Json& ways) { adapter.answers = Answers::Parse(ways, kRequests); })
      .NothingElse();
  return adapter;
}

}  // namespace winhost
