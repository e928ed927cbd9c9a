// Window: the library's top-level native window. It owns the control tree of a layout, turns native messages into
// events on controls, and paints the tree as one borderless surface.
//
// Everything here runs on the UI thread; other threads post messages to the native window. Any event may end in the
// window's own destruction, so whoever calls out holds a WeakRef and looks again.
#pragma once

#include "lumo/core/event.h"
#include "lumo/core/hit_test.h"
#include "lumo/core/option_groups.h"
#include "lumo/core/types.h"
#include "lumo/core/weak.h"
#include "lumo/core/window_attributes.h"

#include <map>
#include <memory>
#include <vector>

namespace lumo {

class ControlBase;
class IMessageFilter;
class IRender;
class ShadowWindow;
class Tooltip;
class lumowin;

class Window : public WeakBase {
 public:
  Window();
  ~Window() override;
  virtual void Close(int code);              // hides the native window and posts WM_CLOSE with the code as wParam
  virtual void OnFinalMessage(HWND window);  // after WM_NCDESTROY: deletes this
  virtual LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, bool* handled);

  // Set before Create. The folder gets a separator at its end.
  void SetHandler(lumowin* handler);
  void SetResource(StringView folder, StringView layout_file);
  void SetResourceFolder(StringView folder);
  void SetClassName(StringView name) { class_name_ = name; }

  // The native window; its tree is built before this returns. None when the class, the window or the layout fails;
  // this object is then the caller's to delete. No `rect` means position and size 0.
  HWND Create(HWND owner, const WCHAR* title, DWORD style, DWORD ex_style, const RECT* rect);

  // An attribute of the layout's Window element; unknown names are ignored.
  void SetAttribute(const WCHAR* name, const WCHAR* value);
  const WindowAttributes& Attributes() const { return attributes_; }

  // Takes the tree over; a previous one is deleted outside the current call chain.
  void AttachRoot(ControlBase* root);

  // What controls ask of the window that they live in.
  HWND Handle() const { return handle_; }      // null before creation and after destruction
  int ScalePercent() const { return scale_; }  // 100 = 96 dpi
  void SetScalePercent(int percent) { scale_ = percent; }
  bool IsLayered() const { return layered_; }
  const String& ResourceFolder() const { return folder_; }  // "" or ending in a separator
  ControlBase* Root() const { return root_; }
  lumowin* Handler() const;  // null when it is gone
  IRender* Render();         // the window's own surface; never null

  // A layout pass is due: it runs before the next paint.
  void RequestLayout() { layout_due_ = true; }
  bool IsLayoutDue() const { return layout_due_; }
  // Runs it now, as painting would. Nothing happens while the client rectangle is empty.
  void RunLayoutPass(const RECT& client);

  // Builds a record (sender, tick count, last pointer point, window, name) and delivers it through HandleEvent.
  void SendNotify(ControlBase* control, int type, WPARAM wParam, LPARAM lParam);

  POINT LastPointer() const { return pointer_; }  // client coordinates, device pixels
  ControlBase* Focused() const { return focused_; }
  ControlBase* Hot() const { return hot_; }
  ControlBase* Captured() const { return captured_; }
  bool IsTouchActive() const { return touch_target_ != nullptr; }  // a touch or pen contact is being tracked
  // Moves the keyboard focus: the old control gets InternalKillFocus and "killfocus", the new one InternalSetFocus and
  // "setfocus". Null clears it.
  void SetFocus(ControlBase* control);
  // Clears the focus without telling anybody (the caller has).
  void ForgetFocus() { focused_ = nullptr; }
  void MoveFocus(bool backwards);  // to the next control that can take it; stays where it is when there is none
  void ReleaseCaptureOf(ControlBase* control);

  // The name map. Entering walks the subtree; a later entry of the same name replaces an earlier one.
  ControlBase* FindControl(StringView name) const;
  void EnterNames(ControlBase* subtree);
  // A control leaves: focus, hover, capture, key and touch targets, names, option group. Called by its destructor.
  void Forget(ControlBase* control);
  // Deleted outside the current call chain (message 0x87D1).
  void DeleteLater(ControlBase* control);

