#include <windows.h>

#include "tests/winhost/gdi/canvas.h"
#include "winhost/gdi/device_context.h"

using namespace graphics_testing;

namespace {

class DrawTextTest : public GraphicsTest {
 protected:
  void SetUp() override {
    font_ = MakeFont(u"微软雅黑", 16);
    former_ = SelectObject(canvas_.dc(), font_);
    SetBkMode(canvas_.dc(), TRANSPARENT);
    SetTextColor(canvas_.dc(), RGB(255, 255, 255));
  }
  void TearDown() override {
    SelectObject(canvas_.dc(), former_);
    DeleteObject(font_);
  }
  SIZE Measure(const WCHAR* text, UINT format = DT_SINGLELINE, int width = 1000) {
    RECT rect{0, 0, width, 1000};
    DrawTextW(canvas_.dc(), text, -1, &rect, format | DT_CALCRECT);
    return {rect.right, rect.bottom};
  }
  // The box of the ink.
  RECT Ink(const WCHAR* text, UINT format, RECT rect) {
    canvas_.Fill(0);
    DrawTextW(canvas_.dc(), text, -1, &rect, format);
    return canvas_.Drawn();
  }

  Canvas canvas_{300, 100};
  HFONT font_;
  HGDIOBJ former_;
};

TEST_F(DrawTextTest, ChineseAndLatinAreRealGlyphs) {
  EXPECT_EQ(Measure(u"中").cx, 16) << "a full-width character is an em wide";
  EXPECT_EQ(Measure(u"中文").cx, 32);
  EXPECT_LT(Measure(u"ii").cx, Measure(u"WW").cx) << "a proportional font";
  const RECT one = Ink(u"一", DT_SINGLELINE, {0, 0, 300, 100}), many = Ink(u"霸", DT_SINGLELINE, {0, 0, 300, 100});
  EXPECT_LT(one.bottom - one.top, 4) << "a single stroke, no box for a missing glyph";
  EXPECT_GT(many.bottom - many.top, 12);
}

TEST_F(DrawTextTest, HeightIsTheCellsAndWeightsCount) {
  TEXTMETRICW metrics{};
  GetTextMetricsW(canvas_.dc(), &metrics);
  EXPECT_EQ(Measure(u"x").cy, metrics.tmHeight);
  EXPECT_EQ(Measure(u"a\nb\nc", 0).cy, 3 * metrics.tmHeight);
  EXPECT_GT(Measure(u"a  ").cx, Measure(u"a").cx) << "spaces at the end count";
  EXPECT_EQ(Measure(u"a\nb", DT_SINGLELINE).cy, metrics.tmHeight) << "a single line breaks nowhere";
  auto ink = [this](int weight) {
    HFONT font = MakeFont(u"Arial", 16, weight);
    HGDIOBJ old = SelectObject(canvas_.dc(), font);
    canvas_.Fill(0);
    RECT rect{0, 0, 300, 100};
    DrawTextW(canvas_.dc(), u"weight", -1, &rect, DT_SINGLELINE);
    SelectObject(canvas_.dc(), old);
    DeleteObject(font);
    long sum = 0;
    for (int y = 0; y < 100; ++y) {
      for (int x = 0; x < 300; ++x) sum += canvas_.At(x, y) & 0xFF;
    }
    return sum;
  };
  EXPECT_GT(ink(700), ink(400) * 11 / 10);
  EXPECT_EQ(ink(1100), ink(700)) << "beyond the scale is bold too";
}

TEST_F(DrawTextTest, AlignsInTheRectangle) {
  const RECT box{20, 10, 220, 90};
  const RECT left = Ink(u"HH", DT_SINGLELINE, box), right = Ink(u"HH", DT_SINGLELINE | DT_RIGHT, box);
  const RECT centre = Ink(u"HH", DT_SINGLELINE | DT_CENTER | DT_VCENTER, box);
  const RECT bottom = Ink(u"HH", DT_SINGLELINE | DT_BOTTOM, box);
  EXPECT_LT(left.left, 24);
  EXPECT_GT(right.right, 216);
  EXPECT_NEAR((centre.left + centre.right) / 2, 120, 1);
  EXPECT_NEAR((centre.top + centre.bottom) / 2, 50, 3);
  EXPECT_EQ(bottom.top - left.top, 80 - Measure(u"HH").cy);
  RECT rect = box;
  EXPECT_EQ(DrawTextW(canvas_.dc(), u"HH", 2, &rect, DT_SINGLELINE | DT_BOTTOM), 80);
}

TEST_F(DrawTextTest, WrapsAtWordsAndEvenlyMeasured) {
  const SIZE word = Measure(u"word");
  const SIZE wrapped = Measure(u"word word word", DT_WORDBREAK, word.cx + 4);
  EXPECT_EQ(wrapped.cy, 3 * word.cy);
  EXPECT_EQ(wrapped.cx, word.cx) << "the space at a line's end takes no room";
  EXPECT_EQ(Measure(u"wordword", DT_WORDBREAK, word.cx).cy, word.cy) << "a long word is not broken";
  EXPECT_EQ(Measure(u"wordword", DT_WORDBREAK | DT_EDITCONTROL, word.cx + 1).cy, 2 * word.cy);
  EXPECT_EQ(Measure(u"中文中文", DT_WORDBREAK, 33).cy, 2 * word.cy) << "Chinese breaks anywhere";
}

TEST_F(DrawTextTest, ClipsUnlessAskedNotTo) {
  const RECT small{10, 10, 20, 20};
  EXPECT_LE(Ink(u"wide text", DT_SINGLELINE, small).right, 20);
  EXPECT_GT(Ink(u"wide text", DT_SINGLELINE | DT_NOCLIP, small).right, 40);
}

TEST_F(DrawTextTest, EllipsisFitsAndHotKeyIsUnderlined) {
  const int room = Measure(u"a long te...").cx;
  EXPECT_LE(Measure(u"a long text that does not fit", DT_SINGLELINE | DT_END_ELLIPSIS, room).cx, room);
  EXPECT_GT(Measure(u"a long text that does not fit", DT_SINGLELINE | DT_END_ELLIPSIS, room).cx, room - 12);
  EXPECT_EQ(Measure(u"short", DT_SINGLELINE | DT_END_ELLIPSIS, 200).cx, Measure(u"short").cx);
  EXPECT_LE(Measure(u"C:\\folder\\folder\\file.txt", DT_SINGLELINE | DT_PATH_ELLIPSIS, room).cx, room);
  EXPECT_EQ(Measure(u"&File && more").cx, Measure(u"File & more", DT_SINGLELINE | DT_NOPREFIX).cx);
  const RECT plain = Ink(u"&xx", DT_SINGLELINE | DT_HIDEPREFIX, {0, 0, 300, 100});
  const RECT marked = Ink(u"&xx", DT_SINGLELINE, {0, 0, 300, 100});
  EXPECT_GT(marked.bottom, plain.bottom);
}

TEST_F(DrawTextTest, CoverageOnBlackIsTheColourAndLeavesAlphaZero) {
  SetBkMode(canvas_.dc(), OPAQUE);
  SetBkColor(canvas_.dc(), RGB(0, 0, 0));
  canvas_.Fill(0xFF112233);
  RECT rect{0, 0, 300, 100};
  const int height = DrawTextW(canvas_.dc(), u"H", 1, &rect, DT_SINGLELINE | DT_NOCLIP);
  EXPECT_EQ(canvas_.At(200, 50), 0xFF112233u) << "outside the cell nothing changes";
  EXPECT_EQ(canvas_.At(1, height - 1), 0u) << "the background";
  bool full = false, part = false;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < 12; ++x) {
      const std::uint32_t pixel = canvas_.At(x, y);
      ASSERT_TRUE(pixel >> 24 == 0 || pixel == 0xFF112233u);
      if (pixel >> 24) continue;
      ASSERT_EQ(pixel & 0xFF, pixel >> 8 & 0xFF) << "grey, no coloured edges";
      full |= (pixel & 0xFF) > 240;
      part |= (pixel & 0xFF) > 10 && (pixel & 0xFF) < 240;
    }
  }
  EXPECT_TRUE(full && part);
}

