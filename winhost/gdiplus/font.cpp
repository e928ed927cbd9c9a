#include "winhost/gdiplus/font.h"

#include <algorithm>

#include "winhost/gdi/dc.h"
#include "winhost/gdi/font.h"

namespace winhost {
namespace {

Gdiplus::GpStatus Make(const Font& font, Gdiplus::GpFont** out) {
  TextFont text = font.text;
  text.em = std::max(1.0, EmSize(font.logfont, text.family));
  return Hand(std::make_shared<GpFontObject>(std::move(text)), out);
}

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;

GpStatus GdipCreateFontFromLogfontW(HDC dc, const LOGFONTW* logfont, GpFont** font) {
  if (!logfont || !font || !GraphicsObjectAs<winhost::DeviceContext>(dc)) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateFontFromLogfontW")) return *status;
  return winhost::Make(winhost::Font(*logfont), font);
}

GpStatus GdipCreateFontFromDC(HDC handle, GpFont** font) {
  const auto dc = GraphicsObjectAs<winhost::DeviceContext>(handle);
  if (!dc || !font) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateFontFromDC")) return *status;
  return winhost::Make(*dc->state.font_object, font);
}

GpStatus GdipDeleteFont(GpFont* font) { return winhost::Drop<winhost::GpFontObject>(font); }

}  // namespace Gdiplus::DllExports
