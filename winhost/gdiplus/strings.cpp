// Drawing and measuring strings.
#include <algorithm>
#include <cmath>

#include "winhost/gdi/text_layout.h"
#include "winhost/gdiplus/brush.h"
#include "winhost/gdiplus/font.h"
#include "winhost/gdiplus/graphics.h"
#include "winhost/gdiplus/string_format.h"

namespace winhost {
namespace {

using Gdiplus::RectF;

// A string's lines and where they come to lie.
struct SetString {
  std::shared_ptr<const TextBlock> block;
  TextPlace place;
  double x = 0, y = 0;  // of the box around the lines
  double width = 0;
};

Trim TrimOf(Gdiplus::StringTrimming trimming) {
  switch (trimming) {
    case Gdiplus::StringTrimmingNone:
      return Trim::None;
    case Gdiplus::StringTrimmingCharacter:
    case Gdiplus::StringTrimmingWord:
      return Trim::Characters;
    case Gdiplus::StringTrimmingEllipsisPath:
      return Trim::MiddleEllipsis;
    default:
      return Trim::Ellipsis;
  }
}

TextAlign AlignOf(Gdiplus::StringAlignment align) {
  if (align == Gdiplus::StringAlignmentNear) return TextAlign::Near;
  return align == Gdiplus::StringAlignmentCenter ? TextAlign::Center : TextAlign::Far;
}

// How many lines a box of this height shows: whole ones with LineLimit, else all that begin in it. -1: none at all.
int LinesIn(double height, double spacing, INT flags) {
  if (height <= 0) return 0;
  constexpr double kSlack = 0.01;
  const double lines = height / spacing;
  const double most =
      flags & Gdiplus::StringFormatFlagsLineLimit ? std::floor(lines + kSlack) : std::ceil(lines - kSlack);
  return most < 1 ? -1 : static_cast<int>(std::min(most, 1e6));
}

TextRequest MakeRequest(std::u16string_view text, const TextFont& font, const RectF& layout,
                        const StringFormat& format) {
  TextRequest request;
  request.text = text;
  request.font = font;
  const double room = static_cast<double>(layout.Width) - 2 * format.margin * font.em;
  if (layout.Width > 0) {
    if (!(format.flags & Gdiplus::StringFormatFlagsNoWrap)) request.wrap = Wrap::WordsThenCharacters;
    request.trim = TrimOf(format.trimming);
    request.width = std::max(0.0, room);
  }
  const bool clips = !(format.flags & Gdiplus::StringFormatFlagsNoClip);
  const bool limits = clips || (format.flags & Gdiplus::StringFormatFlagsLineLimit) || request.trim != Trim::None;
  const double spacing = MetricsOf(font.family).LineSpacing() * font.em;
  if (limits) request.most_lines = LinesIn(static_cast<double>(layout.Height), spacing, format.flags);
  return request;
}

double Share(Gdiplus::StringAlignment align) {
  return align == Gdiplus::StringAlignmentNear ? 0 : align == Gdiplus::StringAlignmentCenter ? 0.5 : 1;
}

SetString Set(std::u16string_view text, const TextFont& font, const RectF& layout, const StringFormat& format) {
  SetString set;
  set.block = LayOutText(MakeRequest(text, font, layout, format));
  const bool trailing = (format.flags & Gdiplus::StringFormatFlagsMeasureTrailingSpaces) != 0;
  const double margin = format.margin * font.em;
  set.width = (trailing ? set.block->whole_width : set.block->width) + 2 * margin;
  // Without a width the layout's left is the line that text is aligned to; without a height the same goes for its top.
  const double free_x = (layout.Width > 0 ? static_cast<double>(layout.Width) : 0) - set.width;
  const double free_y = (layout.Height > 0 ? static_cast<double>(layout.Height) : 0) - set.block->Height();
  set.x = static_cast<double>(layout.X) + free_x * Share(format.align);
  set.y = static_cast<double>(layout.Y) + free_y * Share(format.line_align);
  set.place.align = AlignOf(format.align);
  set.place.blank_ends = trailing;
  set.place.box = set.width - 2 * margin;
  set.place.x = set.x + margin;
  set.place.y = set.y;
  return set;
}

bool OneBit(Gdiplus::TextRenderingHint hint) {
  return hint == Gdiplus::TextRenderingHintSingleBitPerPixel ||
         hint == Gdiplus::TextRenderingHintSingleBitPerPixelGridFit;
}

bool MovesOnly(const cairo_matrix_t& matrix) {
  return matrix.xx == 1 && matrix.yy == 1 && matrix.xy == 0 && matrix.yx == 0;
}

void Paint(const Drawing& drawing, SetString set, const Brush& brush) {
  cairo_t* context = drawing.context.get();
  set.place.antialias = !OneBit(drawing.graphics->modes.text);
  brush.Use(context);
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  TextPlace device = set.place;
  device.x += matrix.x0;
  device.y += matrix.y0;
  const auto mask = MovesOnly(matrix) ? MaskOf(*set.block, device) : nullptr;
  if (mask) {
    cairo_identity_matrix(context);  // the brush's pattern stays where it was put
    cairo_mask_surface(context, mask->coverage.get(), std::floor(device.x) + mask->left,
                       std::floor(device.y) + mask->top);
    return;
  }
  cairo_set_antialias(context, set.place.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  AddTextPath(context, *set.block, set.place);
  cairo_fill(context);
}

std::optional<std::u16string_view> TextOf(const WCHAR* text, INT chars) {
  if (!text || chars < -1) return std::nullopt;
  if (chars < 0) return std::u16string_view(text);
  return std::u16string_view(text, static_cast<std::size_t>(chars));
}

const StringFormat& Default() {
  static const auto* format = new StringFormat;
  return *format;
}

bool Finite(const RectF& rect) { return std::isfinite(rect.X + rect.Y + rect.Width + rect.Height); }

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;

GpStatus GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT chars, const GpFont* font_handle,
                        const RectF* layout, const GpStringFormat* format_handle, const GpBrush* brush_handle) {
  const auto font = GraphicsObjectAs<winhost::GpFontObject>(font_handle);
  const auto brush = GraphicsObjectAs<winhost::Brush>(brush_handle);
  const auto format = GraphicsObjectAs<winhost::StringFormat>(format_handle);
  const auto view = winhost::TextOf(text, chars);
  if (!font || !brush || !layout || !view || (format_handle && !format) || !winhost::Finite(*layout)) {
    return InvalidParameter;
  }
  const auto drawing = winhost::BeginDrawing(graphics, winhost::Grid::Plain);
  if (!drawing || view->empty()) return drawing.status;
  const winhost::StringFormat& used = format ? *format : winhost::Default();
  const bool clips = !(used.flags & StringFormatFlagsNoClip) && layout->Width > 0 && layout->Height > 0;
  if (clips) {
    cairo_rectangle(drawing.context.get(), static_cast<double>(layout->X), static_cast<double>(layout->Y),
                    static_cast<double>(layout->Width), static_cast<double>(layout->Height));
    cairo_clip(drawing.context.get());
  }
  winhost::Paint(drawing, winhost::Set(*view, font->text, *layout, used), *brush);
  return Ok;
}

GpStatus GdipMeasureString(GpGraphics* graphics, const WCHAR* text, INT chars, const GpFont* font_handle,
                           const RectF* layout, const GpStringFormat* format_handle, RectF* box, INT* fitted,
                           INT* lines) {
  const auto font = GraphicsObjectAs<winhost::GpFontObject>(font_handle);
  const auto format = GraphicsObjectAs<winhost::StringFormat>(format_handle);
  const auto view = winhost::TextOf(text, chars);
  if (!font || !layout || !box || !view || (format_handle && !format) || !winhost::Finite(*layout)) {
    return InvalidParameter;
  }
  if (!GraphicsObjectAs<winhost::Graphics>(graphics)) return InvalidParameter;
  const auto set = winhost::Set(*view, font->text, *layout, format ? *format : winhost::Default());
  const auto count = set.block->lines.size();
  *box = RectF(static_cast<REAL>(set.x), static_cast<REAL>(set.y), view->empty() ? 0 : static_cast<REAL>(set.width),
               static_cast<REAL>(set.block->Height()));
  if (fitted) *fitted = count ? static_cast<INT>(set.block->lines.back().end) : 0;
  if (lines) *lines = static_cast<INT>(count);
  return Ok;
}

}  // namespace Gdiplus::DllExports
