// What a class can be asked for through one of its windows.
#include <windows.h>

#include "winhost/kernel/waitable.h"
#include "winhost/window/window.h"

using namespace winhost;

namespace {

ULONG_PTR Read(const WindowClass& known, int index) {
  const WNDCLASSEXW& values = known.values;
  switch (index) {
    case GCL_STYLE:
      return values.style;
    case GCLP_HCURSOR:
      return reinterpret_cast<ULONG_PTR>(values.hCursor);
    case GCLP_HICON:
      return reinterpret_cast<ULONG_PTR>(values.hIcon);
    case GCLP_HICONSM:
      return reinterpret_cast<ULONG_PTR>(values.hIconSm);
    case GCLP_HBRBACKGROUND:
      return reinterpret_cast<ULONG_PTR>(values.hbrBackground);
    case GCLP_WNDPROC:
      return reinterpret_cast<ULONG_PTR>(values.lpfnWndProc);
    case GCLP_HMODULE:
      return reinterpret_cast<ULONG_PTR>(values.hInstance);
    case GCW_ATOM:
      return known.atom;
    case GCL_CBWNDEXTRA:
      return static_cast<ULONG_PTR>(values.cbWndExtra);
    default:
      SetLastError(ERROR_INVALID_INDEX);
      return 0;
  }
}

// The fields that may change while there are windows.
bool Write(WNDCLASSEXW& values, int index, LONG_PTR value) {
  switch (index) {
    case GCL_STYLE:
      values.style = static_cast<UINT>(value);
      return true;
    case GCLP_HCURSOR:
      values.hCursor = reinterpret_cast<HCURSOR>(value);
      return true;
    case GCLP_HICON:
      values.hIcon = reinterpret_cast<HICON>(value);
      return true;
    case GCLP_HICONSM:
      values.hIconSm = reinterpret_cast<HICON>(value);
      return true;
    case GCLP_HBRBACKGROUND:
      values.hbrBackground = reinterpret_cast<HBRUSH>(value);
      return true;
    case GCLP_WNDPROC:
      values.lpfnWndProc = reinterpret_cast<WNDPROC>(value);
      return true;
    default:
      return false;
  }
}

std::shared_ptr<Window> Local(HWND handle) {
  auto window = FindLocalWindow(handle);
  if (!window) SetLastError(WindowTable::Current()->Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  return window;
}

}  // namespace

ULONG_PTR GetClassLongPtrW(HWND handle, int index) {
  const auto window = Local(handle);
  if (!window) return 0;
  std::scoped_lock lock(WaitLock());
  return Read(*window->window_class, index);
}

ULONG_PTR SetClassLongPtrW(HWND handle, int index, LONG_PTR value) {
  const auto window = Local(handle);
  if (!window) return 0;
  std::scoped_lock lock(WaitLock());
  const ULONG_PTR former = Read(*window->window_class, index);
  if (!Write(window->window_class->values, index, value)) SetLastError(ERROR_INVALID_INDEX);
  return former;
}
