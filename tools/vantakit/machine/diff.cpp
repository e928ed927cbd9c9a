#include "tools/vantakit/machine/diff.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace vantakit {
namespace {

using Json = nlohmann::json;
using Entries = std::map<std::string, Json>;

std::string NameOf(const std::string& section, const Json& entry, size_t position) {
  if (section == "registry") return entry.value("key", "") + " : " + entry.value("name", "");
  if (section == "tasks") return entry.value("name", "");
  if (section == "files" || section == "shortcuts") return entry.value("path", "");
  char order[24];
  std::snprintf(order, sizeof order, "%06zu", position);  // a journal is compared in its order
  return order;
}

Entries ByName(const std::string& section, const Json& state) {
  Entries entries;
  if (section == "log") {
    for (const auto& [path, lines] : state.at("files").items()) entries[path] = lines;
    entries["debugger"] = state.at("debugger");
    return entries;
  }
  for (size_t i = 0; i < state.size(); ++i) entries[NameOf(section, state[i], i)] = state[i];
  return entries;
}

}  // namespace

Json DiffStates(const Json& before, const Json& after) {
  Json difference = Json::object();
  for (const auto& [section, state] : after.items()) {
    const Entries was = ByName(section, before.at(section));
    const Entries is = ByName(section, state);
    Json changes = Json::array();
    for (const auto& [name, entry] : was) {
      const auto now = is.find(name);
      if (now == is.end()) {
        changes.push_back({{"change", "removed"}, {"entry", name}, {"was", entry}, {"is", nullptr}});
      } else if (now->second != entry) {
        changes.push_back({{"change", "changed"}, {"entry", name}, {"was", entry}, {"is", now->second}});
      }
    }
    for (const auto& [name, entry] : is) {
      if (!was.contains(name))
        changes.push_back({{"change", "added"}, {"entry", name}, {"was", nullptr}, {"is", entry}});
    }
    if (!changes.empty()) difference[section] = std::move(changes);
  }
  return difference;
}

}  // namespace vantakit
