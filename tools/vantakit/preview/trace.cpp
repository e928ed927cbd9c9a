#include "tools/vantakit/preview/trace.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "lumo/controls/control_base.h"
#include "lumo/core/event.h"
#include "lumo/core/window.h"
#include "tools/vantakit/preview/rects.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

struct EventName {
  int type;
  const char* name;
};
constexpr EventName kEvents[] = {
    {lumo::EventMouseEnter, "mouseenter"},
    {lumo::EventMouseLeave, "mouseleave"},
    {lumo::EventButtonDown, "buttondown"},
    {lumo::EventButtonUp, "buttonup"},
    {lumo::EventKeyDown, "keydown"},
    {lumo::EventSetFocus, "setfocus"},
    {lumo::EventKillFocus, "killfocus"},
    {lumo::EventClick, "click"},
    {lumo::EventSelect, "select"},
    {lumo::EventUnselect, "unselect"},
    {lumo::EventMenu, "menu"},
    {lumo::EventScrollWheel, "scrollwheel"},
};

const char* NameOf(int type) {
  for (const EventName& row : kEvents) {
    if (row.type == type) return row.name;
  }
  return nullptr;
}

Json PlaceOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  return {place.left, place.top, place.right, place.bottom};
}

}  // namespace

void Trace::Say(const Json& line) const {
  std::printf("%s\n", line.dump().c_str());
  std::fflush(stdout);
}

void Trace::Opened(lumo::Window& window) const {
  if (!on_) return;
  Say({{"event", "opened"},
       {"rect", PlaceOf(window.Handle())},
       {"scale", window.ScalePercent()},
       {"controls", ControlsOf(window)}});
}

void Trace::Failed(const std::string& message) const {
  if (on_) Say({{"event", "failed"}, {"message", message}});
}

void Trace::Happened(const lumo::_Msg& record) const {
  const char* const name = NameOf(record.type);
  if (!on_ || !name || !record.control) return;
  Say({{"event", name},
       {"control", vanta::ToUtf8(record.control->Name())},
       {"class", vanta::ToUtf8(record.control->ClassName())}});
}

void Trace::Received(HWND window, UINT message, WPARAM wParam) {
  if (!on_) return;
  switch (message) {
    case WM_MOVE:
      return Say({{"event", "moved"}, {"rect", PlaceOf(window)}});
    case WM_EXITSIZEMOVE:
      return Say({{"event", "dragged"}, {"rect", PlaceOf(window)}});
    case WM_SIZE:
      if ((wParam == SIZE_MINIMIZED) == minimised_) return;
      minimised_ = !minimised_;
      return Say({{"event", minimised_ ? "minimised" : "restored"}});
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      return Say({{"event", message == WM_SETFOCUS ? "activated" : "deactivated"}});
    default:
      return;
  }
}

}  // namespace vantakit
