// Whole layouts: any text as one. What comes of it is measured and arranged at two sizes and scales, searched from
// point to point, focused from control to control, and thrown away in the middle of an event.

#include <string_view>

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/create_window.h"
#include "lumo/core/handler.h"
#include "lumo/core/library.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/window.h"
#include "lumo/core/window_messages.h"
#include "tests/fuzz/fuzz.h"

namespace {

using lumo::ControlBase;
using lumo::String;

// A skin of nothing but layouts.
class NoFiles final : public lumo::ResourceSource {
 public:
  bool IsPackaged() const override { return true; }
  const String& ThemeFolder() const override { return folder_; }
  bool Read(lumo::StringView, std::vector<BYTE>*) const override { return false; }
  bool Exists(lumo::StringView) const override { return false; }
  String GetString(lumo::StringView key) const override { return String(key); }

 private:
  String folder_;
};

// Closes its window when a control is clicked.
class Handler final : public lumo::lumowin {
 public:
  void OnNotify(lumo::_Msg& record) override {
    if (record.type == lumo::EventClick) DestroyWindow(record.window);
  }
};

std::size_t Count(const ControlBase& control) {
  std::size_t count = 1;
  const lumo::BoxBase* const box = control.AsBox();
  if (!box) return count;
  for (const ControlBase* const child : box->Children()) count += Count(*child);
  return count;
}

void Arrange(lumo::Window& window, LONG width, LONG height, int scale) {
  window.SetScalePercent(scale);
  window.Root()->EstimateSize({width, height});
  window.RunLayoutPass({0, 0, width, height});
  for (POINT point = {0, 0}; point.x < width; point.x += 37, point.y += 29) {
    ControlBase* const found = window.ControlAt(point);
    FUZZ_EXPECT(!found || found->GetWindow() == &window);
  }
}

void Use(HWND handle) {
  auto* const window = reinterpret_cast<lumo::Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  FUZZ_EXPECT(window && window->Root());
  const std::size_t controls = Count(*window->Root());
  Arrange(*window, 600, 400, 100);
  Arrange(*window, 3, 1000, 150);
  FUZZ_EXPECT(Count(*window->Root()) == controls);
  for (int i = 0; i < 5; ++i) window->MoveFocus(i == 3);
  // The handler may close the window here.
  if (ControlBase* const focused = window->Focused()) focused->Activate();
}

void Pump() {
  MSG message = {};
  for (int i = 0; i < 100 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) DispatchMessageW(&message);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const NoFiles skin;
  [[maybe_unused]] static const bool started = (lumo::InitLibrary(skin, true, nullptr), true);
  const String layout = TEXT("<") + vanta::FromUtf8({reinterpret_cast<const char*>(data), size});
  Handler handler;
  const HWND window =
      lumo::CreateSkinWindow(TEXT(""), layout.c_str(), &handler, nullptr, TEXT(""), WS_POPUP, 0, nullptr);
  if (window) Use(window);
  if (window && IsWindow(window)) DestroyWindow(window);
  Pump();
  return 0;
}
