#include "tools/vantakit/preview/live.h"

#include <cstdio>
#include <map>

#include "lumo/core/handler.h"
#include "lumo/core/window.h"
#include "lumo/core/window_messages.h"
#include "tools/vantakit/commands.h"

namespace vantakit {
namespace {

constexpr UINT kLookEveryMs = 300;
constexpr UINT_PTR kLook = 1;

using Times = std::map<std::filesystem::path, std::filesystem::file_time_type>;

Times TimesOf(const std::filesystem::path& folder) {
  Times times;
  std::error_code gone;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, gone)) {
    if (entry.is_regular_file(gone)) times[entry.path()] = entry.last_write_time(gone);
  }
  return times;
}

// Ends the loop with its window.
class LiveHandler : public lumo::lumowin {
 public:
  LRESULT ProcessMessage(UINT message, WPARAM, LPARAM, bool*) override {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return 0;
  }
};

class Live {
 public:
  Live(Stage& stage, std::filesystem::path skin, std::string layout, const Dressing& dressing)
      : stage_(stage),
        skin_(std::move(skin)),
        layout_(std::move(layout)),
        dressing_(dressing),
        times_(TimesOf(skin_)) {}

  int Run() {
    Open({100, 100});
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (message.message == WM_TIMER && message.hwnd == nullptr) {
        Look();
        continue;
      }
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    return 0;
  }

 private:
  void Open(POINT place) {
    handler_ = std::make_unique<LiveHandler>();
    window_ = stage_.Open(layout_, handler_.get());
    Dress(*WindowBehind(window_), dressing_);
    SetWindowPos(window_, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(window_, SW_SHOW);
    timer_ = SetTimer(nullptr, timer_ ? timer_ : kLook, kLookEveryMs, nullptr);
  }

  void Look() {
    Times now = TimesOf(skin_);
    if (now == times_) return;
    times_ = std::move(now);
    RECT place = {};
    GetWindowRect(window_, &place);
    try {
      Reopen({place.left, place.top});
    } catch (const std::exception& wrong) {
      std::fprintf(stderr, "preview: %s\n", wrong.what());
    }
  }

  void Reopen(POINT place) {
    stage_.Prepare();
    // The old window's end is not the program's.
    SendMessageW(window_, lumo::kMessageSetHandler, 0, 0);
    DestroyWindow(window_);
    stage_.Reload();
    Open(place);
  }

  Stage& stage_;
  const std::filesystem::path skin_;
  const std::string layout_;
  const Dressing& dressing_;
  Times times_;
  std::unique_ptr<LiveHandler> handler_;
  HWND window_ = nullptr;
  UINT_PTR timer_ = 0;
};

}  // namespace

int RunLive(Stage& stage, const std::filesystem::path& skin, const std::string& layout, const Dressing& dressing) {
  return Live(stage, skin, layout, dressing).Run();
}

}  // namespace vantakit
