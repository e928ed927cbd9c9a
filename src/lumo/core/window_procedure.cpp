#include "lumo/core/window_procedure.h"

#include "lumo/core/handler.h"
#include "lumo/core/message_filter.h"
#include "lumo/core/window.h"

namespace lumo {
namespace {

Window* WindowOf(HWND handle) { return reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA)); }

Window* Bind(HWND handle, LPARAM creation) {
  auto* const window = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(creation)->lpCreateParams);
  SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
  return window;
}

}  // namespace

LRESULT CALLBACK WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  Window* window = WindowOf(handle);
  if (message == WM_NCCREATE) {
    window = Bind(handle, lParam);
    if (window) window->handle_ = handle;
  }
  if (!window) return DefWindowProcW(handle, message, wParam, lParam);

  if (message == WM_NCDESTROY) {
    const LRESULT result = DefWindowProcW(handle, message, wParam, lParam);
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    const WeakRef<lumowin> handler = std::move(window->handler_);
    window->handler_ = {};
    if (lumowin* const told = handler.Get()) told->OnFinalMessage(handle);
    window->OnFinalMessage(handle);
    return result;
  }

  const WeakRef<Window> alive(window);
  bool handled = false;
  LRESULT result = 0;
  if (window->filter_) result = window->filter_->FilterMessage(handle, message, wParam, lParam, &handled);
  if (!handled && alive) {
    if (lumowin* const handler = window->Handler()) result = handler->ProcessMessage(message, wParam, lParam, &handled);
  }
  if (!handled && alive) result = window->HandleMessage(message, wParam, lParam, &handled);
  return handled ? result : DefWindowProcW(handle, message, wParam, lParam);
}

}  // namespace lumo
