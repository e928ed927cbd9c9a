#include "tests/winhost/gdiplus/gdiplus_fixture.h"

using namespace graphics_testing;
using namespace Gdiplus;

namespace {

class DrawImageTest : public GdiplusTest {
 protected:
  void SetUp() override {
    GdiplusTest::SetUp();
    GdipCreateImageAttributes(&attributes_);
  }
  void TearDown() override {
    GdipDisposeImageAttributes(attributes_);
    GdiplusTest::TearDown();
  }
  GpStatus Draw(GpBitmap* bitmap, Rect to, Rect from, bool plain = false) {
    return GdipDrawImageRectRectI(graphics_, bitmap, to.X, to.Y, to.Width, to.Height, from.X, from.Y, from.Width,
                                  from.Height, UnitPixel, plain ? nullptr : attributes_, nullptr, nullptr);
  }
  void Fade(REAL fade) {
    ColorMatrix matrix{};
    for (int i = 0; i < 5; ++i) matrix.m[i][i] = 1;
    matrix.m[3][3] = fade;
    EXPECT_EQ(GdipSetImageAttributesColorMatrix(attributes_, ColorAdjustTypeBitmap, TRUE, &matrix, nullptr,
                                                ColorMatrixFlagsDefault),
              Ok);
  }

  GpImageAttributes* attributes_ = nullptr;
};

TEST_F(DrawImageTest, UnscaledIsExactInEveryOffsetMode) {
  GpBitmap* bitmap = MakeBitmap(2, 2, {0xFFFF0000, 0x8000FF00, 0x000000FF, 0xFF0A141E});
  for (const PixelOffsetMode mode : {PixelOffsetModeHalf, PixelOffsetModeNone}) {
    canvas_->Fill(0);
    GdipSetPixelOffsetMode(graphics_, mode);
    EXPECT_EQ(Draw(bitmap, Rect(10, 20, 2, 2), Rect(0, 0, 2, 2)), Ok);
    EXPECT_EQ(At(10, 20), 0xFFFF0000u);
    EXPECT_EQ(At(11, 20), 0x80008000u) << "premultiplied";
    EXPECT_EQ(At(10, 21), 0u);
    EXPECT_EQ(At(11, 21), 0xFF0A141Eu);
  }
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, NeighboursBleedUnlessAWrapModeKeepsThemOut) {
  // Red | white | red: only the white pixel is drawn, five times as large.
  GpBitmap* bitmap = MakeBitmap(3, 1, {0xFFFF0000, 0xFFFFFFFF, 0xFFFF0000});
  Draw(bitmap, Rect(0, 0, 5, 1), Rect(1, 0, 1, 1), true);
  EXPECT_LT(At(0, 0) >> 8 & 0xFF, 200u);
  EXPECT_NE(At(0, 0), 0xFFFFFFFFu);
  GdipSetImageAttributesWrapMode(attributes_, WrapModeTileFlipXY, 0, FALSE);
  canvas_->Fill(0);
  Draw(bitmap, Rect(0, 0, 5, 1), Rect(1, 0, 1, 1));
  for (int x = 0; x < 5; ++x) EXPECT_EQ(At(x, 0), 0xFFFFFFFFu);
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, BeyondThePictureIsTransparentUnlessWrapped) {
  GpBitmap* bitmap = MakeBitmap(2, 1, {0xFF000000, 0xFF000000});
  Draw(bitmap, Rect(0, 0, 20, 10), Rect(0, 0, 2, 1), true);
  EXPECT_LT(At(0, 0) >> 24, 200u) << "the edge mixes with nothing";
  GdipSetImageAttributesWrapMode(attributes_, WrapModeTileFlipXY, 0, FALSE);
  canvas_->Fill(0);
  Draw(bitmap, Rect(0, 0, 20, 10), Rect(0, 0, 2, 1));
  EXPECT_EQ(At(0, 0), 0xFF000000u);
  EXPECT_EQ(canvas_->Drawn(), (RECT{0, 0, 20, 10})) << "and nothing outside the destination";
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, FadesWithTheMatrix) {
  GpBitmap* bitmap = MakeBitmap(1, 1, {0xFFFFFFFF});
  Fade(128 / 255.0f);
  Draw(bitmap, Rect(0, 0, 1, 1), Rect(0, 0, 1, 1));
  EXPECT_NEAR_COLOR(At(0, 0), 0x80808080u, 1);
  Fade(0);
  canvas_->Fill(0xFF102030);
  Draw(bitmap, Rect(0, 0, 1, 1), Rect(0, 0, 1, 1));
  EXPECT_EQ(At(0, 0), 0xFF102030u);
  EXPECT_EQ(GdipSetImageAttributesColorMatrix(attributes_, ColorAdjustTypeBitmap, TRUE, nullptr, nullptr,
                                              ColorMatrixFlagsDefault),
            InvalidParameter);
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, OtherMatricesRecolour) {
  GpBitmap* bitmap = MakeBitmap(2, 1, {0xFF204060, 0x80FFFFFF});
  // Red and blue change places, green is halved and raised by a quarter.
  const ColorMatrix matrix{
      {{0, 0, 1, 0, 0}, {0, 0.5f, 0, 0, 0}, {1, 0, 0, 0, 0}, {0, 0, 0, 1, 0}, {0, 0.25f, 0, 0, 1}}};
  GdipSetImageAttributesColorMatrix(attributes_, ColorAdjustTypeDefault, TRUE, &matrix, nullptr,
                                    ColorMatrixFlagsDefault);
  for (const bool wrapped : {false, true}) {
    canvas_->Fill(0);
    if (wrapped) GdipSetImageAttributesWrapMode(attributes_, WrapModeTileFlipXY, 0, FALSE);
    Draw(bitmap, Rect(4, 4, 2, 1), Rect(0, 0, 2, 1));
    EXPECT_NEAR_COLOR(At(4, 4), 0xFF606020u, 1);
    EXPECT_NEAR_COLOR(At(5, 4), 0x80806080u, 1);
  }
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, TurnsAboutTheTransformsOriginAndMirrors) {
  GpBitmap* bitmap = MakeBitmap(2, 1, {0xFFFF0000, 0xFF0000FF});
  GdipSetImageAttributesWrapMode(attributes_, WrapModeTileFlipXY, 0, FALSE);
  GdipTranslateWorldTransform(graphics_, 30, 30, MatrixOrderPrepend);
  GdipRotateWorldTransform(graphics_, 180, MatrixOrderPrepend);
  Draw(bitmap, Rect(-10, -5, 20, 10), Rect(0, 0, 2, 1));
  EXPECT_NEAR_COLOR(At(21, 30), 0xFF0000FFu, 2);
  EXPECT_NEAR_COLOR(At(38, 30), 0xFFFF0000u, 2);
  GdipResetWorldTransform(graphics_);
  canvas_->Fill(0);
  Draw(bitmap, Rect(12, 0, -2, 1), Rect(0, 0, 2, 1));
  EXPECT_EQ(At(10, 0), 0xFF0000FFu);
  EXPECT_EQ(At(11, 0), 0xFFFF0000u);
  GdipDisposeImage(bitmap);
}

TEST_F(DrawImageTest, SourceBeyondThePictureAndEmptyOnesAreHarmless) {
  GpBitmap* bitmap = MakeBitmap(2, 2, {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF});
  for (const bool wrapped : {false, true}) {
    if (wrapped) GdipSetImageAttributesWrapMode(attributes_, WrapModeTileFlipXY, 0, FALSE);
    for (const REAL fade : {1.0f, 2.0f}) {  // 2: pixel by pixel
      Fade(fade);
      EXPECT_EQ(Draw(bitmap, Rect(0, 0, 4, 4), Rect(-1, -1, 4, 4)), Ok);
      EXPECT_EQ(Draw(bitmap, Rect(0, 0, 4, 4), Rect(100, 100, 4, 4)), Ok);
      EXPECT_EQ(Draw(bitmap, Rect(0, 0, 0, 4), Rect(0, 0, 2, 2)), Ok);
      EXPECT_EQ(Draw(bitmap, Rect(0, 0, 4, 4), Rect(0, 0, 0, 2)), Ok);
      EXPECT_EQ(Draw(bitmap, Rect(0, 0, 4, 4), Rect(0, 0, 0x7FFFFFFF, 2)), InvalidParameter);
    }
  }
  EXPECT_EQ(GdipDrawImageRectRectI(graphics_, bitmap, 0, 0, 1, 1, 0, 0, 1, 1, UnitPoint, nullptr, nullptr, nullptr),
            InvalidParameter);
  EXPECT_EQ(GdipDrawImageRectI(graphics_, nullptr, 0, 0, 1, 1), InvalidParameter);
  BitmapData data{};
  GdipBitmapLockBits(bitmap, nullptr, ImageLockModeRead, PixelFormat32bppARGB, &data);
  EXPECT_EQ(Draw(bitmap, Rect(0, 0, 4, 4), Rect(0, 0, 2, 2)), ObjectBusy);
  GdipBitmapUnlockBits(bitmap, &data);
  GdipDisposeImage(bitmap);
}

}  // namespace
