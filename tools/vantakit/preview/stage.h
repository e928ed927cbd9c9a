// A skin on a stage: its package open and the UI library running, as in a setup.
#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <string>

namespace lumo {
class lumowin;
class Window;
}  // namespace lumo

namespace vantakit {

class Stage {
 public:
  // On the current machine, whose DPI gives the scale. Throws Failure when the skin cannot be packed or opened.
  explicit Stage(const std::filesystem::path& skin);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // The window of a layout, not shown yet: "SetupWnd.xml" is SetupWnd\SetupWnd.xml, and a path is taken as it stands.
  // `handler` may be null. Throws Failure when there is no such window.
  HWND Open(const std::string& layout, lumo::lumowin* handler);

  // Reads the skin's files anew for the next Exchange. Throws Failure as the constructor does, and changes nothing
  // then.
  void Prepare();
  // Starts over with what was prepared; what was there before is prepared now, so that a second call takes it back.
  // Windows must be closed. Throws Failure when it cannot be opened: no skin is open then.
  void Exchange();

 private:
  struct Package;
  void Start();

  std::filesystem::path skin_;
  std::unique_ptr<Package> package_;
  std::unique_ptr<Package> prepared_;
};

// The Window behind a native window of the library.
lumo::Window* WindowBehind(HWND window);

// Runs what is posted and due, painting included, until nothing is left; at most `turns` messages.
void Settle(int turns = 10'000);

}  // namespace vantakit
