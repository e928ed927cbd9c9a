// IRender: everything that the library draws goes through it. One realisation draws with GDI+ on a memory bitmap.
//
// Rectangles are half-open and in device pixels; colours are 0xAARRGGBB, straight. The operations ending in ByName
// resolve the name of a global colour first (0, fully transparent, for an unknown one). Nothing here reports drawing
// failures: what cannot be drawn is not there. UI thread only. The order is fixed; new operations go to the end.
#pragma once

#include "lumo/core/types.h"

#include <memory>

namespace Gdiplus {
class GpBitmap;
}

namespace lumo {

struct ImageDrawing;

// What DrawText needs besides place and text.
struct TextLook {
  DWORD color = 0;
  StringView font;          // id of a global font, "" = the default font
  unsigned style = 0;       // DT_ flags
  int scale = 100;          // percent, for the font
  BYTE alpha = 255;         // GDI+ text only
  bool line_limit = false;  // GDI+ text only: no partly visible last line
  bool gdi = false;         // drawn with GDI
};

// Pushes and pops clip regions on a device context.
class IClip {
 public:
  virtual ~IClip() = default;
  // `rect` in logical coordinates. The state of the context, its origin included, comes back with the pop.
  virtual void Push(HDC dc, const RECT& rect) = 0;
  virtual void Pop(HDC dc) = 0;  // nothing without a push
};

class IRender {
 public:
  virtual ~IRender() = default;

  virtual HDC GetDC() = 0;
  // True when the bitmap was made anew (all pixels 0), false when the size is the one it has. A size below 1 leaves no
  // bitmap.
  virtual bool Resize(int width, int height, bool top_down) = 0;
  virtual void Clear() = 0;
  // A render of the same size with a copy of the pixels. The caller owns it.
  virtual std::unique_ptr<IRender> Clone() = 0;
  // The caller owns the bitmap from now on; the render has none.
  virtual HBITMAP DetachBitmap() = 0;
  // Blue, green, red, premultiplied alpha; rows of width * 4 bytes. Null without a bitmap.
  virtual BYTE* GetBits() = 0;
  virtual int GetWidth() = 0;
  virtual int GetHeight() = 0;
  // These three work on pixels: neither origin nor clip count. Corner sizes are measured from the bitmap's edges:
  // top-left left x top, top-right right x top, bottom-left left x bottom, bottom-right right x bottom.
  virtual void FillPixels(const RECT& rect, BYTE value) = 0;
  virtual void SetOpaqueExceptCorners(const RECT& rect, const RECT& corners) = 0;
  virtual void ClearAlphaExceptCorners(const RECT& rect, const RECT& corners, BYTE alpha) = 0;  // nothing for alpha 0
  virtual bool SaveState() = 0;
  virtual void RestoreState() = 0;  // to the last SaveState; nothing without one
  // The origin is the logical point that lies at the bitmap's top-left. Each returns the old one.
  virtual POINT OffsetOrigin(int dx, int dy) = 0;
  virtual POINT SetOrigin(int x, int y) = 0;
  virtual POINT GetOrigin() = 0;
  virtual void PushClip(const RECT& rect) = 0;
  virtual void NoOperation(int, int, int) = 0;
  virtual void PopClip() = 0;
  virtual bool BitBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) = 0;
  virtual bool StretchBlt(const RECT& dest, HDC source, const RECT& from, DWORD raster_op) = 0;
  // Per-pixel alpha of the source times `alpha`.
  virtual bool AlphaBlend(const RECT& dest, HDC source, const RECT& from, BYTE alpha) = 0;
  virtual void DrawImage(const ImageDrawing& drawing) = 0;
  // Rounded unless `round` is 0,0,0,0: the radii of the corners top-left, top-right, bottom-right, bottom-left.
  virtual void FillRectByName(const RECT& rect, const RECT& round, StringView color, BYTE alpha) = 0;
  virtual void FillRect(const RECT& rect, const RECT& round, DWORD color, BYTE alpha) = 0;
  // Mode 0 left to right, 1 top to bottom, 2 and 3 along the diagonals.
  virtual void FillGradientByName(const RECT& rect, const RECT& round, StringView color1, StringView color2, int mode,
                                  BYTE alpha) = 0;
  virtual void FillGradient(const RECT& rect, const RECT& round, DWORD color1, DWORD color2, int mode, BYTE alpha) = 0;
  virtual void DrawLine(POINT from, POINT to, int width, DWORD color) = 0;
  virtual void DrawRect(const RECT& rect, int width, DWORD color) = 0;
  virtual void DrawRoundRect(const RECT& rect, const RECT& round, int width, DWORD color) = 0;
  virtual void DrawRoundRectByName(const RECT& rect, const RECT& round, int width, StringView color) = 0;
  virtual void DrawText(const RECT& rect, StringView text, const TextLook& look) = 0;
  virtual void DrawCircleByName(const RECT& rect, int width, StringView color) = 0;
  virtual void DrawCircle(const RECT& rect, int width, DWORD color) = 0;
  virtual void FillCircle(const RECT& rect, DWORD color) = 0;
  // The rectangle that the text takes; of `look` font, style, scale and gdi count. GDI+: a limit of -1 is none; GDI:
  // any limit below 1 is none.
  virtual RECT MeasureText(StringView text, const TextLook& look, int width_limit) = 0;
};

// A picture into a rectangle: nine-grid, tiled, faded, rotated.
struct ImageDrawing {
  RECT clip = {};          // what does not meet it is not drawn
  RECT border_round = {};  // of the control; pictures are not rounded by it
  Gdiplus::GpBitmap* bitmap = nullptr;
  RECT dest = {};
  RECT source = {};          // in image pixels
  RECT dest_corners = {};    // widths left, top, right, bottom
  RECT source_corners = {};  // in image pixels
  BYTE fade = 255;
  bool x_tiled = false;
  bool y_tiled = false;
  int angle = 0;  // degrees, clockwise
};

// A render without a bitmap yet.
std::unique_ptr<IRender> MakeRender();

// Clips to a rectangle for as long as the object lives.
class AutoClip {
 public:
  AutoClip(IRender* render, const RECT& rect) : render_(render) { render_->PushClip(rect); }
  ~AutoClip() { render_->PopClip(); }
  AutoClip(const AutoClip&) = delete;
  AutoClip& operator=(const AutoClip&) = delete;

 private:
  IRender* render_;
};

}  // namespace lumo
