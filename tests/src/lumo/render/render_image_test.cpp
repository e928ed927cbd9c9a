#include "lumo/render/image_attribute.h"
#include "lumo/render/image_cache.h"
#include "lumo/render/image_painter.h"
#include "lumo/render/rect_math.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

constexpr DWORD kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF, kBlack = 0xFF000000;

// 40 x 40: a white frame of ten pixels with a black dot in each corner, a green middle.
DWORD Framed(int x, int y) {
  const bool near_corner = (x < 3 || x > 36) && (y < 3 || y > 36);
  if (near_corner) return kBlack;
  return x >= 10 && x < 30 && y >= 10 && y < 30 ? kGreen : kWhite;
}

class RenderImageTest : public RenderTest {
 protected:
  RenderImageTest() { render_->Resize(320, 80, true); }

  // An attribute whose file is this picture.
  ImageAttribute Picture(const WCHAR* text, int width, int height, const PixelSource& pixel) {
    skin_.Put("skin/theme/a.png", MakePng(width, height, pixel));
    ImageAttribute image;
    image.Assign(text);
    return image;
  }
  void Paint(ImageAttribute& image, const RECT& position, int scale = 100) {
    LoadImage(image, StringView(), scale);
    ImagePlace place;
    place.scale = scale;
    place.position = place.paint = position;
    PaintImage(render_.get(), place, image, nullptr, {});
  }
};

TEST_F(RenderImageTest, APictureInItsOwnSizeIsCopiedExactly) {
  ImageAttribute image = Picture(TEXT("a.png"), 40, 40, Framed);
  Paint(image, {7, 9, 47, 49});
  int wrong = 0;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) wrong += At(7 + x, 9 + y) != Framed(x, y);
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(Text(Touched(*render_)), "7,9,47,49");
}

TEST_F(RenderImageTest, NineGridKeepsTheEnds) {
  ImageAttribute image = Picture(TEXT("file='a.png' corner='10,10,10,10'"), 40, 40, Framed);
  Paint(image, {0, 0, 200, 40});
  for (const int x : {0, 2, 197, 199}) EXPECT_EQ(At(x, 0), kBlack) << x;
  for (const int x : {3, 9, 100, 190, 196}) EXPECT_EQ(At(x, 0), kWhite) << x;
  for (const int x : {10, 11, 100, 188, 189}) EXPECT_EQ(At(x, 20), kGreen) << x;
  for (const int x : {9, 190}) EXPECT_EQ(At(x, 20), kWhite) << x;
  EXPECT_EQ(At(100, 39), kWhite);
  EXPECT_EQ(At(199, 39), kBlack);
  Show("nine_grid_100");
}

TEST_F(RenderImageTest, NineGridAtOneAndAHalfScalesTheEndsOnTheScreenOnly) {
  ImageAttribute image = Picture(TEXT("file='a.png' corner='10,10,10,10'"), 40, 40, Framed);
  Paint(image, {0, 0, 300, 60}, 150);
  for (const int x : {15, 16, 150, 283, 284}) EXPECT_EQ(At(x, 30), kGreen) << x;
  for (const int x : {0, 13, 286, 299}) EXPECT_EQ(At(x, 30), kWhite) << x;
  EXPECT_EQ(At(3, 3), kBlack);
  EXPECT_EQ(At(296, 56), kBlack);
  EXPECT_EQ(At(150, 1), kWhite);
  Show("nine_grid_150");
}

TEST_F(RenderImageTest, EveryCellComesFromItsOwnPart) {
  const auto chequered = [](int x, int y) {
    constexpr DWORD kColors[] = {kRed, kGreen, kBlue, kWhite, kBlack, 0xFFFFFF00, 0xFF00FFFF, 0xFFFF00FF, 0xFF808080};
    return kColors[y / 10 * 3 + x / 10];
  };
  ImageAttribute image = Picture(TEXT("file='a.png' corner='10,10,10,10'"), 30, 30, chequered);
  Paint(image, {0, 0, 90, 60});
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      const int x = column == 0 ? 5 : column == 1 ? 45 : 85, y = row == 0 ? 5 : row == 1 ? 30 : 55;
      EXPECT_EQ(At(x, y), chequered(column * 10, row * 10)) << column << " " << row;
    }
  }
  for (const int x : {9, 10, 79, 80}) EXPECT_EQ(At(x, 30), chequered(x < 10 ? 0 : x < 80 ? 10 : 20, 10)) << x;
}

TEST_F(RenderImageTest, TilesRepeatAndTheLastIsCut) {
  const auto marked = [](int x, int) { return x % 30 == 0 ? kRed : kWhite; };
  ImageAttribute image = Picture(TEXT("file='a.png' xtiled='1'"), 30, 10, marked);
  Paint(image, {0, 0, 100, 10});
  std::string marks;
  for (int x = 0; x < 100; ++x) {
    if (Near(At(x, 5), kRed, 8)) marks += std::to_string(x) + " ";
  }
  EXPECT_EQ(marks, "0 30 60 90 ");
  EXPECT_EQ(Text(Touched(*render_)), "0,0,100,10");
}

