#include <windows.h>

#include <algorithm>

#include "tests/winhost/gdi/canvas.h"
#include "winhost/gdi/device_context.h"

using namespace graphics_testing;

namespace {

class RegionTest : public GraphicsTest {
 protected:
  static bool Contains(const std::vector<RECT>& rects, int x, int y) {
    return std::ranges::any_of(rects,
                               [=](const RECT& r) { return x >= r.left && x < r.right && y >= r.top && y < r.bottom; });
  }
};

struct Combination {
  int mode;
  int complexity;
  RECT box;
  std::size_t rects;
};

TEST_F(RegionTest, CombinesAsAsked) {
  const Combination rows[] = {{RGN_AND, SIMPLEREGION, {2, 2, 4, 4}, 1},
                              {RGN_OR, COMPLEXREGION, {0, 0, 6, 6}, 3},
                              {RGN_XOR, COMPLEXREGION, {0, 0, 6, 6}, 4},
                              {RGN_DIFF, COMPLEXREGION, {0, 0, 4, 4}, 2},
                              {RGN_COPY, SIMPLEREGION, {0, 0, 4, 4}, 1}};
  HRGN a = CreateRectRgn(0, 0, 4, 4), b = CreateRectRgn(6, 6, 2, 2), result = CreateRectRgn(0, 0, 0, 0);
  for (const Combination& row : rows) {
    EXPECT_EQ(CombineRgn(result, a, b, row.mode), row.complexity) << row.mode;
    RECT box;
    GetRgnBox(result, &box);
    EXPECT_EQ(box, row.box) << row.mode;
    EXPECT_EQ(winhost::RegionRects(result)->size(), row.rects) << row.mode;
  }
  EXPECT_EQ(CombineRgn(result, a, b, 77), RGN_ERROR);
  EXPECT_EQ(CombineRgn(a, a, a, RGN_DIFF), NULLREGION);
  EXPECT_EQ(CombineRgn(a, nullptr, b, RGN_AND), RGN_ERROR);
  for (HRGN region : {a, b, result}) DeleteObject(region);
}

TEST_F(RegionTest, RoundCornersFollowTheEllipse) {
  HRGN handle = CreateRoundRectRgn(0, 0, 101, 61, 20, 40);
  const auto rects = *winhost::RegionRects(handle);
  RECT box;
  EXPECT_EQ(GetRgnBox(handle, &box), COMPLEXREGION);
  EXPECT_EQ(box, (RECT{0, 0, 100, 60})) << "a row and a column less than asked for";
  EXPECT_FALSE(Contains(rects, 0, 0));
  EXPECT_FALSE(Contains(rects, 1, 5));
  EXPECT_TRUE(Contains(rects, 10, 0));
  EXPECT_TRUE(Contains(rects, 0, 20));
  EXPECT_TRUE(Contains(rects, 50, 59));
  EXPECT_FALSE(Contains(rects, 99, 59));
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 100; ++x) ASSERT_EQ(Contains(rects, x, y), Contains(rects, 99 - x, 59 - y)) << x << ',' << y;
  }
  DeleteObject(handle);
}

TEST_F(RegionTest, FarCoordinatesAreCutAndQuick) {
  constexpr int kMost = 0x7FFFFFFF;
  HRGN region = CreateRoundRectRgn(-kMost - 1, -kMost - 1, kMost, kMost, kMost, kMost);
  RECT box;
  EXPECT_EQ(GetRgnBox(region, &box), COMPLEXREGION);
  EXPECT_LT(box.left, -100000000);
  DeleteObject(region);
}

}  // namespace
