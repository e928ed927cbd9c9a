#include "lumo/render/vector_image.h"

#include <gtest/gtest.h>

#include <string>

namespace lumo {
namespace {

using std::string;

string Svg(const string& size, const string& body) {
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + ">" + body + "</svg>";
}
const string kIcon = Svg("width=\"12\" height=\"12\"", "<circle cx=\"6\" cy=\"6\" r=\"5\" fill=\"#ff8040\"/>");

string SizeOf(const string& svg, int percent, const WCHAR* scale) {
  const auto pixels = DrawVector(svg, percent, scale, nullptr);
  return pixels ? std::to_string(pixels->width) + "x" + std::to_string(pixels->height) : "none";
}

DWORD PixelAt(const VectorPixels& pixels, int x, int y) {
  const BYTE* p = &pixels.bgra[static_cast<size_t>((y * pixels.width + x) * 4)];
  return static_cast<DWORD>(p[3]) << 24 | static_cast<DWORD>(p[2]) << 16 | static_cast<DWORD>(p[1]) << 8 | p[0];
}

TEST(VectorImageTest, SizesAreScaledAndCut) {
  const struct {
    int percent;
    const WCHAR* scale;
    const char* size;
  } rows[] = {
      {100, TEXT(""), "12x12"},      {150, TEXT(""), "18x18"},
      {100, TEXT("1.6"), "19x19"},   {150, TEXT("1.6"), "28x28"},
      {100, TEXT("0"), "12x12"},     {100, TEXT("-2"), "12x12"},
      {125, TEXT("abc"), "15x15"},   {100, TEXT(" +.5"), "6x6"},
      {100, TEXT("0.0001"), "none"}, {100, TEXT("2.x"), "24x24"},
      {100, TEXT("1365.4"), "none"}, {100, TEXT("99999999999999999999999999999999"), "none"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SizeOf(kIcon, row.percent, row.scale), row.size) << row.percent << " " << vanta::ToUtf8(row.scale);
  }
}

TEST(VectorImageTest, APictureWithoutAWholePixelIsNone) {
  EXPECT_EQ(SizeOf(Svg("width=\"0.9\" height=\"10\"", ""), 200, TEXT("")), "none");
  EXPECT_EQ(SizeOf(Svg("width=\"10\" height=\"0\"", ""), 100, TEXT("")), "none");
  EXPECT_EQ(SizeOf(Svg("width=\"10.9\" height=\"1\"", ""), 100, TEXT("")), "10x1");
  for (const char* text : {"", "no picture", "<svg", "<svg/>", "<html></html>"}) {
    EXPECT_EQ(SizeOf(text, 100, TEXT("")), "none") << text;
  }
}

TEST(VectorImageTest, PixelsAreStraightAndInTheBitmapsOrder) {
  const string half =
      Svg("width=\"4\" height=\"4\"", "<rect width=\"4\" height=\"4\" fill=\"#ff8040\" fill-opacity=\"0.5\"/>");
  const auto pixels = DrawVector(half, 100, TEXT(""), nullptr);
  ASSERT_TRUE(pixels);
  const DWORD pixel = PixelAt(*pixels, 2, 2);
  EXPECT_NEAR(pixel >> 24, 0x7F, 1);
  EXPECT_NEAR((pixel >> 16) & 0xFF, 0xFF, 2);
  EXPECT_NEAR((pixel >> 8) & 0xFF, 0x80, 2);
  EXPECT_NEAR(pixel & 0xFF, 0x40, 2);
}

TEST(VectorImageTest, AColourChangesColoursAndNothingElse) {
  const DWORD red = 0x80FF0000, teal = 0xFF00BB96;
  const auto plain = DrawVector(kIcon, 150, TEXT(""), nullptr);
  const auto one = DrawVector(kIcon, 150, TEXT(""), &red), two = DrawVector(kIcon, 150, TEXT(""), &teal);
  ASSERT_TRUE(plain && one && two);
  int covered = 0, soft = 0;
  for (int y = 0; y < 18; ++y) {
    for (int x = 0; x < 18; ++x) {
      const DWORD alpha = PixelAt(*plain, x, y) & 0xFF000000;
      if (alpha == 0) {
        EXPECT_EQ(PixelAt(*one, x, y), PixelAt(*plain, x, y));
        continue;
      }
      EXPECT_EQ(PixelAt(*one, x, y), alpha | 0xFF0000);
      EXPECT_EQ(PixelAt(*two, x, y), alpha | 0x00BB96);
      ++covered;
      soft += alpha != 0xFF000000;
    }
  }
  EXPECT_NEAR(covered, 3.14159 * 7.5 * 7.5, 30);
  EXPECT_GT(soft, 20);
}

string Repeat(const string& text, int count) {
  string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST(VectorImageTest, HostilePicturesAreRefusedOrDrawnButEnd) {
  const string size = "width=\"32\" height=\"32\"";
  const struct {
    const char* what;
    string svg;
    const char* drawn;
  } rows[] = {
      {"no number", Svg(size, "<path d=\"M0e999 0L1 1L2 0z\"/>"), "none"},
      {"far away", Svg(size, "<rect width=\"1e30\" height=\"3\"/>"), "none"},
      {"a stop that is no number",
       Svg(size,
           "<linearGradient id=\"a\"><stop offset=\"0e999\"/><stop offset=\"1\"/></linearGradient>"
           "<rect width=\"9\" height=\"9\" fill=\"url(#a)\"/>"),
       "none"},
      {"a gradient that is no number",
       Svg(size,
           "<linearGradient id=\"a\" gradientTransform=\"scale(1e38)\" x1=\"1e38\"><stop offset=\"1\"/>"
           "</linearGradient><rect width=\"9\" height=\"9\" fill=\"url(#a)\"/>"),
       "none"},
      {"opacity that is no number", Svg(size, "<rect width=\"9\" height=\"9\" opacity=\"0e999\"/>"), "none"},
      {"short dashes", Svg(size, "<path d=\"M0 0L400000 0\" stroke=\"#000\" stroke-dasharray=\"0.00001\"/>"), "32x32"},
      {"many dashes",
       Svg(size, "<path stroke=\"#000\" stroke-dasharray=\"0.3\" d=\"M0 0" + Repeat("L400000 0L0 0", 900) + "\"/>"),
       "none"},
      {"a wide stroke", Svg(size, "<path d=\"M0 0L9 9\" stroke=\"#000\" stroke-width=\"1e9\"/>"), "none"},
      {"lines without length", Svg(size, "<path d=\"M0 0" + Repeat("l0 0", 200000) + "\"/>"), "none"},
      {"edges side by side", Svg(size, "<path d=\"M0 0" + Repeat("v32h.001v-32", 40000) + "\"/>"), "none"},
      {"deep groups", Svg(size, Repeat("<g>", 100000) + "<rect width=\"9\" height=\"9\"/>" + Repeat("</g>", 100000)),
       "32x32"},
      {"many gradients", Svg(size, Repeat("<linearGradient/><stop/><path/>", 20000)), "none"},
      {"a text too long", Svg(size, string(kMaxSvgText, ' ')), "none"},
      {"a gradient of itself",
       Svg(size,
           "<linearGradient id=\"a\" xlink:href=\"#b\"/><linearGradient id=\"b\" xlink:href=\"#a\"/>"
           "<rect width=\"9\" height=\"9\" fill=\"url(#a)\"/>"),
       "32x32"},
  };
  for (const auto& row : rows) EXPECT_EQ(SizeOf(row.svg, 100, TEXT("")), row.drawn) << row.what;
}

TEST(VectorImageTest, EveryCutOfAPictureIsSafe) {
  const string whole = Svg("width=\"16\" height=\"16\" viewBox=\"0 0 32 32\"",
                           "<g transform=\"rotate(10 4 4)\" style=\"stroke:#fff;stroke-width:2\"><path d=\"M1 1C2 3 4 "
                           "5 6 7A3 4 5 0 1 8 9z\" fill=\"url(#g)\" stroke-dasharray=\"2 1\"/></g>");
  for (size_t length = 0; length < whole.size(); ++length)
    DrawVector(whole.substr(0, length), 150, TEXT("1.1"), nullptr);
  EXPECT_EQ(SizeOf(whole, 100, TEXT("")), "16x16");
}

}  // namespace
}  // namespace lumo
