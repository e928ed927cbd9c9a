#include <vector>

#include "tests/winhost/gdiplus/gdiplus_fixture.h"
#include "tests/winhost/gdiplus/sample_pictures.h"

using namespace graphics_testing;
using namespace Gdiplus;
using namespace sample_pictures;

namespace {

class ImagesTest : public GdiplusTest {
 protected:
  SIZE SizeOf(GpBitmap* bitmap) {
    UINT width = 0, height = 0;
    EXPECT_EQ(GdipGetImageWidth(bitmap, &width), Ok);
    EXPECT_EQ(GdipGetImageHeight(bitmap, &height), Ok);
    return {static_cast<LONG>(width), static_cast<LONG>(height)};
  }
};

TEST_F(ImagesTest, PngKeepsStraightAlpha) {
  GpBitmap* bitmap = Decode(kPng);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(SizeOf(bitmap).cx, 2);
  EXPECT_EQ(PixelOf(bitmap, 0, 0), 0xFFFF0000u);
  EXPECT_EQ(PixelOf(bitmap, 1, 0), 0x8000FF00u);
  EXPECT_EQ(PixelOf(bitmap, 1, 1), 0xFF0A141Eu);
  UINT frames = 0;
  EXPECT_EQ(GdipImageGetFrameCount(bitmap, &FrameDimensionPage, &frames), Ok);
  EXPECT_EQ(frames, 1u);
  EXPECT_EQ(GdipImageGetFrameCount(bitmap, &FrameDimensionTime, &frames), Win32Error);
  UINT bytes = 0;
  EXPECT_EQ(GdipGetPropertyItemSize(bitmap, PropertyTagFrameDelay, &bytes), PropertyNotFound);
  GdipDisposeImage(bitmap);
}

TEST_F(ImagesTest, BmpAndJpegAreOpaque) {
  GpBitmap* bmp = Decode(kBmp);
  EXPECT_EQ(PixelOf(bmp, 0, 0), 0xFFFF0000u);
  EXPECT_EQ(PixelOf(bmp, 1, 0), 0xFF0000FFu);
  GpBitmap* jpeg = Decode(kJpeg);
  EXPECT_EQ(SizeOf(jpeg).cx, 16);
  EXPECT_NEAR_COLOR(PixelOf(jpeg, 7, 7), 0xFF4080C0u, 3);
  GdipDisposeImage(bmp);
  GdipDisposeImage(jpeg);
}

TEST_F(ImagesTest, GifHasFramesDelaysAndRepetitions) {
  GpBitmap* gif = Decode(kGif);
  UINT frames = 0, bytes = 0;
  EXPECT_EQ(GdipImageGetFrameCount(gif, &FrameDimensionTime, &frames), Ok);
  EXPECT_EQ(frames, 2u);
  EXPECT_EQ(PixelOf(gif, 0, 0), 0xFFFF0000u);
  EXPECT_EQ(GdipImageSelectActiveFrame(gif, &FrameDimensionTime, 1), Ok);
  EXPECT_EQ(PixelOf(gif, 0, 0), 0xFF00FF00u);
  EXPECT_EQ(PixelOf(gif, 1, 0), 0xFF0000FFu);
  EXPECT_EQ(GdipImageSelectActiveFrame(gif, &FrameDimensionTime, 2), Win32Error);
  ASSERT_EQ(GdipGetPropertyItemSize(gif, PropertyTagFrameDelay, &bytes), Ok);
  std::vector<BYTE> block(bytes);
  auto* item = reinterpret_cast<PropertyItem*>(block.data());
  EXPECT_EQ(GdipGetPropertyItem(gif, PropertyTagFrameDelay, bytes - 1, item), InvalidParameter);
  EXPECT_EQ(GdipGetPropertyItem(gif, PropertyTagFrameDelay, bytes, item), Ok);
  ASSERT_EQ(item->length, 2 * sizeof(LONG));
  EXPECT_EQ(item->type, PropertyTagTypeLong);
  EXPECT_EQ(static_cast<LONG*>(item->value)[0], 10);
  EXPECT_EQ(static_cast<LONG*>(item->value)[1], 25);
  GdipGetPropertyItemSize(gif, PropertyTagLoopCount, &bytes);
  EXPECT_EQ(GdipGetPropertyItem(gif, PropertyTagLoopCount, bytes, item), Ok);
  EXPECT_EQ(*static_cast<WORD*>(item->value), 0);
  GdipDisposeImage(gif);
  GpBitmap* still = Decode(kStillGif);
  EXPECT_EQ(GdipImageGetFrameCount(still, &FrameDimensionTime, &frames), Ok);
  EXPECT_EQ(frames, 1u);
  EXPECT_EQ(PixelOf(still, 1, 0), 0xFF00FF00u);
  GdipDisposeImage(still);
}

TEST_F(ImagesTest, BrokenAndHugeFilesAreRefused) {
  EXPECT_EQ(Decode(kHugePng), nullptr);
  EXPECT_EQ(Decode(kWidePng), nullptr);
  EXPECT_EQ(Decode("no picture at all"), nullptr);
  EXPECT_EQ(Decode("", 0), nullptr);
  for (std::size_t count = 0; count < 40; ++count) EXPECT_EQ(Decode(kPng, count), nullptr) << count;
  for (std::size_t count = 40; count < sizeof kPng; ++count) GdipDisposeImage(Decode(kPng, count));
  for (std::size_t count = 0; count < sizeof kGif; ++count) GdipDisposeImage(Decode(kGif, count));
  for (std::size_t at = 0; at < sizeof kGif; ++at) {
    unsigned char bytes[sizeof kGif];
    std::memcpy(bytes, kGif, sizeof kGif);
    bytes[at] ^= 0xFF;
    GdipDisposeImage(Decode(bytes));
  }
  GpBitmap* bitmap = nullptr;
  EXPECT_EQ(GdipCreateBitmapFromStream(nullptr, &bitmap), InvalidParameter);
}

TEST_F(ImagesTest, PlannedFailuresAndAForgottenStart) {
  Start(R"({"faults": [{"operation": "GdipCreateBitmapFromStream", "error": 3}]})");
  IStream* stream = StreamOf(kPng, sizeof kPng);
  GpBitmap* bitmap = nullptr;
  EXPECT_EQ(GdipCreateBitmapFromStream(stream, &bitmap), OutOfMemory);
  GdiplusShutdown(token_);
  EXPECT_EQ(GdipCreateBitmapFromStream(stream, &bitmap), GdiplusNotInitialized);
  stream->Release();
  GdiplusStartupInput input;
  input.GdiplusVersion = 2;
  EXPECT_EQ(GdiplusStartup(&token_, &input, nullptr), UnsupportedGdiplusVersion);
  input.GdiplusVersion = 1;
  EXPECT_EQ(GdiplusStartup(&token_, &input, nullptr), Ok);
}

TEST_F(ImagesTest, LocksConvertBetweenFormats) {
  GpBitmap* bitmap = MakeBitmap(2, 1, {0x80FF0000, 0xFF102030});
  BitmapData data{};
  ASSERT_EQ(GdipBitmapLockBits(bitmap, nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data), Ok);
  EXPECT_EQ(static_cast<ARGB*>(data.Scan0)[0], 0x80800000u);
  EXPECT_EQ(GdipBitmapLockBits(bitmap, nullptr, ImageLockModeRead, PixelFormat32bppARGB, &data), WrongState);
  EXPECT_EQ(GdipBitmapUnlockBits(bitmap, &data), Ok);
  EXPECT_EQ(GdipBitmapUnlockBits(bitmap, &data), WrongState);
  const Rect second(1, 0, 1, 1);
  ASSERT_EQ(GdipBitmapLockBits(bitmap, &second, ImageLockModeRead | ImageLockModeWrite, PixelFormat24bppRGB, &data),
            Ok);
  auto* bytes = static_cast<BYTE*>(data.Scan0);
  EXPECT_EQ(bytes[0], 0x30);
  bytes[2] = 0xEE;
  GdipBitmapUnlockBits(bitmap, &data);
  EXPECT_EQ(PixelOf(bitmap, 1, 0), 0xFFEE2030u);
  EXPECT_EQ(PixelOf(bitmap, 0, 0), 0x80FF0000u) << "outside the lock nothing changes";
  ARGB own[1] = {0};
  BitmapData mine{1, 1, 4, PixelFormat32bppARGB, own, 0};
  ASSERT_EQ(
      GdipBitmapLockBits(bitmap, &second, ImageLockModeRead | ImageLockModeUserInputBuf, PixelFormat32bppARGB, &mine),
      Ok);
  EXPECT_EQ(own[0], 0xFFEE2030u);
  GdipBitmapUnlockBits(bitmap, &mine);
  for (const Rect& bad : {Rect(0, 0, 3, 1), Rect(-1, 0, 1, 1), Rect(0, 0, 0, 1), Rect(0, 0x7FFFFFFF, 1, 0x7FFFFFFF)}) {
    EXPECT_EQ(GdipBitmapLockBits(bitmap, &bad, ImageLockModeRead, PixelFormat32bppARGB, &data), InvalidParameter);
  }
  EXPECT_EQ(GdipBitmapLockBits(bitmap, nullptr, ImageLockModeRead, PixelFormat8bppIndexed, &data), InvalidParameter);
  GdipDisposeImage(bitmap);
}

TEST_F(ImagesTest, BitmapOverForeignPixelsFollowsThem) {
  ARGB pixels[4] = {0xFF111111, 0xFF222222, 0xFF333333, 0xFF444444};
  GpBitmap* bitmap = nullptr;
  ASSERT_EQ(GdipCreateBitmapFromScan0(2, 2, 8, PixelFormat32bppARGB, reinterpret_cast<BYTE*>(pixels), &bitmap), Ok);
  EXPECT_EQ(PixelOf(bitmap, 1, 1), 0xFF444444u);
  GdipDrawImageRectI(graphics_, bitmap, 0, 0, 2, 2);
  EXPECT_EQ(At(0, 0), 0xFF111111u);
  pixels[0] = 0xFFABCDEF;
  GdipDrawImageRectI(graphics_, bitmap, 0, 0, 2, 2);
  EXPECT_EQ(At(0, 0), 0xFFABCDEFu);
  BitmapData data{};
  GdipBitmapLockBits(bitmap, nullptr, ImageLockModeWrite, PixelFormat32bppARGB, &data);
  static_cast<ARGB*>(data.Scan0)[3] = 0x12345678;
  GdipBitmapUnlockBits(bitmap, &data);
  EXPECT_EQ(pixels[3], 0x12345678u);
  GdipDisposeImage(bitmap);
  EXPECT_EQ(GdipCreateBitmapFromScan0(2, 2, 4, PixelFormat32bppARGB, reinterpret_cast<BYTE*>(pixels), &bitmap),
            InvalidParameter)
      << "a stride that is too short";
  for (const auto& [w, h] : {std::pair(0, 1), {1, -1}, {0x7FFFFFFF, 0x7FFFFFFF}}) {
    EXPECT_EQ(GdipCreateBitmapFromScan0(w, h, 0, PixelFormat32bppARGB, nullptr, &bitmap), InvalidParameter);
  }
}

TEST_F(ImagesTest, RotatesAndFlips) {
  struct Row {
    RotateFlipType type;
    ARGB pixels[6];  // row by row
  };
  const Row rows[] = {{RotateNoneFlipNone, {1, 2, 3, 4, 5, 6}}, {Rotate90FlipNone, {4, 1, 5, 2, 6, 3}},
                      {Rotate180FlipNone, {6, 5, 4, 3, 2, 1}},  {Rotate270FlipNone, {3, 6, 2, 5, 1, 4}},
                      {RotateNoneFlipX, {3, 2, 1, 6, 5, 4}},    {Rotate90FlipX, {1, 4, 2, 5, 3, 6}},
                      {RotateNoneFlipY, {4, 5, 6, 1, 2, 3}},    {Rotate270FlipX, {6, 3, 5, 2, 4, 1}}};
  for (const Row& row : rows) {
    GpBitmap* bitmap = MakeBitmap(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(GdipImageRotateFlip(bitmap, row.type), Ok);
    const SIZE size = SizeOf(bitmap);
    for (int i = 0; i < 6; ++i)
      EXPECT_EQ(PixelOf(bitmap, i % size.cx, i / size.cx), row.pixels[i]) << row.type << ' ' << i;
    GdipDisposeImage(bitmap);
  }
}

}  // namespace
