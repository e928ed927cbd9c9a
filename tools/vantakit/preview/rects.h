// Where the controls of a window are.
#pragma once

#include <windows.h>

#include <nlohmann/json_fwd.hpp>

namespace lumo {
class Window;
}

namespace vantakit {

// {"scale", "client": [width, height], "controls": [{"name", "class", "depth", "visible", "rect": [l, t, r, b]}…]} in
// document order, device pixels in client coordinates. Hidden pages are arranged as if they were shown.
nlohmann::json RectsOf(lumo::Window& window);

// The "controls" alone, where they are now.
nlohmann::json ControlsOf(const lumo::Window& window);

// Gives the hidden pages the places that they would have: each is shown once, arranged in the client rectangle, and the
// page that was selected is selected again.
void ArrangeHidden(lumo::Window& window, const RECT& client);

}  // namespace vantakit
