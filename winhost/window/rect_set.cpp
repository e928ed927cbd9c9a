#include "winhost/window/rect_set.h"

#include <algorithm>
#include <utility>

namespace winhost {
namespace {

// What is left of `from` without `taken`: bands above and below, and what stands left and right of it between them.
void PushRest(const RECT& from, const RECT& taken, std::vector<RECT>& rest) {
  RECT common;
  if (!IntersectRect(&common, &from, &taken)) {
    rest.push_back(from);
    return;
  }
  const RECT pieces[] = {{from.left, from.top, from.right, common.top},
                         {from.left, common.top, common.left, common.bottom},
                         {common.right, common.top, from.right, common.bottom},
                         {from.left, common.bottom, from.right, from.bottom}};
  for (const RECT& piece : pieces) {
    if (!IsRectEmpty(&piece)) rest.push_back(piece);
  }
}

}  // namespace

RectSet RectSet::Of(std::vector<RECT> disjoint) {
  RectSet region;
  std::erase_if(disjoint, [](const RECT& rectangle) { return IsRectEmpty(&rectangle); });
  region.rects_ = std::move(disjoint);
  return region;
}

void RectSet::Add(const RECT& rectangle) {
  if (IsRectEmpty(&rectangle)) return;
  Subtract(rectangle);
  rects_.push_back(rectangle);
}

void RectSet::Subtract(const RECT& rectangle) {
  std::vector<RECT> rest;
  for (const RECT& each : rects_) PushRest(each, rectangle, rest);
  rects_ = std::move(rest);
}

void RectSet::Intersect(const RECT& rectangle) {
  std::vector<RECT> common;
  for (const RECT& each : rects_) {
    RECT piece;
    if (IntersectRect(&piece, &each, &rectangle)) common.push_back(piece);
  }
  rects_ = std::move(common);
}

void RectSet::Move(int dx, int dy) {
  for (RECT& each : rects_) OffsetRect(&each, dx, dy);
}

bool RectSet::Contains(POINT point) const {
  return std::ranges::any_of(rects_, [&](const RECT& each) { return PtInRect(&each, point); });
}

RECT RectSet::Bounds() const {
  RECT bounds{};
  for (const RECT& each : rects_) UnionRect(&bounds, &bounds, &each);
  return bounds;
}

}  // namespace winhost
