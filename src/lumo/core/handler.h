// lumowin: the application's side of a window. The Window calls it at fixed points; the application derives from it.
#pragma once

#include "lumo/core/event.h"
#include "lumo/core/weak.h"

#include <map>

namespace lumo {

// A native window's handle and the few operations on it that handlers share.
class CWindow {
 public:
  HWND m_hWnd = nullptr;  // null before creation and after the final message

  bool IsWindow() const { return m_hWnd && ::IsWindow(m_hWnd); }
  // Over the owner window when that is on the screen, else on the work area of the window's monitor; never beyond that
  // work area. Nothing happens without a window.
  void CenterWindow() const;

 protected:
  ~CWindow() = default;
};

// What receives the library events of a window's controls.
class IDispEvent {
 public:
  // Calls the callback when the control of that name sends an event of that type. A second callback for the same pair
  // replaces the first.
  void Bind(StringView name, int type, EventCallback callback);
  // The same for one control, whatever its name; it goes ahead of the callback by name. Ends with the control; null is
  // passed over.
  void Bind(ControlBase* control, int type, EventCallback callback);
  void Bind(IControl* control, int type, EventCallback callback);

 protected:
  ~IDispEvent() = default;
  // Looks the sender up by identity, then by name, and calls the first callback found for the type. The callback may
  // bind others and destroy this object.
  void Dispatch(_Msg& record) const;

 private:
  using Callbacks = std::map<int, EventCallback>;
  struct BoundControl {
    WeakRef<ControlBase> control;  // tells a control from a later one at the same address
    Callbacks callbacks;
  };
  EventCallback FindCallback(const _Msg& record) const;

  std::map<ControlBase*, BoundControl> by_control_;
  std::map<String, Callbacks, std::less<>> by_name_;
};

// Owned by the application or by itself; the Window only refers to it, weakly. UI thread only.
class lumowin : public CWindow, public IDispEvent {
 public:
  lumowin() = default;
  lumowin(const lumowin&) = delete;
  lumowin& operator=(const lumowin&) = delete;

  // Before the window class is registered: may rename it (the name must last until the call has returned) or change its
  // style.
  virtual void AdjustClass(WNDCLASSEXW* window_class);
  // A library event of one of the window's controls. May destroy this object.
  virtual void OnNotify(_Msg& record);
  // Every native message but WM_NCCREATE and WM_NCDESTROY; the answer counts when `handled` is set, which is false
  // before. May destroy this object.
  virtual LRESULT ProcessMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled);
  // The control tree is there.
  virtual void OnCreate(HWND window);
  // The native window is gone, and the Window calls no more. May destroy this object.
  virtual void OnFinalMessage(HWND window);
  virtual ~lumowin() = default;

  // For WeakRef<lumowin>.
  LivenessBlock* ShareLiveness() { return liveness_.ShareLiveness(); }

 private:
  // A member: as a base it would put its destructor ahead of the operations above.
  class Liveness : public WeakBase {};
  Liveness liveness_;
};

}  // namespace lumo
