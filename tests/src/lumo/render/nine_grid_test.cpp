#include "lumo/render/nine_grid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumo {
namespace {

std::string Text(const RECT& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom);
}

std::vector<std::string> Cells(NineGrid grid, bool all_tiles = true) {
  static constexpr const char* kNames[] = {"c", "tl", "t", "tr", "l", "r", "bl", "b", "br"};
  if (all_tiles) grid.tiles_in = grid.dest;
  std::vector<std::string> cells;
  VisitCells(grid, [&](const GridCell& cell) {
    cells.push_back(std::string(kNames[static_cast<int>(cell.name)]) + " " + Text(cell.dest) + " < " +
                    Text(cell.source));
  });
  return cells;
}

using Strings = std::vector<std::string>;
constexpr RECT kTen = {10, 10, 10, 10};
constexpr RECT kFar = {-1000, -1000, 1000, 1000};

TEST(NineGridTest, EndsKeepTheirSizeAndTheMiddleIsStretched) {
  EXPECT_EQ(Cells({kFar, {0, 0, 200, 40}, {0, 0, 40, 40}, kTen, kTen}),
            (Strings{"c 10,10,190,30 < 10,10,30,30", "tl 0,0,10,10 < 0,0,10,10", "t 10,0,190,10 < 10,0,30,10",
                     "tr 190,0,200,10 < 30,0,40,10", "l 0,10,10,30 < 0,10,10,30", "r 190,10,200,30 < 30,10,40,30",
                     "bl 0,30,10,40 < 0,30,10,40", "b 10,30,190,40 < 10,30,30,40", "br 190,30,200,40 < 30,30,40,40"}));
}

TEST(NineGridTest, CornersScaleOnTheSideOfTheScreenOnlyUnlessThePictureIsScaled) {
  const CornerPair bitmap = ScaleCorners(kTen, 150, false), vector = ScaleCorners(kTen, 150, true);
  EXPECT_EQ(Text(bitmap.dest) + " " + Text(bitmap.source), "15,15,15,15 10,10,10,10");
  EXPECT_EQ(Text(vector.dest) + " " + Text(vector.source), "15,15,15,15 15,15,15,15");
  EXPECT_EQ(Cells({kFar, {0, 0, 300, 60}, {0, 0, 40, 40}, bitmap.dest, bitmap.source})[1], "tl 0,0,15,15 < 0,0,10,10");
}

TEST(NineGridTest, CellsWithoutSourceWidthAreLeftOut) {
  const RECT left_and_top = {4, 5, 0, 0};
  EXPECT_EQ(
      Cells({kFar, {0, 0, 40, 40}, {0, 0, 20, 20}, left_and_top, left_and_top}),
      (Strings{"c 4,5,40,40 < 4,5,20,20", "tl 0,0,4,5 < 0,0,4,5", "t 4,0,40,5 < 4,0,20,5", "l 0,5,4,40 < 0,5,4,20"}));
  EXPECT_EQ(Cells({kFar, {3, 3, 40, 40}, {1, 2, 20, 20}, {}, {}}), (Strings{"c 3,3,40,40 < 1,2,20,20"}));
}

TEST(NineGridTest, CellsOutsideTheClipAreLeftOut) {
  EXPECT_EQ(Cells({{0, 0, 10, 10}, {0, 0, 200, 40}, {0, 0, 40, 40}, kTen, kTen}),
            (Strings{"tl 0,0,10,10 < 0,0,10,10"}));
  EXPECT_EQ(Cells({{0, 0, 11, 11}, {0, 0, 200, 40}, {0, 0, 40, 40}, kTen, kTen}).size(), 4U);
  EXPECT_EQ(Cells({{0, 0, 0, 0}, {0, 0, 200, 40}, {0, 0, 40, 40}, kTen, kTen}).size(), 0U);
}

TEST(NineGridTest, TilesAreLaidFromTheTopLeftAndTheLastIsCut) {
  NineGrid grid = {kFar, {0, 0, 120, 40}, {0, 0, 50, 40}, kTen, kTen, true, false, {}};
  Strings tiles = Cells(grid);
  tiles.resize(4);
  EXPECT_EQ(tiles, (Strings{"c 10,10,40,30 < 10,10,40,30", "c 40,10,70,30 < 10,10,40,30",
                            "c 70,10,100,30 < 10,10,40,30", "c 100,10,110,30 < 10,10,20,30"}));
  EXPECT_EQ(Cells({kFar, {0, 0, 20, 25}, {0, 0, 10, 10}, {}, {}, false, true, {}}),
            (Strings{"c 0,0,20,10 < 0,0,10,10", "c 0,10,20,20 < 0,0,10,10", "c 0,20,20,25 < 0,0,10,5"}));
  EXPECT_EQ(Cells({kFar, {0, 0, 15, 15}, {0, 0, 10, 10}, {}, {}, true, true, {}}),
            (Strings{"c 0,0,10,10 < 0,0,10,10", "c 10,0,15,10 < 0,0,5,10", "c 0,10,10,15 < 0,0,10,5",
                     "c 10,10,15,15 < 0,0,5,5"}));
}

TEST(NineGridTest, OnlyTheTilesAskedForAreVisited) {
  NineGrid grid = {kFar, {0, 0, 100, 10}, {0, 0, 10, 10}, {}, {}, true, false, {15, 0, 35, 10}};
  EXPECT_EQ(Cells(grid, false),
            (Strings{"c 10,0,20,10 < 0,0,10,10", "c 20,0,30,10 < 0,0,10,10", "c 30,0,40,10 < 0,0,10,10"}));
  EXPECT_EQ(CountTiles(grid), 3U);
}

TEST(NineGridTest, StrangeRectanglesNeitherHangNorOverflow) {
  constexpr LONG kMost = 0x7FFFFFFF, kLeast = -kMost - 1;
  const RECT huge = {kLeast, kLeast, kMost, kMost};
  for (const RECT& corners : {RECT{0, 0, 0, 0}, huge, RECT{kMost, kMost, kMost, kMost}}) {
    for (const RECT& source : {RECT{0, 0, 1, 1}, RECT{5, 5, 5, 5}, RECT{9, 9, 2, 2}, huge}) {
      EXPECT_LE(Cells({{0, 0, 20, 20}, huge, source, corners, corners, true, true, {0, 0, 20, 20}}, false).size(),
                410U);
    }
  }
  EXPECT_EQ(Cells({kFar, {0, 0, 20, 20}, {5, 5, 5, 5}, {}, {}, true, false, {}}).size(), 0U);
}

}  // namespace
}  // namespace lumo
