#include "winhost/gdi/pixels.h"

#include <algorithm>
#include <cstring>

namespace winhost {

void FillPixels(const Surface& surface, const Region& region, std::uint32_t pixel) {
  for (int i = 0; i < region.Count(); ++i) {
    const RECT rect = region.At(i);
    for (LONG y = rect.top; y < rect.bottom; ++y) {
      std::fill(surface.Row(y) + rect.left, surface.Row(y) + rect.right, pixel);
    }
  }
}

std::shared_ptr<Surface> CopyOf(const Surface& surface, const RECT& part) {
  auto copy = Surface::Make(part.right - part.left, part.bottom - part.top);
  if (!copy) return nullptr;
  const auto bytes = static_cast<std::size_t>(copy->pixels().width) * 4;
  for (int y = 0; y < copy->pixels().height; ++y)
    std::memcpy(copy->Row(y), surface.Row(part.top + y) + part.left, bytes);
  return copy;
}

}  // namespace winhost
