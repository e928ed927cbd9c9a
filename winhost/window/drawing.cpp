#include "winhost/window/drawing.h"

namespace winhost {

Drawing& TheDrawing() {
  static Drawing drawing;
  return drawing;
}

}  // namespace winhost
