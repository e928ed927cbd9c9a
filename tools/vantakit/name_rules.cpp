#include "tools/vantakit/name_rules.h"

#include <map>
#include <string_view>

#include "base/text.h"
#include "install/zip/entry_name.h"
#include "winhost/machine/text.h"

namespace vantakit {
namespace {

constexpr std::size_t kLongestStoredName = 259;  // bytes, as the reader takes them
constexpr std::size_t kLongestPath = 259;        // UTF-16 units
constexpr std::u16string_view kDefaultFolder = u"C:\\Program Files (x86)\\VantaPictor\\";

std::string WhatIsWrong(const std::string& name) {
  const vanta::String wide = winhost::Wide(name);
  if (winhost::Narrow(wide) != name) return "the name is no UTF-8";
  if (name.size() > kLongestStoredName) return "the name has more than 259 bytes and would be refused";
  if (wide.find_first_of(u"\\<>\"|?*") != wide.npos) return "Windows has no such character in file names";
  if (vanta::SanitiseName(wide) != wide) return "the name would be cut when the archive is read";
  if (!vanta::IsExtractableName(wide)) return "Windows would make another file of this name, so it would be refused";
  if (kDefaultFolder.size() + wide.size() > kLongestPath)
    return "the path in the default install directory would exceed 259 characters";
  return {};
}

}  // namespace

Findings CheckEntryNames(const std::vector<FolderEntry>& entries) {
  Findings findings;
  std::map<std::u16string, std::string> seen;  // upper-cased path of a file or folder → as first written
  const auto claim = [&](const std::string& path) -> const std::string* {
    const auto [row, fresh] = seen.emplace(winhost::Upcase(winhost::Wide(path)), path);
    return fresh || row->second == path ? nullptr : &row->second;
  };
  for (const FolderEntry& entry : entries) {
    if (const std::string wrong = WhatIsWrong(entry.name); !wrong.empty()) findings.push_back({entry.name, wrong});
    for (std::size_t slash = entry.name.find('/'); slash != std::string::npos;
         slash = entry.name.find('/', slash + 1)) {
      if (const auto* other = claim(entry.name.substr(0, slash))) {
        findings.push_back({entry.name, "lies in the same folder as \"" + *other + "\" but for the case of letters"});
      }
    }
    if (const auto* other = claim(entry.name)) {
      findings.push_back({entry.name, "the same name as \"" + *other + "\" but for the case of letters"});
    }
  }
  return findings;
}

}  // namespace vantakit
