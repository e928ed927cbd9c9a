// The paint cycle of a Window: size, layout, tree, screen.
#include "lumo/controls/control_base.h"
#include "lumo/core/layered_update.h"
#include "lumo/core/screen_dc.h"
#include "lumo/core/system_version.h"
#include "lumo/core/window.h"
#include "lumo/render/render.h"

#include <algorithm>

namespace lumo {
namespace {

constexpr int kMostPasses = 10'000;  // a tree that never settles ends here, not never

// BeginPaint and EndPaint around a scope.
class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC Dc() const { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  HDC dc_;
};

VirtualScreen CurrentScreen() {
  return {GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN),
          GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

// While the user sizes, the client area is a pixel higher than the window.
RECT PaintedClient(HWND window) {
  RECT client = {}, whole = {};
  GetClientRect(window, &client);
  GetWindowRect(window, &whole);
  client.bottom = std::min(client.bottom, whole.bottom - whole.top);
  return client;
}

}  // namespace

// A root that sizes itself has grown or shrunk: the native window follows.
void Window::SizeToContent() {
  if (!layout_due_ || !root_->NeedsArrange() || !root_->DependsOnContent()) return;
  const SIZE size = ContentSize();
  RECT place = {};
  GetWindowRect(handle_, &place);
  if (place.right - place.left == size.cx && place.bottom - place.top == size.cy) return;
  MoveWindow(handle_, place.left, place.top, size.cx, size.cy, TRUE);
}

void Window::RunLayoutPass(const RECT& client) {
  if (!layout_due_ || !root_) return;
  layout_due_ = false;
  if (IsRectEmpty(&client)) return;
  const WeakRef<Window> alive(this);
  if (root_->NeedsArrange() || !EqualRect(&root_->Position(), &client)) return root_->SetPos(client);
  for (int pass = 0; pass < kMostPasses && alive && root_; ++pass) {
    ControlBase* const marked = root_->FirstNeedingArrange();
    if (!marked) return;
    marked->SetPos(marked->Position());
  }
}

RECT Window::PaintedUpdate(RECT update, const RECT& client) const {
  if (!layered_) return update;
  RECT place = {};
  GetWindowRect(handle_, &place);
  return WidenLayeredUpdate(update, client, place, CurrentScreen());
}

void Window::FinishFirstPaint() {
  if (!first_paint_) return;
  first_paint_ = false;
  if (IsVistaOrLater()) root_->SetFadeVisible(true);
}

void Window::PaintTree(const RECT& update) {
  IRender* const render = Render();
  if (layered_) render->FillPixels(update, 0);
  const AutoClip clip(render, update);
  root_->DoPaint(render, update);
  root_->PaintChildren(render, update);
}

void Window::PushLayered() {
  RECT place = {};
  GetWindowRect(handle_, &place);
  POINT at = {place.left, place.top}, from = {};
  SIZE size = {Render()->GetWidth(), Render()->GetHeight()};
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, alpha_, AC_SRC_ALPHA};
  const ScreenDc screen;
  UpdateLayeredWindow(handle_, screen.Get(), &at, &size, Render()->GetDC(), &from, 0, &blend, ULW_ALPHA);
}

LRESULT Window::OnPaint(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  const WeakRef<Window> alive(this);
  if (IsIconic(handle_) || !root_) {
    const PaintScope validate(handle_);
    return 0;
  }
  SizeToContent();
  if (!alive || !root_) return 0;
  RECT update = {};
  if (!GetUpdateRect(handle_, &update, FALSE) && !first_paint_) return 0;
  const RECT client = PaintedClient(handle_);
  update = PaintedUpdate(update, client);

  const HWND handle = handle_;
  const PaintScope paint(handle);
  RunLayoutPass(client);
  if (alive && root_) FinishFirstPaint();
  if (!alive || !root_) return 0;
  if (Render()->Resize(client.right, client.bottom, true)) update = client;
  PaintTree(update);
  if (!alive) return 0;
  if (layered_) {
    PushLayered();
  } else {
    ::BitBlt(paint.Dc(), update.left, update.top, update.right - update.left, update.bottom - update.top,
             Render()->GetDC(), update.left, update.top, SRCCOPY);
  }
  return 0;
}

}  // namespace lumo
