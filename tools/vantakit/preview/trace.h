// What happens to a live preview, told as JSON lines on standard output: {"event": …} and what belongs to it. For
// scripts that use the window and want to know what became of it.
#pragma once

#include <windows.h>

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace lumo {
struct _Msg;
class Window;
}  // namespace lumo

namespace vantakit {

class Trace {
 public:
  explicit Trace(bool on) : on_(on) {}

  // "opened", also after every change of the skin: "rect" on the screen, "scale", and the "controls" of rects.h.
  void Opened(lumo::Window& window) const;
  // "failed": the "message" of a skin that does not load any more; the window stays as it was.
  void Failed(const std::string& message) const;
  // An event of a control, by its name in layouts ("click" has none there) with "control" and "class"; those of the
  // pointer's way are left out.
  void Happened(const lumo::_Msg& record) const;
  // "moved" and "dragged" with the "rect", "minimised", "restored", "activated", "deactivated".
  void Received(HWND window, UINT message, WPARAM wParam);

 private:
  void Say(const nlohmann::json& line) const;

  bool on_;
  bool minimised_ = false;
};

}  // namespace vantakit
