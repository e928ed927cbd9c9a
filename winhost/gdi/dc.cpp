#include "winhost/gdi/dc.h"

#include <algorithm>

#include "winhost/gdi/device_context.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

HDC Enter(std::shared_ptr<DeviceContext> dc) { return static_cast<HDC>(EnterObject(std::move(dc))); }

LONG Cut(LONGLONG value) { return static_cast<LONG>(std::clamp<LONGLONG>(value, -kFarAway, kFarAway)); }

}  // namespace

DeviceContext::DeviceContext(Target kind) : GraphicsObject(kKind), target(kind) {
  state.font = StockGuiFont();
  state.font_object = GraphicsObjectAs<Font>(state.font);
  state.brush = StockBrush(WHITE_BRUSH);
  state.brush_object = GraphicsObjectAs<SolidBrush>(state.brush);
  if (kind == Target::Memory) SelectBitmap(*this, InitialBitmap());
}

DeviceContext::~DeviceContext() {
  if (bitmap_object) --bitmap_object->selections;
}

Region DeviceContext::Drawable() const {
  if (!surface) return {};
  Region region(RECT{0, 0, surface->pixels().width, surface->pixels().height});
  if (visible) region.Combine(*visible, RGN_AND);
  if (state.clip) region.Combine(*state.clip, RGN_AND);
  return region;
}

POINT DeviceContext::ToDevice(POINT point) const {
  return {Cut(LONGLONG{point.x} - state.window_origin.x), Cut(LONGLONG{point.y} - state.window_origin.y)};
}

RECT DeviceContext::ToDevice(const RECT& rect) const {
  const POINT a = ToDevice(POINT{rect.left, rect.top}), b = ToDevice(POINT{rect.right, rect.bottom});
  return {a.x, a.y, b.x, b.y};
}

RECT RectAt(int x, int y, int width, int height) {
  return {Cut(x), Cut(y), Cut(LONGLONG{x} + width), Cut(LONGLONG{y} + height)};
}

std::shared_ptr<DeviceContext> FindDc(HDC dc) { return GdiObjectAs<DeviceContext>(dc); }

HBITMAP SelectBitmap(DeviceContext& dc, HBITMAP handle) {
  const auto bitmap = GdiObjectAs<Bitmap>(handle);
  if (!bitmap || dc.target != DeviceContext::Target::Memory) return nullptr;
  const bool shared = handle == InitialBitmap();
  if (bitmap->selections > 0 && !shared && bitmap != dc.bitmap_object) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  if (dc.bitmap_object) --dc.bitmap_object->selections;
  ++bitmap->selections;
  dc.bitmap_object = bitmap;
  dc.surface = bitmap->surface;
  const HBITMAP former = dc.state.bitmap;
  dc.state.bitmap = handle;
  return former ? former : handle;
}

HDC MakePixelDc(const PixelBuffer& pixels, std::shared_ptr<void> keep) {
  if (const auto error = PlannedFault("GetDC")) {
    SetLastError(*error);
    return nullptr;
  }
  auto dc = std::make_shared<DeviceContext>(DeviceContext::Target::Pixels);
  dc->surface = Surface::Over(pixels, std::move(keep));
  dc->screen = {pixels.width, pixels.height};
  return Enter(std::move(dc));
}

HDC MakeScreenDc(SIZE screen) {
  if (const auto error = PlannedFault("GetDC")) {
    SetLastError(*error);
    return nullptr;
  }
  auto dc = std::make_shared<DeviceContext>(DeviceContext::Target::Screen);
  dc->screen = screen;
  return Enter(std::move(dc));
}

bool EndPixelDc(HDC handle) {
  const auto dc = FindDc(handle);
  return dc && dc->target != DeviceContext::Target::Memory && RemoveObject(handle);
}

bool SetVisibleRegion(HDC handle, std::span<const RECT> rects) {
  const auto dc = FindDc(handle);
  if (dc) dc->visible = Region(rects);
  return dc != nullptr;
}

std::optional<PixelBuffer> DcPixels(HDC handle) {
  const auto dc = FindDc(handle);
  if (!dc || !dc->Pixels()) return std::nullopt;
  return dc->Pixels()->pixels();
}

std::optional<POINT> DcToDevice(HDC handle, POINT point) {
  const auto dc = FindDc(handle);
  if (!dc) return std::nullopt;
  return dc->ToDevice(point);
}

}  // namespace winhost

HDC CreateCompatibleDC(HDC like) {
  if (const auto error = winhost::PlannedFault("CreateCompatibleDC")) {
    SetLastError(*error);
    return nullptr;
  }
  const auto model = like ? winhost::FindDc(like) : nullptr;
  if (like && !model) return nullptr;
  auto dc = std::make_shared<winhost::DeviceContext>(winhost::DeviceContext::Target::Memory);
  if (model) dc->screen = model->screen;
  return winhost::Enter(std::move(dc));
}

BOOL DeleteDC(HDC handle) {
  const auto dc = winhost::FindDc(handle);
  return dc && dc->target == winhost::DeviceContext::Target::Memory && winhost::RemoveObject(handle);
}

int GetDeviceCaps(HDC handle, int index) {
  const auto dc = winhost::FindDc(handle);
  if (!dc) return 0;
  switch (index) {
    case HORZRES:
      return dc->screen.cx;
    case VERTRES:
      return dc->screen.cy;
    case BITSPIXEL:
      return 32;
    case PLANES:
      return 1;
    case LOGPIXELSX:
    case LOGPIXELSY:
      return winhost::Machine::Current().facts().dpi;
    default:
      return 0;
  }
}

BOOL GdiFlush() { return TRUE; }
