#include "tests/winhost/gdiplus/gdiplus_fixture.h"

using namespace graphics_testing;
using namespace Gdiplus;

namespace {

class ShapesTest : public GdiplusTest {
 protected:
  GpPath* RoundRect(REAL x, REAL y, REAL w, REAL h, REAL r) {
    GpPath* path = nullptr;
    EXPECT_EQ(GdipCreatePath(FillModeAlternate, &path), Ok);
    GdipAddPathLine(path, x + r, y, x + w - r, y);
    GdipAddPathArc(path, x + w - 2 * r, y, 2 * r, 2 * r, 270, 90);
    GdipAddPathArc(path, x + w - 2 * r, y + h - 2 * r, 2 * r, 2 * r, 0, 90);
    GdipAddPathArc(path, x, y + h - 2 * r, 2 * r, 2 * r, 90, 90);
    GdipAddPathArc(path, x, y, 2 * r, 2 * r, 180, 90);
    GdipClosePathFigure(path);
    return path;
  }
  void Fill(GpPath* path, ARGB color) {
    GpSolidFill* brush = nullptr;
    GdipCreateSolidFill(color, &brush);
    EXPECT_EQ(GdipFillPath(graphics_, brush, path), Ok);
    GdipDeleteBrush(brush);
    GdipDeletePath(path);
  }
};

TEST_F(ShapesTest, SolidFillIsPremultipliedInTheSection) {
  FillRectangle(0x80FF8040, 10, 10, 20, 5);
  EXPECT_EQ(At(10, 10), 0x80804020u);
  EXPECT_EQ(At(29, 14), 0x80804020u);
  EXPECT_EQ(canvas_->Drawn(), (RECT{10, 10, 30, 15})) << "edges lie at whole coordinates";
  FillRectangle(0xFFFFFFFF, 10, 10, 20, 5);
  FillRectangle(0x80000000, 10, 10, 20, 5);
  EXPECT_NEAR_COLOR(At(15, 12), 0xFF7F7F7Fu, 1);
}

TEST_F(ShapesTest, OtherOffsetModesPutPixelCentresAtWholeCoordinates) {
  for (const PixelOffsetMode mode : {PixelOffsetModeDefault, PixelOffsetModeNone, PixelOffsetModeHighSpeed}) {
    canvas_->Fill(0);
    GdipSetPixelOffsetMode(graphics_, mode);
    FillRectangle(0xFFFF0000, 10, 10, 4, 4);
    EXPECT_NEAR_COLOR(At(10, 12), 0x80800000u, 2);
    EXPECT_EQ(At(12, 12), 0xFFFF0000u);
    EXPECT_NEAR_COLOR(At(14, 12), 0x80800000u, 2);
  }
}

TEST_F(ShapesTest, WindowOriginAndClipOfTheDcHold) {
  SetWindowOrgEx(canvas_->dc(), -5, -5, nullptr);
  HRGN region = CreateRectRgn(0, 0, 8, 8);
  ExtSelectClipRgn(canvas_->dc(), region, RGN_AND);
  FillRectangle(0xFF00FF00, 0, 0, 50, 50);
  EXPECT_EQ(canvas_->Drawn(), (RECT{5, 5, 8, 8}));
  DeleteObject(region);
}

TEST_F(ShapesTest, BottomUpSectionsAreDrawnTheRightWayUp) {
  Canvas upwards(10, 10, false);
  GpGraphics* graphics = nullptr;
  GdipCreateFromHDC(upwards.dc(), &graphics);
  GdipSetPixelOffsetMode(graphics, PixelOffsetModeHalf);
  GpSolidFill* brush = nullptr;
  GdipCreateSolidFill(0xFF0000FF, &brush);
  GdipFillRectangleI(graphics, brush, 1, 2, 3, 1);
  EXPECT_EQ(upwards.Drawn(), (RECT{1, 2, 4, 3}));
  GdipDeleteBrush(brush);
  GdipDeleteGraphics(graphics);
}

TEST_F(ShapesTest, RoundedFillHasItsRadius) {
  Fill(RoundRect(10, 10, 60, 40, 20), 0xFF0080FF);
  EXPECT_EQ(At(10, 10), 0u);
  EXPECT_EQ(At(30, 10), 0xFF0080FFu) << "where the straight edge begins";
  EXPECT_GT(At(10, 30) >> 24, 200u) << "the leftmost point of the capsule";
  // On the diagonal the circle's edge is 20·(1 − 1/√2) = 5.86 inside both sides.
  EXPECT_LT(At(15, 15) >> 24, 60u);
  EXPECT_GT(At(16, 16) >> 24, 200u);
  for (int y = 10; y < 50; ++y) {
    for (int x = 10; x < 70; ++x) ASSERT_TRUE(Near(At(x, y), At(79 - x, y), 6)) << x << ',' << y;
  }
}

TEST_F(ShapesTest, EllipseAndArcFillWhatTheyEnclose) {
  GpPath* path = nullptr;
  GdipCreatePath(FillModeAlternate, &path);
  GdipAddPathEllipse(path, 10, 10, 40, 20);
  Fill(path, 0xFFFFFFFF);
  double area = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 100; ++x) area += (At(x, y) >> 24) / 255.0;
  }
  EXPECT_NEAR(area, 3.14159265 * 20 * 10, 3);
  // Arcs of ellipses are given by directions: 45° is where x and y are equal, not the parameter 45°.
  canvas_->Fill(0);
  GdipCreatePath(FillModeAlternate, &path);
  GdipAddPathLine(path, 30, 20, 50, 20);
  GdipAddPathArc(path, 10, 10, 40, 20, 0, 45);
  GdipClosePathFigure(path);
  Fill(path, 0xFFFFFFFF);
  EXPECT_EQ(At(37, 26) >> 24, 255u);
  EXPECT_EQ(At(35, 27) >> 24, 0u) << "beyond the diagonal";
}

