#include "lumo/render/gdi_clip.h"

#include "base/unique.h"
#include "lumo/render/rect_math.h"

namespace lumo {
namespace {

using UniqueRegion = vanta::Unique<HRGN, &::DeleteObject>;

}  // namespace

void GdiClip::Push(HDC dc, const RECT& rect) {
  saved_.push_back(SaveDC(dc));
  POINT origin = {};
  GetWindowOrgEx(dc, &origin);
  const RECT device = Moved(rect, Difference(0, origin.x), Difference(0, origin.y));
  const UniqueRegion region(CreateRectRgn(device.left, device.top, device.right, device.bottom));
  ExtSelectClipRgn(dc, region.Get(), RGN_AND);
}

void GdiClip::Pop(HDC dc) {
  if (saved_.empty()) return;
  RestoreDC(dc, saved_.back());
  saved_.pop_back();
}

}  // namespace lumo