TEST_F(RenderImageTest, FadeIsOpacity) {
  ImageAttribute image = Picture(TEXT("file='a.png' fade='128'"), 4, 4, [](int, int) { return kRed; });
  Paint(image, {0, 0, 4, 4});
  EXPECT_TRUE(Near(At(2, 2), 0x80800000));
  ImageAttribute half = Picture(TEXT("file='a.png' fade='128' angle='0'"), 4, 4, [](int, int) { return 0x80FF0000U; });
  ReleaseTextCaches();
  render_->Clear();
  half.Release();
  image.Release();
  Paint(half, {0, 0, 4, 4});
  EXPECT_TRUE(Near(At(2, 2), 0x40400000));
}

TEST_F(RenderImageTest, FadeHasNoEffectBeforeVista) {
  Start(R"({"version": "xp"})");
  ImageAttribute image = Picture(TEXT("file='a.png' fade='128'"), 4, 4, [](int, int) { return kRed; });
  Paint(image, {0, 0, 4, 4});
  EXPECT_EQ(At(2, 2), kRed);
}

TEST_F(RenderImageTest, StretchingDoesNotBleedFromOutsideTheSource) {
  const auto split = [](int x, int) { return x < 10 ? kRed : kBlue; };
  ImageAttribute image = Picture(TEXT("file='a.png' source='0,0,10,10'"), 20, 10, split);
  Paint(image, {0, 0, 100, 50});
  EXPECT_EQ(At(99, 25), kRed);
  EXPECT_EQ(At(0, 0), kRed);
  EXPECT_EQ(At(99, 49), kRed);
}

TEST_F(RenderImageTest, RotationTurnsAboutTheMiddle) {
  const auto half = [](int x, int) { return x < 10 ? kRed : kBlue; };
  ImageAttribute image = Picture(TEXT("file='a.png' angle='90'"), 20, 20, half);
  Paint(image, {0, 0, 20, 20});
  EXPECT_EQ(At(10, 3), kRed);
  EXPECT_EQ(At(10, 16), kBlue);
  ImageAttribute upside = Picture(TEXT("file='a.png' angle='180'"), 20, 20, half);
  Paint(upside, {40, 0, 60, 20});
  EXPECT_EQ(At(43, 10), kBlue);
  EXPECT_EQ(At(56, 10), kRed);
  ImageAttribute tilted = Picture(TEXT("file='a.png' angle='45'"), 20, 20, half);
  ImagePlace place;
  place.position = {100, 20, 120, 40};
  place.paint = {0, 0, 320, 80};
  PaintImage(render_.get(), place, tilted, nullptr, {});
  EXPECT_GT(Alpha(110, 17), 200);
  EXPECT_EQ(Alpha(101, 21), 0);
  Show("rotation");
}

TEST_F(RenderImageTest, ATiledMiddleTurnsAsAWhole) {
  const auto stripes = [](int x, int) { return x < 5 ? kRed : kBlue; };
  ImageAttribute image = Picture(TEXT("file='a.png' xtiled='1' angle='90'"), 10, 20, stripes);
  Paint(image, {0, 0, 20, 20});
  for (const int x : {3, 16}) {
    for (int y = 2; y < 20; y += 5) EXPECT_EQ(At(x, y), y / 5 % 2 == 0 ? kRed : kBlue) << x << " " << y;
  }
}

TEST_F(RenderImageTest, DestinationIsTheTargetOrDestOrThePosition) {
  ImagePlace place;
  place.position = {100, 50, 200, 90};
  place.scale = 150;
  ImageAttribute image;
  const RECT target = {1, 2, 3, 4}, empty = {9, 9, 9, 20};
  image.Assign(TEXT("a.png"));
  EXPECT_EQ(Text(ImageDestination(place, image, &target)), "1,2,3,4");
  EXPECT_EQ(Text(ImageDestination(place, image, &empty)), "100,50,200,90");
  image.Assign(TEXT("file='a.png' dest='0,0,16,16'"));
  EXPECT_EQ(Text(ImageDestination(place, image, nullptr)), "100,50,124,74");
  EXPECT_EQ(Text(ImageDestination(place, image, &target)), "1,2,3,4");
  image.Assign(TEXT("file='a.png' dest='0,0,16,-1'"));
  EXPECT_EQ(Text(ImageDestination(place, image, nullptr)), "100,50,200,90");
}

TEST_F(RenderImageTest, OneFrameOfAStripIsDrawn) {
  const auto strip = [](int x, int) { return x < 10 ? kRed : x < 20 ? kGreen : kBlue; };
  ImageAttribute image = Picture(TEXT("file='a.png' framecount='3' interval='50'"), 30, 10, strip);
  for (int frame = 0; frame < 3; ++frame) {
    image.animation.frame = frame;
    Paint(image, {0, 0, 10, 10});
    EXPECT_EQ(At(5, 5), strip(frame * 10, 0)) << frame;
  }
}

TEST_F(RenderImageTest, NothingIsDrawnOutsideThePaintRectangle) {
  ImageAttribute image = Picture(TEXT("a.png"), 4, 4, [](int, int) { return kRed; });
  LoadImage(image, StringView(), 100);
  ImagePlace place;
  place.position = {0, 0, 20, 20};
  place.paint = {30, 30, 40, 40};
  PaintImage(render_.get(), place, image, nullptr, {});
  EXPECT_EQ(Text(Touched(*render_)), "320,80,0,0");
}

}  // namespace
}  // namespace lumo
