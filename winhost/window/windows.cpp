// Making, ending and asking about windows.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/window/activation.h"
#include "winhost/window/display.h"
#include "winhost/window/place.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

template <class T>
T Fail(DWORD error, T answer = T{}) {
  SetLastError(error);
  return answer;
}

std::optional<WindowInfo> Find(HWND window) {
  auto info = WindowTable::Current()->Find(window);
  if (!info) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return info;
}

DWORD WhyNotMade(const WindowClass* window_class, DWORD style, HWND parent) {
  if (!window_class) return ERROR_CANNOT_FIND_WND_CLASS;
  if ((style & WS_CHILD) && !parent) return ERROR_TLW_WITH_WSCHILD;
  if (parent && parent != HWND_MESSAGE && !WindowTable::Current()->Find(parent)) return ERROR_INVALID_WINDOW_HANDLE;
  return ERROR_SUCCESS;
}

std::shared_ptr<Window> Enter(const WindowInfo& info, std::shared_ptr<WindowClass> window_class, HINSTANCE instance,
                              LONG_PTR id) {
  auto window = std::make_shared<Window>();
  window->table = WindowTable::Current();
  window->queue = ThreadQueue::Mine();
  window->procedure = window_class->values.lpfnWndProc;
  window->extra.resize(static_cast<std::size_t>(window_class->values.cbWndExtra));
  window->window_class = std::move(window_class);
  window->instance = instance;
  window->id = id;
  window->handle = window->table->Add(info);
  if (!window->handle) return Fail<std::shared_ptr<Window>>(ERROR_NOT_ENOUGH_MEMORY);
  EnterLocalWindow(window);
  return window;
}

// Where a window that leaves it to the system begins: the work area's corner, three quarters of its size.
RECT FirstPlace(int x, int y, int width, int height) {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  if (x == CW_USEDEFAULT) x = work.left, y = work.top;
  if (width == CW_USEDEFAULT) {
    constexpr int kShare = 3, kOf = 4;
    width = (work.right - work.left) * kShare / kOf;
    height = (work.bottom - work.top) * kShare / kOf;
  }
  return {x, y, x + std::clamp(width, 0, 32'767), y + std::clamp(height, 0, 32'767)};
}

// A window with a sizing border, or one that is overlapped, is born within its own limits.
void AskFirstLimits(HWND window, CREATESTRUCTW* creation) {
  const bool overlapped = !(creation->style & (WS_POPUP | WS_CHILD));
  if (!(creation->style & WS_THICKFRAME) && !overlapped) return;
  const MINMAXINFO limits = AskLimits(window);
  creation->cx = std::max<int>(std::min<int>(creation->cx, limits.ptMaxTrackSize.x), limits.ptMinTrackSize.x);
  creation->cy = std::max<int>(std::min<int>(creation->cy, limits.ptMaxTrackSize.y), limits.ptMinTrackSize.y);
}

