// Icons that are loaded.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace winhost {

struct IconPicture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> bits;  // rows from the top, blue green red alpha, straight; empty: of a kind not decoded
};

// None for a wrong handle.
std::optional<IconPicture> PictureOf(HICON icon);
// How many icons are loaded that are not shared.
int LoadedIcons();

}  // namespace winhost
