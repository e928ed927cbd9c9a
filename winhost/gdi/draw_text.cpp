#include <windows.h>

#include <algorithm>
#include <cmath>

#include "winhost/gdi/gdi_text.h"

namespace winhost {
namespace {

// Takes the hot-key marks out: "&x" underlines the x, "&&" is one "&".
void TakePrefixes(TextRequest& request, bool underline) {
  std::u16string plain;
  for (std::size_t i = 0; i < request.text.size(); ++i) {
    if (request.text[i] == u'&' && i + 1 < request.text.size()) {
      if (request.text[++i] != u'&' && underline) request.underlined = static_cast<int>(plain.size());
    } else if (request.text[i] == u'&') {
      break;
    }
    plain += request.text[i];
  }
  request.text = std::move(plain);
}

bool Wraps(UINT format) { return (format & DT_WORDBREAK) && !(format & DT_SINGLELINE); }

Trim TrimOf(UINT format) {
  if (format & DT_PATH_ELLIPSIS) return Trim::MiddleEllipsis;
  return format & (DT_END_ELLIPSIS | DT_WORD_ELLIPSIS) ? Trim::Ellipsis : Trim::None;
}

// Lines that begin above the rectangle's lower edge; 0: all.
int LinesShown(const DeviceContext& dc, const RECT& rect, UINT format) {
  if (format & (DT_NOCLIP | DT_CALCRECT | DT_SINGLELINE)) return 0;
  TextRequest one;
  one.text = u" ";
  one.font = dc.state.font_object->text;
  one.places = GlyphPlaces::WholePixels;
  const double spacing = LayOutText(one)->spacing;
  const double height = static_cast<double>(rect.bottom) - rect.top;
  return std::max(1, static_cast<int>(std::ceil(height / spacing)));
}

TextRequest MakeRequest(const DeviceContext& dc, std::u16string_view text, const RECT& rect, UINT format) {
  TextRequest request;
  request.text = text;
  request.font = dc.state.font_object->text;
  request.places = GlyphPlaces::WholePixels;
  request.one_line = (format & DT_SINGLELINE) != 0;
  if (Wraps(format)) {
    request.wrap = format & DT_EDITCONTROL ? Wrap::WordsThenCharacters : Wrap::Words;
  }
  request.trim = TrimOf(format);
  const double width = static_cast<double>(rect.right) - rect.left;
  if (request.wrap != Wrap::None || request.trim != Trim::None) request.width = std::max(0.0, width);
  if (request.trim != Trim::None) request.most_lines = LinesShown(dc, rect, format);
  request.three_dots = true;
  request.tab_stops = (format & DT_EXPANDTABS) != 0;
  if (!(format & DT_NOPREFIX)) TakePrefixes(request, !(format & DT_HIDEPREFIX));
  return request;
}

TextPlace MakePlace(const DeviceContext& dc, const TextBlock& block, const RECT& rect, UINT format) {
  TextPlace place;
  place.align = format & DT_CENTER ? TextAlign::Center : format & DT_RIGHT ? TextAlign::Far : TextAlign::Near;
  place.box = static_cast<double>(rect.right) - rect.left;
  place.whole_lines = true;
  place.blank_ends = !Wraps(format);
  place.antialias = dc.state.font_object->logfont.lfQuality != NONANTIALIASED_QUALITY;
  const POINT corner = dc.ToDevice(POINT{rect.left, rect.top});
  place.x = corner.x;
  place.y = corner.y;
  if (format & DT_SINGLELINE) {
    const double free = static_cast<double>(rect.bottom) - rect.top - block.Height();
    if (format & DT_VCENTER) place.y += std::trunc(free / 2);
    if (format & DT_BOTTOM) place.y += free;
  }
  return place;
}

int Rounded(double value) { return static_cast<int>(std::clamp(std::ceil(value), -1e9, 1e9)); }

int DrawLines(const DeviceContext& dc, std::u16string_view text, RECT& rect, UINT format) {
  const auto block = LayOutText(MakeRequest(dc, text, rect, format));
  if (format & DT_CALCRECT) {
    rect.right = rect.left + Rounded(Wraps(format) ? block->width : block->whole_width);
    rect.bottom = rect.top + Rounded(block->Height());
    return Rounded(block->Height());
  }
  const TextPlace place = MakePlace(dc, *block, rect, format);
  const Region clip(dc.ToDevice(rect));
  if (dc.Pixels()) DrawGdiText(dc, *block, place, format & DT_NOCLIP ? nullptr : &clip);
  return Rounded(place.y - dc.ToDevice(POINT{rect.left, rect.top}).y + block->Height());
}

// The text's height without drawing anything: nothing is there to draw.
int EmptyText(const DeviceContext& dc, RECT& rect, UINT format) {
  TextRequest space;
  space.text = u" ";
  space.font = dc.state.font_object->text;
  space.places = GlyphPlaces::WholePixels;
  const int height = Rounded(LayOutText(space)->spacing);
  if (format & DT_CALCRECT) {
    rect.right = rect.left;
    rect.bottom = rect.top + (format & DT_SINGLELINE ? height : 0);
  }
  return height;
}

std::optional<std::u16string_view> TextOf(LPCWSTR text, int chars) {
  if (!text || chars < -1) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return std::nullopt;
  }
  return chars < 0 ? std::u16string_view(text) : std::u16string_view(text, static_cast<std::size_t>(chars));
}

}  // namespace
}  // namespace winhost

int DrawTextW(HDC handle, LPCWSTR text, int chars, LPRECT rect, UINT format) {
  const auto dc = winhost::FindDc(handle);
  const auto view = winhost::TextOf(text, chars);
  if (!dc || !view || !rect) return 0;
  return view->empty() ? winhost::EmptyText(*dc, *rect, format) : winhost::DrawLines(*dc, *view, *rect, format);
}

BOOL GetTextMetricsW(HDC handle, TEXTMETRICW* metrics) {
  const auto dc = winhost::FindDc(handle);
  if (!dc || !metrics) return FALSE;
  const winhost::Font& font = *dc->state.font_object;
  const winhost::FaceMetrics& face = winhost::MetricsOf(font.text.family);
  const auto pixels = [&font](double share) { return static_cast<LONG>(std::lround(share * font.text.em)); };
  *metrics = {};
  metrics->tmAscent = pixels(face.ascent);
  metrics->tmDescent = pixels(face.descent);
  metrics->tmHeight = metrics->tmAscent + metrics->tmDescent;
  metrics->tmInternalLeading = std::max<LONG>(0, metrics->tmHeight - pixels(1));
  metrics->tmExternalLeading = pixels(face.external);
  metrics->tmAveCharWidth = std::max<LONG>(1, pixels(face.average_width)) + (font.text.bold ? 1 : 0);
  metrics->tmMaxCharWidth = std::max(metrics->tmAveCharWidth, pixels(1));
  metrics->tmWeight = font.text.bold ? FW_BOLD : FW_NORMAL;
  metrics->tmDigitizedAspectX = metrics->tmDigitizedAspectY = GetDeviceCaps(handle, LOGPIXELSY);
  metrics->tmFirstChar = u' ';
  metrics->tmLastChar = u'\uFFFD';
  metrics->tmDefaultChar = u'?';
  metrics->tmBreakChar = u' ';
  metrics->tmItalic = font.text.italic;
  metrics->tmUnderlined = font.text.underline;
  metrics->tmStruckOut = font.text.strikeout;
  metrics->tmPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
  metrics->tmCharSet = font.logfont.lfCharSet;
  return TRUE;
}
