#include "winhost/kernel/full_path.h"

#include <windows.h>

#include <array>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::size_t kMaxComponent = 255;

bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }
bool IsLetter(char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }
bool HasDrive(std::u16string_view path) { return path.size() >= 2 && IsLetter(path[0]) && path[1] == u':'; }

constexpr std::array<bool, 128> ForbiddenTable() {
  std::array<bool, 128> table{};
  for (std::size_t c = 0; c < 0x20; ++c) table[c] = true;
  for (char c : {'<', '>', ':', '"', '|', '?', '*'}) table[static_cast<std::size_t>(c)] = true;
  return table;
}
constexpr std::array<bool, 128> kForbidden = ForbiddenTable();

bool IsForbidden(char16_t c) { return c < kForbidden.size() && kForbidden[c]; }

// Takes the part up to the next separator off the front.
std::u16string_view EatComponent(std::u16string_view& rest) {
  std::size_t length = 0;
  while (length < rest.size() && !IsSeparator(rest[length])) ++length;
  const std::u16string_view component = rest.substr(0, length);
  rest.remove_prefix(length);
  return component;
}

bool EatSeparators(std::u16string_view& rest) {
  const std::size_t before = rest.size();
  while (!rest.empty() && IsSeparator(rest[0])) rest.remove_prefix(1);
  return rest.size() != before;
}

// "\\server\share\…" with the two leading separators already gone. A bare server is a root as well.
void PutUncRoot(std::u16string_view& rest, FullPath* full) {
  full->kind = FullPath::Kind::Unc;
  full->text = u"\\\\";
  full->text += EatComponent(rest);
  if (EatSeparators(rest) && !rest.empty()) {
    full->text += u'\\';
    full->text += EatComponent(rest);
    EatSeparators(rest);
  }
  full->root = full->text.size() + 1;
}

void PutDriveRoot(char16_t letter, FullPath* full) {
  full->kind = FullPath::Kind::Disk;
  full->text.assign({Upcase(letter), u':', u'\\'});
  full->root = 3;
}

// Starts `full` with everything up to where the given path's own components begin.
void PutBase(std::u16string_view& rest, std::u16string_view current_directory, FullPath* full) {
  full->text.reserve(rest.size() + current_directory.size() + 1);
  if (HasDrive(rest)) {
    const char16_t letter = rest[0];
    rest.remove_prefix(2);
    if (!EatSeparators(rest) && HasDrive(current_directory) && Upcase(letter) == Upcase(current_directory[0])) {
      ParsePath(current_directory, {}, full);
    } else {
      PutDriveRoot(letter, full);
    }
    return;
  }
  const bool rooted = EatSeparators(rest);
  if (current_directory.empty()) {
    PutDriveRoot(u'C', full);
  } else {
    ParsePath(current_directory, {}, full);
    if (rooted) full->text.resize(full->text.size() < full->root ? full->text.size() : full->root);
  }
}

void DropLast(FullPath* full) {
  if (full->IsRoot()) return;
  const std::size_t cut = full->text.rfind(u'\\');
  full->text.resize(cut < full->root ? (full->text.size() < full->root ? full->text.size() : full->root) : cut);
}

void Append(std::u16string_view component, FullPath* full) {
  if (full->text.back() != u'\\') full->text += u'\\';
  full->text += component;
}

// Windows drops a component's last dot, and every dot and blank at the end of the path.
std::u16string_view Trim(std::u16string_view component, bool last) {
  if (last) {
    while (!component.empty() && (component.back() == u'.' || component.back() == u' ')) component.remove_suffix(1);
  } else if (component.size() > 1 && component.back() == u'.' && component[component.size() - 2] != u'.') {
    component.remove_suffix(1);
  }
  return component;
}

