#include <algorithm>
#include <cmath>

#include "winhost/gdiplus/color_matrix.h"
#include "winhost/gdiplus/graphics.h"
#include "winhost/gdiplus/image_attributes.h"
#include "winhost/gdiplus/picture.h"

namespace winhost {
namespace {

struct Rect {
  int x, y, width, height;
};

// What is sampled: pixels, and where in them the source rectangle begins.
struct Source {
  CairoSurface surface;
  double x = 0, y = 0;
};

cairo_extend_t ExtendOf(Gdiplus::WrapMode mode) {
  if (mode == Gdiplus::WrapModeClamp) return CAIRO_EXTEND_NONE;
  return mode == Gdiplus::WrapModeTile ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_REFLECT;
}

bool Meets(const PictureObject& picture, const Rect& rect) {
  return rect.x < picture.width && rect.y < picture.height && rect.x + rect.width > 0 && rect.y + rect.height > 0;
}

bool Contains(const PictureObject& picture, const Rect& rect) {
  return rect.x >= 0 && rect.y >= 0 && rect.width <= picture.width - rect.x && rect.height <= picture.height - rect.y;
}

// The picture's own pixels; those of the source rectangle alone when a wrap mode keeps the neighbours out.
Source PlainSource(PictureObject& picture, const Rect& from, bool alone) {
  cairo_surface_t* whole = picture.Prepared();
  if (!whole) return {};
  if (!alone || !Contains(picture, from)) {
    return {CairoSurface(cairo_surface_reference(whole)), static_cast<double>(from.x), static_cast<double>(from.y)};
  }
  const int stride = cairo_image_surface_get_stride(whole);
  unsigned char* first =
      cairo_image_surface_get_data(whole) + static_cast<std::ptrdiff_t>(from.y) * stride + std::ptrdiff_t{from.x} * 4;
  return {CairoSurface(cairo_image_surface_create_for_data(first, cairo_image_surface_get_format(whole), from.width,
                                                           from.height, stride))};
}

// Recoloured pixels. With a wrap mode only the source rectangle's; otherwise a pixel around it as well, for its edges.
Source RecoloredSource(PictureObject& picture, const Rect& from, bool alone, const Gdiplus::ColorMatrix& matrix) {
  const int border = alone ? 0 : 1;
  const int left = std::clamp(from.x - border, 0, picture.width), top = std::clamp(from.y - border, 0, picture.height);
  const int right = std::clamp(from.x + from.width + border, left, picture.width);
  const int bottom = std::clamp(from.y + from.height + border, top, picture.height);
  Source source{CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, right - left, bottom - top)),
                static_cast<double>(from.x - left), static_cast<double>(from.y - top)};
  unsigned char* rows = cairo_image_surface_get_data(source.surface.get());
  if (!rows) return {};
  const int stride = cairo_image_surface_get_stride(source.surface.get());
  const std::uint32_t* pixels = picture.Pixels();
  std::vector<std::uint32_t> row(static_cast<std::size_t>(right - left));
  for (int y = top; y < bottom; ++y) {
    const std::uint32_t* first = pixels + static_cast<std::ptrdiff_t>(y) * picture.width + left;
    std::ranges::transform(first, first + row.size(), row.begin(),
                           [&](std::uint32_t p) { return Transform(matrix, p); });
    WritePixels(PixelFormat32bppPARGB, row.data(), rows + static_cast<std::ptrdiff_t>(y - top) * stride, right - left);
  }
  cairo_surface_mark_dirty(source.surface.get());
  return source;
}

// From the destination, in user space, to the source's pixels. Where pixels are counted by their centres, the centres
// of destination and source correspond; otherwise their edges do.
cairo_matrix_t Mapping(const Rect& to, const Rect& from, const Source& source, bool edges) {
  const double sx = static_cast<double>(from.width) / to.width, sy = static_cast<double>(from.height) / to.height;
  const double x_shift = edges ? 0 : (1 - sx) / 2, y_shift = edges ? 0 : (1 - sy) / 2;
  return {sx, 0, 0, sy, source.x - sx * to.x + x_shift, source.y - sy * to.y + y_shift};
}

void Paint(const Drawing& drawing, const Rect& to, const Rect& from, const Source& source, cairo_extend_t extend,
           double alpha) {
  const GraphicsModes& modes = drawing.graphics->modes;
  cairo_t* context = drawing.context.get();
  const CairoPattern pattern(cairo_pattern_create_for_surface(source.surface.get()));
  const cairo_matrix_t mapping = Mapping(to, from, source, modes.PixelEdgesAtWholes());
  cairo_pattern_set_matrix(pattern.get(), &mapping);
  cairo_pattern_set_extend(pattern.get(), extend);
  cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_BILINEAR);
  cairo_set_antialias(context, CAIRO_ANTIALIAS_DEFAULT);
  cairo_rectangle(context, to.x, to.y, to.width, to.height);
  cairo_set_source(context, pattern.get());
  if (alpha >= 1) {
    cairo_fill(context);
    return;
  }
  cairo_clip(context);
  cairo_paint_with_alpha(context, alpha);
}

bool Near(const Rect& rect) {
  constexpr int kFar = 1 << 24;
  return std::max({std::abs(rect.x / 2), std::abs(rect.y / 2), std::abs(rect.width / 2), std::abs(rect.height / 2)}) <
         kFar;
}

Gdiplus::GpStatus Draw(Gdiplus::GpGraphics* graphics, PictureObject& picture, const Rect& to, const Rect& from,
                       const ImageAttributes* attributes) {
  if (picture.lock) return Gdiplus::ObjectBusy;
  if (!Near(to) || !Near(from)) return Gdiplus::InvalidParameter;
  const Drawing drawing = BeginDrawing(graphics, Grid::Plain);
  if (!drawing) return drawing.status;
  if (to.width == 0 || to.height == 0 || from.width <= 0 || from.height <= 0) return Gdiplus::Ok;
  if (!Meets(picture, from)) return Gdiplus::Ok;
  const auto extend = ExtendOf(attributes ? attributes->wrap : Gdiplus::WrapModeClamp);
  const bool alone = extend != CAIRO_EXTEND_NONE;
  std::optional<double> fade = 1;
  if (attributes && attributes->colors) fade = FadeOf(*attributes->colors);
  const Source source =
      fade ? PlainSource(picture, from, alone) : RecoloredSource(picture, from, alone, *attributes->colors);
  if (!source.surface) return Gdiplus::OutOfMemory;
  Paint(drawing, to, from, source, extend, fade.value_or(1));
  return Gdiplus::Ok;
}

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;

GpStatus GdipDrawImageRectRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height, INT from_x,
                                INT from_y, INT from_width, INT from_height, GpUnit unit,
                                const GpImageAttributes* attributes_handle, DrawImageAbort, VOID*) {
  const auto picture = GraphicsObjectAs<winhost::PictureObject>(image);
  const auto attributes = GraphicsObjectAs<winhost::ImageAttributes>(attributes_handle);
  if (!picture || (attributes_handle && !attributes) || unit != UnitPixel) return InvalidParameter;
  return winhost::Draw(graphics, *picture, {x, y, width, height}, {from_x, from_y, from_width, from_height},
                       attributes.get());
}

GpStatus GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height) {
  const auto picture = GraphicsObjectAs<winhost::PictureObject>(image);
  if (!picture) return InvalidParameter;
  return winhost::Draw(graphics, *picture, {x, y, width, height}, {0, 0, picture->width, picture->height}, nullptr);
}

}  // namespace Gdiplus::DllExports
