#include "winhost/registry/dump.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "winhost/devices/adapter_registry.h"
#include "winhost/machine/text.h"
#include "winhost/registry/types.h"

namespace winhost {
namespace {

void Collect(RegistryStore& store, const KeyPath& path, const Facts& facts, std::vector<ListedKey>& into) {
  const auto id = store.Find(path);
  if (!id) return;
  const std::u16string listed = JoinKeyPath(ListedPath(path, facts));
  if (IsAdapterKey(listed)) return;
  std::vector<StoredValue> values = store.Values(*id);
  if (!values.empty() || !store.IsSystemKey(*id)) into.push_back({listed, std::move(values)});
  for (const std::u16string& name : store.SubKeys(*id)) {
    KeyPath child = path;
    child.push_back(name);
    Collect(store, child, facts, into);
  }
}

std::u16string Units(const std::vector<std::byte>& data) {
  std::u16string text(data.size() / 2, u'\0');
  if (!text.empty()) std::memcpy(text.data(), data.data(), text.size() * 2);
  return text;
}

nlohmann::json Texts(const std::u16string& all) {
  nlohmann::json list = nlohmann::json::array();
  for (std::size_t at = 0; at < all.size() && all[at] != 0;) {
    const std::u16string one(all.c_str() + at);
    list.push_back(Narrow(one));
    at += one.size() + 1;
  }
  return list;
}

std::string Hex(const std::vector<std::byte>& data) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const std::byte b : data) {
    hex += kDigits[static_cast<unsigned>(b) >> 4];
    hex += kDigits[static_cast<unsigned>(b) & 15];
  }
  return hex;
}

}  // namespace

std::vector<ListedKey> ListRegistry(Machine& machine) {
  std::vector<ListedKey> keys;
  RegistryStore* store = RegistryStore::Existing(machine);
  if (!store) return keys;
  RegistryStore::Session session(*store, Transaction::Kind::Read);
  for (const char16_t* root : {u"HKCU", u"HKLM", u"HKU"}) Collect(*store, {root}, machine.facts(), keys);
  std::stable_sort(keys.begin(), keys.end(),
                   [](const auto& a, const auto& b) { return Upcase(a.path) < Upcase(b.path); });
  return keys;
}

nlohmann::json DecodedValue(const StoredValue& value) {
  const std::size_t bytes = value.data.size();
  const bool text = value.type == REG_SZ || value.type == REG_EXPAND_SZ;
  if (text && bytes % 2 == 0) return Narrow(std::u16string(Units(value.data).c_str()));
  if (value.type == REG_MULTI_SZ && bytes % 2 == 0) return Texts(Units(value.data));
  std::uint64_t number = 0;
  if ((value.type == REG_DWORD && bytes == 4) || (value.type == REG_QWORD && bytes == 8)) {
    std::memcpy(&number, value.data.data(), bytes);
    return number;
  }
  return Hex(value.data);
}

nlohmann::json RegistryAsJson(Machine& machine) {
  nlohmann::json all = nlohmann::json::object();
  for (const ListedKey& key : ListRegistry(machine)) {
    nlohmann::json& values = all[Narrow(key.path)] = nlohmann::json::object();
    for (const StoredValue& value : key.values) {
      values[Narrow(value.name)] = {
          {"type", RegistryTypeName(value.type)}, {"bytes", value.data.size()}, {"value", DecodedValue(value)}};
    }
  }
  return all;
}

}  // namespace winhost
