#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

constexpr RECT kSharp = {0, 0, 0, 0};

class RenderShapesTest : public RenderTest {
 protected:
  RenderShapesTest() { render_->Resize(120, 60, true); }
};

TEST_F(RenderShapesTest, ARectangleIsFilledExactly) {
  render_->FillRect({10, 10, 20, 15}, kSharp, 0xFF336699, 255);
  EXPECT_EQ(Text(Touched(*render_)), "10,10,20,15");
  for (const POINT corner : {POINT{10, 10}, POINT{19, 10}, POINT{10, 14}, POINT{19, 14}}) {
    EXPECT_EQ(At(corner.x, corner.y), 0xFF336699);
  }
  render_->FillRect({30, 10, 30, 15}, kSharp, 0xFF336699, 255);
  render_->FillRect({40, 10, 35, 15}, kSharp, 0xFF336699, 255);
  EXPECT_EQ(Text(Touched(*render_)), "10,10,20,15");
}

TEST_F(RenderShapesTest, AlphaWeighsTheColoursOwn) {
  render_->FillRect({0, 0, 5, 5}, kSharp, 0x80FF8040, 128);
  EXPECT_TRUE(Near(At(2, 2), 0x40402010));
  render_->FillGradient({10, 0, 20, 5}, kSharp, 0xFF0000FF, 0xFF0000FF, 0, 51);
  EXPECT_TRUE(Near(At(15, 2), 0x33000033));
}

TEST_F(RenderShapesTest, ColoursAreFoundByName) {
  Globals().AddColor(TEXT("green"), TEXT("#ff00bb96"));
  Globals().AddColor(TEXT("blue"), TEXT("#ff0000ff"));
  render_->FillRectByName({0, 0, 5, 5}, kSharp, TEXT("green"), 255);
  EXPECT_EQ(At(2, 2), 0xFF00BB96);
  render_->FillRectByName({10, 0, 15, 5}, kSharp, TEXT("unknown"), 255);
  EXPECT_EQ(At(12, 2), 0U);
  render_->FillGradientByName({0, 20, 100, 30}, kSharp, TEXT("green"), TEXT("blue"), 0, 255);
  EXPECT_TRUE(Near(At(0, 25), 0xFF00BA96, 3));
  EXPECT_TRUE(Near(At(99, 25), 0xFF0001FE, 3));
  render_->DrawRoundRectByName({0, 40, 20, 50}, kSharp, 2, TEXT("blue"));
  EXPECT_EQ(At(10, 41), 0xFF0000FF);
  render_->DrawCircleByName({40, 35, 60, 55}, 2, TEXT("blue"));
  EXPECT_TRUE(Near(At(50, 37), 0xFF0000FF, 40));
}

TEST_F(RenderShapesTest, GradientsRunInTheirDirection) {
  render_->FillGradient({0, 0, 100, 20}, kSharp, 0xFF000000, 0xFFFF0000, 0, 255);
  EXPECT_TRUE(Near(At(50, 3), 0xFF800000, 3));
  EXPECT_EQ(At(50, 0), At(50, 19));
  EXPECT_EQ(At(0, 0) >> 24, 0xFFU);
  render_->FillGradient({0, 20, 20, 60}, kSharp, 0xFF000000, 0xFF00FF00, 1, 255);
  EXPECT_TRUE(Near(At(5, 30), 0xFF004000, 4));
  EXPECT_EQ(At(0, 30), At(19, 30));
  render_->FillGradient({40, 20, 80, 60}, kSharp, 0xFF000000, 0xFF0000FF, 2, 255);
  EXPECT_TRUE(Near(At(40, 20), 0xFF000000, 6));
  EXPECT_TRUE(Near(At(79, 59), 0xFF0000FF, 6));
  EXPECT_TRUE(Near(At(79, 20), 0xFF000080, 6));
  render_->FillGradient({80, 20, 120, 60}, kSharp, 0xFF000000, 0xFF0000FF, 3, 255);
  EXPECT_TRUE(Near(At(119, 20), 0xFF000000, 6));
  EXPECT_TRUE(Near(At(80, 59), 0xFF0000FF, 6));
  Show("gradients");
}

