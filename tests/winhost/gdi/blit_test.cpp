#include <windows.h>

#include "tests/winhost/gdi/canvas.h"

using namespace graphics_testing;

namespace {

class BlitTest : public GraphicsTest {
 protected:
  // Every pixel different.
  static void Number(Canvas& canvas) {
    for (int y = 0; y < canvas.height(); ++y) {
      for (int x = 0; x < canvas.width(); ++x)
        canvas.At(x, y) = 0x01000000u * static_cast<unsigned>(y) + static_cast<unsigned>(x) + 1;
    }
  }
};

TEST_F(BlitTest, CopiesExactlyWithAlphaAndOrigins) {
  Canvas from(8, 8), to(8, 8, false);
  Number(from);
  SetWindowOrgEx(from.dc(), -2, 0, nullptr);  // logical 0 is device 2
  SetWindowOrgEx(to.dc(), 10, 10, nullptr);
  EXPECT_TRUE(BitBlt(to.dc(), 11, 12, 3, 2, from.dc(), 1, 1, SRCCOPY));
  EXPECT_EQ(to.Drawn(), (RECT{1, 2, 4, 4}));
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 3; ++x) EXPECT_EQ(to.At(1 + x, 2 + y), from.At(3 + x, 1 + y));
  }
}

TEST_F(BlitTest, WhatLiesOutsideTheSourceIsNotCopied) {
  Canvas from(4, 4), to(8, 8);
  from.Fill(0xFFFFFFFF);
  EXPECT_TRUE(BitBlt(to.dc(), 0, 0, 8, 8, from.dc(), -2, 1, SRCCOPY));
  EXPECT_EQ(to.Drawn(), (RECT{2, 0, 6, 3}));
  EXPECT_TRUE(BitBlt(to.dc(), 0x7FFFFFF0, 0, 0x7FFFFFFF, 1, from.dc(), -0x7FFFFFF0, 0, SRCCOPY));
}

TEST_F(BlitTest, OverlappingCopiesKeepTheSource) {
  for (const auto& [x, y] : {std::pair(1, 0), {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {-1, -1}}) {
    Canvas canvas(6, 6), model(6, 6);
    Number(canvas);
    Number(model);
    BitBlt(canvas.dc(), 1 + x, 1 + y, 4, 4, canvas.dc(), 1, 1, SRCCOPY);
    for (int row = 0; row < 4; ++row) {
      for (int column = 0; column < 4; ++column) {
        ASSERT_EQ(canvas.At(1 + x + column, 1 + y + row), model.At(1 + column, 1 + row)) << x << ',' << y;
      }
    }
  }
}

TEST_F(BlitTest, RasterOperations) {
  const std::pair<DWORD, std::uint32_t> rows[] = {{SRCPAINT, 0x0F3Fu},  {SRCAND, 0x030Cu},
                                                  {SRCINVERT, 0x0C33u}, {NOTSRCCOPY, 0xFFFFF0C3u},
                                                  {BLACKNESS, 0u},      {SRCCOPY | CAPTUREBLT, 0x0F3Cu}};
  for (const auto& [operation, expected] : rows) {
    Canvas from(1, 1), to(1, 1);
    from.Fill(0x0F3C);
    to.Fill(0x030F);
    EXPECT_TRUE(BitBlt(to.dc(), 0, 0, 1, 1, from.dc(), 0, 0, operation));
    EXPECT_EQ(to.At(0, 0), expected) << std::hex << operation;
  }
  Canvas canvas(1, 1);
  EXPECT_FALSE(BitBlt(canvas.dc(), 0, 0, 1, 1, canvas.dc(), 0, 0, 0x12345678));
}

TEST_F(BlitTest, StretchRepeatsPixelsAndMirrors) {
  Canvas from(2, 1), to(6, 1);
  from.At(0, 0) = 0xFF0000FF;
  from.At(1, 0) = 0x80404040;
  EXPECT_TRUE(StretchBlt(to.dc(), 0, 0, 6, 1, from.dc(), 0, 0, 2, 1, SRCCOPY));
  EXPECT_EQ(to.At(2, 0), 0xFF0000FFu);
  EXPECT_EQ(to.At(3, 0), 0x80404040u);
  EXPECT_TRUE(StretchBlt(to.dc(), 0, 0, 6, 1, from.dc(), 2, 0, -2, 1, SRCCOPY));
  EXPECT_EQ(to.At(0, 0), 0x80404040u);
  EXPECT_EQ(to.At(5, 0), 0xFF0000FFu);
  EXPECT_EQ(SetStretchBltMode(to.dc(), HALFTONE), BLACKONWHITE);
  EXPECT_TRUE(StretchBlt(to.dc(), 0, 0, 6, 1, from.dc(), 0, 0, 2, 1, SRCCOPY));
  EXPECT_NE(to.At(2, 0), to.At(0, 0)) << "interpolated";
}

TEST_F(BlitTest, BlendsPremultipliedWithConstantAlpha) {
  Canvas from(2, 1), to(2, 1);
  from.At(0, 0) = 0xFFFF0000;
  from.At(1, 0) = 0x80008000;  // green at one half
  to.Fill(0xFFFFFFFF);
  EXPECT_TRUE(AlphaBlend(to.dc(), 0, 0, 2, 1, from.dc(), 0, 0, 2, 1, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA}));
  EXPECT_EQ(to.At(0, 0), 0xFFFF0000u);
  EXPECT_NEAR_COLOR(to.At(1, 0), 0xFF7FFF7Fu, 1);
  to.Fill(0xFFFFFFFF);
  EXPECT_TRUE(AlphaBlend(to.dc(), 0, 0, 2, 1, from.dc(), 0, 0, 2, 1, {AC_SRC_OVER, 0, 51, AC_SRC_ALPHA}));
  EXPECT_NEAR_COLOR(to.At(0, 0), 0xFFFFCCCCu, 1);
  to.Fill(0);
  EXPECT_TRUE(AlphaBlend(to.dc(), 0, 0, 2, 1, from.dc(), 0, 0, 2, 1, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA}));
  EXPECT_EQ(to.At(1, 0), 0x80008000u) << "onto nothing: the source itself";
}

TEST_F(BlitTest, BlendingOntoItselfAndBottomUpIsRight) {
  Canvas canvas(3, 2, false);
  canvas.At(0, 0) = 0xFFFF0000;
  canvas.At(0, 1) = 0xFF0000FF;
  EXPECT_TRUE(AlphaBlend(canvas.dc(), 1, 0, 2, 2, canvas.dc(), 0, 0, 2, 2, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA}));
  EXPECT_EQ(canvas.At(1, 0), 0xFFFF0000u);
  EXPECT_EQ(canvas.At(1, 1), 0xFF0000FFu);
  EXPECT_EQ(canvas.At(2, 0), 0u) << "the source is what was there before";
}

TEST_F(BlitTest, BlendRefusesWhatWindowsRefuses) {
  Canvas from(2, 2), to(4, 4);
  const BLENDFUNCTION over{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  EXPECT_FALSE(AlphaBlend(to.dc(), 0, 0, 3, 3, from.dc(), 0, 0, 3, 3, over)) << "beyond the source";
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
  EXPECT_FALSE(AlphaBlend(to.dc(), 0, 0, -1, 1, from.dc(), 0, 0, 1, 1, over));
  EXPECT_FALSE(AlphaBlend(to.dc(), 0, 0, 1, 1, from.dc(), -1, 0, 1, 1, over));
  EXPECT_TRUE(AlphaBlend(to.dc(), 0, 0, 0, 0, from.dc(), 0, 0, 0, 0, over)) << "nothing to do";
}

}  // namespace