  // Option groups. Members in the order in which they joined; the list is a copy.
  void JoinGroup(StringView group, ControlBase* option) { groups_.Join(group, option); }
  void LeaveGroup(StringView group, ControlBase* option) { groups_.Leave(group, option); }
  std::vector<ControlBase*> GroupMembers(StringView group) const { return groups_.Members(group); }

  // The top-most visible, mouse-enabled control at a point in client coordinates; null when there is none.
  ControlBase* ControlAt(POINT point) const;

 private:
  friend LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  using MessageHandler = LRESULT (Window::*)(WPARAM wParam, LPARAM lParam, bool* handled);
  struct MessageRow {
    UINT message;
    MessageHandler handler;
  };
  static const MessageRow kMessages[];

  // Creation (window_create.cpp).
  bool RegisterWindowClass();
  LRESULT OnCreate(WPARAM, LPARAM, bool*);
  void AttachShadow(ControlBase** root);
  void SetInitialSize();
  void BindSystemButtons();
  void BindSystemButton(StringView name, void (Window::*action)());
  void OnCloseButton() { Close(8); }
  void OnMinimiseButton();
  void OnMaximiseButton();
  void OnRestoreButton();
  void ShowOneOf(StringView shown, StringView hidden);

  // Messages of our own and the end (window_messages.cpp).
  LRESULT OnSetHandler(WPARAM, LPARAM, bool*);
  LRESULT OnFindControl(WPARAM, LPARAM, bool*);
  LRESULT OnControlAtPoint(WPARAM, LPARAM, bool*);
  LRESULT OnDeleteDetached(WPARAM, LPARAM, bool*);
  LRESULT OnUpdateMaxRestore(WPARAM, LPARAM, bool*);
  LRESULT OnSetFilter(WPARAM, LPARAM, bool*);
  LRESULT OnRepaint(WPARAM, LPARAM, bool*);
  LRESULT OnReleaseImages(WPARAM, LPARAM, bool*);
  LRESULT OnClose(WPARAM, LPARAM, bool*);
  LRESULT OnDestroy(WPARAM, LPARAM, bool*);
  LRESULT OnNotify(WPARAM, LPARAM, bool*);
  LRESULT OnCommand(WPARAM, LPARAM, bool*);
  LRESULT OnColorEdit(WPARAM, LPARAM, bool*);
  LRESULT OnColorStatic(WPARAM, LPARAM, bool*);
  LRESULT OnSysCommand(WPARAM, LPARAM, bool*);
  LRESULT Reflect(UINT message, HWND child, WPARAM wParam, LPARAM lParam, bool* handled);

  // Frame (window_frame.cpp).
  RECT FrameInsets() const;  // device pixels
  FrameShape CurrentFrame() const;
  void ApplyRoundCorner();
  void ShowInnerShadow(bool shown);
  LRESULT OnNcCalcSize(WPARAM, LPARAM, bool*);
  LRESULT OnNcPaint(WPARAM, LPARAM, bool*);
  LRESULT OnNcActivate(WPARAM, LPARAM, bool*);
  LRESULT OnNcHitTest(WPARAM, LPARAM, bool*);
  LRESULT OnEraseBackground(WPARAM, LPARAM, bool*);
  LRESULT OnEnterSizeMove(WPARAM, LPARAM, bool*);
  LRESULT OnExitSizeMove(WPARAM, LPARAM, bool*);
  LRESULT OnGetMinMaxInfo(WPARAM, LPARAM, bool*);
  LRESULT OnSize(WPARAM, LPARAM, bool*);
  LRESULT OnPositionChanged(WPARAM, LPARAM, bool*);
  void RescaleTree();
  LRESULT OnDpiChanged(WPARAM, LPARAM, bool*);

