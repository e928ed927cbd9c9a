#include "winhost/devices/adapter_registry.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "winhost/devices/hardware.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

using Json = nlohmann::json;
constexpr const char* kClass =
    "HKLM\\SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E972-E325-11CE-BFC1-08002BE10318}";
constexpr const char* kCards = "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";
constexpr std::size_t kFirstCard = 2;  // as Windows counts them

Json ClassEntry(const AdapterFacts& adapter) {
  Json entry = {{"NetCfgInstanceId", adapter.id},
                {"DriverDesc", adapter.description},
                {"*IfType", {{"type", "REG_DWORD"}, {"value", adapter.type}}}};
  if (adapter.bus_type) entry["BusType"] = *adapter.bus_type;
  return entry;
}

std::string EntryName(std::size_t index) {
  char name[24];
  std::snprintf(name, sizeof name, "\\%04zu", index);
  return name;
}

bool LiesBelow(std::u16string_view path, const char* key) {
  const std::u16string root = Wide(key);
  return EqualNoCase(path.substr(0, root.size()), root) && (path.size() == root.size() || path[root.size()] == u'\\');
}

}  // namespace

Json AdapterKeys(const Facts& facts) {
  const Hardware hardware(facts);
  Json keys = Json::object();
  for (std::size_t i = 0; i < hardware.adapters.size(); ++i) {
    const AdapterFacts& adapter = hardware.adapters[i];
    const std::string entry = kClass + EntryName(i);
    if (adapter.in_class) keys[entry] = ClassEntry(adapter);
    if (adapter.in_class && adapter.lower_range) {
      keys[entry + "\\Ndi\\Interfaces"] = {{"LowerRange", *adapter.lower_range}};
    }
    if (!adapter.is_card) continue;
    keys[kCards + ("\\" + std::to_string(kFirstCard + i))] = {{"ServiceName", adapter.id},
                                                              {"Description", adapter.description}};
  }
  return keys;
}

bool IsAdapterKey(std::u16string_view path) { return LiesBelow(path, kClass) || LiesBelow(path, kCards); }

}  // namespace winhost
