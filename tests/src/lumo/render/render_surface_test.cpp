#include "lumo/render/render_gdiplus.h"

#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

class RenderSurfaceTest : public RenderTest {};

TEST_F(RenderSurfaceTest, ANewSizeMakesANewEmptyBitmap) {
  EXPECT_EQ(render_->GetBits(), nullptr);
  EXPECT_TRUE(render_->Resize(10, 5, true));
  EXPECT_EQ(Text(Touched(*render_)), "10,5,0,0");
  render_->FillPixels({0, 0, 10, 5}, 0xFF);
  EXPECT_FALSE(render_->Resize(10, 5, true));
  EXPECT_EQ(At(9, 4), 0xFFFFFFFF);
  EXPECT_TRUE(render_->Resize(10, 6, true));
  EXPECT_EQ(At(9, 4), 0U);
  EXPECT_TRUE(render_->Resize(0, 6, true));
  EXPECT_EQ(render_->GetBits(), nullptr);
  EXPECT_EQ(render_->GetWidth() + render_->GetHeight(), 0);
  EXPECT_FALSE(render_->Resize(5, -1, true));
}

TEST_F(RenderSurfaceTest, WithoutABitmapNothingIsDrawnAndNothingBreaks) {
  render_->FillPixels({0, 0, 5, 5}, 1);
  render_->Clear();
  render_->FillRect({0, 0, 5, 5}, {2, 2, 2, 2}, 0xFF112233, 255);
  render_->SetOpaqueExceptCorners({0, 0, 5, 5}, {1, 1, 1, 1});
  EXPECT_EQ(render_->DetachBitmap(), nullptr);
  EXPECT_EQ(render_->Clone()->GetBits(), nullptr);
  render_->PopClip();
  render_->RestoreState();
}

TEST_F(RenderSurfaceTest, PixelOperationsAreCutToTheBitmapAndLeaveTheCorners) {
  render_->Resize(6, 4, true);
  render_->FillPixels({-5, 1, 2, 99}, 0x80);
  EXPECT_EQ(At(0, 0), 0U);
  EXPECT_EQ(At(1, 1), 0x80808080);
  EXPECT_EQ(At(2, 3), 0U);
  render_->Clear();
  render_->SetOpaqueExceptCorners({-9, -9, 99, 99}, {1, 2, 3, 1});
  std::string rows;
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 6; ++x) rows += At(x, y) == 0xFF000000 ? 'o' : '.';
    rows += ' ';
  }
  EXPECT_EQ(rows, ".oo... .oo... oooooo .oo... ");
  render_->ClearAlphaExceptCorners({0, 0, 6, 4}, {0, 0, 0, 0}, 0);
  EXPECT_EQ(At(1, 0), 0xFF000000);
  render_->ClearAlphaExceptCorners({0, 0, 6, 3}, {2, 1, 0, 0}, 0xFF);
  EXPECT_EQ(At(1, 0), 0xFF000000);
  EXPECT_EQ(At(2, 0), 0U);
  EXPECT_EQ(At(0, 3), 0U);
  EXPECT_EQ(At(1, 3), 0xFF000000);
}

TEST_F(RenderSurfaceTest, ABottomUpBitmapIsAddressedFromTheTop) {
  render_->Resize(2, 3, false);
  render_->FillPixels({0, 0, 1, 1}, 0xFF);
  EXPECT_EQ(render_->GetBits()[0], 0);
  EXPECT_EQ(render_->GetBits()[2 * 8], 0xFF);
}

TEST_F(RenderSurfaceTest, ACloneIsACopy) {
  render_->Resize(3, 3, true);
  render_->SetOrigin(7, 7);
  render_->FillPixels({1, 1, 2, 2}, 0x40);
  const auto copy = render_->Clone();
  render_->Clear();
  EXPECT_EQ(At(*copy, 1, 1), 0x40404040U);
  EXPECT_EQ(At(*copy, 0, 1), 0U);
  EXPECT_EQ(render_->GetOrigin().x, 7);
}

TEST_F(RenderSurfaceTest, ADetachedBitmapOutlivesTheRender) {
  render_->Resize(3, 3, true);
  const HBITMAP bitmap = render_->DetachBitmap();
  EXPECT_NE(bitmap, nullptr);
  EXPECT_EQ(render_->GetBits(), nullptr);
  EXPECT_TRUE(render_->Resize(3, 3, true));
  render_.reset();
  EXPECT_TRUE(DeleteObject(bitmap));
}

TEST_F(RenderSurfaceTest, OriginAndClipMoveTogetherAndComeBack) {
  render_->Resize(20, 20, true);
  EXPECT_EQ(render_->OffsetOrigin(-5, -6).x, 0);
  render_->PushClip({0, 0, 4, 4});
  EXPECT_EQ(render_->SetOrigin(0, 0).y, -6);
  {
    const AutoClip inner(render_.get(), {6, 0, 20, 20});
    render_->FillRect({0, 0, 20, 20}, {}, 0xFF0000FF, 255);
  }
  EXPECT_EQ(Text(Touched(*render_)), "6,6,9,10");
  render_->FillRect({0, 0, 20, 20}, {}, 0xFF0000FF, 255);
  EXPECT_EQ(Text(Touched(*render_)), "5,6,9,10");
  render_->PopClip();
  EXPECT_EQ(render_->GetOrigin().x, -5);
  ASSERT_TRUE(render_->SaveState());
  render_->SetOrigin(1, 1);
  render_->RestoreState();
  EXPECT_EQ(render_->GetOrigin().y, -6);
  render_->FillRect({0, 0, 1, 1}, {}, 0xFF0000FF, 255);
  EXPECT_EQ(At(5, 6), 0xFF0000FF);
}

TEST_F(RenderSurfaceTest, CopiesKeepOrWeighAlpha) {
  const auto source = MakeRender();
  source->Resize(2, 2, true);
  source->FillPixels({0, 0, 2, 2}, 0x80);
  render_->Resize(8, 8, true);
  EXPECT_TRUE(render_->BitBlt({1, 1, 3, 3}, source->GetDC(), {0, 0, 2, 2}, SRCCOPY));
  EXPECT_EQ(At(1, 1), 0x80808080);
  EXPECT_EQ(Text(Touched(*render_)), "1,1,3,3");
  EXPECT_TRUE(render_->AlphaBlend({1, 1, 3, 3}, source->GetDC(), {0, 0, 2, 2}, 255));
  EXPECT_TRUE(Near(At(2, 2), 0xC0C0C0C0));
  EXPECT_TRUE(render_->AlphaBlend({5, 5, 7, 7}, source->GetDC(), {0, 0, 2, 2}, 128));
  EXPECT_TRUE(Near(At(6, 6), 0x40404040));
  EXPECT_TRUE(render_->StretchBlt({4, 0, 8, 4}, source->GetDC(), {0, 0, 2, 2}, SRCCOPY));
  EXPECT_EQ(At(7, 3) & 0xFFFFFF, 0x808080U);
}

}  // namespace
}  // namespace lumo
