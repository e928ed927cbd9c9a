#include "lumo/controls/progress_fill.h"

#include "lumo/controls/arc_geometry.h"
#include "lumo/controls/progress_bar.h"
#include "tests/src/lumo/controls/tree.h"

#include <limits>

namespace {

using namespace lumo_tests;
using lumo::ProgressRange;

Place FillOf(ProgressRange range, LONG width, LONG height, bool horizontal) {
  range.Settle();
  const RECT fill = lumo::ProgressFill(range, width, height, horizontal);
  return {fill.left, fill.top, fill.right, fill.bottom};
}

TEST(ProgressFillTest, TheFillIsTheTruncatedShare) {
  EXPECT_EQ(FillOf({0, 100, 50}, 600, 4, true), (Place{0, 0, 300, 4}));
  EXPECT_EQ(FillOf({0, 100, 1}, 600, 4, true), (Place{0, 0, 6, 4}));
  EXPECT_EQ(FillOf({0, 100, 0}, 600, 4, true), (Place{0, 0, 0, 4}));
  EXPECT_EQ(FillOf({0, 3, 1}, 100, 4, true), (Place{0, 0, 33, 4}));
  EXPECT_EQ(FillOf({-50, 50, 0}, 100, 4, true), (Place{0, 0, 50, 4}));
  EXPECT_EQ(FillOf({0, 100, 25}, 10, 120, false), (Place{0, 90, 10, 120}));
  EXPECT_EQ(FillOf({0, 3, 1}, 10, 100, false), (Place{0, 66, 10, 100}));
}

TEST(ProgressFillTest, RangesSettleWithoutOverflow) {
  struct Row {
    ProgressRange before;
    int max;
    double value;
    LONG filled;  // of 100
  };
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  const Row kRows[] = {
      {{0, 100, 150}, 100, 100, 100},
      {{0, 100, -3}, 100, 0, 0},
      {{5, 5, 5}, 6, 5, 0},
      {{5, 2, 9}, 6, 6, 100},
      {{INT_MIN, INT_MAX, 0}, INT_MAX, 0, 50},
      {{INT_MAX, INT_MAX, 1}, INT_MAX, double(INT_MAX), 0},
      {{INT_MAX, 0, 1e300}, INT_MAX, double(INT_MAX) + 1, 100},
      {{0, 10, kNone}, 10, 0, 0},
  };
  for (const Row& row : kRows) {
    ProgressRange range = row.before;
    range.Settle();
    EXPECT_EQ(range.max, row.max);
    EXPECT_EQ(range.value, row.value);
    EXPECT_EQ(lumo::ProgressFill(range, 100, 1, true).right, row.filled);
  }
}

TEST_F(ControlsTest, PaintingSettlesTheValue) {
  lumo::Progress bar;
  bar.SetPos({10, 20, 610, 24});
  bar.SetValue(150);
  bar.SetMax(99.9);
  EXPECT_EQ(bar.GetValue(), 150);
  const RECT fill = bar.ProgressPart()->SettleFill();
  EXPECT_EQ(bar.GetValue(), 99);
  EXPECT_EQ((Place{fill.left, fill.top, fill.right, fill.bottom}), (Place{10, 20, 610, 24}));
  EXPECT_EQ(bar.Sizes().height, 12);
}

TEST(ArcGeometryTest, TheArcLiesInTheMiddleSquare) {
  const lumo::ArcGeometry arc = lumo::ArcIn({10, 10, 111, 61}, 3);
  EXPECT_EQ(arc.centre.x, 60);
  EXPECT_EQ(arc.centre.y, 35);
  EXPECT_EQ((Place{arc.square.left, arc.square.top, arc.square.right, arc.square.bottom}), (Place{35, 10, 86, 61}));
  EXPECT_EQ((Place{arc.arc.left, arc.arc.top, arc.arc.right, arc.arc.bottom}), (Place{39, 14, 82, 57}));
  EXPECT_EQ(lumo::SweepOf(0.25, true), 90.0f);
  EXPECT_EQ(lumo::SweepOf(0.25, false), -90.0f);
}

}  // namespace
