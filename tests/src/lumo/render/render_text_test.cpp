#include "lumo/render/rect_math.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

constexpr unsigned kCentred = DT_SINGLELINE | DT_CENTER | DT_VCENTER;

class RenderTextTest : public RenderTest {
 protected:
  RenderTextTest() {
    Globals().AddFont(TEXT("plain"), TEXT("Arial"), 16, false, false, false, false, true);
    Globals().AddFont(TEXT("bold"), TEXT("Arial"), 16, true, false, false, false, false);
    render_->Resize(200, 60, true);
  }
  static TextLook Look(unsigned style, DWORD color = 0xFF000000) {
    TextLook look;
    look.color = color;
    look.style = style;
    return look;
  }
  // Where the text's pixels are when drawn into the rectangle.
  RECT Drawn(const RECT& rect, StringView text, const TextLook& look) {
    render_->Clear();
    render_->DrawText(rect, text, look);
    return Touched(*render_, 40);
  }
  int WidthOfText(StringView text, const TextLook& look) { return WidthOf(render_->MeasureText(text, look, -1)); }
};

constexpr RECT kBox = {10, 10, 190, 50};

TEST_F(RenderTextTest, StylesBecomeFormats) {
  const struct {
    unsigned flags;
    bool line_limit;
    TextStyle style;
  } rows[] = {
      {0, false, {}},
      {DT_END_ELLIPSIS, false, {true, 0, 0, 0}},
      {DT_NOCLIP | DT_SINGLELINE,
       true,
       {false,
        Gdiplus::StringFormatFlagsNoClip | Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsLineLimit, 0,
        0}},
      {DT_CENTER | DT_BOTTOM, false, {false, 0, Gdiplus::StringAlignmentCenter, Gdiplus::StringAlignmentFar}},
      {DT_RIGHT | DT_VCENTER, false, {false, 0, Gdiplus::StringAlignmentFar, Gdiplus::StringAlignmentCenter}},
  };
  for (const auto& row : rows) {
    const TextStyle style = StyleOf(row.flags, row.line_limit);
    EXPECT_EQ(style.ellipsis, row.style.ellipsis) << row.flags;
    EXPECT_EQ(style.flags, row.style.flags) << row.flags;
    EXPECT_EQ(style.align, row.style.align) << row.flags;
    EXPECT_EQ(style.line_align, row.style.line_align) << row.flags;
    EXPECT_EQ(FormatFor(style), FormatFor(style));
  }
}

TEST_F(RenderTextTest, OpaqueTextIsDrawnAs254) {
  EXPECT_EQ(TextColor(0xFF123456, 255), 0xFE123456);
  EXPECT_EQ(TextColor(0xFF123456, 254), 0xFE123456);
  EXPECT_EQ(TextColor(0x80123456, 255), 0x80123456U);
  EXPECT_EQ(TextColor(0x80123456, 128), 0x40123456U);
  EXPECT_EQ(TextColor(0x00123456, 255), 0x00123456U);
  render_->DrawText(kBox, TEXT("\x25a0\x25a0HHH"), Look(kCentred));
  int most = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 200; ++x) most = std::max(most, Alpha(x, y));
  }
  EXPECT_EQ(most, 254);
}

TEST_F(RenderTextTest, TextLiesWhereItIsAligned) {
  const RECT left = Drawn(kBox, TEXT("Hxg"), Look(DT_SINGLELINE));
  const RECT centre = Drawn(kBox, TEXT("Hxg"), Look(kCentred));
  const RECT right = Drawn(kBox, TEXT("Hxg"), Look(DT_SINGLELINE | DT_RIGHT | DT_BOTTOM));
  EXPECT_NEAR(left.left, 11, 2);
  EXPECT_NEAR((centre.left + centre.right) / 2, 100, 2);
  EXPECT_NEAR(right.right, 189, 2);
  EXPECT_LT(left.top, centre.top);
  EXPECT_LT(centre.bottom, right.bottom);
  EXPECT_NEAR((centre.top + centre.bottom) / 2, 30, 3);
  EXPECT_NEAR(WidthOf(left), WidthOf(right), 1);
}

TEST_F(RenderTextTest, MeasuresFitWhatIsDrawn) {
  const TextLook look = Look(DT_SINGLELINE);
  for (const WCHAR* text : {TEXT("Install"), TEXT("\x5b89\x88c5\x7a0b\x5e8f"), TEXT("WWWiiii")}) {
    const RECT measured = render_->MeasureText(text, look, -1), drawn = Drawn({0, 0, 200, 60}, text, look);
    EXPECT_LE(drawn.right, measured.right + 1);
    EXPECT_GE(drawn.right, measured.right - 4);
    EXPECT_LE(drawn.bottom, measured.bottom + 1);
  }
  EXPECT_NEAR(WidthOfText(TEXT("\x6d4b\x8bd5"), look), 33, 2);
}

