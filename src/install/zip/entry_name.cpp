#include "install/zip/entry_name.h"

#include <algorithm>
#include <iterator>

namespace vanta {
namespace {

constexpr bool IsSeparator(WCHAR c) { return c == TEXT('\\') || c == TEXT('/'); }

// The position behind the first "/../" of any separators; npos: there is none.
size_t BehindParentReference(StringView name) {
  for (size_t at = name.find(TEXT("..")); at != StringView::npos; at = name.find(TEXT(".."), at + 1)) {
    if (at > 0 && IsSeparator(name[at - 1]) && at + 2 < name.size() && IsSeparator(name[at + 2])) return at + 3;
  }
  return StringView::npos;
}

bool IsControl(WCHAR c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

// The digits that the system takes for a port number include the superscript ones of Latin-1.
bool IsPortNumber(WCHAR c) { return (c >= TEXT('1') && c <= TEXT('9')) || c == 0xB9 || c == 0xB2 || c == 0xB3; }

// What counts is the part ahead of the first dot, without blanks at its end.
bool IsDeviceName(StringView component) {
  constexpr StringView kDevices[] = {TEXT("CON"), TEXT("PRN"),    TEXT("AUX"),
                                     TEXT("NUL"), TEXT("CONIN$"), TEXT("CONOUT$")};
  StringView base = component.substr(0, component.find(TEXT('.')));
  while (!base.empty() && base.back() == TEXT(' ')) base.remove_suffix(1);
  if (base.size() == 4 && IsPortNumber(base[3])) {
    const StringView port = base.substr(0, 3);
    return EqualAsciiNoCase(port, TEXT("COM")) || EqualAsciiNoCase(port, TEXT("LPT"));
  }
  return std::any_of(std::begin(kDevices), std::end(kDevices),
                     [base](StringView device) { return EqualAsciiNoCase(base, device); });
}

bool IsExtractableComponent(StringView component) {
  if (component.empty() || component == TEXT(".")) return true;
  if (component.back() == TEXT('.') || component.back() == TEXT(' ')) return false;
  for (const WCHAR c : component) {
    if (c == TEXT(':') || IsControl(c)) return false;
  }
  return !IsDeviceName(component);
}

}  // namespace

StringView SanitiseName(StringView name) {
  for (;;) {
    if (name.size() >= 2 && name[1] == TEXT(':')) {
      name.remove_prefix(2);
    } else if (!name.empty() && IsSeparator(name[0])) {
      name.remove_prefix(1);
    } else if (name.size() >= 3 && name.starts_with(TEXT("..")) && IsSeparator(name[2])) {
      name.remove_prefix(3);
    } else if (const size_t behind = BehindParentReference(name); behind != StringView::npos) {
      name.remove_prefix(behind);
    } else {
      break;
    }
  }
  const bool ends_in_parent = name.ends_with(TEXT("..")) && (name.size() == 2 || IsSeparator(name[name.size() - 3]));
  return ends_in_parent ? name.substr(0, name.size() - 2) : name;
}

bool IsExtractableName(StringView name) {
  for (;;) {
    const size_t length = static_cast<size_t>(std::find_if(name.begin(), name.end(), IsSeparator) - name.begin());
    if (!IsExtractableComponent(name.substr(0, length))) return false;
    if (length == name.size()) return true;
    name.remove_prefix(length + 1);
  }
}

}  // namespace vanta
