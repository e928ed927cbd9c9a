#include "tools/vantakit/preview/live.h"

#include <cstdio>
#include <map>

#include "lumo/core/handler.h"
#include "lumo/core/window.h"
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
  explicit LiveHandler(Trace& trace) : trace_(trace) {}

  void OnNotify(lumo::_Msg& record) override {
    trace_.Happened(record);
    lumowin::OnNotify(record);
  }
  LRESULT ProcessMessage(UINT message, WPARAM wParam, LPARAM, bool*) override {
    trace_.Received(m_hWnd, message, wParam);
    if (message == WM_DESTROY && ends_loop_) PostQuitMessage(0);
    return 0;
  }
  void EndLoopWithWindow(bool on) { ends_loop_ = on; }

 private:
  Trace& trace_;
  bool ends_loop_ = false;
};

class Live {
 public:
  Live(Stage& stage, std::filesystem::path skin, std::string layout, const Dressing& dressing, Trace& trace)
      : stage_(stage),
        skin_(std::move(skin)),
        layout_(std::move(layout)),
        dressing_(dressing),
        trace_(trace),
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
    handler_ = std::make_unique<LiveHandler>(trace_);
    window_ = stage_.Open(layout_, handler_.get());
    try {
      Dress(*WindowBehind(window_), dressing_);
    } catch (...) {
      DestroyWindow(window_);
      throw;
    }
    handler_->EndLoopWithWindow(true);
    SetWindowPos(window_, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(window_, SW_SHOW);
    UpdateWindow(window_);  // arranges it as well
    trace_.Opened(*WindowBehind(window_));
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
      trace_.Failed(wrong.what());
    }
  }

  // The library is started anew for the new skin, and once more for the old one when no window can be made of it.
  void Reopen(POINT place) {
    stage_.Prepare();
    handler_->EndLoopWithWindow(false);
    DestroyWindow(window_);
    try {
      stage_.Exchange();
      Open(place);
    } catch (...) {
      stage_.Exchange();
      Open(place);
      throw;
    }
  }

  Stage& stage_;
  const std::filesystem::path skin_;
  const std::string layout_;
  const Dressing& dressing_;
  Trace& trace_;
  Times times_;
  std::unique_ptr<LiveHandler> handler_;
  HWND window_ = nullptr;
  UINT_PTR timer_ = 0;
};

}  // namespace

int RunLive(Stage& stage, const std::filesystem::path& skin, const std::string& layout, const Dressing& dressing,
            Trace& trace) {
  return Live(stage, skin, layout, dressing, trace).Run();
}

}  // namespace vantakit
