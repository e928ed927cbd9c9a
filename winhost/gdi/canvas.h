// A Cairo context on a DC's pixels: its clip region is in force and user space is the DC's logical one.
#pragma once

#include <cairo.h>

#include <memory>

#include "winhost/gdi/dc.h"

namespace winhost {

struct CairoDestroyed {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoDestroyed>;

struct CairoPatternDestroyed {
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoPatternDestroyed>;

// Null when the DC has no pixels or the clip leaves none of them.
CairoContext OpenCanvas(const DeviceContext& dc);
// The same on bare pixels, all of them, in device coordinates.
CairoContext OpenCanvas(const Surface& surface);

}  // namespace winhost
