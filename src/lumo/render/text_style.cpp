#include "lumo/render/text_style.h"

#include <string.h>

#include <vector>

#include "base/lock.h"

namespace lumo {
namespace {

struct KeptFormat {
  TextStyle style;
  UniqueGpFormat format;
};
struct KeptFont {
  HFONT handle;
  LOGFONTW description;
  UniqueGpFont font;
};
struct Caches {
  std::vector<KeptFormat> formats;
  std::vector<KeptFont> fonts;
};
constinit vanta::Lazy<Caches> caches;

bool Same(const TextStyle& a, const TextStyle& b) {
  return a.ellipsis == b.ellipsis && a.flags == b.flags && a.align == b.align && a.line_align == b.line_align;
}

UniqueGpFormat MakeFormat(const TextStyle& style) {
  Gdiplus::GpStringFormat* typographic = nullptr;  // GDI+'s own, never deleted
  UniqueGpFormat format;
  Record(gdip::GdipStringFormatGetGenericTypographic(&typographic));
  Record(gdip::GdipCloneStringFormat(typographic, format.Put()));
  if (!format) return format;
  if (style.ellipsis) {
    Record(gdip::GdipSetStringFormatTrimming(format.Get(), Gdiplus::StringTrimmingEllipsisCharacter));
  }
  Record(gdip::GdipSetStringFormatFlags(format.Get(), style.flags));
  Record(gdip::GdipSetStringFormatAlign(format.Get(), static_cast<Gdiplus::StringAlignment>(style.align)));
  Record(gdip::GdipSetStringFormatLineAlign(format.Get(), static_cast<Gdiplus::StringAlignment>(style.line_align)));
  return format;
}

LOGFONTW Describe(HFONT font) {
  LOGFONTW description;
  memset(&description, 0, sizeof description);
  if (font) GetObjectW(font, sizeof description, &description);
  return description;
}

UniqueGpFont MakeFont(HDC dc, const LOGFONTW& description) {
  UniqueGpFont font;
  if (description.lfHeight) Record(gdip::GdipCreateFontFromLogfontW(dc, &description, font.Put()));
  if (!font) Record(gdip::GdipCreateFontFromDC(dc, font.Put()));
  return font;
}

}  // namespace

TextStyle StyleOf(unsigned draw_text_flags, bool line_limit) {
  TextStyle style;
  style.ellipsis = (draw_text_flags & DT_END_ELLIPSIS) != 0;
  if (draw_text_flags & DT_NOCLIP) style.flags |= Gdiplus::StringFormatFlagsNoClip;
  if (draw_text_flags & DT_SINGLELINE) style.flags |= Gdiplus::StringFormatFlagsNoWrap;
  if (line_limit) style.flags |= Gdiplus::StringFormatFlagsLineLimit;
  if (draw_text_flags & DT_CENTER) {
    style.align = Gdiplus::StringAlignmentCenter;
  } else if (draw_text_flags & DT_RIGHT) {
    style.align = Gdiplus::StringAlignmentFar;
  }
  if (draw_text_flags & DT_VCENTER) {
    style.line_align = Gdiplus::StringAlignmentCenter;
  } else if (draw_text_flags & DT_BOTTOM) {
    style.line_align = Gdiplus::StringAlignmentFar;
  }
  return style;
}

const Gdiplus::GpStringFormat* FormatFor(const TextStyle& style) {
  std::vector<KeptFormat>& formats = caches.Get().formats;
  for (const KeptFormat& kept : formats) {
    if (Same(kept.style, style)) return kept.format.Get();
  }
  formats.push_back({style, MakeFormat(style)});
  return formats.back().format.Get();
}

const Gdiplus::GpFont* FontFor(HDC dc, HFONT font) {
  const LOGFONTW description = Describe(font);
  std::vector<KeptFont>& fonts = caches.Get().fonts;
  for (KeptFont& kept : fonts) {
    if (kept.handle != font) continue;
    if (memcmp(&kept.description, &description, sizeof description) != 0) {
      kept.description = description;
      kept.font = MakeFont(dc, description);
    }
    return kept.font.Get();
  }
  fonts.push_back({font, description, MakeFont(dc, description)});
  return fonts.back().font.Get();
}

DWORD TextColor(DWORD color, BYTE alpha) {
  const DWORD opaque = (color >> 24) * alpha / 255;
  return ((opaque == 255 ? 254 : opaque) << 24) | (color & 0xFFFFFF);
}

void ReleaseTextCaches() {
  caches.Get().fonts.clear();
  caches.Get().formats.clear();
}

}  // namespace lumo
