// The library's own window messages, understood by every Window.
#pragma once

#include <windows.h>

namespace lumo {

inline constexpr UINT kMessageSetHandler = 0x8001;      // lParam: lumowin*
inline constexpr UINT kMessageFindControl = 0x8003;     // lParam: const WCHAR* name; answers IControl* or 0
inline constexpr UINT kMessageControlAtPoint = 0x8004;  // lParam: POINT* in client coordinates; answers IControl* or 0
inline constexpr UINT kMessageDeleteDetached = 0x87D1;  // deletes what DeleteLater collected
inline constexpr UINT kMessageUpdateMaxRestore = 0x87D2;  // shows __max or __restore as the window's state asks
inline constexpr UINT kMessageSetFilter = 0x87D3;         // lParam: IMessageFilter*
inline constexpr UINT kMessageRepaint = 0x87D5;           // the whole window
inline constexpr UINT kMessageReleaseImages = 0x87D6;     // decoded pictures are dropped; painting loads them again

// Messages reflected to the child window that they came from arrive there with this added.
inline constexpr UINT kReflected = 0x2000;

}  // namespace lumo
