#include "lumo/render/nine_grid.h"

#include "lumo/core/scaling.h"
#include "lumo/render/rect_math.h"

namespace lumo {
namespace {

// The four lines across and down that cut a rectangle into nine.
struct Lines {
  LONG x[4];
  LONG y[4];
};

Lines LinesOf(const RECT& rect, const RECT& corners) {
  return {{rect.left, Sum(rect.left, corners.left), Difference(rect.right, corners.right), rect.right},
          {rect.top, Sum(rect.top, corners.top), Difference(rect.bottom, corners.bottom), rect.bottom}};
}

RECT CellOf(const Lines& lines, int column, int row) {
  return {lines.x[column], lines.y[row], lines.x[column + 1], lines.y[row + 1]};
}

// One direction of tiling: where tile n lies and how much of it is left at the end.
struct TileAxis {
  LONG start;  // of the destination
  LONG end;
  LONG size;  // of a tile; 0: there are none
  LONGLONG first;
  LONGLONG count;
};

TileAxis AxisOf(LONG start, LONG end, LONG tile, bool tiled, LONG clip_start, LONG clip_end) {
  const LONG size = !tiled ? Difference(end, start) : std::max<LONG>(tile, 0);
  TileAxis axis = {start, end, size, 0, 0};
  const LONGLONG from = std::max<LONGLONG>(start, clip_start), to = std::min<LONGLONG>(end, clip_end);
  if (size <= 0 || from >= to) return axis;
  axis.first = (from - start) / size;
  axis.count = (to - start + size - 1) / size - axis.first;
  return axis;
}

struct Span {
  LONG start;
  LONG end;
};
Span TileSpan(const TileAxis& axis, LONGLONG number) {
  const LONGLONG start = axis.start + number * axis.size;
  return {Saturate(start), Saturate(std::min<LONGLONG>(start + axis.size, axis.end))};
}

struct Tiles {
  TileAxis across;
  TileAxis down;
};
Tiles TilesOf(const NineGrid& grid, const RECT& to, const RECT& from) {
  const RECT& in = grid.tiles_in;
  return {AxisOf(to.left, to.right, WidthOf(from), grid.x_tiled, in.left, in.right),
          AxisOf(to.top, to.bottom, HeightOf(from), grid.y_tiled, in.top, in.bottom)};
}

void VisitTiles(const NineGrid& grid, const GridCell& centre, const std::function<void(const GridCell&)>& visit) {
  const RECT& from = centre.source;
  const auto [across, down] = TilesOf(grid, centre.dest, from);
  for (LONGLONG row = down.first; row < down.first + down.count; ++row) {
    const Span y = TileSpan(down, row);
    for (LONGLONG column = across.first; column < across.first + across.count; ++column) {
      const Span x = TileSpan(across, column);
      RECT part = from;
      if (grid.x_tiled) part.right = Sum(from.left, x.end - x.start);
      if (grid.y_tiled) part.bottom = Sum(from.top, y.end - y.start);
      visit({GridCellName::Centre, {x.start, y.start, x.end, y.end}, part, centre.dest});
    }
  }
}

}  // namespace

void VisitCells(const NineGrid& grid, const std::function<void(const GridCell&)>& visit) {
  const RECT& c = grid.source_corners;
  const bool left = c.left > 0, top = c.top > 0, right = c.right > 0, bottom = c.bottom > 0;
  const struct {
    GridCellName name;
    int column;
    int row;
    bool drawn;
  } cells[] = {
      {GridCellName::Centre, 1, 1, true},
      {GridCellName::TopLeft, 0, 0, left && top},
      {GridCellName::Top, 1, 0, top},
      {GridCellName::TopRight, 2, 0, right && top},
      {GridCellName::Left, 0, 1, left},
      {GridCellName::Right, 2, 1, right},
      {GridCellName::BottomLeft, 0, 2, left && bottom},
      {GridCellName::Bottom, 1, 2, bottom},
      {GridCellName::BottomRight, 2, 2, right && bottom},
  };
  const Lines to = LinesOf(grid.dest, grid.dest_corners), from = LinesOf(grid.source, grid.source_corners);
  for (const auto& row : cells) {
    const RECT dest = CellOf(to, row.column, row.row);
    if (!row.drawn || !Meets(dest, grid.clip)) continue;
    const GridCell cell = {row.name, dest, CellOf(from, row.column, row.row), dest};
    if (row.name == GridCellName::Centre && (grid.x_tiled || grid.y_tiled)) {
      VisitTiles(grid, cell, visit);
    } else {
      visit(cell);
    }
  }
}

ULONGLONG CountTiles(const NineGrid& grid) {
  if (!grid.x_tiled && !grid.y_tiled) return 1;
  const RECT to = CellOf(LinesOf(grid.dest, grid.dest_corners), 1, 1);
  const RECT from = CellOf(LinesOf(grid.source, grid.source_corners), 1, 1);
  const auto [across, down] = TilesOf(grid, to, from);
  return static_cast<ULONGLONG>(across.count) * static_cast<ULONGLONG>(down.count);
}

CornerPair ScaleCorners(const RECT& corner, int scale_percent, bool already_scaled) {
  const RECT scaled = ScaleRect(corner, scale_percent);
  return {scaled, already_scaled ? scaled : corner};
}

}  // namespace lumo
