// Pixels in memory and Cairo's view of them. Rows may run upwards; then Cairo's surface has the picture upside down and
// `Orient` turns a context or pattern the right way.
#pragma once

#include <cairo.h>

#include <memory>

#include "winhost/gdi/device_context.h"

namespace winhost {

struct CairoSurfaceDestroyed {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoSurfaceDestroyed>;

class Surface {
 public:
  // Own pixels, all zero. Null for a size below 1 or when there is no memory.
  static std::shared_ptr<Surface> Make(int width, int height, bool bottom_up = false);
  // Somebody else's; `keep` is held meanwhile.
  static std::shared_ptr<Surface> Over(const PixelBuffer& pixels, std::shared_ptr<void> keep);

  const PixelBuffer& pixels() const { return pixels_; }
  cairo_surface_t* cairo() const { return cairo_.get(); }
  // From picture coordinates to those of cairo().
  cairo_matrix_t Orientation() const;
  std::uint32_t* Row(int y) const {
    return reinterpret_cast<std::uint32_t*>(pixels_.bits + static_cast<std::ptrdiff_t>(y) * pixels_.stride);
  }

 private:
  PixelBuffer pixels_;
  std::shared_ptr<void> keep_;
  CairoSurface cairo_;
};

}  // namespace winhost
