// TileLayout: children in rows of equal cells, from left to right and from top to bottom.
#pragma once

#include "lumo/controls/layout.h"

namespace lumo {

class BoxBase;

class TileLayout final : public Layout {
 public:
  bool SetAttribute(StringView name, const WCHAR* value) override;
  static void ListAttributes(AttributeInfos* infos);  // its own rows
  SIZE ArrangeChild(const ControlList& children, const RECT& inner) override;
  SIZE EstimateLayout(const ControlList& children, SIZE available) override;

  void SetItemSize(SIZE design);  // of a cell, scaled now; a side of 0 or less is the largest child's
  void SetColumns(int columns);   // 0 or less is ignored; until set, as many as fit
  SIZE ItemSize() const { return item_; }
  int Columns() const { return columns_; }

 private:
  struct Grid {
    SIZE cell;
    LONGLONG columns;
    LONGLONG rows;
  };
  Grid GridFor(const ControlList& children, SIZE room) const;
  LONGLONG Extent(LONGLONG cells, LONG length) const;  // with the gaps between the cells

  SIZE item_ = {};  // device pixels
  int columns_ = 0;
};

}  // namespace lumo
