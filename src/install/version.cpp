#include "install/version.h"

#include "base/lock.h"
#include "base/paths.h"
#include "install/directories.h"
#include "install/product.h"
#include "install/product_config.h"
#include "report/makerlibs/file_signature.h"

#include <limits.h>
#include <wchar.h>

#include <vector>

namespace vanta {
namespace {

struct OwnVersion {
  String text = GetFileVersionString(ModulePath());
};
constinit Lazy<OwnVersion> own_version;

LONG ReadPart(StringView part) { return static_cast<LONG>(wcstol(String(part).c_str(), nullptr, 10)); }

std::vector<LONG> ReadParts(StringView version) {
  std::vector<LONG> parts;
  for (;;) {
    const size_t dot = version.find(TEXT('.'));
    parts.push_back(ReadPart(version.substr(0, dot)));
    if (dot == StringView::npos) return parts;
    version.remove_prefix(dot + 1);
  }
}

// The difference's sign must survive parts from both ends of the range.
int Difference(LONG a, LONG b) {
  const LONGLONG difference = LONGLONG{a} - b;
  if (difference > INT_MAX) return INT_MAX;
  if (difference < INT_MIN) return INT_MIN;
  return static_cast<int>(difference);
}

}  // namespace

const String& GetOwnVersion() { return own_version.Get().text; }

int CompareVersions(StringView a, StringView b) {
  std::vector<LONG> left = ReadParts(a);
  std::vector<LONG> right = ReadParts(b);
  const size_t count = left.size() > right.size() ? left.size() : right.size();
  left.resize(count);
  right.resize(count);
  for (size_t i = 0; i < count; ++i) {
    if (left[i] != right[i]) return Difference(left[i], right[i]);
  }
  return 0;
}

bool isLowerSetup() {
  GetInstallDirectory();
  return CompareVersions(ReadInstalledVersion(), GetOwnVersion()) > 0;
}

bool IsInstalled() { return IsSignedMakerFile(InstalledFile(kSiblingProgram)); }

}  // namespace vanta