TEST_F(DrawTextTest, OddTextsAreHarmless) {
  RECT rect{0, 0, 100, 100};
  EXPECT_EQ(DrawTextW(canvas_.dc(), nullptr, 3, &rect, 0), 0);
  EXPECT_EQ(DrawTextW(canvas_.dc(), u"x", -1, nullptr, 0), 0);
  EXPECT_EQ(DrawTextW(nullptr, u"x", -1, &rect, 0), 0);
  EXPECT_EQ(Measure(u"", DT_SINGLELINE).cx, 0);
  EXPECT_GT(Measure(u"", DT_SINGLELINE).cy, 0);
  const WCHAR broken[] = {0xD800, 'a', 0, 0xDC00, '\t', 1, 'b', '&'};
  for (const UINT format : {0u, UINT{DT_WORDBREAK}, UINT{DT_SINGLELINE | DT_END_ELLIPSIS}, UINT{DT_EXPANDTABS}}) {
    RECT narrow{0, 0, 1, 1};
    EXPECT_GT(DrawTextW(canvas_.dc(), broken, 8, &narrow, format), 0);
    EXPECT_GT(DrawTextW(canvas_.dc(), broken, 8, &narrow, format | DT_CALCRECT), 0);
  }
  RECT endless{0, 0, 0x7FFFFFFF, 0x7FFFFFFF};
  EXPECT_GT(DrawTextW(canvas_.dc(), u"measured\r\nwithout limit", -1, &endless, DT_CALCRECT | DT_WORDBREAK), 0);
  EXPECT_LT(endless.right, 200);
}

TEST_F(DrawTextTest, PositiveHeightIsTheCellsAndSubstitutesAgree) {
  LOGFONTW cell{};
  cell.lfHeight = 24;
  std::ranges::copy(std::u16string_view(u"No Such Face"), cell.lfFaceName);
  HFONT font = CreateFontIndirectW(&cell);
  HGDIOBJ old = SelectObject(canvas_.dc(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(canvas_.dc(), &metrics);
  EXPECT_NEAR(metrics.tmHeight, 24, 1);
  SelectObject(canvas_.dc(), old);
  LOGFONTW back{};
  EXPECT_EQ(GetObjectW(font, sizeof back, &back), static_cast<int>(sizeof back));
  EXPECT_EQ(back.lfHeight, 24);
  DeleteObject(font);
}

}  // namespace
