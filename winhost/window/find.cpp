// Looking for windows.
#include <windows.h>

#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/window/live_process.h"
#include "winhost/window/geometry.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

// What top-level windows FindWindowW looks through.
bool TopLevel(const WindowInfo& info) { return info.top_level(); }

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

// Each process has one state of keys and pointer already; what remains is whether the system would have taken it.
BOOL AttachThreadInput(DWORD attach, DWORD to, BOOL) {
  if (attach == to || !ThreadHasQueue(attach) || !ThreadHasQueue(to)) return Fail(ERROR_INVALID_PARAMETER);
  return TRUE;
}

// The desktop is no window that messages can be sent to; its handle is 2 in every process, which no window has.
HWND GetDesktopWindow() { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(2)); }

HWND GetWindow(HWND window, UINT which) {
  const auto table = WindowTable::Current();
  const auto info = table->Find(window);
  if (!info) {
    Fail(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
  }
  if (which == GW_OWNER) return info->child() ? nullptr : info->parent;
  const HWND parent = which == GW_CHILD ? window : info->parent;
  const auto windows = table->List([&](const WindowInfo& each) {
    return which == GW_CHILD || info->child() ? each.child() && each.parent == parent
                                              : each.message_only == info->message_only && !each.child();
  });
  const auto here = std::ranges::find_if(windows, [&](const WindowInfo& each) { return each.window == window; });
  switch (which) {
    case GW_CHILD:
    case GW_HWNDFIRST:
      return windows.empty() ? nullptr : windows.front().window;
    case GW_HWNDLAST:
      return windows.empty() ? nullptr : windows.back().window;
    case GW_HWNDNEXT:
      return here == windows.end() || here + 1 == windows.end() ? nullptr : (here + 1)->window;
    case GW_HWNDPREV:
      return here == windows.end() || here == windows.begin() ? nullptr : (here - 1)->window;
    default:
      Fail(ERROR_INVALID_PARAMETER);
      return nullptr;
  }
}

HWND GetAncestor(HWND window, UINT which) {
  auto info = WindowTable::Current()->Find(window);
  if (!info) {
    Fail(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
  }
  if (which == GA_PARENT) return info->child() ? info->parent : GetDesktopWindow();
  WindowInfo top = TopOf(*info);
  while (which == GA_ROOTOWNER && top.parent) {
    const auto owner = WindowTable::Current()->Find(top.parent);
    if (!owner) break;
    top = TopOf(*owner);
  }
  return top.window;
}

BOOL IsChild(HWND parent, HWND window) {
  auto info = WindowTable::Current()->Find(window);
  while (info && info->child()) {
    if (info->parent == parent) return TRUE;
    info = WindowTable::Current()->Find(info->parent);
  }
  return FALSE;
}

HWND GetDlgItem(HWND parent, int id) {
  for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (GetDlgCtrlID(child) == id) return child;
  }
  Fail(ERROR_NOT_FOUND);
  return nullptr;
}

int GetDlgCtrlID(HWND window) { return static_cast<int>(GetWindowLongPtrW(window, GWLP_ID)); }
