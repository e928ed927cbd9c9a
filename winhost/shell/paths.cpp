// Path arithmetic. Only "\" separates here, except that the finding of a file name also knows "/" and ":"; programs
// depend on exactly this.
#include <shlwapi.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "winhost/shell/path_parts.h"

namespace {

using View = std::u16string_view;

std::size_t Length(LPCWSTR text) { return View(text).size(); }
LPWSTR Mutable(LPCWSTR text) { return const_cast<LPWSTR>(text); }

void Put(LPWSTR into, const std::u16string& text) { std::copy_n(text.c_str(), text.size() + 1, into); }

// Backslashes after the two of a UNC path; -1: no UNC path.
int UncDepth(LPCWSTR path) {
  if (!PathIsUNCW(path)) return -1;
  return static_cast<int>(std::count(path + 2, path + Length(path), u'\\'));
}

}  // namespace

BOOL PathIsRelativeW(LPCWSTR path) { return !path || !*path || (path[0] != u'\\' && path[1] != u':'); }

BOOL PathIsUNCW(LPCWSTR path) {
  if (!path || path[0] != u'\\' || path[1] != u'\\') return FALSE;
  return path[2] != u'?' || View(path).substr(0, 8) == u"\\\\?\\UNC\\";
}

BOOL PathIsUNCServerW(LPCWSTR path) { return UncDepth(path) == 0; }
BOOL PathIsUNCServerShareW(LPCWSTR path) { return UncDepth(path) == 1; }

BOOL PathIsRootW(LPCWSTR path) {
  if (!path || !*path) return FALSE;
  if (path[0] == u'\\' && !path[1]) return TRUE;
  const int depth = UncDepth(path);
  if (depth >= 0) return depth <= 1;
  return path[1] == u':' && path[2] == u'\\' && !path[3];
}

BOOL PathIsFileSpecW(LPCWSTR path) { return path && View(path).find_first_of(u"\\:") == View::npos; }

int PathGetDriveNumberW(LPCWSTR path) {
  if (!path || !*path || path[1] != u':') return -1;
  const char16_t letter = path[0] | 0x20;
  return letter >= u'a' && letter <= u'z' ? letter - u'a' : -1;
}

LPWSTR PathFindFileNameW(LPCWSTR path) {
  if (!path) return nullptr;
  LPCWSTR name = path;
  for (; *path; ++path) {
    const bool separator = *path == u'\\' || *path == u'/' || *path == u':';
    if (separator && path[1] && path[1] != u'\\' && path[1] != u'/') name = path + 1;
  }
  return Mutable(name);
}

LPWSTR PathFindExtensionW(LPCWSTR path) {
  if (!path) return nullptr;
  LPCWSTR dot = nullptr;
  for (; *path; ++path) {
    if (*path == u'.') dot = path;
    if (*path == u'\\' || *path == u' ') dot = nullptr;
  }
  return Mutable(dot ? dot : path);
}

LPWSTR PathFindNextComponentW(LPCWSTR path) {
  if (!path || !*path) return nullptr;
  const std::size_t slash = View(path).find(u'\\');
  if (slash == View::npos) return Mutable(path) + Length(path);
  return Mutable(path) + slash + (path[slash + 1] == u'\\' ? 2 : 1);
}

LPWSTR PathSkipRootW(LPCWSTR path) {
  if (!path || !*path) return nullptr;
  if (path[0] != u'\\') return path[1] == u':' && path[2] == u'\\' ? Mutable(path) + 3 : nullptr;
  if (path[1] != u'\\') return Mutable(path) + 1;
  std::size_t at = View(path).find(u'\\', 2);
  if (at != View::npos) at = View(path).find(u'\\', at + 1);
  return at == View::npos ? nullptr : Mutable(path) + at + 1;
}

BOOL PathRemoveFileSpecW(LPWSTR path) {
  if (!path) return FALSE;
  LPWSTR cut = path;  // what stands before it is never removed: "\", "\\", "C:", "C:\"
  while (cut < path + 2 && *cut == u'\\') ++cut;
  for (LPWSTR at = cut; *at; ++at) {
    if (*at == u'\\') {
      cut = at;
    } else if (*at == u':') {
      if (at[1] == u'\\') ++at;
      cut = at + 1;
    }
  }
  if (!*cut) return FALSE;
  *cut = 0;
  return TRUE;
}