DWORD AppendComponents(std::u16string_view rest, bool literal, FullPath* full) {
  while (!rest.empty()) {
    std::u16string_view component = EatComponent(rest);
    const bool separated = EatSeparators(rest);
    const bool last = rest.empty();
    if (last) full->trailing_separator = separated;
    if (!literal) {
      if (component == u".") continue;
      if (component == u"..") {
        DropLast(full);
        continue;
      }
      component = Trim(component, last);
      if (component.empty()) continue;
    }
    for (char16_t c : component) {
      if (IsForbidden(c)) return ERROR_INVALID_NAME;
    }
    if (component.size() > kMaxComponent) return ERROR_INVALID_NAME;
    Append(component, full);
  }
  if (full->IsRoot()) full->trailing_separator = false;
  return 0;
}

DWORD ParseLiteral(std::u16string_view rest, FullPath* full) {
  if (rest.size() >= 4 && EqualNoCase(rest.substr(0, 4), u"UNC\\")) {
    rest.remove_prefix(4);
    PutUncRoot(rest, full);
  } else if (HasDrive(rest) && rest.size() > 2 && rest[2] == u'\\') {
    PutDriveRoot(rest[0], full);
    rest.remove_prefix(3);
  } else {
    return rest.empty() ? ERROR_INVALID_NAME : ERROR_PATH_NOT_FOUND;
  }
  if (rest.find(u'/') != rest.npos) return ERROR_INVALID_NAME;
  return AppendComponents(rest, true, full);
}

DWORD ParseDevice(std::u16string_view name, FullPath* full) {
  full->kind = FullPath::Kind::Device;
  full->text = name;
  full->root = full->text.size();
  return name.empty() ? ERROR_INVALID_NAME : 0;
}

}  // namespace

std::u16string_view FullPath::Name() const {
  if (IsRoot()) return {};
  return std::u16string_view(text).substr(text.rfind(u'\\') + 1);
}

std::u16string_view FullPath::Parent() const {
  if (IsRoot()) return text;
  const std::size_t cut = text.rfind(u'\\');
  return std::u16string_view(text).substr(0, cut < root ? (kind == Kind::Unc ? root - 1 : root) : cut);
}

std::u16string_view DeviceName(std::u16string_view component) {
  std::size_t length = 0;
  while (length < component.size() && component[length] != u'.' && component[length] != u':') ++length;
  while (length > 0 && component[length - 1] == u' ') --length;
  if (length < 3 || length > 7) return {};
  const std::u16string_view base = component.substr(0, length);
  static constexpr std::u16string_view kNames[] = {u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
  for (std::u16string_view name : kNames) {
    if (EqualNoCase(base, name)) return name;
  }
  const bool numbered = base.size() == 4 && base[3] >= u'1' && base[3] <= u'9';
  const bool port = numbered && (EqualNoCase(base.substr(0, 3), u"COM") || EqualNoCase(base.substr(0, 3), u"LPT"));
  return port ? base : std::u16string_view();
}

bool IsPlainName(std::u16string_view name) {
  if (name.empty() || name.size() > kMaxComponent || name.back() == u'.' || name.back() == u' ') return false;
  for (char16_t c : name) {
    if (IsForbidden(c) || IsSeparator(c)) return false;
  }
  return DeviceName(name).empty();
}

DWORD ParsePath(std::u16string_view path, std::u16string_view current_directory, FullPath* full, PathLimit limit) {
  *full = {};
  if (path.empty()) return ERROR_PATH_NOT_FOUND;
  if (path.substr(0, 4) == u"\\\\?\\") return ParseLiteral(path.substr(4), full);
  const bool two = path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1]);
  if (two && path.size() >= 4 && (path[2] == u'.' || path[2] == u'?') && IsSeparator(path[3])) {
    return ParseDevice(path.substr(4), full);
  }
  std::u16string_view rest = path;
  if (two) {
    rest.remove_prefix(2);
    if (rest.empty() || IsSeparator(rest[0])) return ERROR_PATH_NOT_FOUND;
    PutUncRoot(rest, full);
  } else {
    const std::size_t name = path.find_last_of(u"\\/:");
    const std::u16string_view device = DeviceName(path.substr(name == path.npos ? 0 : name + 1));
    if (!device.empty()) return ParseDevice(device, full);
    PutBase(rest, current_directory, full);
  }
  if (const DWORD error = AppendComponents(rest, false, full)) return error;
  return full->text.size() > limit.length ? limit.error : 0;
}

}  // namespace winhost
