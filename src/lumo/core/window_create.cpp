// How a Window comes to be: class, native window, tree, shadow, size, system buttons.
#include "lumo/controls/control_base.h"
#include "lumo/core/builder.h"
#include "lumo/core/dpi.h"
#include "lumo/core/handler.h"
#include "lumo/core/scaling.h"
#include "lumo/core/shadow_box.h"
#include "lumo/core/shadow_window.h"
#include "lumo/core/system_buttons.h"
#include "lumo/core/weak_callback.h"
#include "lumo/core/window.h"
#include "lumo/core/window_procedure.h"

#include <algorithm>

namespace lumo {
namespace {

constexpr const WCHAR* kUsualClass = TEXT("UI_WND_CLASS");
constexpr INT_PTR kBackgroundBrush = COLOR_WINDOW + 1;
constexpr LONG kUnbounded = 99999;  // device pixels

LONG Within(LONG size, LONG least, LONG most) {
  if (least >= 0 && size < least) size = least;
  return most >= 0 && size > most ? most : size;
}

}  // namespace

bool Window::RegisterWindowClass() {
  WNDCLASSEXW window_class = {};
  window_class.cbSize = sizeof window_class;
  window_class.style = class_style_;
  window_class.lpfnWndProc = &WindowProcedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(kBackgroundBrush);
  window_class.lpszClassName = class_name_.empty() ? kUsualClass : class_name_.c_str();
  if (lumowin* const handler = Handler()) handler->AdjustClass(&window_class);
  class_name_ = window_class.lpszClassName;
  return RegisterClassExW(&window_class) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

HWND Window::Create(HWND owner, const WCHAR* title, DWORD style, DWORD ex_style, const RECT* rect) {
  if (!RegisterWindowClass()) return nullptr;
  const RECT place = rect ? *rect : RECT{};
  layered_ = (ex_style & WS_EX_LAYERED) != 0;
  const WeakRef<Window> alive(this);
  const HWND handle =
      CreateWindowExW(ex_style, class_name_.c_str(), title, style, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, owner, nullptr, GetModuleHandleW(nullptr), this);
  if (!handle || !alive) return nullptr;
  const LONG_PTR created = GetWindowLongPtrW(handle, GWL_STYLE);
  if ((created & WS_CAPTION) == WS_CAPTION) SetWindowLongPtrW(handle, GWL_STYLE, created & ~LONG_PTR{WS_CAPTION});
  return handle;
}

LRESULT Window::OnCreate(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  scale_ = ScaleOfDpi(ReadSystemDpi());
  RegisterTouch(true);
  const WeakRef<Window> alive(this);
  ControlBase* root = BuildWindow((folder_ + layout_file_).c_str(), this);
  if (!root) return -1;
  if (attributes_.shadowattached) AttachShadow(&root);
  AttachRoot(root);
  SetInitialSize();
  if (lumowin* const handler = Handler()) handler->OnCreate(handle_);
  if (alive) BindSystemButtons();
  return 0;
}

void Window::AttachShadow(ControlBase** root) {
  if (layered_) {
    inner_shadow_ = *root = new ShadowBox(attributes_, *root, this);
    return;
  }
  shadow_ = ShadowWindow::Create(*this);
  shadow_alive_ = WeakRef<Window>(shadow_);
  // The frame has no insets then: the shadow lies outside.
  attributes_.shadowattached = false;
}

void Window::SetInitialSize() {
  const RECT insets = FrameInsets();
  if (root_->ScaledWidth() != SizeAuto && root_->ScaledHeight() != SizeAuto) {
    SetWindowPos(handle_, nullptr, 0, 0, ScaleLength(attributes_.size.cx, scale_) + insets.left + insets.right,
                 ScaleLength(attributes_.size.cy, scale_) + insets.top + insets.bottom,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return;
  }
  const SIZE size = ContentSize();
  MoveWindow(handle_, 0, 0, size.cx, size.cy, FALSE);
}

SIZE Window::ContentSize() {
  const SIZE wanted = root_->EstimateSize({kUnbounded, kUnbounded});
  return {Within(wanted.cx, root_->ScaledMinWidth(), root_->ScaledMaxWidth()),
          Within(wanted.cy, root_->ScaledMinHeight(), root_->ScaledMaxHeight())};
}

void Window::BindSystemButtons() {
  BindSystemButton(kCloseButton, &Window::OnCloseButton);
  BindSystemButton(kMinimiseButton, &Window::OnMinimiseButton);
  BindSystemButton(kMaximiseButton, &Window::OnMaximiseButton);
  BindSystemButton(kRestoreButton, &Window::OnRestoreButton);
}

void Window::BindSystemButton(StringView name, void (Window::*action)()) {
  ControlBase* const button = FindControl(name);
  if (!button || !button->IsA(ControlClass::Button)) return;
  const auto run = WeakCallback(this, action);
  button->AttachEvent(EventClick, [run](_Msg2&) {
    run();
    return 1;
  });
}

void Window::OnMinimiseButton() { SendMessageW(handle_, WM_SYSCOMMAND, SC_MINIMIZE, 0); }

void Window::OnMaximiseButton() {
  ShowOneOf(kRestoreButton, kMaximiseButton);
  SendMessageW(handle_, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
}

void Window::OnRestoreButton() {
  ShowOneOf(kMaximiseButton, kRestoreButton);
  SendMessageW(handle_, WM_SYSCOMMAND, SC_RESTORE, 0);
}

void Window::ShowOneOf(StringView shown, StringView hidden) {
  if (ControlBase* const button = FindControl(hidden)) button->SetVisible(false);
  if (ControlBase* const button = FindControl(shown)) button->SetVisible(true);
}

}  // namespace lumo
