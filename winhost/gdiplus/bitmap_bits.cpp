// A bitmap's pixels: locking, looking at one, turning the whole picture.
#include <algorithm>
#include <cstring>

#include "winhost/gdiplus/picture.h"

namespace winhost {
namespace {

bool Inside(const Gdiplus::Rect& rect, const PictureObject& picture) {
  return rect.X >= 0 && rect.Y >= 0 && rect.Width > 0 && rect.Height > 0 && rect.Width <= picture.width - rect.X &&
         rect.Height <= picture.height - rect.Y;
}

int RowBytes(Gdiplus::PixelFormat format, int width) {
  return format == PixelFormat24bppRGB ? (width * 3 + 3) / 4 * 4 : width * 4;
}

std::uint32_t* FirstPixel(PictureObject& picture, const Gdiplus::Rect& rect) {
  return picture.Pixels() + static_cast<std::ptrdiff_t>(rect.Y) * picture.width + rect.X;
}

// Lets the caller at the frame's own pixels where they have the format; otherwise gives a buffer of it.
void OpenLock(PictureObject& picture, PictureLock lock, const Gdiplus::BitmapData* own, UINT flags) {
  const Gdiplus::Rect& rect = lock.rect;
  std::uint32_t* first = FirstPixel(picture, rect);
  if (own) {
    lock.bits = static_cast<BYTE*>(own->Scan0);
    lock.stride = own->Stride;
  } else if (lock.format == PixelFormat32bppARGB) {
    lock.bits = reinterpret_cast<BYTE*>(first);
    lock.stride = picture.width * 4;
  } else {
    lock.stride = RowBytes(lock.format, rect.Width);
    lock.buffer.resize(static_cast<std::size_t>(lock.stride) * static_cast<std::size_t>(rect.Height));
    lock.bits = lock.buffer.data();
  }
  const bool copies = own || !lock.buffer.empty();
  for (int y = 0; copies && (flags & Gdiplus::ImageLockModeRead) && y < rect.Height; ++y) {
    WritePixels(lock.format, first + static_cast<std::ptrdiff_t>(y) * picture.width,
                lock.bits + static_cast<std::ptrdiff_t>(y) * lock.stride, rect.Width);
  }
  picture.lock = std::move(lock);
}

void CloseLock(PictureObject& picture) {
  const PictureLock lock = std::move(*picture.lock);
  picture.lock.reset();
  if (!lock.write) return;
  std::uint32_t* frame = picture.frames[picture.shown].pixels.data();
  std::uint32_t* first = frame + static_cast<std::ptrdiff_t>(lock.rect.Y) * picture.width + lock.rect.X;
  const bool copies = lock.bits != reinterpret_cast<BYTE*>(first);
  for (int y = 0; copies && y < lock.rect.Height; ++y) {
    ReadPixels(lock.format, lock.bits + static_cast<std::ptrdiff_t>(y) * lock.stride,
               first + static_cast<std::ptrdiff_t>(y) * picture.width, lock.rect.Width);
  }
  picture.Changed();
}

// Where the pixel that comes to (x, y) of the turned picture is in the picture of this size.
struct Turn {
  int quarters;  // clockwise
  bool mirrored;
};

std::vector<std::uint32_t> Turned(const std::vector<std::uint32_t>& pixels, int width, int height, Turn turn) {
  const bool swaps = turn.quarters % 2 != 0;
  const int new_width = swaps ? height : width, new_height = swaps ? width : height;
  std::vector<std::uint32_t> turned(pixels.size());
  std::size_t at = 0;
  for (int y = 0; y < new_height; ++y) {
    for (int x = 0; x < new_width; ++x, ++at) {
      const int u = turn.mirrored ? new_width - 1 - x : x;
      int from_x = u, from_y = y;
      if (turn.quarters == 1) from_x = y, from_y = height - 1 - u;
      if (turn.quarters == 2) from_x = width - 1 - u, from_y = height - 1 - y;
      if (turn.quarters == 3) from_x = width - 1 - y, from_y = u;
      turned[at] =
          pixels[static_cast<std::size_t>(from_y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(from_x)];
    }
  }
  return turned;
}

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;
using winhost::PictureObject;

GpStatus GdipBitmapLockBits(GpBitmap* bitmap, const GpRect* rect, UINT flags, PixelFormat format, BitmapData* data) {
  const auto picture = GraphicsObjectAs<PictureObject>(bitmap);
  if (!picture || !data || !winhost::IsPixelFormat(format)) return InvalidParameter;
  const auto status = winhost::RefuseMaking("GdipBitmapLockBits");
  if (status) return *status;
  const Rect area = rect ? *rect : Rect(0, 0, picture->width, picture->height);
  const bool own = (flags & ImageLockModeUserInputBuf) != 0;
  if (!winhost::Inside(area, *picture) || (own && !data->Scan0)) return InvalidParameter;
  if (picture->lock) return WrongState;
  winhost::OpenLock(*picture, {area, format, (flags & ImageLockModeWrite) != 0, nullptr, 0, {}}, own ? data : nullptr,
                    flags);
  *data = {static_cast<UINT>(area.Width), static_cast<UINT>(area.Height),
           picture->lock->stride,         format,
           picture->lock->bits,           1};
  return Ok;
}

GpStatus GdipBitmapUnlockBits(GpBitmap* bitmap, BitmapData* data) {
  const auto picture = GraphicsObjectAs<PictureObject>(bitmap);
  if (!picture || !data) return InvalidParameter;
  if (!picture->lock) return WrongState;
  winhost::CloseLock(*picture);
  return Ok;
}

GpStatus GdipImageRotateFlip(GpImage* image, RotateFlipType type) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || type < RotateNoneFlipNone || type > Rotate270FlipX) return InvalidParameter;
  if (picture->lock) return ObjectBusy;
  picture->Pixels();
  picture->foreign.reset();  // from here on the picture is its own
  const winhost::Turn turn{type % 4, type >= RotateNoneFlipX};
  for (auto& frame : picture->frames) {
    frame.pixels = winhost::Turned(frame.pixels, picture->width, picture->height, turn);
    frame.prepared.reset();
  }
  if (turn.quarters % 2) std::swap(picture->width, picture->height);
  return Ok;
}

}  // namespace Gdiplus::DllExports
