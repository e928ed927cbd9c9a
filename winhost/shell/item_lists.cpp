#include "winhost/shell/item_lists.h"

#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "winhost/machine/faults.h"
#include "winhost/shell/id_list.h"

namespace winhost {
namespace {

// Without the size that ends it.
std::string_view BytesOf(PCIDLIST_ABSOLUTE list) {
  const auto* const bytes = reinterpret_cast<const char*>(list);
  std::size_t length = 0;
  for (;;) {
    USHORT item = 0;
    std::memcpy(&item, bytes + length, sizeof item);
    if (item == 0) return {bytes, length};
    length += item;
  }
}

}  // namespace

PIDLIST_ABSOLUTE MakeIdList(const std::u16string& folder) {
  LinkFile target;
  target.target = folder;
  target.attributes = FILE_ATTRIBUTE_DIRECTORY;
  const std::string list = IdListOf(target);
  if (list.empty() || PathOfIdList(list) != folder) return nullptr;
  const LPVOID memory = CoTaskMemAlloc(list.size());
  if (memory) std::memcpy(memory, list.data(), list.size());
  return static_cast<PIDLIST_ABSOLUTE>(memory);
}

}  // namespace winhost

using namespace winhost;

BOOL SHGetPathFromIDListW(PCIDLIST_ABSOLUTE list, LPWSTR path) {
  if (!path) return FALSE;
  *path = 0;
  if (!list) return FALSE;
  const std::u16string found = PathOfIdList(BytesOf(list));
  if (const auto error = PlannedFault("SHGetPathFromIDListW", found)) {
    SetLastError(*error);
    return FALSE;
  }
  if (found.empty() || found.size() >= MAX_PATH) return FALSE;
  std::copy_n(found.c_str(), found.size() + 1, path);
  return TRUE;
}
