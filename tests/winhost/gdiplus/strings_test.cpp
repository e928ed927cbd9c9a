#include <cmath>

#include "tests/winhost/gdiplus/gdiplus_fixture.h"

using namespace graphics_testing;
using namespace Gdiplus;

namespace {

class StringsTest : public GdiplusTest {
 protected:
  void SetUp() override {
    GdiplusTest::SetUp();
    Use(u"微软雅黑", 20);
    GpStringFormat* shared = nullptr;
    GdipStringFormatGetGenericTypographic(&shared);
    GdipCloneStringFormat(shared, &format_);
    GdipSetStringFormatFlags(format_, 0);
    GdipCreateSolidFill(0xFF000000, &brush_);
  }
  void TearDown() override {
    GdipDeleteFont(font_);
    GdipDeleteStringFormat(format_);
    GdipDeleteBrush(brush_);
    GdiplusTest::TearDown();
  }
  void Use(std::u16string_view face, int pixels, int weight = 400) {
    GdipDeleteFont(font_);
    font_ = nullptr;
    HFONT font = MakeFont(face, pixels, weight);
    LOGFONTW values{};
    GetObjectW(font, sizeof values, &values);
    EXPECT_EQ(GdipCreateFontFromLogfontW(canvas_->dc(), &values, &font_), Ok);
    DeleteObject(font);
  }
  RectF Measure(const WCHAR* text, RectF layout = {}) {
    RectF box;
    EXPECT_EQ(GdipMeasureString(graphics_, text, -1, font_, &layout, format_, &box, &fitted_, &lines_), Ok);
    return box;
  }
  RECT Ink(const WCHAR* text, RectF layout = {}) {
    canvas_->Fill(0);
    EXPECT_EQ(GdipDrawString(graphics_, text, -1, font_, &layout, format_, brush_), Ok);
    return canvas_->Drawn();
  }

