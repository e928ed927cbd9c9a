// The update rectangle of a layered window that hangs over the edge of the virtual screen.
#pragma once

#include <windows.h>

namespace lumo {

struct VirtualScreen {
  int x, y, width, height;  // device pixels
};

// The system reports only what is visible as needing an update; a window that is pushed whole needs the hidden strip
// too. `update` and `client` are in client coordinates, `window` in screen coordinates.
RECT WidenLayeredUpdate(RECT update, const RECT& client, const RECT& window, const VirtualScreen& screen);

}  // namespace lumo