TEST_F(ShapesTest, FillModesDifferWhereFiguresOverlap) {
  for (const auto& [mode, alpha] : {std::pair(FillModeAlternate, 0u), {FillModeWinding, 255u}}) {
    canvas_->Fill(0);
    GpPath* path = nullptr;
    GdipCreatePath(mode, &path);
    GdipAddPathRectangle(path, 10, 10, 30, 30);
    GdipAddPathRectangle(path, 20, 20, 10, 10);
    Fill(path, 0xFFFFFFFF);
    EXPECT_EQ(At(25, 25) >> 24, alpha);
    EXPECT_EQ(At(15, 15) >> 24, 255u);
  }
}

TEST_F(ShapesTest, PensAreCentredAndNeverThinnerThanAPixel) {
  GpPen* pen = nullptr;
  GdipCreatePen1(0xFFFF0000, 2, UnitPixel, &pen);
  GdipDrawRectangleI(graphics_, pen, 20, 20, 10, 10);
  EXPECT_EQ(canvas_->Drawn(), (RECT{19, 19, 31, 31}));
  EXPECT_EQ(At(25, 25), 0u);
  EXPECT_EQ(At(19, 19), 0xFFFF0000u) << "mitred corners";
  GdipDeletePen(pen);
  canvas_->Fill(0);
  GdipCreatePen1(0xFF000000, 0, UnitWorld, &pen);
  GdipDrawLineI(graphics_, pen, 10, 10, 30, 10);
  EXPECT_NEAR_COLOR(At(20, 9), 0x80000000u, 3);
  EXPECT_NEAR_COLOR(At(20, 10), 0x80000000u, 3);
  GdipDrawEllipse(graphics_, pen, 50, 20, 20, 20);
  EXPECT_GT(At(60, 20) >> 24, 100u);
  EXPECT_EQ(At(60, 30), 0u);
  GdipDeletePen(pen);
}

TEST_F(ShapesTest, ArcOfAPenStartsAtItsAngleAndTurnsClockwise) {
  GpPen* pen = nullptr;
  GdipCreatePen1(0xFFFFFFFF, 4, UnitPixel, &pen);
  EXPECT_EQ(GdipDrawArc(graphics_, pen, 10, 10, 40, 40, 270, 90), Ok);
  EXPECT_GT(At(31, 10) >> 24, 200u);
  EXPECT_GT(At(49, 28) >> 24, 200u);
  EXPECT_EQ(At(28, 10) >> 24, 0u) << "flat ends";
  EXPECT_EQ(At(10, 30) >> 24, 0u);
  canvas_->Fill(0);
  GdipDrawArc(graphics_, pen, 10, 10, 40, 40, 270, -90);
  EXPECT_GT(At(10, 28) >> 24, 200u);
  EXPECT_EQ(At(49, 28) >> 24, 0u);
  EXPECT_EQ(GdipDrawArc(graphics_, pen, 10, 10, 0, 40, 0, 90), InvalidParameter);
  GdipDeletePen(pen);
}

