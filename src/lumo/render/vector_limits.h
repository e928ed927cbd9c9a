// What a vector picture may ask of the parser and the rasteriser, which trust what they get: a number that is none ends
// in an index out of bounds, a dash that is too short in an endless loop, and many edges beside each other cost the
// square of their number. A picture beyond these limits is not drawn.
#pragma once

#include <string_view>

struct NSVGimage;

namespace lumo {

// Before parsing: the length, and how many gradients meet how many shapes.
bool IsTextWithinLimits(std::string_view svg);

// After parsing, for drawing at `scale` into height rows: all numbers finite and in range, and the work bounded. Dashes
// too short to be seen are made solid.
bool IsDrawingWithinLimits(NSVGimage* image, double scale, int height);

}  // namespace lumo
