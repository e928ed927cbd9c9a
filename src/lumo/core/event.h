// The event record and its type codes.
#pragma once

#include "lumo/core/types.h"

#include <functional>

namespace lumo {

class ControlBase;
class IControl;

enum EventType : int {
  EventAll = 1,
  EventKeyDown = 3,
  EventKeyUp = 4,
  EventChar = 5,
  EventSysKey = 6,
  EventMouseMove = 9,
  EventMouseEnter = 10,
  EventMouseLeave = 11,
  EventMouseHover = 12,
  EventButtonDown = 13,
  EventButtonUp = 14,
  EventRButtonDown = 15,
  EventRButtonUp = 16,
  EventDoubleClick = 17,
  EventMenu = 18,
  EventScrollWheel = 19,
  EventTouchDown = 22,
  EventTouchMove = 23,
  EventTouchUp = 24,
  EventSetFocus = 31,
  EventKillFocus = 32,
  EventImeStart = 33,
  EventImeEnd = 34,
  EventWindowSize = 35,
  EventSetCursor = 36,
  EventClick = 37,
  EventSelect = 38,
  EventUnselect = 39,
  EventReturn = 41,
  EventTab = 42,
  EventScrollChange = 44,
  EventValueChange = 45,
  EventPosition = 46,
  // Straight to a control's default behaviour, never offered to handlers.
  InternalDoubleClick = -1000,
  InternalContextMenu = -999,
  InternalSetFocus = -998,
  InternalKillFocus = -997,
};

constexpr bool IsInternalEvent(int type) { return type >= InternalDoubleClick && type <= InternalKillFocus; }
constexpr bool IsPointerEvent(int type) { return type >= EventMouseMove && type <= EventScrollWheel; }

// One happening on its way through handlers and controls. UI thread only.
struct _Msg {
  int type = 0;
  IControl* sender = nullptr;
  DWORD timestamp = 0;  // GetTickCount
  POINT point = {};     // last pointer position, client coordinates in device pixels
  int key = 0;          // key or character code of keyboard events
  WPARAM wParam = 0;
  LPARAM lParam = 0;
  DWORD keyState = 0;
  HWND window = nullptr;
  const WCHAR* senderName = nullptr;  // borrowed from the sender
  bool stop = false;                  // set by a handler to end the dispatch
  ControlBase* control = nullptr;
};
using _Msg2 = _Msg;

// The application handler's callbacks.
using EventCallback = std::function<void(_Msg&)>;
// Bindings on controls: non-zero goes on, 0 ends the list.
using EventBinding = std::function<int(_Msg2&)>;

// The code of a name as layouts write it; 0 for a name that is not in the table. Exact comparison.
int EventTypeFromName(StringView name);

}  // namespace lumo
