// Drawing: what GDI and GDI+ must do alike wherever pictures are compared.
#include <windows.h>
#include <objidl.h>
#include <gdiplus.h>

#include <string.h>

#include <type_traits>

#include "seam_check.h"

using namespace Gdiplus::DllExports;

namespace {

static_assert(sizeof(BITMAPINFOHEADER) == 40 && sizeof(LOGFONTW) == 92 && sizeof(TEXTMETRICW) == 60);
static_assert(sizeof(BLENDFUNCTION) == 4 && sizeof(BITMAP) == (sizeof(void*) == 8 ? 32 : 24) && sizeof(RGBQUAD) == 4);
static_assert(sizeof(Gdiplus::RectF) == 16 && sizeof(Gdiplus::ColorMatrix) == 100);
static_assert(sizeof(Gdiplus::BitmapData) == 16 + 2 * sizeof(void*));
static_assert(sizeof(Gdiplus::PropertyItem) == (sizeof(void*) == 8 ? 24 : 16));
static_assert(std::is_base_of_v<Gdiplus::GpImage, Gdiplus::GpBitmap>);
static_assert(std::is_base_of_v<Gdiplus::GpBrush, Gdiplus::GpSolidFill>);
static_assert(std::is_base_of_v<Gdiplus::GpBrush, Gdiplus::GpLineGradient>);
static_assert(PixelFormat32bppARGB == 0x26200A && PixelFormat32bppPARGB == 0xE200B && PixelFormat24bppRGB == 0x21808);
static_assert(Gdiplus::WrapModeTileFlipXY == 3 && Gdiplus::StringTrimmingEllipsisCharacter == 3 &&
              Gdiplus::PixelOffsetModeHalf == 4 && Gdiplus::SmoothingModeAntiAlias == 4 &&
              Gdiplus::TextRenderingHintAntiAlias == 4 && Gdiplus::StringFormatFlagsLineLimit == 0x2000);

// A memory DC with a top-down section of 8 by 8 pixels.
class Canvas {
 public:
  Canvas() {
    BITMAPINFO info;
    memset(&info, 0, sizeof info);
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = 8;
    info.bmiHeader.biHeight = -8;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    dc_ = CreateCompatibleDC(nullptr);
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bits_ = static_cast<DWORD*>(bits);
    former_ = SelectObject(dc_, bitmap_);
  }
  ~Canvas() {
    SelectObject(dc_, former_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  HDC dc() const { return dc_; }
  HBITMAP bitmap() const { return bitmap_; }
  DWORD& At(int x, int y) { return bits_[y * 8 + x]; }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  DWORD* bits_;
  HGDIOBJ former_;
};

bool Close(DWORD a, DWORD b, int most) {
  for (int shift = 0; shift < 32; shift += 8) {
    const int difference = static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
    if (difference > most || difference < -most) return false;
  }
  return true;
}

bool BlitsKeepAlphaAndFollowOrigins() {
  Canvas from, to;
  from.At(3, 2) = 0x80402010;
  SetWindowOrgEx(from.dc(), -3, -2, nullptr);
  POINT former;
  OffsetWindowOrgEx(to.dc(), -1, 0, &former);
  return BitBlt(to.dc(), 0, 0, 2, 2, from.dc(), 0, 0, SRCCOPY) && to.At(1, 0) == 0x80402010 && former.x == 0;
}

bool BlendsPremultiplied() {
  Canvas from, to;
  const BLENDFUNCTION over = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  from.At(0, 0) = 0x80804020;
  to.At(0, 0) = 0xFFFFFFFF;
  return AlphaBlend(to.dc(), 0, 0, 2, 1, from.dc(), 0, 0, 2, 1, over) && Close(to.At(0, 0), 0xFFFFBF9F, 1) &&
         to.At(1, 0) == 0;
}

bool SelectedBitmapsAreNotDeletedAndNotShared() {
  Canvas canvas;
  HDC other = CreateCompatibleDC(nullptr);
  const bool refused = SelectObject(other, canvas.bitmap()) == nullptr;
  DeleteDC(other);
  return refused;
}

bool StatesNest() {
  Canvas canvas;
  HRGN region = CreateRectRgn(2, 2, 5, 5);
  const int first = SaveDC(canvas.dc());
  SetTextColor(canvas.dc(), RGB(1, 2, 3));
  const int complexity = ExtSelectClipRgn(canvas.dc(), region, RGN_AND);
  const int second = SaveDC(canvas.dc());
  RECT box;
  GetClipBox(canvas.dc(), &box);
  const bool clipped = box.left == 2 && box.bottom == 5;
  const bool restored = RestoreDC(canvas.dc(), first) && !RestoreDC(canvas.dc(), second);
  GetClipBox(canvas.dc(), &box);
  DeleteObject(region);
  return complexity == SIMPLEREGION && second == first + 1 && clipped && restored && box.right == 8 &&
         SetTextColor(canvas.dc(), 0) == RGB(0, 0, 0);
}

bool RegionsCombine() {
  HRGN a = CreateRectRgn(0, 0, 4, 4), b = CreateRectRgn(2, 2, 6, 6), result = CreateRectRgn(0, 0, 0, 0);
  HRGN round = CreateRoundRectRgn(0, 0, 20, 20, 8, 8);
  RECT box, round_box;
  const bool both = CombineRgn(result, a, b, RGN_AND) == SIMPLEREGION && GetRgnBox(result, &box) == SIMPLEREGION &&
                    box.left == 2 && box.right == 4;
  const bool either = CombineRgn(result, a, b, RGN_OR) == COMPLEXREGION;
  const bool none = CombineRgn(result, a, a, RGN_DIFF) == NULLREGION;
  const bool rounded = GetRgnBox(round, &round_box) == COMPLEXREGION && round_box.right == 19;
  for (HRGN region : {a, b, result, round}) DeleteObject(region);
  return both && either && none && rounded;
}

bool FontsAreAsAskedFor() {
  LOGFONTW font, back;
  memset(&font, 0, sizeof font);
  font.lfHeight = -20;
  font.lfWeight = 1100;
  const WCHAR face[] = TEXT("Tahoma");
  memcpy(font.lfFaceName, face, sizeof face);
  HFONT handle = CreateFontIndirectW(&font);
  const bool same = GetObjectW(handle, sizeof back, &back) == static_cast<int>(sizeof back) && back.lfHeight == -20 &&
                    back.lfWeight == 1100;
  HDC dc = CreateCompatibleDC(nullptr);
  HGDIOBJ former = SelectObject(dc, handle);
  TEXTMETRICW metrics;
  GetTextMetricsW(dc, &metrics);
  RECT one = {0, 0, 1000, 1000}, two = one;
  const int height = DrawTextW(dc, TEXT("a"), -1, &one, DT_CALCRECT | DT_SINGLELINE);
  DrawTextW(dc, TEXT("a\nb"), -1, &two, DT_CALCRECT);
  SelectObject(dc, former);
  DeleteDC(dc);
  DeleteObject(handle);
  const LONG em = metrics.tmHeight - metrics.tmInternalLeading;
  return same && em >= 19 && em <= 21 && height == metrics.tmHeight && one.bottom == metrics.tmHeight &&
         two.bottom == 2 * metrics.tmHeight && one.right > 0 && one.right < 30;
}

// Starts GDI+ and draws with it on a canvas.
class Drawing {
 public:
  Drawing() {
    const Gdiplus::GdiplusStartupInput input;
    GdiplusStartup(&token_, &input, nullptr);
    GdipCreateFromHDC(canvas.dc(), &graphics);
    GdipSetSmoothingMode(graphics, Gdiplus::SmoothingModeAntiAlias);
    GdipSetPixelOffsetMode(graphics, Gdiplus::PixelOffsetModeHalf);
  }
  ~Drawing() {
    GdipDeleteGraphics(graphics);
    Gdiplus::GdiplusShutdown(token_);
  }
  Canvas canvas;
  Gdiplus::GpGraphics* graphics = nullptr;

 private:
  ULONG_PTR token_ = 0;
};

bool FillsArePremultipliedOnTheGrid() {
  Drawing drawing;
  Gdiplus::GpSolidFill* brush = nullptr;
  GdipCreateSolidFill(0x80FF8040, &brush);
  GdipFillRectangleI(drawing.graphics, brush, 2, 2, 3, 3);
  GdipDeleteBrush(brush);
  return drawing.canvas.At(2, 2) == 0x80804020 && drawing.canvas.At(4, 4) == 0x80804020 &&
         drawing.canvas.At(1, 2) == 0 && drawing.canvas.At(5, 4) == 0;
}

bool GdiPlusFollowsOriginAndClip() {
  Drawing drawing;
  HRGN region = CreateRectRgn(0, 0, 4, 8);
  ExtSelectClipRgn(drawing.canvas.dc(), region, RGN_AND);
  SetWindowOrgEx(drawing.canvas.dc(), -2, 0, nullptr);
  Gdiplus::GpGraphics* graphics = nullptr;
  GdipCreateFromHDC(drawing.canvas.dc(), &graphics);
  GdipSetPixelOffsetMode(graphics, Gdiplus::PixelOffsetModeHalf);
  Gdiplus::GpSolidFill* brush = nullptr;
  GdipCreateSolidFill(0xFFFFFFFF, &brush);
  GdipFillRectangleI(graphics, brush, 0, 0, 8, 8);
  GdipDeleteBrush(brush);
  GdipDeleteGraphics(graphics);
  DeleteObject(region);
  return drawing.canvas.At(1, 0) == 0 && drawing.canvas.At(2, 0) == 0xFFFFFFFF && drawing.canvas.At(4, 0) == 0;
}

bool StraightPixelsAreDrawnPremultiplied() {
  Drawing drawing;
  Gdiplus::GpBitmap* bitmap = nullptr;
  GdipCreateBitmapFromScan0(2, 1, 0, PixelFormat32bppARGB, nullptr, &bitmap);
  Gdiplus::BitmapData data;
  memset(&data, 0, sizeof data);
  const Gdiplus::Rect all(0, 0, 2, 1);
  GdipBitmapLockBits(bitmap, &all, Gdiplus::ImageLockModeWrite, PixelFormat32bppARGB, &data);
  static_cast<DWORD*>(data.Scan0)[0] = 0x80FF0000;
  static_cast<DWORD*>(data.Scan0)[1] = 0xFF102030;
  GdipBitmapUnlockBits(bitmap, &data);
  GdipDrawImageRectRectI(drawing.graphics, bitmap, 3, 3, 2, 1, 0, 0, 2, 1, Gdiplus::UnitPixel, nullptr, nullptr,
                         nullptr);
  GdipDisposeImage(bitmap);
  return Close(drawing.canvas.At(3, 3), 0x80800000, 1) && drawing.canvas.At(4, 3) == 0xFF102030;
}

bool TextIsMeasuredInLines() {
  Drawing drawing;
  Gdiplus::GpFont* font = nullptr;
  SelectObject(drawing.canvas.dc(), GetStockObject(DEFAULT_GUI_FONT));
  LOGFONTW logfont;
  GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof logfont, &logfont);
  logfont.lfHeight = -20;
  GdipCreateFontFromLogfontW(drawing.canvas.dc(), &logfont, &font);
  Gdiplus::GpStringFormat* format = nullptr;
  GdipStringFormatGetGenericTypographic(&format);
  const Gdiplus::RectF layout(0, 0, 0, 0);
  Gdiplus::RectF one, two;
  INT fitted = 0, lines = 0;
  GdipMeasureString(drawing.graphics, TEXT("a"), -1, font, &layout, format, &one, &fitted, &lines);
  const bool single = fitted == 1 && lines == 1;
  GdipMeasureString(drawing.graphics, TEXT("a\nb"), -1, font, &layout, format, &two, &fitted, &lines);
  GdipDeleteFont(font);
  const float ratio = two.Height / one.Height;
  return single && lines == 2 && ratio > 1.9f && ratio < 2.1f && one.Width > 4 && one.Width < 20;
}

bool WrongArgumentsAreStatuses() {
  Drawing drawing;
  Gdiplus::GpLineGradient* brush = nullptr;
  const Gdiplus::RectF empty(0, 0, 0, 4);
  const bool line = GdipCreateLineBrushFromRect(&empty, 0, 0, Gdiplus::LinearGradientModeVertical,
                                                Gdiplus::WrapModeTile, &brush) == Gdiplus::OutOfMemory;
  Gdiplus::GpBitmap* bitmap = nullptr;
  const bool size =
      GdipCreateBitmapFromScan0(0, 5, 0, PixelFormat32bppARGB, nullptr, &bitmap) == Gdiplus::InvalidParameter;
  return line && size && GdipDeletePath(nullptr) == Gdiplus::InvalidParameter &&
         GdipFillRectangleI(drawing.graphics, nullptr, 0, 0, 1, 1) == Gdiplus::InvalidParameter;
}

// Having it asks for no window, and makes this a program that draws: only such have the file dialog on both sides.
bool TheScreenIsThereToMeasureWith() {
  const HDC screen = GetDC(nullptr);
  RECT line{0, 0, 0, 0};
  const int height = screen ? DrawTextW(screen, TEXT("seam"), -1, &line, DT_CALCRECT | DT_SINGLELINE) : 0;
  const bool measures = height > 0 && line.bottom == height && GetDeviceCaps(screen, LOGPIXELSY) >= 96;
  return measures && ReleaseDC(nullptr, screen) == 1;
}

constexpr SeamCheck kChecks[] = {
    {"the screen's context measures and is given back", TheScreenIsThereToMeasureWith},
    {"blits keep alpha and follow origins", BlitsKeepAlphaAndFollowOrigins},
    {"AlphaBlend takes premultiplied sources", BlendsPremultiplied},
    {"a bitmap is selected into one DC at a time", SelectedBitmapsAreNotDeletedAndNotShared},
    {"SaveDC and RestoreDC nest", StatesNest},
    {"regions combine", RegionsCombine},
    {"fonts have the height asked for", FontsAreAsAskedFor},
    {"GDI+ fills are premultiplied, on the pixel grid", FillsArePremultipliedOnTheGrid},
    {"GDI+ follows a DC's origin and clip region", GdiPlusFollowsOriginAndClip},
    {"bitmaps of straight pixels are drawn premultiplied", StraightPixelsAreDrawnPremultiplied},
    {"GDI+ measures lines", TextIsMeasuredInLines},
    {"GDI+ answers statuses for wrong arguments", WrongArgumentsAreStatuses},
};

}  // namespace

std::span<const SeamCheck> GraphicsChecks() { return kChecks; }
