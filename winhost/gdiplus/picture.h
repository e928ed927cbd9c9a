// Images: frames of straight ARGB pixels, and the premultiplied pictures that are drawn from them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "winhost/gdi/surface.h"
#include "winhost/gdiplus/handles.h"

namespace winhost {

inline constexpr int kMostPictureSide = 16384;
inline constexpr std::int64_t kMostPicturePixels = 64 << 20;  // of all frames together

struct PictureFrame {
  std::vector<std::uint32_t> pixels;  // rows from the top, width pixels each
  CairoSurface prepared;              // made when the frame is first drawn; dropped when pixels change
};

// Pixels of the caller's that a bitmap stands for.
struct ForeignPixels {
  BYTE* first;  // of the top row
  int stride;
};

struct PictureLock {
  Gdiplus::Rect rect;
  Gdiplus::PixelFormat format;
  bool write;
  BYTE* bits;  // what the caller got
  int stride;
  std::vector<BYTE> buffer;  // unless the caller got the frame's own pixels or gave a buffer
};

struct PictureObject final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpImage;
  PictureObject(int w, int h, Gdiplus::PixelFormat pixel_format)
      : GraphicsObject(kKind), width(w), height(h), format(pixel_format) {}

  // Straight pixels of the frame that is shown, brought up to date.
  std::uint32_t* Pixels();
  // After changing them.
  void Changed();
  // Premultiplied, or without alpha where every pixel is opaque. Null when there is no memory.
  cairo_surface_t* Prepared();

  int width;
  int height;
  Gdiplus::PixelFormat format;
  std::vector<PictureFrame> frames;
  std::size_t shown = 0;
  bool timed = false;             // frames lie along FrameDimensionTime, else along FrameDimensionPage
  std::vector<LONG> delays;       // hundredths of a second, one a frame
  std::uint16_t repetitions = 0;  // 0: for ever
  std::optional<ForeignPixels> foreign;
  std::optional<PictureLock> lock;
};

// Rows of one of the four 32- and 24-bit formats to straight ARGB and back.
bool IsPixelFormat(Gdiplus::PixelFormat format);
void ReadPixels(Gdiplus::PixelFormat format, const BYTE* row, std::uint32_t* argb, int count);
void WritePixels(Gdiplus::PixelFormat format, const std::uint32_t* argb, BYTE* row, int count);

}  // namespace winhost
