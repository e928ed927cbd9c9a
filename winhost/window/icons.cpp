#include "winhost/window/icons.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <span>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

struct Loaded {
  IconPicture picture;
  bool shared = false;
};

// Guarded by WaitLock.
struct Icons {
  std::uintptr_t last = 0x20000;
  std::map<std::uintptr_t, Loaded> open;
  std::map<std::u16string, std::uintptr_t> shared;  // by module, name and size
};

Icons& TheIcons() {
  static auto* icons = new Icons;
  return *icons;
}

using Bytes = std::span<const std::uint8_t>;

int Word(Bytes bytes, std::size_t at) { return bytes[at] | bytes[at + 1] << 8; }
std::uint32_t Long(Bytes bytes, std::size_t at) {
  return static_cast<std::uint32_t>(Word(bytes, at)) | static_cast<std::uint32_t>(Word(bytes, at + 2)) << 16;
}

Bytes ResourceBytes(HMODULE module, LPCWSTR name, LPCWSTR type) {
  const HRSRC found = FindResourceW(module, name, type);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  const void* bytes = loaded ? LockResource(loaded) : nullptr;
  if (!bytes) return {};
  return {static_cast<const std::uint8_t*>(bytes), SizeofResource(module, found)};
}

struct Entry {
  int width = 0, height = 0, bits = 0;
  WORD id = 0;
};

// The directory of a group: 6 bytes, then 14 a picture; a side of 0 is 256.
std::vector<Entry> ReadGroup(Bytes group) {
  constexpr std::size_t kHead = 6, kEntry = 14, kBits = 6, kId = 12;
  std::vector<Entry> entries;
  if (group.size() < kHead) return entries;
  const auto count = static_cast<std::size_t>(Word(group, 4));
  for (std::size_t i = 0; i < count && kHead + (i + 1) * kEntry <= group.size(); ++i) {
    const Bytes entry = group.subspan(kHead + i * kEntry, kEntry);
    entries.push_back({entry[0] ? entry[0] : 256, entry[1] ? entry[1] : 256, Word(entry, kBits),
                       static_cast<WORD>(Word(entry, kId))});
  }
  return entries;
}

// Nearest in size; of those the one with the most colours.
const Entry* Choose(const std::vector<Entry>& entries, int width) {
  const auto worse = [&](const Entry& a, const Entry& b) {
    const int far_a = std::abs(a.width - width), far_b = std::abs(b.width - width);
    return far_a != far_b ? far_a < far_b : a.bits > b.bits;
  };
  const auto best = std::ranges::min_element(entries, worse);
  return best == entries.end() ? nullptr : &*best;
}

// A device-independent bitmap with twice the icon's height (the mask follows the colours), rows from the bottom.
IconPicture Decode(Bytes bytes, const Entry& entry) {
  constexpr std::size_t kHead = 40, kBitsAt = 14;
  IconPicture picture{entry.width, entry.height, {}};
  if (bytes.size() < kHead || Long(bytes, 0) != kHead || Word(bytes, kBitsAt) != 32) return picture;
  const auto row = static_cast<std::size_t>(entry.width) * 4, rows = static_cast<std::size_t>(entry.height);
  if (Long(bytes, 4) != static_cast<std::uint32_t>(entry.width) || bytes.size() < kHead + row * rows) return picture;
  picture.bits.resize(row * rows);
  for (std::size_t y = 0; y < rows; ++y) {
    std::memcpy(picture.bits.data() + y * row, bytes.data() + kHead + (rows - 1 - y) * row, row);
  }
  return picture;
}

HICON Enter(Loaded loaded, const std::u16string& key) {
  std::scoped_lock lock(WaitLock());
  Icons& icons = TheIcons();
  const std::uintptr_t handle = icons.last += 2;
  if (loaded.shared) icons.shared[key] = handle;
  icons.open.emplace(handle, std::move(loaded));
  return reinterpret_cast<HICON>(handle);
}

HICON FindShared(const std::u16string& key) {
  std::scoped_lock lock(WaitLock());
  const auto found = TheIcons().shared.find(key);
  return found == TheIcons().shared.end() ? nullptr : reinterpret_cast<HICON>(found->second);
}

std::u16string NameText(LPCWSTR name) {
  return IS_INTRESOURCE(name) ? u"#" + Wide(std::to_string(reinterpret_cast<std::uintptr_t>(name)))
                              : std::u16string(name);
}

HICON Load(HINSTANCE instance, LPCWSTR name, int width, bool shared, const std::u16string& key) {
  if (!instance) return Enter({{width, width, {}}, true}, key);  // the system's own: a handle without a picture
  const auto entries = ReadGroup(ResourceBytes(instance, name, RT_GROUP_ICON));
  const Entry* entry = Choose(entries, width);
  if (!entry) {
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
  }
  const Bytes bytes = ResourceBytes(instance, MAKEINTRESOURCEW(entry->id), RT_ICON);
  if (bytes.empty()) {
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
  }
  return Enter({Decode(bytes, *entry), shared}, key);
}

}  // namespace

std::optional<IconPicture> PictureOf(HICON icon) {
  std::scoped_lock lock(WaitLock());
  const auto found = TheIcons().open.find(reinterpret_cast<std::uintptr_t>(icon));
  return found == TheIcons().open.end() ? std::nullopt : std::optional(found->second.picture);
}

int LoadedIcons() {
  std::scoped_lock lock(WaitLock());
  return static_cast<int>(std::ranges::count_if(TheIcons().open, [](const auto& each) { return !each.second.shared; }));
}

}  // namespace winhost

using namespace winhost;

HANDLE LoadImageW(HINSTANCE instance, LPCWSTR name, UINT type, int width, int height, UINT flags) {
  if (!name || type != IMAGE_ICON || (flags & LR_LOADFROMFILE)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const std::u16string text = NameText(name);
  if (const auto error = PlannedFault("LoadImageW", text)) {
    SetLastError(*error);
    return nullptr;
  }
  if (width == 0) width = flags & LR_DEFAULTSIZE ? GetSystemMetrics(SM_CXICON) : std::max(height, 32);
  const std::u16string key =
      Wide(std::to_string(reinterpret_cast<std::uintptr_t>(instance)) + "/" + std::to_string(width) + "/") + text;
  const bool shared = (flags & LR_SHARED) != 0;
  if (const HICON known = shared ? FindShared(key) : nullptr) return known;
  return Load(instance, name, width, shared, key);
}

HICON LoadIconW(HINSTANCE instance, LPCWSTR name) {
  return static_cast<HICON>(LoadImageW(instance, name, IMAGE_ICON, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
}

BOOL DestroyIcon(HICON icon) {
  std::scoped_lock lock(WaitLock());
  const auto found = TheIcons().open.find(reinterpret_cast<std::uintptr_t>(icon));
  if (found == TheIcons().open.end()) {
    SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return FALSE;
  }
  if (!found->second.shared) TheIcons().open.erase(found);
  return TRUE;
}
