#include "lumo/controls/tile_layout.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/controls/box_base.h"
#include "lumo/controls/layout_math.h"
#include "lumo/controls/place_child.h"

#include <algorithm>

namespace lumo {
namespace {

bool TakesPart(const ControlBase& child) { return !child.IsFloating() && child.IsVisible(); }

// The cell that holds every child with its margin; children that stretch ask for nothing.
SIZE LargestCell(const ControlList& children, SIZE room) {
  LONGLONG width = 0, height = 0;
  for (ControlBase* const child : children) {
    if (!TakesPart(*child)) continue;
    const RECT margin = child->ScaledMargin();
    const SIZE size = ClampToBounds(*child, child->EstimateSize(room));
    width = std::max(width, LONGLONG{margin.left} + margin.right + std::max<LONG>(size.cx, 0));
    height = std::max(height, LONGLONG{margin.top} + margin.bottom + std::max<LONG>(size.cy, 0));
  }
  return {ToLong(width), ToLong(height)};
}

void SetItemExtent(TileLayout& layout, POINT size) { layout.SetItemSize({size.x, size.y}); }

constexpr AttributeRow<TileLayout> kAttributes[] = {
    {TEXT("columns"), kValueAs<TileLayout, ValueKind::Length, &TileLayout::SetColumns>},
    {TEXT("itemsize"), kValueAs<TileLayout, ValueKind::Extent, &SetItemExtent>},
};
static_assert(SortedAndUnique(kAttributes));

}  // namespace

bool TileLayout::SetAttribute(StringView name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, name, TextOf(value)) || Layout::SetAttribute(name, value);
}

void TileLayout::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

void TileLayout::SetItemSize(SIZE design) {
  const int scale = Owner()->Scale();
  const SIZE size = {ScaleLength(design.cx, scale), ScaleLength(design.cy, scale)};
  if (size.cx == item_.cx && size.cy == item_.cy) return;
  item_ = size;
  Owner()->Arrange();
}

void TileLayout::SetColumns(int columns) {
  if (columns <= 0 || columns == columns_) return;
  columns_ = columns;
  Owner()->Arrange();
}

LONGLONG TileLayout::Extent(LONGLONG cells, LONG length) const {
  return cells > 0 ? cells * length + (cells - 1) * GetChildMargin() : 0;
}

TileLayout::Grid TileLayout::GridFor(const ControlList& children, SIZE room) const {
  Grid grid = {item_, columns_, 0};
  if (item_.cx <= 0 || item_.cy <= 0) {
    const SIZE largest = LargestCell(children, room);
    if (item_.cx <= 0) grid.cell.cx = largest.cx;
    if (item_.cy <= 0) grid.cell.cy = largest.cy;
  }
  const LONGLONG count =
      std::count_if(children.begin(), children.end(), [](const ControlBase* child) { return TakesPart(*child); });
  const LONGLONG gap = GetChildMargin(), step = grid.cell.cx + gap;
  if (columns_ <= 0)
    grid.columns = step > 0 ? std::clamp<LONGLONG>((room.cx + gap) / step, 1, std::max(count, 1LL)) : 1;
  grid.rows = (count + grid.columns - 1) / grid.columns;
  return grid;
}

SIZE TileLayout::ArrangeChild(const ControlList& children, const RECT& inner) {
  const Grid grid = GridFor(children, {ToLong(WideWidth(inner)), ToLong(WideHeight(inner))});
  const LONGLONG gap = GetChildMargin();
  const SIZE used = {ToLong(Extent(grid.columns, grid.cell.cx)), ToLong(Extent(grid.rows, grid.cell.cy))};
  const ListGuard guard(Owner());
  LONGLONG index = 0;
  for (size_t i = 0; i < children.size(); ++i) {
    ControlBase& child = *children[i];
    if (TakesPart(child)) {
      const LONGLONG x = inner.left + index % grid.columns * (grid.cell.cx + gap);
      const LONGLONG y = inner.top + index / grid.columns * (grid.cell.cy + gap);
      ++index;
      PlaceChild(child, MakeRect(x, y, x + grid.cell.cx, y + grid.cell.cy));
    } else {
      PlaceChild(child, inner);
    }
    if (!guard.Holds()) break;
  }
  return used;
}

SIZE TileLayout::EstimateLayout(const ControlList& children, SIZE available) {
  const Grid grid = GridFor(children, available);
  const SIZE content = {ToLong(Extent(grid.columns, grid.cell.cx)), ToLong(Extent(grid.rows, grid.cell.cy))};
  return WithPadding(content.cx, content.cy);
}

}  // namespace lumo
