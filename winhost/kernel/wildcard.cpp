#include "winhost/kernel/wildcard.h"

#include "winhost/machine/text.h"

namespace winhost {
namespace {

bool IsWild(std::u16string_view pattern, std::size_t at) {
  return at < pattern.size() && (pattern[at] == u'*' || pattern[at] == u'?');
}

// A dot before a wildcard also stands for the end of a name, so that "*.*" means everything.
bool MayStandForEnd(std::u16string_view pattern, std::size_t at) {
  return pattern[at] == u'?' || pattern[at] == u'*' || (pattern[at] == u'.' && IsWild(pattern, at + 1));
}

// Remembers the last "*" and, on a mismatch, lets it take one character more.
bool Match(std::u16string_view pattern, std::u16string_view name) {
  std::size_t p = 0, n = 0, star = pattern.npos, resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && pattern[p] == u'?' && name[n] == u'.') {
      ++p;  // a question mark never takes a dot
    } else if (p < pattern.size() && (pattern[p] == u'?' || Upcase(pattern[p]) == Upcase(name[n]))) {
      ++p;
      ++n;
    } else if (star != pattern.npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && MayStandForEnd(pattern, p)) ++p;
  return p == pattern.size();
}

}  // namespace

bool MatchesWildcard(std::u16string_view pattern, std::u16string_view name) {
  const bool wild = pattern.find_first_of(u"*?") != pattern.npos;
  if (wild && pattern.back() == u'.') {
    while (!pattern.empty() && pattern.back() == u'.') pattern.remove_suffix(1);
    return name.find(u'.') == name.npos && Match(pattern, name);
  }
  return Match(pattern, name);
}

}  // namespace winhost