  GpFont* font_ = nullptr;
  GpStringFormat* format_ = nullptr;
  GpSolidFill* brush_ = nullptr;
  INT fitted_ = 0, lines_ = 0;
};

TEST_F(StringsTest, WidthsAreExactAndScaleWithTheFont) {
  const RectF twenty = Measure(u"Handgloves");
  Use(u"微软雅黑", 200);
  const RectF large = Measure(u"Handgloves");
  EXPECT_NEAR(static_cast<double>(large.Width) / 10, static_cast<double>(twenty.Width), 0.05) << "no hinting";
  EXPECT_NEAR(static_cast<double>(large.Height) / 10, static_cast<double>(twenty.Height), 0.001);
  EXPECT_NE(twenty.Width, std::round(twenty.Width));
  Use(u"新宋体", 20);
  EXPECT_FLOAT_EQ(Measure(u"测试").Width, 40);
  EXPECT_FLOAT_EQ(Measure(u"测试").Height, 20 * 2401 / 2048.0f) << "the cell of the font file, line gap included";
  EXPECT_FLOAT_EQ(Measure(u"AV").Width, Measure(u"A").Width + Measure(u"V").Width) << "no kerning";
}

TEST_F(StringsTest, TrailingSpacesCountOnlyWhenAskedFor) {
  const REAL bare = Measure(u"text").Width;
  EXPECT_FLOAT_EQ(Measure(u"text   ").Width, bare);
  EXPECT_GT(Measure(u"   text").Width, bare);
  GdipSetStringFormatFlags(format_, StringFormatFlagsMeasureTrailingSpaces);
  EXPECT_GT(Measure(u"text   ").Width, bare);
}

TEST_F(StringsTest, WrapsInTheBoxAndCountsLines) {
  const RectF one = Measure(u"测试测试");
  EXPECT_EQ(lines_, 1);
  EXPECT_EQ(fitted_, 4);
  const RectF wrapped = Measure(u"测试测试", RectF(0, 0, 41, 0));
  EXPECT_EQ(lines_, 2);
  EXPECT_FLOAT_EQ(wrapped.Width, 40);
  EXPECT_FLOAT_EQ(wrapped.Height, 2 * one.Height);
  EXPECT_FLOAT_EQ(Measure(u"a\nb\r\nc\n").Height, 3 * one.Height) << "the last line end begins no line";
  GdipSetStringFormatFlags(format_, StringFormatFlagsNoWrap);
  EXPECT_FLOAT_EQ(Measure(u"测试测试", RectF(0, 0, 41, 0)).Width, 80);
}

TEST_F(StringsTest, LineLimitShowsWholeLinesOnly) {
  const REAL line = Measure(u"测").Height;
  const RectF box(0, 0, 41, line * 1.5f);
  EXPECT_FLOAT_EQ(Measure(u"测试测试测试", box).Height, 2 * line) << "two lines begin in it";
  GdipSetStringFormatFlags(format_, StringFormatFlagsLineLimit);
  EXPECT_FLOAT_EQ(Measure(u"测试测试测试", box).Height, line);
  EXPECT_EQ(fitted_, 2);
  Measure(u"测试", RectF(0, 0, 100, line / 2));
  EXPECT_EQ(lines_, 0);
}

TEST_F(StringsTest, AlignsBoxAndInk) {
  const RectF layout(10, 5, 80, 50);
  const RectF near_box = Measure(u"H", layout);
  GdipSetStringFormatAlign(format_, StringAlignmentCenter);
  GdipSetStringFormatLineAlign(format_, StringAlignmentCenter);
  const RectF centre = Measure(u"H", layout);
  EXPECT_FLOAT_EQ(near_box.X, 10);
  EXPECT_FLOAT_EQ(centre.X, 10 + (80 - centre.Width) / 2);
  EXPECT_FLOAT_EQ(centre.Y, 5 + (50 - centre.Height) / 2);
  const RECT ink = Ink(u"H", layout);
  EXPECT_NEAR((ink.left + ink.right) / 2.0, 50, 1);
  EXPECT_NEAR((ink.top + ink.bottom) / 2.0, 30, 2.5);
  GdipSetStringFormatAlign(format_, StringAlignmentFar);
  GdipSetStringFormatLineAlign(format_, StringAlignmentFar);
  EXPECT_GT(Ink(u"H", layout).right, 85);
  EXPECT_FLOAT_EQ(Measure(u"H", layout).Y, 55 - centre.Height);
}

TEST_F(StringsTest, GlyphsLieAtFractionsOfAPixel) {
  Ink(u"l", RectF(10, 0, 0, 0));
  std::uint32_t sums[3] = {};
  const REAL places[] = {10, 10.5f, 11};
  for (int i = 0; i < 3; ++i) {
    Ink(u"l", RectF(places[i], 0, 0, 0));
    for (int x = 0; x < 100; ++x) sums[i] += static_cast<std::uint32_t>(x) * (At(x, 14) >> 24);
    std::uint32_t whole = 0;
    for (int x = 0; x < 100; ++x) whole += At(x, 14) >> 24;
    sums[i] = sums[i] * 16 / whole;  // where the stem's middle is, in sixteenths
  }
  EXPECT_NEAR(sums[1] - sums[0], 8u, 1u);
  EXPECT_NEAR(sums[2] - sums[0], 16u, 1u);
}

TEST_F(StringsTest, EllipsisFitsTheWidthAndFollowsTheLastVisibleLine) {
  GdipSetStringFormatFlags(format_, StringFormatFlagsNoWrap);
  GdipSetStringFormatTrimming(format_, StringTrimmingEllipsisCharacter);
  const RectF room(0, 0, 90, 0);
  const RectF cut = Measure(u"A rather long line of text", room);
  EXPECT_LE(cut.Width, 90.1f);
  EXPECT_GT(cut.Width, 70);
  EXPECT_LT(fitted_, 12);
  EXPECT_EQ(Measure(u"Short", room).Width, Measure(u"Short").Width);
  EXPECT_LE(Ink(u"A rather long line of text", room).right, 92);
  GdipSetStringFormatFlags(format_, 0);
  const REAL line = Measure(u"测").Height;
  Measure(u"测试测试测试测试测试", RectF(0, 0, 90, line));
  EXPECT_EQ(lines_, 1);
  EXPECT_EQ(fitted_, 3) << "three characters and the ellipsis";
  GdipSetStringFormatTrimming(format_, StringTrimmingCharacter);
  GdipSetStringFormatFlags(format_, StringFormatFlagsNoWrap);
  EXPECT_FLOAT_EQ(Measure(u"测试测试测试", room).Width, 80) << "cut without a mark";
}

TEST_F(StringsTest, ClipsToTheBoxUnlessToldNotTo) {
  GdipSetStringFormatFlags(format_, StringFormatFlagsNoWrap);
  const RectF room(0, 0, 30, 10);
  const RECT clipped = Ink(u"Hanging out", room);
  EXPECT_LE(clipped.right, 30);
  EXPECT_LE(clipped.bottom, 10);
  GdipSetStringFormatFlags(format_, StringFormatFlagsNoWrap | StringFormatFlagsNoClip);
  const RECT free = Ink(u"Hanging out", room);
  EXPECT_GT(free.right, 60);
  EXPECT_GT(free.bottom, 15);
}

TEST_F(StringsTest, DrawsWithAlphaOnTransparencyAndAgainTheSame) {
  GdipDeleteBrush(brush_);
  GdipCreateSolidFill(0xFEFF8000, &brush_);
  Ink(u"■█", RectF(5, 5, 0, 0));
  std::uint32_t most = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 100; ++x) {
      const std::uint32_t pixel = At(x, y), alpha = pixel >> 24;
      ASSERT_LE(pixel >> 16 & 0xFF, alpha) << "premultiplied";
      ASSERT_NEAR(pixel >> 8 & 0xFF, alpha / 2.0, 2);
      most = std::max(most, alpha);
    }
  }
  EXPECT_EQ(most, 0xFEu);
  const auto before = At(20, 20);
  Ink(u"■█", RectF(5, 5, 0, 0));
  EXPECT_EQ(At(20, 20), before);
}

