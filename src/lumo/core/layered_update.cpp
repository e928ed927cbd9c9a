#include "lumo/core/layered_update.h"

namespace lumo {

// The far edges are compared with the screen's width and height themselves: with the primary monitor at the left or top
// they are the edges, and elsewhere the strip is only drawn more often.
RECT WidenLayeredUpdate(RECT update, const RECT& client, const RECT& window, const VirtualScreen& screen) {
  RECT wide = update;
  if (window.left < screen.x && window.left + update.left == screen.x) wide.left = client.left;
  if (window.top < screen.y && window.top + update.top == screen.y) wide.top = client.top;
  if (window.right > screen.width && window.left + update.right == screen.x + screen.width) wide.right = client.right;
  if (window.bottom > screen.height && window.top + update.bottom == screen.y + screen.height) {
    wide.bottom = client.bottom;
  }
  return wide;
}

}  // namespace lumo
