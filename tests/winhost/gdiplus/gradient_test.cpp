#include <cmath>

#include "tests/winhost/gdiplus/gdiplus_fixture.h"

using namespace graphics_testing;
using namespace Gdiplus;

namespace {

class GradientTest : public GdiplusTest {
 protected:
  GpLineGradient* Make(RectF rect, ARGB from, ARGB to, int mode, WrapMode wrap = WrapModeTile) {
    GpLineGradient* brush = nullptr;
    EXPECT_EQ(GdipCreateLineBrushFromRect(&rect, from, to, static_cast<LinearGradientMode>(mode), wrap, &brush), Ok);
    return brush;
  }
  void Fill(GpLineGradient* brush, int x, int y, int width, int height) {
    EXPECT_EQ(GdipFillRectangleI(graphics_, brush, x, y, width, height), Ok);
    GdipDeleteBrush(brush);
  }
};

TEST_F(GradientTest, ColoursAreThoseOfPixelCentresAndRepeatExactly) {
  Fill(Make(RectF(0, 0, 4, 10), 0xFF000000, 0xFFFFFFFF, 0), 0, 0, 8, 2);
  const std::uint32_t expected[] = {0x20, 0x60, 0x9F, 0xDF, 0x20, 0x60, 0x9F, 0xDF};
  for (int x = 0; x < 8; ++x) EXPECT_NEAR_COLOR(At(x, 0), 0xFF000000u | expected[x] * 0x010101u, 1);
}

TEST_F(GradientTest, ModesRunInTheirDirections) {
  struct Row {
    int mode;
    int dark_x, dark_y, light_x, light_y;
  };
  const Row rows[] = {{0, 0, 20, 59, 5}, {1, 50, 0, 3, 29}, {2, 0, 0, 59, 29}, {3, 59, 0, 0, 29}};
  for (const Row& row : rows) {
    Fill(Make(RectF(0, 0, 60, 30), 0xFF000000, 0xFFFFFFFF, row.mode), 0, 0, 60, 30);
    EXPECT_LT(At(row.dark_x, row.dark_y) & 0xFF, 12u) << row.mode;
    EXPECT_GT(At(row.light_x, row.light_y) & 0xFF, 243u) << row.mode;
  }
  EXPECT_NEAR_COLOR(At(0, 0), 0xFF808080u, 6) << "a diagonal is half way at the other corners";
  EXPECT_NEAR_COLOR(At(59, 29), 0xFF808080u, 6);
}

TEST_F(GradientTest, ColoursMixStraight) {
  Fill(Make(RectF(0, 0, 100, 1), 0xFFFF0000, 0x00FF0000, 0), 0, 0, 100, 1);
  EXPECT_NEAR_COLOR(At(50, 0), 0x7F7F0000u, 3);
  canvas_->Fill(0);
  Fill(Make(RectF(0, 0, 100, 1), 0xFFFF0000, 0x000000FF, 0), 0, 0, 100, 1);
  EXPECT_NEAR_COLOR(At(50, 0), 0x7F40003Fu, 4) << "half transparent purple";
}

TEST_F(GradientTest, FlippedRepetitionRunsBackwards) {
  Fill(Make(RectF(0, 0, 10, 1), 0xFF000000, 0xFFFFFFFF, 0, WrapModeTileFlipX), 0, 0, 20, 1);
  for (int x = 0; x < 10; ++x) EXPECT_NEAR_COLOR(At(x, 0), At(19 - x, 0), 1);
}

TEST_F(GradientTest, BlendMovesTheColours) {
  GpLineGradient* brush = Make(RectF(0, 0, 1, 60), 0xFF000000, 0xFFFFFFFF, 1);
  const REAL factors[] = {0, 0.4f, 0.6f, 1}, positions[] = {0, 0.2f, 0.8f, 1};
  EXPECT_EQ(GdipSetLineBlend(brush, factors, positions, 4), Ok);
  EXPECT_EQ(GdipSetLineBlend(brush, factors, factors, 3), InvalidParameter) << "the last position must be 1";
  Fill(brush, 0, 0, 1, 60);
  EXPECT_NEAR(At(0, 12) & 0xFF, 0.4 * 255, 3);
  EXPECT_NEAR(At(0, 30) & 0xFF, 0.5 * 255, 3);
  EXPECT_NEAR(At(0, 6) & 0xFF, 0.2 * 255, 6);
}

TEST_F(GradientTest, PenTakesACopyOfItsBrush) {
  GpLineGradient* brush = Make(RectF(0, 0, 100, 1), 0xFF000000, 0xFFFFFFFF, 0);
  GpPen* pen = nullptr;
  EXPECT_EQ(GdipCreatePen2(brush, 10, UnitPixel, &pen), Ok);
  GdipDeleteBrush(brush);
  GdipDrawLineI(graphics_, pen, 0, 30, 100, 30);
  EXPECT_LT(At(5, 30) & 0xFF, 20u);
  EXPECT_GT(At(95, 30) & 0xFF, 235u);
  GdipDeletePen(pen);
}

TEST_F(GradientTest, WrongRectanglesAndModesAreRefused) {
  GpLineGradient* brush = nullptr;
  const RectF good(0, 0, 4, 4), empty(0, 0, 0, 4), odd(0, 0, std::nanf(""), 4);
  EXPECT_EQ(GdipCreateLineBrushFromRect(&empty, 0, 0, LinearGradientModeVertical, WrapModeTile, &brush), OutOfMemory);
  EXPECT_EQ(GdipCreateLineBrushFromRect(&odd, 0, 0, LinearGradientModeVertical, WrapModeTile, &brush),
            InvalidParameter);
  EXPECT_EQ(GdipCreateLineBrushFromRect(&good, 0, 0, LinearGradientModeVertical, WrapModeClamp, &brush),
            InvalidParameter);
  EXPECT_EQ(GdipCreateLineBrushFromRect(&good, 0, 0, static_cast<LinearGradientMode>(4), WrapModeTile, &brush),
            InvalidParameter);
  EXPECT_EQ(brush, nullptr);
}

}  // namespace
