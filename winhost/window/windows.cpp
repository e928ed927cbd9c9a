// Making, ending and asking about windows.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
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

// A title in a resource-number form ("\xFFFF" and a number) is none of ours.
std::u16string Title(LPCWSTR title) { return title && *title != 0xFFFF ? std::u16string(title) : std::u16string(); }

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

// WM_NCCREATE and WM_CREATE; false when the window refused to be.
bool TellCreated(HWND window, CREATESTRUCTW* creation) {
  const auto parameter = reinterpret_cast<LPARAM>(creation);
  if (!CallWindow(window, WM_NCCREATE, 0, parameter)) {
    CallWindow(window, WM_NCDESTROY, 0, 0);
    DropLocalWindow(window);
    return false;
  }
  if (CallWindow(window, WM_CREATE, 0, parameter) == -1) {
    DestroyWindow(window);
    return false;
  }
  return IsWindow(window) != FALSE;  // it may have ended itself
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
  if (index == GWL_STYLE) {
    window->table->SetStyle(handle, ~DWORD{0}, static_cast<DWORD>(value));
  } else if (index == GWL_EXSTYLE) {
    window->table->SetExStyle(handle, static_cast<DWORD>(value));
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

int CopyText(const std::u16string& text, LPWSTR out, int capacity) {
  if (!out || capacity <= 0) return 0;
  const std::size_t count = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
  text.copy(out, count);
  out[count] = 0;
  return static_cast<int>(count);
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
  info.style = style & ~static_cast<DWORD>(WS_VISIBLE);  // it is shown when it has been made
  info.ex_style = ex_style;
  info.class_name = window_class->name;
  const auto window = Enter(info, window_class, instance, reinterpret_cast<LONG_PTR>(menu));
  if (!window) return nullptr;
  const HWND handle = window->handle;
  CREATESTRUCTW creation{parameter, instance,           menu,    parent, height, width, y, x, static_cast<LONG>(style),
                         title,     class_name_or_atom, ex_style};
  if (!TellCreated(handle, &creation)) return nullptr;
  if (style & WS_VISIBLE) ShowWindow(handle, SW_SHOW);
  return handle;
}

BOOL DestroyWindow(HWND handle) {
  const auto window = FindLocalWindow(handle);
  if (!window) return Fail<BOOL>(Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  if (window->queue->thread != GetCurrentThreadId()) return Fail<BOOL>(ERROR_ACCESS_DENIED);
  if (HasStyle(handle, WS_VISIBLE)) ShowWindow(handle, SW_HIDE);
  CallWindow(handle, WM_DESTROY, 0, 0);
  for (const WindowInfo& dependent : Dependents(handle)) {
    if (dependent.thread == GetCurrentThreadId()) DestroyWindow(dependent.window);
  }
  CallWindow(handle, WM_NCDESTROY, 0, 0);
  DropLocalWindow(handle);
  return TRUE;
}

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_NCCREATE: {
      const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
      WindowTable::Current()->SetTitle(window, Title(creation->lpszName));
      return TRUE;
    }
    case WM_CLOSE:
      DestroyWindow(window);
      return 0;
    case WM_SYSCOMMAND:
      if ((wparam & 0xFFF0) == SC_CLOSE) SendMessageW(window, WM_CLOSE, 0, 0);
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_SETTEXT:
      return WindowTable::Current()->SetTitle(window, Title(reinterpret_cast<LPCWSTR>(lparam)));
    case WM_GETTEXT: {
      const auto info = Find(window);
      return info ? CopyText(info->title, reinterpret_cast<LPWSTR>(lparam), static_cast<int>(wparam)) : 0;
    }
    case WM_GETTEXTLENGTH: {
      const auto info = Find(window);
      return info ? static_cast<LRESULT>(info->title.size()) : 0;
    }
    default:
      return 0;
  }
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
    SendMessageW(window, WM_ENABLE, static_cast<WPARAM>(enable != FALSE), 0);
  }
  return was_disabled;
}

HWND GetParent(HWND window) {
  const auto info = Find(window);
  return info && (info->style & (WS_CHILD | WS_POPUP)) ? info->parent : nullptr;
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) {
  if (FindLocalWindow(window)) return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
  return Find(window) && WindowTable::Current()->SetTitle(window, Title(text));
}

int GetWindowTextW(HWND window, LPWSTR text, int capacity) {
  if (!text || capacity <= 0) return 0;
  *text = 0;
  if (FindLocalWindow(window)) {
    return static_cast<int>(
        SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(capacity), reinterpret_cast<LPARAM>(text)));
  }
  const auto info = Find(window);
  return info ? CopyText(info->title, text, capacity) : 0;
}

int GetWindowTextLengthW(HWND window) {
  if (FindLocalWindow(window)) return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
  const auto info = Find(window);
  return info ? static_cast<int>(info->title.size()) : 0;
}

int GetClassNameW(HWND window, LPWSTR name, int capacity) {
  if (!name || capacity <= 0) return Fail<int>(ERROR_INVALID_PARAMETER);
  const auto info = Find(window);
  return info ? CopyText(info->class_name, name, capacity) : 0;
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
