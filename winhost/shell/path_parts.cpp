#include "winhost/shell/path_parts.h"

#include <shlwapi.h>

#include <vector>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

using View = std::u16string_view;

// What ".." cannot remove: "\", "C:\", "\\server\share". A drive without "\" is part of the first component instead.
View RootOf(View path) {
  if (path.starts_with(u"\\\\")) {
    const std::size_t server = path.find(u'\\', 2);
    if (server == path.npos) return path;
    const View share = path.substr(server + 1, path.find(u'\\', server + 1) - server - 1);
    return share == u"." || share == u".." ? path.substr(0, server) : path.substr(0, server + 1 + share.size());
  }
  if (path.starts_with(u'\\')) return path.substr(0, 1);
  return path.size() >= 3 && path[1] == u':' && path[2] == u'\\' ? path.substr(0, 3) : path.substr(0, 0);
}

std::vector<View> Split(View path) {
  std::vector<View> parts;
  for (;;) {
    const std::size_t end = path.find(u'\\');
    parts.push_back(path.substr(0, end));
    if (end == path.npos) return parts;
    path.remove_prefix(end + 1);
  }
}

std::u16string Join(const std::vector<View>& parts) {
  std::u16string joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined += u'\\';
    joined += parts[i];
  }
  return joined;
}

bool EndsComponent(View text, std::size_t at) { return at == text.size() || text[at] == u'\\'; }

}  // namespace

std::u16string CanonicalPath(View path) {
  const View root = RootOf(path);
  View rest = path.substr(root.size());
  const bool separated = !root.empty() && !root.ends_with(u'\\');
  if (separated && rest.starts_with(u'\\')) rest.remove_prefix(1);
  std::vector<View> kept;
  bool lost_start = false;
  for (const View part : Split(rest)) {
    if (part == u".") continue;
    if (part == u"..") {
      if (!kept.empty()) kept.pop_back();
      lost_start = lost_start || kept.empty();
    } else {
      kept.push_back(part);
    }
  }
  std::u16string result(root);
  const bool bare = kept.empty() || (rest.empty() && path.size() == root.size());
  if ((separated || (root.empty() && lost_start)) && !bare) result += u'\\';
  result += Join(kept);
  if (result.empty()) return u"\\";
  if (result.size() == 2 && result[1] == u':') result += u'\\';
  return result;
}

std::u16string JoinedPath(LPCWSTR folder, LPCWSTR file) {
  if (!file || !*file) return folder ? folder : u"";
  if (!folder || !*folder) return file;
  if (PathIsRelativeW(file)) {
    std::u16string joined(folder);
    if (joined.back() != u'\\') joined += u'\\';
    return joined + file;
  }
  if (file[0] != u'\\' || PathIsUNCW(file)) return file;
  std::u16string root(folder);
  PathStripToRootW(root.data());  // leaves nothing of a relative folder
  root.resize(View(root.c_str()).size());
  if (!root.empty() && root.back() != u'\\') root += u'\\';
  return root + (file + 1);
}

int CommonComponents(View a, View b) {
  std::size_t common = 0;
  const bool unc = PathIsUNCW(std::u16string(a).c_str()) != FALSE;
  for (std::size_t at = unc ? 2 : 0;; ++at) {
    if (EndsComponent(a, at) && EndsComponent(b, at)) common = at;
    if (at == a.size() || at == b.size() || Upcase(a[at]) != Upcase(b[at])) return static_cast<int>(common);
  }
}

}  // namespace winhost
