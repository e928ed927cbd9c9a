// What the setup's windows share: a handler that owns itself, knows its controls by name and is among the process's
// registered windows while its native window lives. UI thread only.
#pragma once

#include "base/text.h"
#include "lumo/core/handler.h"

namespace lumo {
class ControlBase;
}

namespace vanta {

class SkinWindow : public lumo::lumowin {
 public:
  void OnCreate(HWND window) override;
  // Deletes this object.
  void OnFinalMessage(HWND window) override;

 protected:
  // None when the layout has no control of that name.
  lumo::ControlBase* Find(const WCHAR* name) const;
  // Null controls, and those that show no text, are passed over.
  static void SetText(lumo::ControlBase* control, StringView text);
  // Asks the window to close once what is running now has ended; `code` arrives with WM_CLOSE.
  void PostClose(WPARAM code = 0) const { PostMessageW(m_hWnd, WM_CLOSE, code, 0); }
};

// Creates the window of <name>\<name>.xml with this handler, not shown yet. None when it cannot be created; the handler
// is destroyed then.
HWND OpenSkinWindow(const WCHAR* name, SkinWindow* handler, HWND owner, const WCHAR* title);

}  // namespace vanta
