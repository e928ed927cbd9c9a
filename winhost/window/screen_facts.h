// The machine's screen, as the fact "screen" tells it.
#pragma once

#include <string>

namespace winhost {

struct ScreenFacts {
  int width = 1920;
  int height = 1080;
  int taskbar = 40;                // rows at the bottom that are no work area
  std::string display = "memory";  // memory or x11
  int touch_points = 0;            // 0: no touch screen
};

// Of the machine that this process lives on.
const ScreenFacts& TheScreenFacts();

}  // namespace winhost
