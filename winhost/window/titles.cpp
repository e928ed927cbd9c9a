#include "winhost/window/titles.h"

#include <algorithm>

#include "winhost/window/display.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

// A title in a resource-number form ("\xFFFF" and a number) is none of ours.
std::u16string TitleText(LPCWSTR title) { return title && *title != 0xFFFF ? std::u16string(title) : std::u16string(); }

std::optional<WindowInfo> Find(HWND window) {
  auto info = WindowTable::Current()->Find(window);
  if (!info) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return info;
}

}  // namespace

bool SetTitle(HWND window, LPCWSTR title) {
  if (!WindowTable::Current()->SetTitle(window, TitleText(title))) return false;
  if (FindLocalWindow(window)) Display::Current().Changed(window);
  return true;
}

int CopyText(const std::u16string& text, LPWSTR out, int capacity) {
  if (!out || capacity <= 0) return 0;
  const std::size_t count = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
  text.copy(out, count);
  out[count] = 0;
  return static_cast<int>(count);
}

}  // namespace winhost

using namespace winhost;

BOOL SetWindowTextW(HWND window, LPCWSTR text) {
  if (FindLocalWindow(window)) return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
  return Find(window) && SetTitle(window, text);
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
  if (!name || capacity <= 0) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const auto info = Find(window);
  return info ? CopyText(info->class_name, name, capacity) : 0;
}
