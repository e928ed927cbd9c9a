#include "lumo/render/image_cache.h"

#include "lumo/core/name_hash.h"
#include "lumo/render/image_attribute.h"
#include "tests/src/lumo/render/render_fixture.h"

namespace lumo {
namespace {

constexpr const char* kSvg = "<svg width='12' height='12'><rect width='12' height='12' fill='#fff'/></svg>";
// Three frames of 2 x 2 pixels, red, green and blue; delays of 50, 100 and 50 ms.
constexpr const char* kFilm =
    "47494638396102000200910000ff000000ff000000ff00000021ff0b4e45545343415045322e30030100000021f90404050000002c00000000"
    "0"
    "2000200000204044110050021f904040a0000002c00000000020002000002040cc330050021f90404050000002c00000000020002000002041"
    "4"
    "455105003b";

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (size_t i = 0; i + 1 < hex.size(); i += 2) bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return bytes;
}

class ImageCacheTest : public RenderTest {
 protected:
  ImageAttribute Load(const WCHAR* text, int scale = 100, StringView folder = TEXT("Setup\\")) {
    ImageAttribute image;
    image.Assign(text);
    LoadImage(image, folder, scale);
    return image;
  }
  static std::string Png(int width) {
    return MakePng(width, 3, [](int, int) { return 0xFF112233U; });
  }
};

TEST_F(ImageCacheTest, PathsLieBelowTheThemeAndTheWindowsFolder) {
  const struct {
    const WCHAR* file;
    const char* path;
  } rows[] = {
      {TEXT("a.png"), "skin\\theme\\Setup\\a.png"},
      {TEXT("./b/a.png"), "skin\\theme\\Setup\\b\\a.png"},
      {TEXT("../public/button/min.svg"), "skin\\theme\\public\\button\\min.svg"},
      {TEXT("../../../../a.png"), "..\\a.png"},
      {TEXT("x/../y\\.\\..\\a.png"), "skin\\theme\\Setup\\a.png"},
      {TEXT("C:\\pictures\\..\\a.png"), "C:\\a.png"},
      {TEXT("C:\\..\\a.png"), "C:\\..\\a.png"},
  };
  for (const auto& row : rows) EXPECT_EQ(vanta::ToUtf8(ResolveImagePath(row.file, TEXT("Setup\\"))), row.path);
}

TEST_F(ImageCacheTest, TheKeyIsTheHashOfItsText) {
  EXPECT_EQ(ImageCacheKey(TEXT("a\\b.svg"), 150, TEXT("red"), TEXT("1.6")),
            HashName(TEXT("a\\b.svg_factor_150_color_red_scale_1.6")));
}

TEST_F(ImageCacheTest, PicturesAreSharedForAsLongAsSomebodyHoldsThem) {
  skin_.Put("skin/theme/Setup/a.svg", kSvg);
  {
    const ImageAttribute one = Load(TEXT("a.svg")), two = Load(TEXT("file='../Setup/./a.svg'"));
    EXPECT_NE(one.image, nullptr);
    EXPECT_EQ(one.image, two.image);
    EXPECT_EQ(skin_.reads, 1);
    EXPECT_NE(Load(TEXT("file='a.svg' color='red'")).image, one.image);
    EXPECT_NE(Load(TEXT("file='a.svg' scale='2'")).image, one.image);
    EXPECT_NE(Load(TEXT("a.svg"), 150).image, one.image);
    EXPECT_EQ(CountCachedImages(), 1U);
  }
  EXPECT_EQ(CountCachedImages(), 0U);
  const ImageAttribute again = Load(TEXT("a.svg"));
  EXPECT_EQ(skin_.reads, 5);
}

TEST_F(ImageCacheTest, VectorPicturesAreDrawnForTheScale) {
  skin_.Put("skin/theme/Setup/a.SVG", kSvg);
  const ImageAttribute image = Load(TEXT("file='a.SVG' scale='1.6'"), 150);
  ASSERT_NE(image.image, nullptr);
  EXPECT_EQ(image.image->width, 28);
  EXPECT_EQ(image.image->height, 28);
  EXPECT_TRUE(image.image->scaled);
  EXPECT_EQ(image.image->frames, 1);
}

TEST_F(ImageCacheTest, ColoursAreTakenFromTheGlobals) {
  Globals().AddColor(TEXT("check"), TEXT("#7f00bb96"));
  skin_.Put("skin/theme/Setup/a.svg", kSvg);
  const ImageAttribute image = Load(TEXT("file='a.svg' color='check'"));
  ASSERT_NE(image.image, nullptr);
  Gdiplus::ARGB pixel = 0;
  Gdiplus::GpRect all(0, 0, 12, 12);
  Gdiplus::BitmapData data = {};
  ASSERT_EQ(
      gdip::GdipBitmapLockBits(image.image->Bitmap(), &all, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &data),
      Gdiplus::Ok);
  pixel = static_cast<const Gdiplus::ARGB*>(data.Scan0)[30];
  gdip::GdipBitmapUnlockBits(image.image->Bitmap(), &data);
  EXPECT_EQ(pixel, 0xFF00BB96);
}

TEST_F(ImageCacheTest, TheFileOfTheScaleIsUsedAndNotScaledAgain) {
  skin_.Put("skin/theme/Setup/icon/a.png", Png(10));
  skin_.Put("skin/theme/Setup/icon/150/a.png", Png(15));
  skin_.Put("skin/theme/Setup/icon/200/a.png", Png(20));
  const struct {
    int scale;
    int width;
  } rows[] = {{100, 10}, {150, 15}, {125, 20}, {200, 20}};
  for (const auto& row : rows) {
    const ImageAttribute image = Load(TEXT("icon/a.png"), row.scale);
    ASSERT_NE(image.image, nullptr);
    EXPECT_EQ(image.image->width, row.width) << row.scale;
    EXPECT_FALSE(image.image->scaled);
  }
}

TEST_F(ImageCacheTest, AFileThatCannotBeReadIsNotTriedAgain) {
  const struct {
    const WCHAR* file;
    std::string bytes;
  } rows[] = {{TEXT("none.png"), {}},
              {TEXT("bad.png"), "no picture"},
              {TEXT("cut.png"), Png(9).substr(0, 30)},
              {TEXT("bad.svg"), "no picture"},
              {TEXT("empty.png"), ""}};
  for (const auto& row : rows) {
    if (row.file != rows[0].file) skin_.Put("skin/theme/Setup/" + vanta::ToUtf8(row.file), row.bytes);
    ImageAttribute image = Load(row.file);
    EXPECT_EQ(image.image, nullptr) << vanta::ToUtf8(row.file);
    EXPECT_TRUE(image.file.empty());
    EXPECT_EQ(vanta::ToUtf8(image.text), vanta::ToUtf8(row.file));
    const int reads = skin_.reads;
    EXPECT_FALSE(LoadImage(image, StringView(), 100));
    EXPECT_EQ(skin_.reads, reads);
  }
  EXPECT_EQ(CountCachedImages(), 0U);
}

TEST_F(ImageCacheTest, FilmsSayTheirFramesAndDelays) {
  skin_.Put("skin/theme/Setup/a.gif", FromHex(kFilm));
  const ImageAttribute image = Load(TEXT("a.gif"));
  ASSERT_NE(image.image, nullptr);
  EXPECT_EQ(image.image->frames, 3);
  EXPECT_EQ(image.image->FrameDelay(0), 50U);
  EXPECT_EQ(image.image->FrameDelay(1), 100U);
  EXPECT_EQ(image.image->FrameDelay(3), 0U);
  constexpr DWORD kFrames[] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF};
  render_->Resize(4, 4, true);
  for (const int frame : {0, 1, 2, 0}) {
    image.image->SelectFrame(frame);
    ImageDrawing drawing;
    drawing.bitmap = image.image->Bitmap();
    drawing.clip = drawing.dest = {0, 0, 4, 4};
    drawing.source = {0, 0, 2, 2};
    render_->DrawImage(drawing);
    EXPECT_EQ(At(2, 2), kFrames[frame]) << frame;
  }
}

TEST_F(ImageCacheTest, WithoutAPackageFilesLieOnTheDisk) {
  skin_.packaged = false;
  skin_.theme = TEXT("C:\\skin\\");
  Put("C:\\skin\\Setup\\150\\a.png", Png(15));
  Put("C:\\skin\\Setup\\b.svg", kSvg);
  const ImageAttribute bitmap = Load(TEXT("a.png"), 150), vector = Load(TEXT("b.svg")), none = Load(TEXT("a.png"));
  ASSERT_NE(bitmap.image, nullptr);
  EXPECT_EQ(bitmap.image->width, 15);
  EXPECT_NE(vector.image, nullptr);
  EXPECT_EQ(none.image, nullptr);
}

}  // namespace
}  // namespace lumo
