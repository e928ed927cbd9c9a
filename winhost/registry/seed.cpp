#include "winhost/registry/seed.h"

#include <windows.h>

#include <nlohmann/json.hpp>

#include "winhost/devices/adapter_registry.h"
#include "winhost/machine/text.h"
#include "winhost/registry/types.h"

namespace winhost {
namespace {

using Json = nlohmann::json;

[[noreturn]] void Wrong(const std::string& where, const char* what) {
  throw std::runtime_error("registry: " + where + ": " + what);
}

void PutText(std::vector<std::byte>& data, const std::u16string& text, bool terminated) {
  const auto bytes = std::as_bytes(std::span(text.c_str(), text.size() + (terminated ? 1 : 0)));
  data.insert(data.end(), bytes.begin(), bytes.end());
}

void PutNumber(std::vector<std::byte>& data, std::uint64_t number, int bytes) {
  for (int i = 0; i < bytes; ++i) data.push_back(static_cast<std::byte>(number >> (8 * i)));
}

std::vector<std::byte> ParseHex(const std::string& name, const std::string& hex) {
  std::vector<std::byte> data;
  if (hex.size() % 2 != 0 || hex.find_first_not_of("0123456789abcdefABCDEF") != hex.npos) Wrong(name, "bad hex");
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    data.push_back(static_cast<std::byte>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return data;
}

std::vector<std::byte> Encode(const std::string& name, std::uint32_t type, const Json& seed) {
  std::vector<std::byte> data;
  const Json& value = seed.at("value");
  const bool terminated = seed.value("terminated", true);
  switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
      PutText(data, Wide(value.get<std::string>()), terminated);
      return data;
    case REG_MULTI_SZ:
      for (const Json& text : value) PutText(data, Wide(text.get<std::string>()), true);
      if (terminated) PutText(data, u"", true);
      return data;
    case REG_DWORD:
      PutNumber(data, value.get<std::uint32_t>(), 4);
      return data;
    case REG_QWORD:
      PutNumber(data, value.get<std::uint64_t>(), 8);
      return data;
  }
  Wrong(name, "this type takes \"hex\"");
}

struct Place {
  KeyPath path;
  View view;
};

Place ParsePlace(const std::string& key) {
  Place place{SplitKeyPath(Wide(key)), View::Bits64};
  if (place.path.empty()) Wrong(key, "no root");
  std::u16string& root = place.path[0];
  if (root == u"HKLM32" || root == u"HKCU32") {
    root.resize(4);
    place.view = View::Bits32;
  }
  if (root != u"HKLM" && root != u"HKCU" && root != u"HKCR" && root != u"HKU") Wrong(key, "unknown root");
  return place;
}

void PutKeys(RegistryStore& store, const Facts& facts, const Json& keys) {
  for (const auto& [key, values] : keys.items()) {
    const Place place = ParsePlace(key);
    const KeyId id = store.Make(StoredPath(place.path, place.view, facts)).key;
    for (const auto& [name, seed] : values.items()) {
      const StoredValue value = ParseSeed(name, seed);
      store.SetValue(id, value.name, value.type, value.data);
    }
  }
}

}  // namespace

StoredValue ParseSeed(const std::string& name, const Json& seed) {
  if (seed.is_string()) return ParseSeed(name, Json{{"type", "REG_SZ"}, {"value", seed}});
  if (!seed.is_object() || !seed.contains("type")) Wrong(name, "a text or an object with a \"type\"");
  const std::optional<std::uint32_t> type = RegistryType(seed["type"].get<std::string>());
  if (!type) Wrong(name, "unknown type");
  for (const auto& [field, ignored] : seed.items()) {
    if (field != "type" && field != "value" && field != "hex" && field != "terminated") Wrong(name, "unknown field");
  }
  StoredValue value{Wide(name), *type, {}};
  value.data = seed.contains("hex") ? ParseHex(name, seed["hex"].get<std::string>()) : Encode(name, *type, seed);
  return value;
}

void SeedRegistry(RegistryStore& store, const Facts& facts) {
  PutKeys(store, facts, AdapterKeys(facts));
  if (facts.raw && facts.raw->contains("registry")) PutKeys(store, facts, facts.raw->at("registry"));
}

}  // namespace winhost
