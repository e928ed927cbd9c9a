#include "tools/vantakit/walk/step.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tools/vantakit/commands.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kTimeout = 30;  // seconds

struct Kind {
  const char* name;
  const char* argument;
  const char* help;
  bool acts;
};

constexpr Kind kKinds[] = {
    {"click", "NAME", "the left button, pressed and released on the control", true},
    {"double", "NAME", "a double click", true},
    {"hover", "NAME", "the pointer, moved onto the control; null: away from every window", true},
    {"press", "NAME", "the left button, pressed on the control", true},
    {"release", "NAME", "the left button, released on the control", true},
    {"key", "\"Shift+Tab\"", "a key by its name, behind Shift, Ctrl and Alt", true},
    {"type", "TEXT", "the keys that give this text", true},
    {"pick", "PATH", "the answer to the folder picker; null cancels it", true},
    {"drag", "[dx, dy]", "the window, by its caption", true},
    {"activate", "true", "the window, restored and brought to the front, as from the taskbar", true},
    {"minimise", "true", "the window, as from its menu", true},
    {"dpi", "N", "another resolution of the screen", true},
    {"pass", "MS", "so much of the machine's time, at once", true},
    {"post", "[MESSAGE, lParam]", "a message to the setup window, or [MESSAGE, wParam, lParam], or a list of such",
     true},
    {"quit", "N", "WM_QUIT to the window's thread", true},
    {"make", "PATH", "an empty file on the machine", false},
    {"start", "WORDS", "a second setup process on the same machine, until it has ended", false},
    {"shot", "FILE", "a PNG of all windows over a plain background", false},
    {"look", "true", "nothing", false},
    {"wait", "CONDITION", "until it holds", false},
};

const Kind* FindKind(const std::string& name) {
  const auto* const found = std::ranges::find_if(kKinds, [&](const Kind& kind) { return name == kind.name; });
  return found == std::end(kKinds) ? nullptr : found;
}

}  // namespace

Json ParseStep(const std::string& text) {
  const Json step = Json::parse(text, nullptr, false);
  if (!step.is_object()) throw WrongArguments("no step: " + text);
  int kinds = 0;
  for (const auto& [name, value] : step.items()) {
    if (FindKind(name)) {
      ++kinds;
    } else if (name != "timeout" || !value.is_number() || value.get<double>() < 0) {
      throw WrongArguments("a step has no \"" + name + "\": " + text);
    }
  }
  if (kinds != 1) throw WrongArguments("a step does one thing: " + text);
  return step;
}

std::string KindOf(const Json& step) {
  for (const auto& [name, value] : step.items()) {
    if (name != "timeout") return name;
  }
  return "";
}

std::chrono::milliseconds TimeoutOf(const Json& step) {
  return std::chrono::milliseconds(static_cast<long long>(step.value("timeout", kTimeout) * 1000));
}

bool IsAction(const Json& step) {
  const Kind* const kind = FindKind(KindOf(step));
  return kind && kind->acts;
}

std::string ListKinds() {
  std::string text;
  for (const Kind& kind : kKinds) {
    std::string left = std::string("  {\"") + kind.name + "\": " + kind.argument + "}";
    left.resize(std::max<std::size_t>(left.size() + 1, 32), ' ');
    text += left + kind.help + "\n";
  }
  return text;
}

}  // namespace vantakit