  // Pointer and keyboard (window_input.cpp, window_focus.cpp).
  void Deliver(ControlBase* control, int type, WPARAM wParam, LPARAM lParam, POINT point);
  void SetHot(ControlBase* control, POINT point);
  void TrackLeaveAndHover();
  void Press(int type, POINT point, WPARAM wParam, LPARAM lParam);
  void ReleasePress(int type, WPARAM wParam, LPARAM lParam);
  void EndPress();  // the release that never came
  LRESULT OnMouseMove(WPARAM, LPARAM, bool*);
  LRESULT OnMouseLeave(WPARAM, LPARAM, bool*);
  LRESULT OnMouseHover(WPARAM, LPARAM, bool*);
  LRESULT OnLeftDown(WPARAM, LPARAM, bool*);
  LRESULT OnLeftUp(WPARAM, LPARAM, bool*);
  LRESULT OnLeftDoubleClick(WPARAM, LPARAM, bool*);
  LRESULT OnRightDown(WPARAM, LPARAM, bool*);
  LRESULT OnRightUp(WPARAM, LPARAM, bool*);
  LRESULT OnMouseWheel(WPARAM, LPARAM, bool*);
  LRESULT OnContextMenu(WPARAM, LPARAM, bool*);
  LRESULT OnSetCursor(WPARAM, LPARAM, bool*);
  LRESULT OnCaptureChanged(WPARAM, LPARAM, bool*);
  LRESULT OnKillFocus(WPARAM, LPARAM, bool*);
  LRESULT OnKeyDown(WPARAM, LPARAM, bool*);
  LRESULT OnKeyUp(WPARAM, LPARAM, bool*);
  LRESULT OnChar(WPARAM, LPARAM, bool*);
  LRESULT OnSysKeyDown(WPARAM, LPARAM, bool*);
  LRESULT OnImeStart(WPARAM, LPARAM, bool*);
  LRESULT OnImeEnd(WPARAM, LPARAM, bool*);
  bool KeepsTab(ControlBase* control) const;

  // Touch and pen (window_touch.cpp).
  void RegisterTouch(bool registered);
  void TouchDown(POINT point);
  void TouchMove(POINT point);
  void TouchUp(POINT point);
  LRESULT OnTouch(WPARAM, LPARAM, bool*);
  LRESULT OnPointerDown(WPARAM, LPARAM, bool*);
  LRESULT OnPointerUpdate(WPARAM, LPARAM, bool*);
  LRESULT OnPointerUp(WPARAM, LPARAM, bool*);

  // Painting (window_paint.cpp).
  SIZE ContentSize();  // of a root that sizes itself, within its bounds
  void SizeToContent();
  RECT PaintedUpdate(RECT update, const RECT& client) const;
  void PaintTree(const RECT& update);
  void PushLayered();
  void FinishFirstPaint();
  LRESULT OnPaint(WPARAM, LPARAM, bool*);

  HWND handle_ = nullptr;
  WeakRef<lumowin> handler_;
  IMessageFilter* filter_ = nullptr;
  String folder_;
  String layout_file_;
  String class_name_;
  UINT class_style_ = CS_DBLCLKS;
  WindowAttributes attributes_;
  int scale_;
  bool layered_ = false;
  BYTE alpha_ = 255;

  ControlBase* root_ = nullptr;  // owned
  ControlBase* focused_ = nullptr;
  ControlBase* hot_ = nullptr;
  ControlBase* captured_ = nullptr;
  ControlBase* key_target_ = nullptr;
  ControlBase* touch_target_ = nullptr;
  DWORD touch_contact_ = 0;
  POINT pointer_ = {};
  bool tracking_ = false;  // leave and hover have been asked for
  bool button_held_ = false;
  bool sizing_or_moving_ = false;

  bool layout_due_ = false;
  bool first_paint_ = false;
  std::map<String, ControlBase*, std::less<>> names_;
  OptionGroups groups_;
  std::vector<ControlBase*> detached_;  // owned until deleted
  std::unique_ptr<Tooltip> tooltip_;
  ShadowWindow* shadow_ = nullptr;  // owned by its own native window
  WeakRef<Window> shadow_alive_;
  ControlBase* inner_shadow_ = nullptr;  // the root, when it is a ShadowBox
  std::unique_ptr<IRender> render_;
};

// Process-wide scale in percent; 0 until it has been set, which counts as 100.
int GlobalScalePercent();
void SetGlobalScalePercent(int percent);

}  // namespace lumo