void TellFirstPlace(HWND handle) {
  const auto window = FindLocalWindow(handle);
  const auto info = Find(handle);
  if (!window || !info || window->sized || !(info->style & (WS_POPUP | WS_CHILD))) return;
  window->sized = true;
  RECT client;
  if (!GetClientRect(handle, &client)) return;
  SendMessageW(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
  SendMessageW(handle, WM_MOVE, 0,
               MAKELPARAM(info->place.left + info->client.left, info->place.top + info->client.top));
}

// WM_NCCREATE and WM_CREATE; false when the window refused to be.
bool TellCreated(HWND window, CREATESTRUCTW* creation) {
  const auto parameter = reinterpret_cast<LPARAM>(creation);
  AskFirstLimits(window, creation);
  RECT place{creation->x, creation->y, creation->x + creation->cx, creation->y + creation->cy};
  WindowTable::Current()->SetPlace(window, place, {0, 0, creation->cx, creation->cy});
  if (!CallWindow(window, WM_NCCREATE, 0, parameter)) {
    CallWindow(window, WM_NCDESTROY, 0, 0);
    DropLocalWindow(window);
    return false;
  }
  const RECT client = AskClient(window, place);
  WindowTable::Current()->SetPlace(window, place, client);
  if (CallWindow(window, WM_CREATE, 0, parameter) == -1) {
    DestroyWindow(window);
    return false;
  }
  TellFirstPlace(window);
  return IsWindow(window) != FALSE;  // it may have ended itself
}

int FirstShow(DWORD style) {
  if (style & WS_MINIMIZE) return SW_SHOWMINIMIZED;
  return style & WS_MAXIMIZE ? SW_SHOWMAXIMIZED : SW_SHOW;
}

// Children and, of a top-level window, what it owns.
std::vector<WindowInfo> Dependents(HWND window) {
  return WindowTable::Current()->List([&](const WindowInfo& info) { return info.parent == window; });
}

LONG_PTR* Field(Window& window, int index) {
  switch (index) {
    case GWLP_USERDATA:
      return &window.user_data;
    case GWLP_ID:
      return &window.id;
    default:
      return nullptr;
  }
}

bool InExtra(const Window& window, int index, std::size_t size) {
  return index >= 0 && static_cast<std::size_t>(index) + size <= window.extra.size();
}

// The size of the value is that of the call: 4 bytes for the Long functions, 8 for the LongPtr ones.
LONG_PTR GetLong(HWND handle, int index, std::size_t size) {
  const auto info = Find(handle);
  if (!info) return 0;
  if (index == GWL_STYLE) return static_cast<LONG>(info->style);
  if (index == GWL_EXSTYLE) return static_cast<LONG>(info->ex_style);
  if (index == GWLP_HWNDPARENT) return reinterpret_cast<LONG_PTR>(info->parent);
  const auto window = FindLocalWindow(handle);
  if (!window) return Fail<LONG_PTR>(ERROR_ACCESS_DENIED);
  std::scoped_lock lock(WaitLock());
  if (index == GWLP_WNDPROC) return reinterpret_cast<LONG_PTR>(window->procedure);
  if (index == GWLP_HINSTANCE) return reinterpret_cast<LONG_PTR>(window->instance);
  if (const LONG_PTR* field = Field(*window, index)) return *field;
  if (!InExtra(*window, index, size)) return Fail<LONG_PTR>(ERROR_INVALID_INDEX);
  LONG_PTR value = 0;
  std::memcpy(&value, window->extra.data() + index, size);
  return value;
}

LONG_PTR SetLong(HWND handle, int index, LONG_PTR value, std::size_t size) {
  const auto window = FindLocalWindow(handle);
  if (!window) return Fail<LONG_PTR>(Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  const LONG_PTR former = GetLong(handle, index, size);
  if (index == GWL_STYLE || index == GWL_EXSTYLE) {
    STYLESTRUCT styles{static_cast<DWORD>(former), static_cast<DWORD>(value)};
    const auto which = static_cast<WPARAM>(index);
    SendMessageW(handle, WM_STYLECHANGING, which, reinterpret_cast<LPARAM>(&styles));
    if (index == GWL_STYLE) {
      window->table->SetStyle(handle, ~DWORD{0}, styles.styleNew);
    } else {
      window->table->SetExStyle(handle, styles.styleNew);
    }
    SendMessageW(handle, WM_STYLECHANGED, which, reinterpret_cast<LPARAM>(&styles));
    Display::Current().Changed(handle);
  } else if (index == GWLP_HWNDPARENT) {
    window->table->SetParent(handle, reinterpret_cast<HWND>(value));
  } else {
    std::scoped_lock lock(WaitLock());
    if (index == GWLP_WNDPROC) {
      window->procedure = reinterpret_cast<WNDPROC>(value);
    } else if (index == GWLP_HINSTANCE) {
      window->instance = reinterpret_cast<HINSTANCE>(value);
    } else if (LONG_PTR* field = Field(*window, index)) {
      *field = value;
    } else if (InExtra(*window, index, size)) {
      std::memcpy(window->extra.data() + index, &value, size);
    } else {
      return Fail<LONG_PTR>(ERROR_INVALID_INDEX);
    }
  }
  return former;
}

bool HasStyle(HWND window, DWORD style) {
  const auto info = Find(window);
  return info && (info->style & style) == style;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HWND CreateWindowExW(DWORD ex_style, LPCWSTR class_name_or_atom, LPCWSTR title, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
  const auto window_class = FindWindowClass(class_name_or_atom, instance);
  if (const auto error = PlannedFault("CreateWindowExW", window_class ? window_class->name : std::u16string())) {
    return Fail<HWND>(*error);
  }
  if (const DWORD error = WhyNotMade(window_class.get(), style, parent)) return Fail<HWND>(error);
  WindowInfo info;
  info.thread = GetCurrentThreadId();
  info.message_only = parent == HWND_MESSAGE;
  info.parent = info.message_only ? nullptr : parent;
  info.style = style & ~static_cast<DWORD>(WS_VISIBLE | WS_MINIMIZE | WS_MAXIMIZE);  // it is shown when it is made
  info.ex_style = ex_style;
  info.class_name = window_class->name;
  const auto window = Enter(info, window_class, instance, reinterpret_cast<LONG_PTR>(menu));
  if (!window) return nullptr;
  const HWND handle = window->handle;
  const RECT place = FirstPlace(x, y, width, height);
  CREATESTRUCTW creation{parameter,
                         instance,
                         menu,
                         parent,
                         place.bottom - place.top,
                         place.right - place.left,
                         place.top,
                         place.left,
                         static_cast<LONG>(style),
                         title,
                         class_name_or_atom,
                         ex_style};
  if (!TellCreated(handle, &creation)) return nullptr;
  if (style & WS_VISIBLE) ShowWindow(handle, FirstShow(style));
  return handle;
}

BOOL DestroyWindow(HWND handle) {
  const auto window = FindLocalWindow(handle);
  if (!window) return Fail<BOOL>(Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  if (window->queue->thread != GetCurrentThreadId()) return Fail<BOOL>(ERROR_ACCESS_DENIED);
  if (HasStyle(handle, WS_VISIBLE)) ShowWindow(handle, SW_HIDE);
  if (GetCapture() == handle) ReleaseCapture();
  if (GetFocus() == handle) SetFocus(nullptr);
  CallWindow(handle, WM_DESTROY, 0, 0);
  for (const WindowInfo& dependent : Dependents(handle)) {
    if (dependent.thread == GetCurrentThreadId()) DestroyWindow(dependent.window);
  }
  CallWindow(handle, WM_NCDESTROY, 0, 0);
  DropLocalWindow(handle);
  Display::Current().Ended(handle);
  return TRUE;
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  return procedure ? procedure(window, message, wparam, lparam) : 0;
}

BOOL IsWindow(HWND window) { return Find(window).has_value(); }
BOOL IsIconic(HWND window) { return HasStyle(window, WS_MINIMIZE); }
BOOL IsZoomed(HWND window) { return HasStyle(window, WS_MAXIMIZE); }

BOOL IsWindowEnabled(HWND window) {
  const auto info = Find(window);
  return info && !(info->style & WS_DISABLED);
}

// Shown itself, and all that it is a child of.
BOOL IsWindowVisible(HWND window) {
  auto info = Find(window);
  if (!info) return FALSE;
  while (info && (info->style & WS_VISIBLE)) {
    if (!(info->style & WS_CHILD)) return TRUE;
    info = WindowTable::Current()->Find(info->parent);
  }
  return FALSE;
}

BOOL EnableWindow(HWND window, BOOL enable) {
  const auto info = Find(window);
  if (!info) return FALSE;
  const bool was_disabled = (info->style & WS_DISABLED) != 0;
  if (was_disabled == (enable != FALSE)) {
    const auto disabled = static_cast<DWORD>(WS_DISABLED);
    WindowTable::Current()->SetStyle(window, enable ? disabled : 0, enable ? 0 : disabled);
    if (!enable && GetFocus() == window) SetFocus(nullptr);
    if (!enable && GetCapture() == window) ReleaseCapture();
    if (FindLocalWindow(window)) Display::Current().Changed(window);
    SendMessageW(window, WM_ENABLE, static_cast<WPARAM>(enable != FALSE), 0);
  }
  return was_disabled;
}

HWND GetParent(HWND window) {
  const auto info = Find(window);
  return info && (info->style & (WS_CHILD | WS_POPUP)) ? info->parent : nullptr;
}

HWND SetParent(HWND child, HWND parent) {
  const auto info = Find(child);
  if (!info || !MyWindow(child)) return nullptr;
  if (parent && !Find(parent)) return nullptr;
  WindowTable::Current()->SetParent(child, parent);
  InvalidateRect(child, nullptr, TRUE);
  return info->parent;
}

DWORD GetWindowThreadProcessId(HWND window, LPDWORD process) {
  const auto info = Find(window);
  if (!info) return 0;
  if (process) *process = static_cast<DWORD>(info->process);
  return info->thread;
}

LONG_PTR GetWindowLongPtrW(HWND window, int index) { return GetLong(window, index, sizeof(LONG_PTR)); }
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) {
  return SetLong(window, index, value, sizeof value);
}
LONG GetWindowLongW(HWND window, int index) { return static_cast<LONG>(GetLong(window, index, sizeof(LONG))); }
LONG SetWindowLongW(HWND window, int index, LONG value) {
  return static_cast<LONG>(SetLong(window, index, value, sizeof value));
}
