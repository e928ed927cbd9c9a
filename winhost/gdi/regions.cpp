// The region calls, and a DC's clip region.
#include <utility>

#include "winhost/gdi/dc.h"
#include "winhost/gdi/device_context.h"
#include "winhost/gdi/region.h"
#include "winhost/machine/faults.h"

using winhost::FindDc;
using winhost::GdiObjectAs;
using winhost::Region;
using winhost::RegionObject;

namespace {

HRGN Enter(Region region) {
  if (const auto error = winhost::PlannedFault("CreateRectRgn")) {
    SetLastError(*error);
    return nullptr;
  }
  return static_cast<HRGN>(winhost::EnterObject(std::make_shared<RegionObject>(std::move(region))));
}

// The clip as a region; a DC without one is clipped to what it can draw on at all.
Region ClipOf(const winhost::DeviceContext& dc) {
  if (dc.state.clip) return *dc.state.clip;
  if (!dc.Pixels()) return Region(RECT{0, 0, dc.screen.cx, dc.screen.cy});
  return dc.Drawable();
}

int CombineClip(winhost::DeviceContext& dc, const Region& region, int mode) {
  Region clip = ClipOf(dc);
  if (!clip.Combine(region, mode)) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return RGN_ERROR;
  }
  const int complexity = clip.Complexity();
  dc.state.clip = std::move(clip);
  return complexity;
}

}  // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) { return Enter(Region(RECT{left, top, right, bottom})); }

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int width, int height) {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
  const RECT rect{left, top, right > left ? right - 1 : left, bottom > top ? bottom - 1 : top};
  return Enter(winhost::RoundRectRegion(rect, width, height));
}

int CombineRgn(HRGN result, HRGN first, HRGN second, int mode) {
  const auto target = GdiObjectAs<RegionObject>(result);
  const auto a = GdiObjectAs<RegionObject>(first);
  const auto b = mode == RGN_COPY ? a : GdiObjectAs<RegionObject>(second);
  if (!target || !a || !b) return RGN_ERROR;
  Region combined = a->region;
  if (mode != RGN_COPY && !combined.Combine(b->region, mode)) return RGN_ERROR;
  target->region = std::move(combined);
  return target->region.Complexity();
}

int GetRgnBox(HRGN handle, LPRECT box) {
  const auto object = GdiObjectAs<RegionObject>(handle);
  if (!object || !box) return RGN_ERROR;
  *box = object->region.Box();
  return object->region.Complexity();
}

int ExtSelectClipRgn(HDC handle, HRGN region, int mode) {
  const auto dc = FindDc(handle);
  if (!dc) return RGN_ERROR;
  if (!region) {
    if (mode != RGN_COPY) return RGN_ERROR;
    dc->state.clip.reset();
    return ClipOf(*dc).Complexity();
  }
  const auto object = GdiObjectAs<RegionObject>(region);
  return object ? CombineClip(*dc, object->region, mode) : RGN_ERROR;
}

int GetClipBox(HDC handle, LPRECT box) {
  const auto dc = FindDc(handle);
  if (!dc || !box) return RGN_ERROR;
  Region region = ClipOf(*dc);
  if (dc->Pixels()) region.Combine(dc->Drawable(), RGN_AND);
  const POINT shift = dc->Shift();
  const int complexity = region.Complexity();
  region.Offset(-shift.x, -shift.y);
  *box = complexity == NULLREGION ? RECT{} : region.Box();
  return complexity;
}

namespace winhost {

std::optional<std::vector<RECT>> RegionRects(HRGN handle) {
  const auto object = GdiObjectAs<RegionObject>(handle);
  if (!object) return std::nullopt;
  return object->region.Rects();
}

HRGN MakeRegion(std::span<const RECT> rects) { return Enter(Region(rects)); }

}  // namespace winhost