// Coverage of a rounded fill: what the arc leaves out, by area.
TEST_F(RenderShapesTest, CornersHaveTheirOwnRadii) {
  render_->FillRect({0, 0, 101, 51}, {20, 4, 10, 0}, 0xFFFFFFFF, 255);
  const auto missing = [&](int left, int top) {
    int sum = 0;
    for (int y = top; y < top + 20; ++y) {
      for (int x = left; x < left + 20; ++x) sum += 255 - Alpha(x, y);
    }
    return sum / 255.0;
  };
  constexpr double kShare = 1 - 3.14159265 / 4;
  EXPECT_NEAR(missing(1, 1), 400 * kShare, 4);
  EXPECT_NEAR(missing(81, 1), 16 * kShare, 2);
  EXPECT_NEAR(missing(81, 31), 100 * kShare, 3);
  EXPECT_NEAR(missing(1, 31), 0, 0.1);
  EXPECT_EQ(At(100, 25), 0xFFFFFFFF);
  EXPECT_EQ(At(50, 50), 0xFFFFFFFF);
  Show("corners");
}

TEST_F(RenderShapesTest, ACapsuleAndACircle) {
  render_->FillRect({0, 0, 60, 40}, {20, 20, 20, 20}, 0xFF00BB96, 255);
  render_->FillRect({70, 0, 110, 40}, {20, 20, 20, 20}, 0xFF00BB96, 255);
  for (const int left : {0, 70}) {
    const int right = left == 0 ? 59 : 109;
    EXPECT_LT(Alpha(left + 2, 2), 10);
    EXPECT_LT(Alpha(right - 1, 38), 10);
    EXPECT_GT(Alpha((left + right) / 2, 1), 230);
    EXPECT_EQ(Alpha(left + 2, 20), 255);
    EXPECT_EQ(Alpha(right - 1, 20), 255);
  }
  Show("capsule");
}

TEST_F(RenderShapesTest, OutlinesAreCrispAndOfTheirWidth) {
  for (const int width : {1, 2, 3}) {
    render_->Clear();
    render_->DrawRoundRect({0, 0, 60, 40}, kSharp, width, 0xFFFF0000);
    EXPECT_EQ(Text(Touched(*render_)), "1,1,60,40") << width;
    EXPECT_EQ(At(width, 20), 0xFFFF0000) << width;
    EXPECT_EQ(At(width + 1, 20), 0U) << width;
    EXPECT_EQ(At(59 - width, 20), 0U) << width;
    EXPECT_EQ(At(60 - width, 20), 0xFFFF0000) << width;
  }
  render_->Clear();
  render_->DrawRoundRect({0, 0, 60, 40}, {10, 10, 10, 10}, 2, 0xFFFF0000);
  EXPECT_EQ(Alpha(2, 2), 0);
  EXPECT_EQ(At(30, 1), 0xFFFF0000);
  EXPECT_EQ(At(30, 20), 0U);
  render_->DrawRoundRect({70, 0, 71, 1}, {10, 10, 10, 10}, 5, 0xFFFF0000);
  Show("outlines");
}

TEST_F(RenderShapesTest, CirclesAndLinesLieWhereTheyBelong) {
  render_->FillCircle({0, 0, 40, 40}, 0xFF0080FF);
  EXPECT_EQ(At(20, 20), 0xFF0080FF);
  EXPECT_EQ(Alpha(4, 4), 0);
  EXPECT_EQ(Alpha(20, 2), 255);
  render_->DrawCircle({50, 0, 90, 40}, 4, 0xFF0080FF);
  EXPECT_EQ(At(70, 20), 0U);
  EXPECT_TRUE(Near(At(70, 3), 0xFF0080FF, 3));
  EXPECT_TRUE(Near(At(53, 20), 0xFF0080FF, 3));
  EXPECT_EQ(Alpha(70, 7), 0);
  render_->Clear();
  render_->DrawLine({10, 50}, {100, 50}, 1, 0xFFFFFFFF);
  EXPECT_EQ(At(50, 50), 0xFFFFFFFF);
  EXPECT_EQ(At(50, 51), 0U);
  render_->DrawRect({20, 10, 40, 30}, 2, 0xFFFF0000);
  EXPECT_EQ(At(19, 20), 0xFFFF0000);
  EXPECT_EQ(At(20, 20), 0xFFFF0000);
  EXPECT_EQ(At(21, 20), 0U);
  EXPECT_EQ(At(40, 30), 0xFFFF0000);
  Show("circles");
}

}  // namespace
}  // namespace lumo
