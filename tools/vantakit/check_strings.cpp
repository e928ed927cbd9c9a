#include <algorithm>
#include <map>

#include "setupui/string_table.h"
#include "tools/vantakit/check.h"

namespace vantakit {
namespace {

// Every string that the setup looks up.
constexpr const char* kNeededKeys[] = {
    "STRID_PICTOR_NAME",
    "STRID_PICTOR_SURE_EXIT",
    "STRID_PICTOR_DEFAULT",
    "STRID_PICTOR_INSTING",
    "STRID_PICTOR_INST",
    "STRID_PICTOR_AGREE",
    "STRID_PICTOR_USEAGREE",
    "STRID_PICTOR_AND",
    "STRID_PICTOR_PRIVACY",
    "STRID_PICTOR_KNOWN",
    "STRID_PICTOR_UNINST_ONLY",
    "STRID_PICTOR_NO_INST",
    "STRID_PICTOR_TIPS_DIR_UNVALID",
    "STRID_PICTOR_TIPS_DIR_NOTWRITE",
    "STRID_PICTOR_TIPS_DIR_NOSPACE",
    "STRID_PICTOR_TIPS_USER_AGREE",
    "STRID_PICTOR_INST_ERROR_UNZIP",
    "STRID_PICTOR_INST_ERROR_CREATE_DIR",
    "STRID_PICTOR_INST_ERROR_WRITE_FILE",
    "STRID_PICTOR_INST_ERROR_NO_EMBEDDED_FILE",
    "STRID_PICTOR_INST_ERROR_EMBEDDED_FILE",
};

bool IsBlank(std::string_view line) { return line.find_first_not_of(" \t\r") == line.npos; }

// Comments have their ";" in front; elsewhere in a key it was hardly meant as one.
bool IsComment(std::string_view line) {
  if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
  const std::size_t start = line.find_first_not_of(" \t");
  return start != line.npos && line[start] == ';';
}

std::string WhyIgnored(std::string_view line) {
  const auto equals = std::count(line.begin(), line.end(), '=');
  if (equals == 0) return "no \"=\"";
  if (equals > 1) return "a second \"=\"";
  if (line.find(';') < line.find('=')) return "a \";\" in the key makes it a comment";
  return "nothing on one side of the \"=\"";
}

}  // namespace

std::span<const char* const> NeededStrings() { return kNeededKeys; }

Findings CheckStringTable(const std::string& name, const std::string& utf8) {
  Findings findings;
  std::map<vanta::String, int> lines_of;
  int number = 0;
  for (std::string_view rest = utf8; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    ++number;
    if (IsBlank(line) || IsComment(line)) continue;
    const vanta::StringTable one = vanta::ParseStringTable(line);
    if (one.empty()) {
      findings.push_back({name, "ignored: " + WhyIgnored(line), number});
      continue;
    }
    const auto [row, fresh] = lines_of.emplace(one.begin()->first, number);
    if (fresh) continue;
    findings.push_back({name, vanta::ToUtf8(row->first) + " replaces line " + std::to_string(row->second), number});
    row->second = number;
  }
  for (const char* key : kNeededKeys) {
    if (!lines_of.contains(vanta::FromUtf8(key)))
      findings.push_back({name, std::string(key) + " is missing; the setup looks it up"});
  }
  return findings;
}

}  // namespace vantakit
