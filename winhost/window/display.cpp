#include "winhost/window/display.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include "winhost/machine/machine.h"
#include "winhost/window/drawing.h"
#include "winhost/window/screen_facts.h"

namespace winhost {
namespace {

// Windows keep their pictures themselves; screen.h lays them over each other when somebody looks.
class MemoryDisplay : public Display {
 public:
  SIZE Size() override { return {TheScreenFacts().width, TheScreenFacts().height}; }
};

std::unique_ptr<Display> Open() {
  const char* wish = std::getenv("VANTA_DISPLAY");
  const bool x11 = wish ? std::strcmp(wish, "x11") == 0 : TheScreenFacts().display == "x11";
  if (x11 && TheDrawing().open_x11) {
    if (auto display = TheDrawing().open_x11()) return display;
  }
  return std::make_unique<MemoryDisplay>();
}

// A machine tells its holders apart by name, and clang's names of types in unnamed namespaces say no file.
struct DisplayHolder {
  explicit DisplayHolder(Machine&) : display(Open()) {}
  std::unique_ptr<Display> display;
};

}  // namespace

Display& Display::Current() { return *Machine::Current().Get<DisplayHolder>().display; }

}  // namespace winhost
