// The frame that a Window draws itself: everything is client area, and points decide what can be dragged.
#include "lumo/controls/control_base.h"
#include "lumo/core/dpi.h"
#include "lumo/core/scaling.h"
#include "lumo/core/shadow_box.h"
#include "lumo/core/shadow_window.h"
#include "lumo/core/window.h"
#include "lumo/core/window_messages.h"

#include <windowsx.h>

namespace lumo {

RECT Window::FrameInsets() const {
  return attributes_.shadowattached ? ScaleRect(attributes_.shadowcorner, scale_) : RECT{};
}

FrameShape Window::CurrentFrame() const {
  RECT client = {};
  GetClientRect(handle_, &client);
  const RECT insets = FrameInsets();
  client = {client.left + insets.left, client.top + insets.top, client.right - insets.right,
            client.bottom - insets.bottom};
  return {client, ScaleRect(attributes_.sizebox, scale_), ScaleRect(attributes_.caption, scale_),
          IsZoomed(handle_) != FALSE};
}

LRESULT Window::OnNcHitTest(WPARAM, LPARAM lParam, bool* handled) {
  *handled = true;
  POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(handle_, &point);
  return HitFrame(CurrentFrame(), point, [&] { return TakesPress(ControlAt(point)); });
}

// While the user sizes or moves, a client area one pixel lower than the window keeps the system from copying the old
// picture into the new place, which would flicker; the window's own height limits what is painted.
LRESULT Window::OnNcCalcSize(WPARAM, LPARAM lParam, bool* handled) {
  *handled = true;
  if (sizing_or_moving_) ++reinterpret_cast<RECT*>(lParam)->bottom;
  return 0;
}

LRESULT Window::OnEnterSizeMove(WPARAM, LPARAM, bool*) {
  sizing_or_moving_ = true;
  return 0;
}

LRESULT Window::OnExitSizeMove(WPARAM, LPARAM, bool*) {
  sizing_or_moving_ = false;
  SetWindowPos(handle_, nullptr, 0, 0, 0, 0,
               SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  return 0;
}

LRESULT Window::OnNcPaint(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  return 0;
}

LRESULT Window::OnNcActivate(WPARAM wParam, LPARAM, bool* handled) {
  if (IsIconic(handle_)) return 0;
  *handled = true;
  return wParam == FALSE ? TRUE : FALSE;
}

LRESULT Window::OnEraseBackground(WPARAM, LPARAM, bool* handled) {
  *handled = true;
  return 1;
}

LRESULT Window::OnGetMinMaxInfo(WPARAM, LPARAM lParam, bool*) {
  auto* const info = reinterpret_cast<MINMAXINFO*>(lParam);
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  if (GetMonitorInfoW(MonitorFromWindow(handle_, MONITOR_DEFAULTTONEAREST), &monitor)) {
    const RECT& work = monitor.rcWork;
    info->ptMaxPosition = {work.left - monitor.rcMonitor.left, work.top - monitor.rcMonitor.top};
    info->ptMaxSize = {work.right - work.left, work.bottom - work.top};
  }
  const RECT insets = FrameInsets();
  const auto limit = [&](LONG& tracked, LONG design, LONG inset) {
    if (design > 0) tracked = ScaleLength(design, scale_) + inset;
  };
  limit(info->ptMaxTrackSize.x, attributes_.maxinfo.cx, insets.left + insets.right);
  limit(info->ptMaxTrackSize.y, attributes_.maxinfo.cy, insets.top + insets.bottom);
  limit(info->ptMinTrackSize.x, attributes_.mininfo.cx, insets.left + insets.right);
  limit(info->ptMinTrackSize.y, attributes_.mininfo.cy, insets.top + insets.bottom);
  return 0;
}

LRESULT Window::OnSize(WPARAM wParam, LPARAM, bool*) {
  if (wParam != SIZE_MINIMIZED) ApplyRoundCorner();
  const WeakRef<Window> alive(this);
  if (focused_) SendNotify(focused_, EventWindowSize, 0, 0);
  if (!alive) return 0;
  if (root_) root_->InvalidateLayout();
  layout_due_ = true;
  PostMessageW(handle_, kMessageUpdateMaxRestore, 0, 0);
  if (inner_shadow_) ShowInnerShadow(wParam != SIZE_MAXIMIZED);
  return 0;
}

void Window::ApplyRoundCorner() {
  const SIZE corner = attributes_.roundcorner;
  if (corner.cx <= 0 && corner.cy <= 0) return;
  RECT client = {};
  GetClientRect(handle_, &client);
  // The region's far edge is exclusive twice over: one pixel more keeps the last row and column.
  const HRGN region = CreateRoundRectRgn(client.left, client.top, client.right + 1, client.bottom + 1,
                                         ScaleLength(corner.cx, scale_), ScaleLength(corner.cy, scale_));
  SetWindowRgn(handle_, region, TRUE);  // the system's from now on
}

void Window::ShowInnerShadow(bool shown) { static_cast<ShadowBox*>(inner_shadow_)->SetShown(shown); }

LRESULT Window::OnPositionChanged(WPARAM, LPARAM, bool*) {
  if (shadow_alive_) shadow_->Follow(*this);
  return 0;  // default processing sends WM_SIZE and WM_MOVE
}

LRESULT Window::OnDpiChanged(WPARAM wParam, LPARAM lParam, bool* handled) {
  *handled = true;
  scale_ = ScaleOfDpi(LOWORD(wParam));
  RescaleTree();
  const auto& place = *reinterpret_cast<const RECT*>(lParam);
  SetWindowPos(handle_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
  PostMessageW(handle_, WM_SIZE, 0, 0);
  return 0;
}

}  // namespace lumo
