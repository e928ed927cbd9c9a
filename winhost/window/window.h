// The windows and window classes of this process: what the machine's table does not hold.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "winhost/window/rect_set.h"
#include "winhost/window/picture.h"
#include "winhost/window/thread_queue.h"
#include "winhost/window/window_table.h"

namespace winhost {

struct WindowClass {
  WNDCLASSEXW values{};  // its texts are not to be read from here
  std::u16string name;
  ATOM atom = 0;
  int windows = 0;
};

// Members but the first three are guarded by WaitLock().
struct Window {
  HWND handle = nullptr;
  std::shared_ptr<WindowTable> table;
  std::shared_ptr<ThreadQueue> queue;
  std::shared_ptr<WindowClass> window_class;
  WNDPROC procedure = nullptr;
  HINSTANCE instance = nullptr;
  LONG_PTR id = 0;
  LONG_PTR user_data = 0;
  std::vector<BYTE> extra;
  std::map<std::u16string, HANDLE> properties;  // names in lower case
  HICON icons[2] = {};                          // ICON_SMALL, ICON_BIG
  std::optional<ULONG> touch;                   // registered for WM_TOUCH, with these flags

  RectSet update;               // what is to be painted, in client coordinates
  bool erase = false;           // … and its background first
  bool internal_paint = false;  // WM_PAINT is wanted although nothing has to be painted
  std::shared_ptr<Picture> picture;
  std::optional<RectSet> shape;  // window coordinates; none: the whole window
  Layer layer;
  RECT restored{};              // where it goes back to from minimised or maximised
  bool from_maximised = false;  // … it was maximised before it was minimised
  bool sized = false;           // it has had its first WM_SIZE
};

// A window of this process; null when it is none.
std::shared_ptr<Window> FindLocalWindow(HWND window);
// The windows of this process that `wanted` says yes to, asked with WaitLock held.
std::vector<std::shared_ptr<Window>> LocalWindows(const std::function<bool(const Window&)>& wanted);
// Whether it is this process's and this thread's. Otherwise null with the last error, ERROR_INVALID_WINDOW_HANDLE or
// ERROR_ACCESS_DENIED.
std::shared_ptr<Window> MyWindow(HWND window);
void EnterLocalWindow(std::shared_ptr<Window> window);
// Takes it out of this process and off the machine's table, with its messages and timers.
void DropLocalWindow(HWND window);
// All that belong to a thread, without a message: for a thread that ends.
void DropWindowsOf(const ThreadQueue& queue);

std::shared_ptr<WindowClass> FindWindowClass(LPCWSTR name_or_atom, HINSTANCE instance);
// A class name given as text or atom; empty for an atom that stands for nothing.
std::u16string ClassText(LPCWSTR name_or_atom);

// Calls the procedure of a window of the calling thread; 0 when there is none.
LRESULT CallWindow(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// Writes a posted message to the journal "messages" if it is one that programs agree on among themselves.
void JournalPosted(const WindowInfo& window, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace winhost
