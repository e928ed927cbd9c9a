// What window code needs of drawing: DCs over pixels that somebody else owns, and the pixels behind any DC. Pixels are
// rows of blue, green, red, alpha bytes, premultiplied where alpha means something. Nothing here shows the drawing
// library underneath. Any thread may call; a DC is used by one thread at a time.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace winhost {

struct PixelBuffer {
  std::uint8_t* bits = nullptr;  // the top row
  int width = 0;
  int height = 0;
  int stride = 0;  // bytes from a row to the next one below; negative for bottom-up bitmaps
};

// A DC whose device (0, 0) is the buffer's first pixel. `keep` is held as long as the DC, so that the pixels may be
// replaced in the meantime. Null when planned to fail ("GetDC").
HDC MakePixelDc(const PixelBuffer& pixels, std::shared_ptr<void> keep);
// As CreateCompatibleDC(nullptr), but with the screen's size to measure on: nothing can be drawn into it.
HDC MakeScreenDc(SIZE screen);
// Ends a DC of the two above; false for any other.
bool EndPixelDc(HDC dc);

// What a paint DC may touch, in device coordinates: every clip region that the program sets lies within. An empty list
// is nothing; without a call it is the whole buffer.
bool SetVisibleRegion(HDC dc, std::span<const RECT> rects);

// The pixels that the DC draws into; none for a wrong handle or a DC without any. Valid while the selected bitmap
// lives.
std::optional<PixelBuffer> DcPixels(HDC dc);
// From logical to device coordinates.
std::optional<POINT> DcToDevice(HDC dc, POINT point);

// A region's disjoint rectangles, top to bottom and left to right; none for a wrong handle.
std::optional<std::vector<RECT>> RegionRects(HRGN region);
// A new region of these; the caller deletes it. Null when planned to fail ("CreateRectRgn").
HRGN MakeRegion(std::span<const RECT> rects);

}  // namespace winhost