TEST_F(RenderTextTest, FontsFollowIdScaleAndWeight) {
  TextLook look = Look(DT_SINGLELINE);
  const int plain = WidthOfText(TEXT("Installation"), look);
  look.scale = 150;
  EXPECT_NEAR(WidthOfText(TEXT("Installation"), look), plain * 3 / 2, 3);
  look.scale = 100;
  look.font = TEXT("bold");
  const RECT bold = Drawn(kBox, TEXT("Installation"), look);
  int bold_ink = 0, plain_ink = 0;
  for (int y = bold.top; y < bold.bottom; ++y) {
    for (int x = bold.left; x < bold.right; ++x) bold_ink += Alpha(x, y);
  }
  look.font = TEXT("plain");
  const RECT thin = Drawn(kBox, TEXT("Installation"), look);
  for (int y = thin.top; y < thin.bottom; ++y) {
    for (int x = thin.left; x < thin.right; ++x) plain_ink += Alpha(x, y);
  }
  EXPECT_GT(bold_ink, plain_ink * 5 / 4);
  look.font = TEXT("unknown");
  EXPECT_GT(WidthOf(Drawn(kBox, TEXT("Installation"), look)), 20);
}

TEST_F(RenderTextTest, WrappingNeedsAWidthAndMoreThanOneLine) {
  const WCHAR* const text = TEXT("one two three four five six");
  const RECT line = render_->MeasureText(text, Look(DT_SINGLELINE), -1);
  const RECT wrapped = render_->MeasureText(text, Look(DT_WORDBREAK), 80);
  EXPECT_LE(wrapped.right, 82);
  EXPECT_GE(wrapped.bottom, line.bottom * 2 - 2);
  const RECT single = render_->MeasureText(text, Look(DT_SINGLELINE), 80);
  EXPECT_LE(single.bottom, line.bottom + 4);
  const RECT drawn = Drawn({0, 0, 80, 60}, text, Look(DT_WORDBREAK));
  EXPECT_LE(drawn.right, 81);
  EXPECT_GT(drawn.bottom, 25);
  Show("wrapped");
}

TEST_F(RenderTextTest, AnEllipsisStandsForWhatDoesNotFit) {
  const WCHAR* const text = TEXT("C:\\Program Files\\VantaPictor\\and a long way on");
  const RECT cut = Drawn({0, 0, 120, 30}, text, Look(DT_SINGLELINE | DT_END_ELLIPSIS));
  EXPECT_LE(cut.right, 121);
  EXPECT_GT(cut.right, 100);
  Show("ellipsis");
}

TEST_F(RenderTextTest, GdiTextHasTheColourAndItsAlpha) {
  TextLook look = Look(kCentred, 0xFFFF8000);
  look.gdi = true;
  const RECT drawn = Drawn(kBox, TEXT("HHH"), look);
  EXPECT_NEAR((drawn.left + drawn.right) / 2, 100, 2);
  EXPECT_NEAR((drawn.top + drawn.bottom) / 2, 30, 3);
  DWORD fullest = 0;
  for (int x = drawn.left; x < drawn.right; ++x) fullest = std::max(fullest, At(x, 30));
  EXPECT_TRUE(Near(fullest, 0xFFFE7F00, 4));
  look.color = 0x80FF8000;
  Drawn(kBox, TEXT("HHH"), look);
  fullest = 0;
  for (int x = drawn.left; x < drawn.right; ++x) fullest = std::max(fullest, At(x, 30));
  EXPECT_TRUE(Near(fullest, 0x807F4000, 4));
  const RECT measured = render_->MeasureText(TEXT("HHH"), look, -1);
  EXPECT_NEAR(WidthOf(measured), WidthOf(drawn), 4);
  EXPECT_GT(measured.bottom, 12);
}

TEST_F(RenderTextTest, EmptyAndHugeRequestsDrawNothing) {
  EXPECT_TRUE(IsEmpty(Drawn(kBox, TEXT(""), Look(kCentred))));
  TextLook gdi = Look(kCentred);
  gdi.gdi = true;
  for (const RECT& rect : {RECT{10, 10, 10, 50}, RECT{50, 50, 10, 10}, RECT{-2147483647, 0, 2147483647, 2147483647}}) {
    render_->DrawText(rect, TEXT("text"), gdi);
  }
  EXPECT_TRUE(IsEmpty(Touched(*render_)));
}

TEST_F(RenderTextTest, TextObeysTheClip) {
  const AutoClip clip(render_.get(), {0, 0, 100, 60});
  render_->DrawText({60, 10, 190, 50}, TEXT("HHHHHHHHHH"), Look(DT_SINGLELINE));
  EXPECT_EQ(Touched(*render_).right, 100);
}

}  // namespace
}  // namespace lumo
