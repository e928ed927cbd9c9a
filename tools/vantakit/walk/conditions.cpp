#include "tools/vantakit/walk/conditions.h"

#include <charconv>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "tools/vantakit/commands.h"
#include "winhost/kernel/paths.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;

bool IsEnabled(const Json& seen, const std::string& name, bool wanted) {
  const auto control = seen.at("controls").find(name);
  return control != seen.at("controls").end() && control->at("enabled") == wanted;
}

int NumberOf(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) throw Failure("\"" + text + "\" is no number");
  return number;
}

struct Row {
  const char* word;
  bool argument;
  Condition (*make)(const std::string& argument);
};

const Row kRows[] = {
    {"open", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return !s["window"].is_null(); }; }},
    {"tip", false, [](const std::string&) -> Condition { return [](const Json& s) { return !s["tip"].is_null(); }; }},
    {"no tip", false, [](const std::string&) -> Condition { return [](const Json& s) { return s["tip"].is_null(); }; }},
    {"message", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return !s["message"].is_null(); }; }},
    {"no message", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return s["message"].is_null(); }; }},
    {"folder", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return s["window"] == "folder"; }; }},
    {"no folder", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return s["window"] != "folder"; }; }},
    {"minimised", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return s["minimised"] == true; }; }},
    {"active", false,
     [](const std::string&) -> Condition { return [](const Json& s) { return s["active"] == true; }; }},
    {"page", true,
     [](const std::string& name) -> Condition { return [name](const Json& s) { return s["page"] == name; }; }},
    {"progress", true,
     [](const std::string& text) -> Condition {
       const int least = NumberOf(text);
       return [least](const Json& s) { return s["progress"].is_object() && s["progress"]["value"] >= least; };
     }},
    {"enabled", true,
     [](const std::string& name) -> Condition { return [name](const Json& s) { return IsEnabled(s, name, true); }; }},
    {"disabled", true,
     [](const std::string& name) -> Condition { return [name](const Json& s) { return IsEnabled(s, name, false); }; }},
    {"file", true,
     [](const std::string& path) -> Condition {
       return [wide = vanta::FromUtf8(path)](const Json&) {
         const auto place = winhost::LinuxPath(wide);
         return place && std::filesystem::exists(*place);
       };
     }},
};

}  // namespace

Condition ParseCondition(const std::string& text) {
  for (const Row& row : kRows) {
    const std::string word = row.word;
    if (!row.argument && text == word) return row.make("");
    if (row.argument && text.starts_with(word + " ")) return row.make(text.substr(word.size() + 1));
  }
  throw Failure("nothing can wait for \"" + text + "\"");
}

}  // namespace vantakit
