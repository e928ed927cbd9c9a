// Puts a window into the state that a picture of it is wanted in.
#pragma once

#include <string>
#include <vector>

namespace lumo {
class Window;
}

namespace vantakit {

struct Dressing {
  std::string page;                 // a page's name; "" leaves what the layout selects
  std::vector<std::string> states;  // "NAME=WORD": normal hot pushed disabled selected unselected shown hidden focused
  std::vector<std::string> values;  // "NAME.ATTRIBUTE=VALUE", applied as the layout would
};

// In this order: page, values, states. Throws Failure for an unknown name or word.
void Dress(lumo::Window& window, const Dressing& dressing);

}  // namespace vantakit
