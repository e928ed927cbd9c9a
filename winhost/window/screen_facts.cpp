#include "winhost/window/screen_facts.h"

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "winhost/machine/machine.h"

namespace winhost {
namespace {

[[noreturn]] void Refuse(const std::string& why) {
  std::fprintf(stderr, "machine: screen%s\n", why.c_str());
  std::exit(3);
}

ScreenFacts Read(const nlohmann::json& fact) {
  ScreenFacts screen;
  if (!fact.is_object()) Refuse(" must be an object");
  for (const auto& [key, value] : fact.items()) {
    int* number = key == "width"          ? &screen.width
                  : key == "height"       ? &screen.height
                  : key == "taskbar"      ? &screen.taskbar
                  : key == "touch_points" ? &screen.touch_points
                                          : nullptr;
    constexpr int kMost = 32'000;
    if (number && value.is_number_integer() && value >= 0 && value <= kMost) {
      *number = value;
    } else if (key == "display" && (value == "memory" || value == "x11")) {
      screen.display = value;
    } else {
      Refuse("." + key + ": unknown, or not of its kind");
    }
  }
  if (screen.width == 0 || screen.height <= screen.taskbar) Refuse(": no work area");
  return screen;
}

struct ScreenFactsHolder {
  explicit ScreenFactsHolder(Machine& machine) {
    if (!machine.facts().raw) return;
    const auto fact = machine.facts().raw->find("screen");
    if (fact != machine.facts().raw->end()) facts = Read(*fact);
  }
  ScreenFacts facts;
};

}  // namespace

const ScreenFacts& TheScreenFacts() { return Machine::Current().Get<ScreenFactsHolder>().facts; }

}  // namespace winhost
