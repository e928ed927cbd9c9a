#include "setupui/skin_path.h"

namespace vanta {
namespace {

// Backslashes as slashes, and of every row of slashes one.
String WithSingleSlashes(StringView path) {
  String text;
  for (const WCHAR c : path) {
    const WCHAR unit = c == TEXT('\\') ? TEXT('/') : c;
    if (unit != TEXT('/') || text.empty() || text.back() != TEXT('/')) text += unit;
  }
  return text;
}

// Takes the last segment with its "/" off a path of at least one whole segment.
void DropLastSegment(String& path) {
  path.pop_back();
  const size_t slash = path.rfind(TEXT('/'));
  path.resize(slash == String::npos ? 0 : slash + 1);
}

}  // namespace

std::optional<String> NormaliseSkinPath(StringView path) {
  const String text = WithSingleSlashes(path);
  StringView rest = text;
  if (rest.starts_with(TEXT('/'))) rest.remove_prefix(1);
  String found;
  while (!rest.empty()) {
    const size_t slash = rest.find(TEXT('/'));
    const bool last = slash == StringView::npos;
    const StringView segment = rest.substr(0, slash);
    rest.remove_prefix(last ? rest.size() : slash + 1);
    if (segment == TEXT("..") && found.empty()) return std::nullopt;
    if (last) {
      found += segment;
    } else if (segment == TEXT("..")) {
      DropLastSegment(found);
    } else if (segment != TEXT(".")) {
      found.append(segment) += TEXT('/');
    }
  }
  return found;
}

String WithSeparator(StringView folder) {
  String text(folder);
  if (!folder.ends_with(TEXT('\\')) && !folder.ends_with(TEXT('/'))) text += TEXT('\\');
  return text;
}

}  // namespace vanta
