#include "winhost/registry/views.h"

#include <algorithm>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::u16string_view kNode = u"Wow6432Node";

enum class Rule {
  Redirected,
  Shared,
  SharedSince7,        // redirected on Vista and before
  RedirectedInClasses  // its 32-bit twin lies below Classes\Wow6432Node where Classes itself is shared
};

struct Row {
  const char16_t* path;  // below SOFTWARE
  Rule rule;
};

// The system's list of keys below HKLM\SOFTWARE that are no plain redirected ones; the longest match decides.
constexpr Row kRows[] = {
    {u"Classes", Rule::SharedSince7},
    {u"Classes\\CLSID", Rule::RedirectedInClasses},
    {u"Classes\\DirectShow", Rule::RedirectedInClasses},
    {u"Classes\\Interface", Rule::RedirectedInClasses},
    {u"Classes\\Media Type", Rule::RedirectedInClasses},
    {u"Classes\\MediaFoundation", Rule::RedirectedInClasses},
    {u"Clients", Rule::SharedSince7},
    {u"Microsoft\\COM3", Rule::SharedSince7},
    {u"Microsoft\\Cryptography\\Calais\\Current", Rule::SharedSince7},
    {u"Microsoft\\Cryptography\\Calais\\Readers", Rule::SharedSince7},
    {u"Microsoft\\Cryptography\\Services", Rule::SharedSince7},
    {u"Microsoft\\CTF\\SystemShared", Rule::SharedSince7},
    {u"Microsoft\\CTF\\TIP", Rule::SharedSince7},
    {u"Microsoft\\DFS", Rule::SharedSince7},
    {u"Microsoft\\Driver Signing", Rule::SharedSince7},
    {u"Microsoft\\EnterpriseCertificates", Rule::Shared},
    {u"Microsoft\\EventSystem", Rule::SharedSince7},
    {u"Microsoft\\MSMQ", Rule::Shared},
    {u"Microsoft\\Non-Driver Signing", Rule::SharedSince7},
    {u"Microsoft\\Notepad\\DefaultFonts", Rule::SharedSince7},
    {u"Microsoft\\OLE", Rule::SharedSince7},
    {u"Microsoft\\RAS", Rule::SharedSince7},
    {u"Microsoft\\RPC", Rule::SharedSince7},
    {u"Microsoft\\Shared Tools\\MSInfo", Rule::SharedSince7},
    {u"Microsoft\\SystemCertificates", Rule::Shared},
    {u"Microsoft\\TermServLicensing", Rule::SharedSince7},
    {u"Microsoft\\Transaction Server", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\App Paths", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Control Panel\\Cursors\\Schemes", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Explorer\\AutoplayHandlers", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Explorer\\DriveIcons", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Explorer\\KindMap", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Group Policy", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Policies", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\PreviewHandlers", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Setup", Rule::SharedSince7},
    {u"Microsoft\\Windows\\CurrentVersion\\Telephony\\Locations", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Console", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\FontDpi", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\FontLink", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\FontMapper", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Fonts", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\FontSubstitutes", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Gre_Initialize", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Image File Execution Options", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\LanguagePack", Rule::SharedSince7},
    {u"Microsoft\\Windows NT\\CurrentVersion\\NetworkCards", Rule::Shared},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Perflib", Rule::Shared},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Ports", Rule::Shared},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Print", Rule::Shared},
    {u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList", Rule::Shared},
    {u"Microsoft\\Windows NT\\CurrentVersion\\Time Zones", Rule::Shared},
    {u"Policies", Rule::Shared},
    {u"RegisteredApplications", Rule::SharedSince7},
};

bool StartsWith(const KeyPath& path, std::size_t from, const KeyPath& prefix) {
  return path.size() >= from + prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), path.begin() + static_cast<std::ptrdiff_t>(from), EqualNoCase);
}

Rule RuleBelowSoftware(const KeyPath& path) {
  Rule rule = Rule::Redirected;
  std::size_t longest = 0;
  for (const Row& row : kRows) {
    const KeyPath prefix = SplitKeyPath(row.path);
    if (prefix.size() > longest && StartsWith(path, 2, prefix)) {
      rule = row.rule;
      longest = prefix.size();
    }
  }
  return rule;
}

bool Has(const KeyPath& path, std::size_t index, std::u16string_view name) {
  return path.size() > index && EqualNoCase(path[index], name);
}

KeyPath WithNode(KeyPath path, std::size_t index) {
  path.insert(path.begin() + static_cast<std::ptrdiff_t>(index), std::u16string(kNode));
  return path;
}

KeyPath StoredBelowSoftware(const KeyPath& path, const Facts& facts) {
  const bool machine = path[0] == u"HKLM";
  const bool since7 = facts.AtLeast(6, 1);
  const Rule rule = RuleBelowSoftware(path);
  // A user's classes are laid out as the machine's are since 7; the rest of a user's software is shared.
  if (rule == Rule::RedirectedInClasses && (since7 || !machine)) return WithNode(path, 3);
  if (!machine || rule == Rule::Shared || (rule == Rule::SharedSince7 && since7)) return path;
  return WithNode(path, 2);
}

}  // namespace

KeyPath SplitKeyPath(std::u16string_view path) {
  KeyPath parts;
  while (!path.empty()) {
    const std::size_t end = path.find(u'\\');
    if (end != 0) parts.emplace_back(path.substr(0, end));
    path.remove_prefix(end == path.npos ? path.size() : end + 1);
  }
  return parts;
}

std::u16string JoinKeyPath(const KeyPath& path) {
  std::u16string joined;
  for (const std::u16string& part : path) {
    if (!joined.empty()) joined += u'\\';
    joined += part;
  }
  return joined;
}

View DefaultView(const Facts& facts) { return facts.process_bits == 64 ? View::Bits64 : View::Bits32; }

KeyPath StoredPath(const KeyPath& logical, View view, const Facts& facts) {
  if (logical[0] == u"HKCR") {
    KeyPath path{u"HKLM", u"SOFTWARE", u"Classes"};
    path.insert(path.end(), logical.begin() + 1, logical.end());
    return StoredPath(path, view, facts);
  }
  if (facts.windows_bits == 32 || view == View::Bits64 || !Has(logical, 1, u"SOFTWARE")) return logical;
  const bool named = Has(logical, 2, kNode) || (Has(logical, 2, u"Classes") && Has(logical, 3, kNode));
  return named ? logical : StoredBelowSoftware(logical, facts);
}

KeyPath ListedPath(const KeyPath& stored, const Facts& facts) {
  if (facts.windows_bits == 32 || !Has(stored, 1, u"SOFTWARE")) return stored;
  const std::size_t node = Has(stored, 2, u"Classes") ? 3 : 2;
  if (!Has(stored, node, kNode)) return stored;
  KeyPath listed = stored;
  listed.erase(listed.begin() + static_cast<std::ptrdiff_t>(node));
  listed[0] += u"32";
  return listed;
}

}  // namespace winhost