BOOL PathStripToRootW(LPWSTR path) {
  if (!path) return FALSE;
  while (!PathIsRootW(path)) {
    if (!PathRemoveFileSpecW(path)) return FALSE;
  }
  return TRUE;
}

void PathStripPathW(LPWSTR path) {
  if (path) Put(path, PathFindFileNameW(path));
}

LPWSTR PathAddBackslashW(LPWSTR path) {
  if (!path) return nullptr;
  const std::size_t length = Length(path);
  if (length == 0 || path[length - 1] == u'\\') return path + length;
  if (length + 1 >= MAX_PATH) return nullptr;
  path[length] = u'\\';
  path[length + 1] = 0;
  return path + length + 1;
}

LPWSTR PathRemoveBackslashW(LPWSTR path) {
  if (!path) return nullptr;
  const std::size_t length = Length(path);
  LPWSTR last = length == 0 ? path : path + length - 1;
  if (*last == u'\\' && !PathIsRootW(path)) *last = 0;
  return last;
}

void PathRemoveExtensionW(LPWSTR path) {
  if (path) *PathFindExtensionW(path) = 0;
}

BOOL PathAddExtensionW(LPWSTR path, LPCWSTR extension) {
  if (!path || *PathFindExtensionW(path)) return FALSE;
  return PathRenameExtensionW(path, extension ? extension : u".exe");
}

BOOL PathRenameExtensionW(LPWSTR path, LPCWSTR extension) {
  if (!path || !extension) return FALSE;
  LPWSTR old = PathFindExtensionW(path);
  if (static_cast<std::size_t>(old - path) + Length(extension) >= MAX_PATH) return FALSE;
  Put(old, extension);
  return TRUE;
}

void PathQuoteSpacesW(LPWSTR path) {
  if (!path || !StrChrW(path, u' ') || Length(path) + 3 > MAX_PATH) return;
  Put(path, u'"' + std::u16string(path) + u'"');
}

void PathUnquoteSpacesW(LPWSTR path) {
  if (!path) return;
  const std::u16string text(path);
  if (text.size() >= 2 && text.front() == u'"' && text.back() == u'"') Put(path, text.substr(1, text.size() - 2));
}

int PathCommonPrefixW(LPCWSTR a, LPCWSTR b, LPWSTR prefix) {
  if (prefix) *prefix = 0;
  if (!a || !b || PathIsUNCW(a) != PathIsUNCW(b)) return 0;
  int length = winhost::CommonComponents(a, b);
  if (length == 2) ++length;  // meant for "C:", which is answered as "C:\", but done whatever the two characters are
  if (prefix && length > 0) Put(prefix, std::u16string(View(a).substr(0, static_cast<std::size_t>(length))));
  return length;
}

BOOL PathIsPrefixW(LPCWSTR prefix, LPCWSTR path) {
  return prefix && path && PathCommonPrefixW(path, prefix, nullptr) == static_cast<int>(Length(prefix));
}

BOOL PathCanonicalizeW(LPWSTR result, LPCWSTR path) {
  if (result) *result = 0;
  if (!result || !path) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const std::u16string canonical = winhost::CanonicalPath(path);
  if (Length(path) >= MAX_PATH || canonical.size() >= MAX_PATH) {
    SetLastError(ERROR_FILENAME_EXCED_RANGE);
    return FALSE;
  }
  Put(result, canonical);
  return TRUE;
}

LPWSTR PathCombineW(LPWSTR result, LPCWSTR folder, LPCWSTR file) {
  if (!result) return nullptr;
  // Either input may be the result's own buffer.
  const bool nothing = !folder && !file;
  const std::u16string joined = nothing ? std::u16string() : winhost::JoinedPath(folder, file);
  *result = 0;
  if (nothing || joined.size() >= MAX_PATH) return nullptr;
  return PathCanonicalizeW(result, joined.c_str()) ? result : nullptr;
}

BOOL PathAppendW(LPWSTR path, LPCWSTR more) {
  if (!path || !more) return FALSE;
  if (!PathIsUNCW(more)) {
    while (*more == u'\\') ++more;
  }
  return PathCombineW(path, path, more) != nullptr;
}
