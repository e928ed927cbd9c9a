// GDI+ started, with a canvas and an antialiased graphics on it whose pixel edges lie at whole coordinates.
#pragma once

#include <gdiplus.h>
#include <ole2.h>

#include <cstring>
#include <memory>

#include "tests/winhost/gdi/canvas.h"

namespace graphics_testing {

using namespace Gdiplus::DllExports;
using Gdiplus::InvalidParameter;
using Gdiplus::Ok;

class GdiplusTest : public GraphicsTest {
 protected:
  void SetUp() override {
    Gdiplus::GdiplusStartupInput input;
    ASSERT_EQ(Gdiplus::GdiplusStartup(&token_, &input, nullptr), Ok);
    canvas_ = std::make_unique<Canvas>(100, 60);
    ASSERT_EQ(GdipCreateFromHDC(canvas_->dc(), &graphics_), Ok);
    GdipSetSmoothingMode(graphics_, Gdiplus::SmoothingModeAntiAlias);
    GdipSetPixelOffsetMode(graphics_, Gdiplus::PixelOffsetModeHalf);
    GdipSetTextRenderingHint(graphics_, Gdiplus::TextRenderingHintAntiAlias);
  }
  void TearDown() override {
    GdipDeleteGraphics(graphics_);
    canvas_.reset();
    GraphicsTest::TearDown();
    Gdiplus::GdiplusShutdown(token_);
  }

  std::uint32_t& At(int x, int y) { return canvas_->At(x, y); }

  void FillRectangle(Gdiplus::ARGB color, int x, int y, int width, int height) {
    Gdiplus::GpSolidFill* brush = nullptr;
    ASSERT_EQ(GdipCreateSolidFill(color, &brush), Ok);
    EXPECT_EQ(GdipFillRectangleI(graphics_, brush, x, y, width, height), Ok);
    EXPECT_EQ(GdipDeleteBrush(brush), Ok);
  }

  // A stream over a copy of the bytes.
  template <class Bytes>
  static IStream* StreamOf(const Bytes& bytes, std::size_t count) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, count);
    std::memcpy(GlobalLock(memory), bytes, count);
    GlobalUnlock(memory);
    IStream* stream = nullptr;
    EXPECT_EQ(CreateStreamOnHGlobal(memory, TRUE, &stream), S_OK);
    return stream;
  }
  template <class Bytes>
  static Gdiplus::GpBitmap* Decode(const Bytes& bytes, std::size_t count = sizeof(Bytes)) {
    IStream* stream = StreamOf(bytes, count);
    Gdiplus::GpBitmap* bitmap = nullptr;
    GdipCreateBitmapFromStream(stream, &bitmap);
    stream->Release();
    return bitmap;
  }
  static Gdiplus::GpBitmap* MakeBitmap(int width, int height, std::initializer_list<Gdiplus::ARGB> pixels) {
    Gdiplus::GpBitmap* bitmap = nullptr;
    EXPECT_EQ(GdipCreateBitmapFromScan0(width, height, 0, PixelFormat32bppARGB, nullptr, &bitmap), Ok);
    Gdiplus::BitmapData data{};
    EXPECT_EQ(GdipBitmapLockBits(bitmap, nullptr, Gdiplus::ImageLockModeWrite, PixelFormat32bppARGB, &data), Ok);
    std::copy(pixels.begin(), pixels.end(), static_cast<Gdiplus::ARGB*>(data.Scan0));
    EXPECT_EQ(GdipBitmapUnlockBits(bitmap, &data), Ok);
    return bitmap;
  }
  static Gdiplus::ARGB PixelOf(Gdiplus::GpBitmap* bitmap, int x, int y) {
    const Gdiplus::Rect rect(x, y, 1, 1);
    Gdiplus::BitmapData data{};
    if (GdipBitmapLockBits(bitmap, &rect, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &data) != Ok) return 0xBAD;
    const Gdiplus::ARGB pixel = *static_cast<Gdiplus::ARGB*>(data.Scan0);
    GdipBitmapUnlockBits(bitmap, &data);
    return pixel;
  }

  ULONG_PTR token_ = 0;
  std::unique_ptr<Canvas> canvas_;
  Gdiplus::GpGraphics* graphics_ = nullptr;
};

}  // namespace graphics_testing
