// The nine cells of a picture with borders: where each comes from and where it goes. Pure.
#pragma once

#include <windows.h>

#include <functional>

namespace lumo {

enum class GridCellName { Centre, TopLeft, Top, TopRight, Left, Right, BottomLeft, Bottom, BottomRight };

struct GridCell {
  GridCellName name;
  RECT dest;
  RECT source;
  RECT whole;  // the destination of all tiles of the cell; dest where there is one
};

struct NineGrid {
  RECT clip;  // a cell that does not meet it is left out
  RECT dest;
  RECT source;
  RECT dest_corners;  // widths left, top, right, bottom
  RECT source_corners;
  bool x_tiled = false;
  bool y_tiled = false;
  RECT tiles_in = {};  // of a tiled centre, only the tiles that meet this are visited
};

// Visits the cells in drawing order, centre first; a tiled centre gives one visit a tile, rows from the top, each from
// the left. A centre whose source is empty has no tiles. Sums beyond the range of LONG stop at its ends.
void VisitCells(const NineGrid& grid, const std::function<void(const GridCell&)>& visit);

// How many visits a tiled centre takes; 1 where it is stretched.
ULONGLONG CountTiles(const NineGrid& grid);

// Destination and source corners of a picture at a scale. A picture drawn for the scale uses scaled widths on both
// sides, another one its own pixels on the source's side.
struct CornerPair {
  RECT dest;
  RECT source;
};
CornerPair ScaleCorners(const RECT& corner, int scale_percent, bool already_scaled);

}  // namespace lumo
