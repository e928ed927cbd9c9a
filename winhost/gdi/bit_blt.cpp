#include <algorithm>
#include <cstring>

#include "winhost/gdi/dc.h"
#include "winhost/gdi/pixels.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

using Pixel = std::uint32_t;

bool NeedsSource(DWORD operation) { return operation != BLACKNESS && operation != WHITENESS; }

bool KnownOperation(DWORD operation) {
  constexpr DWORD kKnown[] = {SRCCOPY, SRCPAINT, SRCAND, SRCINVERT, NOTSRCCOPY, BLACKNESS, WHITENESS};
  return std::ranges::find(kKnown, operation) != std::end(kKnown);
}

Pixel Mix(DWORD operation, Pixel to, Pixel from) {
  switch (operation) {
    case SRCPAINT:
      return to | from;
    case SRCAND:
      return to & from;
    case SRCINVERT:
      return to ^ from;
    case NOTSRCCOPY:
      return ~from;
    default:
      return from;
  }
}

// Rows in the order in which no source row is overwritten before it is read; `copy` bridges overlaps within a row.
void CopyRect(const Surface& to, const RECT& rect, const Surface& from, int dx, int dy, DWORD operation) {
  const auto width = static_cast<std::size_t>(rect.right - rect.left);
  const int height = rect.bottom - rect.top;
  const bool downwards = dy >= 0;  // the source lies below its destination, or level with it
  for (int i = 0; i < height; ++i) {
    const LONG y = downwards ? rect.top + i : rect.bottom - 1 - i;
    Pixel* target = to.Row(y) + rect.left;
    const Pixel* source = from.Row(y + dy) + rect.left + dx;
    if (operation == SRCCOPY) {
      std::memmove(target, source, width * sizeof(Pixel));
    } else {
      for (std::size_t x = 0; x < width; ++x) target[x] = Mix(operation, target[x], source[x]);
    }
  }
}

// Both in device coordinates.
void Copy(const DeviceContext& to, const RECT& rect, const DeviceContext& from, POINT at, DWORD operation) {
  const int dx = at.x - rect.left, dy = at.y - rect.top;
  const auto& source = from.Pixels()->pixels();
  Region region(rect);
  region.Combine(to.Drawable(), RGN_AND);
  region.Combine(Region(RECT{-dx, -dy, source.width - dx, source.height - dy}), RGN_AND);
  if (region.Empty()) return;
  const Surface* pixels = from.Pixels();
  std::shared_ptr<Surface> copy;
  const bool overlaps = from.Pixels() == to.Pixels() && (operation != SRCCOPY || region.Count() > 1);
  if (overlaps) copy = CopyOf(*pixels, RECT{0, 0, source.width, source.height});
  if (copy) pixels = copy.get();
  for (int i = 0; i < region.Count(); ++i) CopyRect(*to.Pixels(), region.At(i), *pixels, dx, dy, operation);
}

BOOL Refuse(DWORD error) {
  SetLastError(error);
  return FALSE;
}

}  // namespace
}  // namespace winhost

BOOL BitBlt(HDC to_handle, int x, int y, int width, int height, HDC from_handle, int from_x, int from_y,
            DWORD operation) {
  using namespace winhost;
  if (const auto error = PlannedFault("BitBlt")) return Refuse(*error);
  const DWORD kind = operation & ~CAPTUREBLT;
  if (!KnownOperation(kind)) return Refuse(ERROR_INVALID_PARAMETER);
  const auto to = FindDc(to_handle);
  const auto from = NeedsSource(kind) ? FindDc(from_handle) : nullptr;
  if (!to || (NeedsSource(kind) && !from)) return FALSE;
  if (!to->Pixels() || (from && !from->Pixels())) return TRUE;
  // Negative sizes reach to the left and upwards, in the source as in the destination.
  const RECT rect = Region(to->ToDevice(RectAt(x, y, width, height))).Box();
  if (!from) {
    Region region(rect);
    region.Combine(to->Drawable(), RGN_AND);
    FillPixels(*to->Pixels(), region, kind == WHITENESS ? 0xFFFFFF : 0);
    return TRUE;
  }
  const RECT corner = from->ToDevice(RectAt(from_x, from_y, std::min(0, width), std::min(0, height)));
  const POINT at{corner.right, corner.bottom};
  Copy(*to, rect, *from, at, kind);
  return TRUE;
}