TEST_F(ShapesTest, TransformsApplyInOrderAndStatesNest) {
  GraphicsState outer = 0, inner = 0;
  GdipSaveGraphics(graphics_, &outer);
  GdipTranslateWorldTransform(graphics_, 30, 20, MatrixOrderPrepend);
  GdipRotateWorldTransform(graphics_, 90, MatrixOrderPrepend);
  GdipSaveGraphics(graphics_, &inner);
  FillRectangle(0xFFFFFFFF, 0, 0, 10, 4);
  EXPECT_EQ(canvas_->Drawn(), (RECT{26, 20, 30, 30}));
  EXPECT_EQ(GdipRestoreGraphics(graphics_, outer), Ok);
  EXPECT_EQ(GdipRestoreGraphics(graphics_, inner), InvalidParameter) << "dropped with the outer one";
  canvas_->Fill(0);
  GdipRotateWorldTransform(graphics_, 90, MatrixOrderPrepend);
  GdipTranslateWorldTransform(graphics_, 30, 20, MatrixOrderAppend);
  FillRectangle(0xFFFFFFFF, 0, 0, 10, 4);
  EXPECT_EQ(canvas_->Drawn(), (RECT{26, 20, 30, 30}));
  GdipResetWorldTransform(graphics_);
  canvas_->Fill(0);
  FillRectangle(0xFFFFFFFF, 0, 0, 10, 4);
  EXPECT_EQ(canvas_->Drawn(), (RECT{0, 0, 10, 4}));
}

TEST_F(ShapesTest, WithoutSmoothingEdgesAreHard) {
  GdipSetSmoothingMode(graphics_, SmoothingModeNone);
  Fill(RoundRect(10, 10, 40, 40, 20), 0xFF000000);
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 100; ++x) ASSERT_TRUE(At(x, y) == 0 || At(x, y) == 0xFF000000);
  }
}

TEST_F(ShapesTest, WrongArgumentsAnswerAndNothingIsDrawn) {
  GpSolidFill* brush = nullptr;
  GdipCreateSolidFill(0xFFFFFFFF, &brush);
  GpPen* pen = nullptr;
  EXPECT_EQ(GdipCreatePen1(0, -1, UnitPixel, &pen), InvalidParameter);
  EXPECT_EQ(GdipCreatePen2(reinterpret_cast<GpBrush*>(graphics_), 1, UnitPixel, &pen), InvalidParameter);
  EXPECT_EQ(GdipFillRectangleI(graphics_, nullptr, 0, 0, 5, 5), InvalidParameter);
  EXPECT_EQ(GdipFillRectangleI(nullptr, brush, 0, 0, 5, 5), InvalidParameter);
  EXPECT_EQ(GdipFillRectangleI(graphics_, brush, 5, 5, 0, -3), Ok);
  EXPECT_EQ(GdipFillPath(graphics_, brush, reinterpret_cast<GpPath*>(brush)), InvalidParameter);
  EXPECT_EQ(GdipDeletePen(reinterpret_cast<GpPen*>(brush)), InvalidParameter);
  EXPECT_EQ(canvas_->Count(0), 100 * 60);
  EXPECT_EQ(GdipDeleteBrush(brush), Ok);
  EXPECT_EQ(GdipDeleteBrush(brush), InvalidParameter) << "gone already";
}

// A full turn leaves everything where it is, but what is turned is worked out anew each time.
TEST_F(ShapesTest, KeptOutlinesLookLikeThoseWorkedOutAnew) {
  GpLineGradient* gradient = nullptr;
  const RectF area(0, 0, 100, 60);
  GdipCreateLineBrushFromRect(&area, 0xFF2A7DE1, 0x8000BB96, LinearGradientModeHorizontal, WrapModeTile, &gradient);
  GpSolidFill* solid = nullptr;
  GdipCreateSolidFill(0xC0204060, &solid);
  GpPen* pen = nullptr;
  GdipCreatePen1(0xFF009977, 1.5, UnitPixel, &pen);
  const auto draw = [&](bool turned, int shift) {
    canvas_->Fill(0xFFFFFFFF);
    SetWindowOrgEx(canvas_->dc(), -shift, -shift, nullptr);
    if (turned) GdipRotateWorldTransform(graphics_, 360, MatrixOrderPrepend);
    GpPath* const wide = RoundRect(3.5, 4.5, 70, 30, 8);
    GpPath* const small = RoundRect(20.25, 10, 17, 17, 8.5);
    EXPECT_EQ(GdipFillPath(graphics_, gradient, wide), Ok);
    EXPECT_EQ(GdipFillPath(graphics_, solid, small), Ok);
    EXPECT_EQ(GdipDrawPath(graphics_, pen, wide), Ok);
    EXPECT_EQ(GdipDrawPath(graphics_, pen, small), Ok);
    GdipDeletePath(wide);
    GdipDeletePath(small);
    GdipResetWorldTransform(graphics_);
    return std::vector<std::uint32_t>(&At(0, 0), &At(99, 59) + 1);
  };
  for (const int shift : {0, 7, -11}) {
    const auto anew = draw(true, shift), first = draw(false, shift), again = draw(false, shift);
    EXPECT_EQ(first, again);
    for (std::size_t i = 0; i < anew.size(); ++i) {
      EXPECT_NEAR_COLOR(first[i], anew[i], 1) << i % 100 << ", " << i / 100 << " shifted by " << shift;
    }
  }
  GdipDeletePen(pen);
  GdipDeleteBrush(solid);
  GdipDeleteBrush(gradient);
}

}  // namespace
