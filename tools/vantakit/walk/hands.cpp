#include "tools/vantakit/walk/hands.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "install/setup_messages.h"
#include "lumo/controls/control_base.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/walk/keys.h"
#include "tools/vantakit/walk/open_windows.h"
#include "tools/vantakit/walk/shot.h"
#include "tools/vantakit/walk/step.h"
#include "winhost/dialogs/folder_dialog.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/clock.h"
#include "winhost/window/inject.h"
#include "winhost/window/screen.h"

namespace vantakit {
namespace {

using Json = nlohmann::ordered_json;
namespace screen = winhost::screen;

// The middle of a control that can be seen.
POINT PlaceOf(const std::string& name) {
  const FoundControl found = FindNamed(name);
  if (!found.control) throw Failure("no control is named \"" + name + "\"");
  const RECT place = found.control->Position();
  if (!found.control->IsVisible() || IsRectEmpty(&place) || IsIconic(found.window))
    throw Failure("\"" + name + "\" is not to be seen");
  POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  ClientToScreen(found.window, &middle);
  return middle;
}

HWND FrontWindow() {
  const std::vector<OpenWindow> windows = OpenWindows();
  if (windows.empty()) throw Failure("no window is shown");
  return windows.front().handle;
}

void MoveTo(const Json& name) {
  const POINT place = PlaceOf(name.get<std::string>());
  screen::MovePointer(place.x, place.y);
}

void Hover(const Json& name) { name.is_null() ? winhost::InjectPointerGone() : MoveTo(name); }

void Press(const Json& name) {
  MoveTo(name);
  screen::Press();
}

void Release(const Json& name) {
  MoveTo(name);
  screen::Release();
}

void Click(const Json& name) {
  Press(name);
  screen::Release();
}

void DoubleClick(const Json& name) {
  Click(name);
  screen::Press();
  screen::Release();
}

void PressKeys(const Json& text) {
  const std::vector<int> keys = ParseKeys(text.get<std::string>());
  for (const int key : keys) screen::KeyDown(key);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) screen::KeyUp(*key);
}

void Type(const Json& text) { screen::Type(vanta::FromUtf8(text.get<std::string>())); }

void Pick(const Json& path) {
  const HWND picker = FrontWindow();
  if (OpenWindows().front().kind != WindowKind::Folder) throw Failure("no folder picker is open");
  if (path.is_string()) {
    const HWND field = GetDlgItem(picker, winhost::kFolderLine);
    if (!field) throw Failure("the folder picker has no path field");
    SetWindowTextW(field, vanta::FromUtf8(path.get<std::string>()).c_str());
  }
  PostMessageW(picker, WM_COMMAND, path.is_string() ? IDOK : IDCANCEL, 0);
}

// A point of the window that drags it.
POINT CaptionOf(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  for (LONG y = place.top + 8; y < place.bottom; y += 8) {
    for (LONG x = place.left + 8; x < place.right; x += 8) {
      if (SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == HTCAPTION) return {x, y};
    }
  }
  throw Failure("the window has no caption");
}

void Grab(const Json&) {
  const POINT from = CaptionOf(FrontWindow());
  screen::MovePointer(from.x, from.y);
  screen::Press();
}

void Pull(const Json& way) {
  POINT from = {};
  GetCursorPos(&from);
  screen::MovePointer(from.x + way.at(0).get<int>(), from.y + way.at(1).get<int>());
  screen::Release();
}

void Activate(const Json&) {
  const HWND window = FrontWindow();
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  SetForegroundWindow(window);
}

void Minimise(const Json&) { PostMessageW(FrontWindow(), WM_SYSCOMMAND, SC_MINIMIZE, 0); }

void ChangeDpi(const Json& dpi) { screen::ChangeDpi(dpi.get<int>()); }

void Pass(const Json& ms) { winhost::AdvanceMachineClock(ms.get<unsigned>()); }

UINT MessageOf(const Json& message) {
  struct Row {
    const char* name;
    UINT message;
  };
  static constexpr Row kRows[] = {{"WM_SETUP_PROGRESS", vanta::WM_SETUP_PROGRESS},
                                  {"WM_SETUP_STATUS", vanta::WM_SETUP_STATUS},
                                  {"WM_CLOSE", WM_CLOSE},
                                  {"WM_DESTROY", WM_DESTROY},
                                  {"WM_TIMER", WM_TIMER},
                                  {"WM_COMMAND", WM_COMMAND}};
  if (message.is_number_unsigned()) return message.get<UINT>();
  for (const Row& row : kRows) {
    if (message == row.name) return row.message;
  }
  throw Failure("no message is called " + message.dump());
}

void Post(const Json& what) {
  if (what.at(0).is_array()) {
    for (const Json& each : what) Post(each);
    return;
  }
  const HWND window = SetupWindow();
  if (!window) throw Failure("there is no setup window");
  const WPARAM wparam = what.size() > 2 ? what.at(1).get<WPARAM>() : 0;
  const LPARAM lparam = what.size() > 1 ? what.back().get<LPARAM>() : 0;
  PostMessageW(window, MessageOf(what.at(0)), wparam, lparam);
}

void Quit(const Json& code) { PostThreadMessageW(GetCurrentThreadId(), WM_QUIT, code.get<WPARAM>(), 0); }

void Shoot(const Json& file) { TakeShot(file.get<std::string>()); }

void DoNothing(const Json&) {}

struct Row {
  const char* kind;
  void (*act)(const Json& argument);
  void (*then)(const Json& argument) = nullptr;  // what needs the window to have taken the first part
};

constexpr Row kRows[] = {
    {"click", Click},   {"double", DoubleClick}, {"hover", Hover}, {"press", Press},     {"release", Release},
    {"key", PressKeys}, {"type", Type},          {"pick", Pick},   {"drag", Grab, Pull}, {"activate", Activate},
    {"dpi", ChangeDpi}, {"minimise", Minimise},  {"pass", Pass},   {"post", Post},       {"quit", Quit},
    {"shot", Shoot},    {"look", DoNothing},
};

const Row& RowOf(const Json& step) {
  const std::string kind = KindOf(step);
  const auto* const row = std::ranges::find_if(kRows, [&](const Row& each) { return kind == each.kind; });
  if (row == std::end(kRows)) throw Failure("no step is called \"" + kind + "\"");
  return *row;
}

}  // namespace

void UseHands(const Json& step) { RowOf(step).act(step.at(KindOf(step))); }

bool HasSecondHalf(const Json& step) { return RowOf(step).then != nullptr; }

void FinishWithHands(const Json& step) { RowOf(step).then(step.at(KindOf(step))); }

void MakeFile(const std::string& path) {
  const auto place = winhost::LinuxPath(vanta::FromUtf8(path));
  if (!place || !std::ofstream(*place)) throw Failure(path + ": cannot be made");
}

}  // namespace vantakit
