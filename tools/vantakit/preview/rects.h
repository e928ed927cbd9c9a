// Where the controls of a window are.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace lumo {
class Window;
}

namespace vantakit {

// {"scale", "client": [width, height], "controls": [{"name", "class", "depth", "visible", "rect": [l, t, r, b]}…]} in
// document order, device pixels in client coordinates. Hidden pages are arranged as if they were shown.
nlohmann::json RectsOf(lumo::Window& window);

// Gives the pages and controls that are hidden the places that they would have: what layout does for them once shown.
void ArrangeHidden(lumo::Window& window);

}  // namespace vantakit