TEST_F(StringsTest, BoldUnderlineAndOneBit) {
  const RECT plain = Ink(u"xxx");
  const int thin = canvas_->Count(0);
  Use(u"Arial", 20, 1100);
  Ink(u"xxx");
  EXPECT_LT(canvas_->Count(0), thin);
  LOGFONTW values{};
  values.lfHeight = -20;
  values.lfUnderline = TRUE;
  GdipDeleteFont(font_);
  GdipCreateFontFromLogfontW(canvas_->dc(), &values, &font_);
  const RECT lined = Ink(u"xxx");
  EXPECT_GT(lined.bottom, plain.bottom);
  EXPECT_EQ(At(lined.left + 5, lined.bottom - 1), 0xFF000000u) << "at whole pixels";
  GdipSetTextRenderingHint(graphics_, TextRenderingHintSingleBitPerPixelGridFit);
  Ink(u"smooth");
  EXPECT_EQ(canvas_->Count(0) + canvas_->Count(0xFF000000), 100 * 60);
}

TEST_F(StringsTest, TurnedTextIsDrawnTurned) {
  GdipTranslateWorldTransform(graphics_, 50, 0, MatrixOrderPrepend);
  GdipRotateWorldTransform(graphics_, 90, MatrixOrderPrepend);
  const RECT ink = Ink(u"HHH");
  EXPECT_LT(ink.right - ink.left, 25);
  EXPECT_GT(ink.bottom - ink.top, 30);
}

TEST_F(StringsTest, OddArgumentsAreHarmless) {
  const RectF layout(0, 0, 5, 5);
  RectF box;
  const WCHAR broken[] = {0xD800, 0xDFFF, 0, '\t', '\r', 0x202E, 0xFFFF, 0xDC00};
  for (const int trimming : {0, 1, 2, 3, 4, 5}) {
    GdipSetStringFormatTrimming(format_, static_cast<StringTrimming>(trimming));
    EXPECT_EQ(GdipMeasureString(graphics_, broken, 8, font_, &layout, format_, &box, nullptr, nullptr), Ok);
    EXPECT_EQ(GdipDrawString(graphics_, broken, 8, font_, &layout, format_, brush_), Ok);
  }
  EXPECT_EQ(Measure(u"").Width, 0);
  EXPECT_EQ(lines_, 0);
  EXPECT_EQ(GdipDrawString(graphics_, nullptr, -1, font_, &layout, format_, brush_), InvalidParameter);
  EXPECT_EQ(GdipDrawString(graphics_, u"x", -2, font_, &layout, format_, brush_), InvalidParameter);
  EXPECT_EQ(GdipDrawString(graphics_, u"x", -1, nullptr, &layout, format_, brush_), InvalidParameter);
  EXPECT_EQ(GdipDrawString(graphics_, u"x", -1, font_, &layout, nullptr, brush_), Ok) << "the generic format";
  const RectF odd(std::nanf(""), 0, 1, 1);
  EXPECT_EQ(GdipDrawString(graphics_, u"x", -1, font_, &odd, format_, brush_), InvalidParameter);
  GpFont* none = nullptr;
  EXPECT_EQ(GdipCreateFontFromLogfontW(nullptr, nullptr, &none), InvalidParameter);
  EXPECT_EQ(GdipSetStringFormatTrimming(format_, static_cast<StringTrimming>(9)), InvalidParameter);
  const std::u16string huge(20000, u'测');
  const RectF wide(0, 0, 2147483648.0f, 2147483648.0f);
  EXPECT_EQ(GdipMeasureString(graphics_, huge.c_str(), -1, font_, &wide, format_, &box, nullptr, nullptr), Ok);
}

TEST_F(StringsTest, FontOfTheDcAndTheSharedFormat) {
  HFONT font = MakeFont(u"Segoe UI", 31);
  HGDIOBJ former = SelectObject(canvas_->dc(), font);
  GdipDeleteFont(font_);
  EXPECT_EQ(GdipCreateFontFromDC(canvas_->dc(), &font_), Ok);
  SelectObject(canvas_->dc(), former);
  DeleteObject(font);
  EXPECT_FLOAT_EQ(Measure(u"测").Width, 31);
  GpStringFormat *a = nullptr, *b = nullptr;
  GdipStringFormatGetGenericTypographic(&a);
  EXPECT_EQ(GdipDeleteStringFormat(a), Ok);
  GdipStringFormatGetGenericTypographic(&b);
  EXPECT_EQ(a, b);
  RectF box, layout(0, 0, 0, 0);
  EXPECT_EQ(GdipMeasureString(graphics_, u"x", 1, font_, &layout, b, &box, nullptr, nullptr), Ok) << "still there";
}

}  // namespace
