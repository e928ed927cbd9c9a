#include "lumo/core/shadow_window.h"

#include "lumo/core/scaling.h"
#include "lumo/core/screen_dc.h"
#include "lumo/render/image_painter.h"
#include "lumo/render/render.h"

namespace lumo {
namespace {

constexpr const WCHAR* kShadowClass = TEXT("UI_SHADOWWND");
constexpr DWORD kShadowStyle = WS_POPUP | WS_DISABLED;
constexpr DWORD kShadowExStyle = WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_TRANSPARENT;

// What the owner covers: the rectangle less its four corner squares, which the shadow fills behind round corners.
void ClearCovered(IRender& render, const RECT& covered, const RECT& round) {
  const LONG top = std::max(round.left, round.top);
  const LONG bottom = std::max(round.right, round.bottom);
  const LONG left = std::max(round.left, round.bottom);
  const LONG right = std::max(round.top, round.right);
  render.FillPixels({covered.left, covered.top + top, covered.right, covered.bottom - bottom}, 0);
  render.FillPixels({covered.left + left, covered.top, covered.right - right, covered.top + top}, 0);
  render.FillPixels({covered.left + left, covered.bottom - bottom, covered.right - right, covered.bottom}, 0);
}

}  // namespace

ShadowWindow::ShadowWindow(const Window& owner) : settings_(owner.Attributes()) {
  SetResourceFolder(owner.ResourceFolder());
  SetClassName(kShadowClass);
  SetScalePercent(owner.ScalePercent());
  image_.Assign(settings_.shadowimage);
}

ShadowWindow* ShadowWindow::Create(Window& owner) {
  auto* const shadow = new ShadowWindow(owner);
  const WeakRef<Window> alive(shadow);
  RECT place = {};
  GetWindowRect(owner.Handle(), &place);
  if (shadow->Window::Create(owner.Handle(), kShadowClass, kShadowStyle, kShadowExStyle, &place)) return shadow;
  delete alive.Get();
  return nullptr;
}

LRESULT ShadowWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled) {
  switch (message) {
    case WM_CREATE:  // there is no layout to build
    case WM_WINDOWPOSCHANGED:
    case WM_PAINT:
    case WM_SIZE:
    case WM_CLOSE:
      return 0;
    default:
      return Window::HandleMessage(message, wParam, lParam, handled);
  }
}

RECT ShadowWindow::Reach() const { return ScaleRect(settings_.shadowcorner, ScalePercent()); }

void ShadowWindow::Follow(const Window& owner) {
  SetScalePercent(owner.ScalePercent());
  const HWND above = owner.Handle();
  if (!IsWindowVisible(above) || IsIconic(above) || IsZoomed(above)) {
    ShowWindow(Handle(), SW_HIDE);
    return;
  }
  const RECT reach = Reach();
  RECT place = {};
  GetWindowRect(above, &place);
  place = {place.left - reach.left, place.top - reach.top, place.right + reach.right, place.bottom + reach.bottom};
  SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  Draw({place.right - place.left, place.bottom - place.top});
}

void ShadowWindow::Draw(SIZE size) {
  if (size.cx == drawn_.cx && size.cy == drawn_.cy) return;
  drawn_ = size;
  IRender& render = *Render();
  render.Resize(size.cx, size.cy, true);
  render.Clear();
  const RECT whole = {0, 0, size.cx, size.cy};
  const ImagePlace place = {this, ScalePercent(), whole, whole, {}};
  PaintImage(&render, place, image_, nullptr, {});
  const RECT reach = Reach();
  ClearCovered(render, {reach.left, reach.top, size.cx - reach.right, size.cy - reach.bottom},
               ScaleRect(settings_.shadowround, ScalePercent()));
  POINT from = {};
  SIZE pushed = size;
  BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  const ScreenDc screen;
  UpdateLayeredWindow(Handle(), screen.Get(), nullptr, &pushed, render.GetDC(), &from, 0, &blend, ULW_ALPHA);
}

}  // namespace lumo
