#include "lumo/core/tooltip.h"

#include "lumo/controls/control_base.h"
#include "lumo/core/scaling.h"

namespace lumo {
namespace {

constexpr DWORD kUsualDelayMs = 500;
constexpr int kBelowPointer = 20;  // design pixels: the tip lies under the arrow, not behind it

}  // namespace

Tooltip::Tooltip(HWND owner)
    : owner_(owner),
      window_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                              GetModuleHandleW(nullptr), nullptr)) {
  String none;
  TOOLINFOW tool = Tool(&none, {});
  SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

Tooltip::~Tooltip() {
  if (window_ && IsWindow(window_)) DestroyWindow(window_);
}

TOOLINFOW Tooltip::Tool(String* text, const RECT& place) const {
  TOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;  // what the common controls of every supported system take
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = owner_;
  tool.rect = place;
  tool.lpszText = text->data();
  return tool;
}

DWORD Tooltip::InitialDelay() const {
  const LRESULT delay = window_ ? SendMessageW(window_, TTM_GETDELAYTIME, TTDT_INITIAL, 0) : 0;
  return delay > 0 ? static_cast<DWORD>(delay) : kUsualDelayMs;
}

void Tooltip::Show(const ControlBase& control, POINT point, int scale) {
  String text = control.GetToolTip();
  if (text.empty()) return Hide();
  TOOLINFOW tool = Tool(&text, control.Position());
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, ScaleLength(control.ToolTipWidth(), scale));
  SendMessageW(window_, TTM_SETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
  ClientToScreen(owner_, &point);
  const int below = point.y + ScaleLength(kBelowPointer, scale);
  SendMessageW(window_, TTM_TRACKPOSITION, 0, MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(below)));
  SendMessageW(window_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  shown_ = &control;
}

void Tooltip::Hide() {
  if (!shown_) return;
  shown_ = nullptr;
  String none;
  TOOLINFOW tool = Tool(&none, {});
  SendMessageW(window_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void Tooltip::Forget(const ControlBase* control) {
  if (shown_ == control) Hide();
}

}  // namespace lumo
