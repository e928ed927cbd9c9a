// Looking for windows, showing them and bringing them to the front.
#include <windows.h>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/window/live_process.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

struct ShowChange {
  bool visible;
  DWORD clear;
  DWORD set;
  bool activates;
};

ShowChange ChangeOf(int show) {
  constexpr DWORD kSizes = WS_MINIMIZE | WS_MAXIMIZE;
  constexpr auto kMinimized = static_cast<DWORD>(WS_MINIMIZE), kMaximized = static_cast<DWORD>(WS_MAXIMIZE);
  switch (show) {
    case SW_HIDE:
      return {false, 0, 0, false};
    case SW_SHOWMINIMIZED:
      return {true, kSizes, kMinimized, true};
    case SW_MINIMIZE:
    case SW_SHOWMINNOACTIVE:
      return {true, kSizes, kMinimized, false};
    case SW_SHOWMAXIMIZED:
      return {true, kSizes, kMaximized, true};
    case SW_SHOWNORMAL:
    case SW_RESTORE:
    case SW_SHOWDEFAULT:
      return {true, kSizes, 0, true};
    case SW_SHOWNOACTIVATE:
      return {true, kSizes, 0, false};
    case SW_SHOWNA:
      return {true, 0, 0, false};
    default:
      return {true, 0, 0, true};
  }
}

// What top-level windows FindWindowW looks through.
bool TopLevel(const WindowInfo& info) { return !info.message_only && !(info.style & WS_CHILD); }

bool Activate(HWND window) {
  const auto table = WindowTable::Current();
  if (!table->Raise(window)) return Fail(ERROR_INVALID_WINDOW_HANDLE) != FALSE;
  const HWND former = table->SetForeground(window);
  if (const auto local = FindLocalWindow(window)) {
    std::scoped_lock lock(WaitLock());
    local->queue->active = window;
  }
  if (former == window) return true;
  // Each learns of it in its own time: waiting here for another program would hang with it.
  if (former) SendNotifyMessageW(former, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(window));
  SendNotifyMessageW(window, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(former));
  return true;
}

bool ThreadHasQueue(DWORD thread) {
  {
    std::scoped_lock lock(WaitLock());
    if (ThreadQueue::Of(thread)) return true;
  }
  return !WindowTable::Current()->List([&](const WindowInfo& info) { return info.thread == thread; }).empty();
}

BOOL Visit(const std::vector<WindowInfo>& windows, WNDENUMPROC visit, LPARAM parameter) {
  for (const WindowInfo& info : windows) {
    if (!visit(info.window, parameter)) return FALSE;
  }
  return TRUE;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HWND FindWindowW(LPCWSTR class_name_or_atom, LPCWSTR title) {
  const std::u16string wanted = class_name_or_atom ? ClassText(class_name_or_atom) : std::u16string();
  if (const auto error = PlannedFault("FindWindowW", wanted)) {
    SetLastError(*error);
    return nullptr;
  }
  return FindWindowExW(nullptr, nullptr, class_name_or_atom, title);
}

HWND FindWindowExW(HWND parent, HWND after, LPCWSTR class_name_or_atom, LPCWSTR title) {
  const std::u16string wanted = class_name_or_atom ? ClassText(class_name_or_atom) : std::u16string();
  const auto fits = [&](const WindowInfo& info) {
    const bool among = parent == HWND_MESSAGE ? info.message_only
                       : parent               ? info.parent == parent && (info.style & WS_CHILD)
                                              : TopLevel(info);
    if (!among || (class_name_or_atom && !EqualNoCase(info.class_name, wanted))) return info.window == after;
    return info.window == after || !title || EqualNoCase(info.title, title);
  };
  bool passed = after == nullptr;
  for (const WindowInfo& info : WindowTable::Current()->List(fits)) {
    if (passed) return info.window;
    passed = info.window == after;
  }
  SetLastError(passed ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_WINDOW_HANDLE);
  return nullptr;
}

BOOL EnumWindows(WNDENUMPROC visit, LPARAM parameter) {
  if (!visit) return Fail(ERROR_INVALID_PARAMETER);
  return Visit(WindowTable::Current()->List(TopLevel), visit, parameter);
}

BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC visit, LPARAM parameter) {
  if (!visit) return Fail(ERROR_INVALID_PARAMETER);
  const auto windows =
      WindowTable::Current()->List([&](const WindowInfo& info) { return TopLevel(info) && info.thread == thread; });
  return !windows.empty() && Visit(windows, visit, parameter);
}

BOOL ShowWindow(HWND window, int show) {
  const auto table = WindowTable::Current();
  const auto info = table->Find(window);
  if (!info) return Fail(ERROR_INVALID_WINDOW_HANDLE);
  const bool was_visible = (info->style & WS_VISIBLE) != 0;
  const ShowChange change = ChangeOf(show);
  const auto visible = static_cast<DWORD>(WS_VISIBLE);
  // A window of another thread hears of it when it listens, so that showing a hung one does not hang the caller.
  if (was_visible != change.visible) SendNotifyMessageW(window, WM_SHOWWINDOW, change.visible, 0);
  table->SetStyle(window, change.clear | visible, change.set | (change.visible ? visible : 0));
  if (change.activates && TopLevel(*info)) Activate(window);
  if (!change.visible && table->Foreground() == window) table->SetForeground(nullptr);
  return was_visible;
}

HWND GetForegroundWindow() { return WindowTable::Current()->Foreground(); }

BOOL SetForegroundWindow(HWND window) { return Activate(window); }

BOOL BringWindowToTop(HWND window) {
  return WindowTable::Current()->Raise(window) ? TRUE : Fail(ERROR_INVALID_WINDOW_HANDLE);
}

HWND GetActiveWindow() {
  const auto queue = ThreadQueue::Mine();
  std::scoped_lock lock(WaitLock());
  return queue->active;
}

HWND SetActiveWindow(HWND window) {
  const HWND former = GetActiveWindow();
  const auto local = FindLocalWindow(window);
  if (window && (!local || local->queue->thread != GetCurrentThreadId())) {
    Fail(IsWindow(window) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
  }
  if (window) Activate(window);
  return former;
}

// Input has no state to share here; what remains is whether the system would have taken it.
BOOL AttachThreadInput(DWORD attach, DWORD to, BOOL) {
  if (attach == to || !ThreadHasQueue(attach) || !ThreadHasQueue(to)) return Fail(ERROR_INVALID_PARAMETER);
  return TRUE;
}
