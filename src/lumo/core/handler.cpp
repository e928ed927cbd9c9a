#include "lumo/core/handler.h"

#include "lumo/controls/control_base.h"
#include "lumo/controls/control_interfaces.h"

#include <algorithm>

namespace lumo {
namespace {

LONG Centred(LONG low, LONG high, LONG size) { return low + (high - low - size) / 2; }

LONG Within(LONG at, LONG size, LONG low, LONG high) { return std::max(low, std::min(at, high - size)); }

}  // namespace

void CWindow::CenterWindow() const {
  RECT place = {};
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  if (!GetWindowRect(m_hWnd, &place)) return;
  const HWND owner = GetWindow(m_hWnd, GW_OWNER);
  const bool over_owner = owner && IsWindowVisible(owner) && !IsIconic(owner);
  if (!GetMonitorInfoW(MonitorFromWindow(over_owner ? owner : m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor)) return;
  RECT around = monitor.rcWork;
  if (over_owner) GetWindowRect(owner, &around);
  const LONG width = place.right - place.left, height = place.bottom - place.top;
  const RECT& work = monitor.rcWork;
  const LONG left = Within(Centred(around.left, around.right, width), width, work.left, work.right);
  const LONG top = Within(Centred(around.top, around.bottom, height), height, work.top, work.bottom);
  SetWindowPos(m_hWnd, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void IDispEvent::Bind(StringView name, int type, EventCallback callback) {
  by_name_[String(name)][type] = std::move(callback);
}

void IDispEvent::Bind(ControlBase* control, int type, EventCallback callback) {
  if (!control) return;
  BoundControl& bound = by_control_[control];
  if (!bound.control) bound = {WeakRef<ControlBase>(control), {}};
  bound.callbacks[type] = std::move(callback);
}

void IDispEvent::Bind(IControl* control, int type, EventCallback callback) {
  if (control) Bind(control->AsControl(), type, std::move(callback));
}

// A copy: the callback may replace itself.
EventCallback IDispEvent::FindCallback(const _Msg& record) const {
  const auto of_type = [&](const Callbacks& callbacks) {
    const auto found = callbacks.find(record.type);
    return found == callbacks.end() ? EventCallback() : found->second;
  };
  if (const auto bound = by_control_.find(record.control); bound != by_control_.end() && bound->second.control) {
    if (EventCallback callback = of_type(bound->second.callbacks)) return callback;
  }
  const auto named = record.senderName ? by_name_.find(StringView(record.senderName)) : by_name_.end();
  return named == by_name_.end() ? EventCallback() : of_type(named->second);
}

void IDispEvent::Dispatch(_Msg& record) const {
  if (const EventCallback callback = FindCallback(record)) callback(record);
}

void lumowin::AdjustClass(WNDCLASSEXW*) {}

void lumowin::OnNotify(_Msg& record) { Dispatch(record); }

LRESULT lumowin::ProcessMessage(UINT, WPARAM, LPARAM, bool*) { return 0; }

void lumowin::OnCreate(HWND window) { m_hWnd = window; }

void lumowin::OnFinalMessage(HWND) { m_hWnd = nullptr; }

}  // namespace lumo
