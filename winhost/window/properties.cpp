// Named values that programs keep with windows. They stay with the window's own process.
#include <windows.h>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/text.h"
#include "winhost/window/window.h"

using namespace winhost;

namespace {

std::shared_ptr<Window> Local(HWND handle) {
  auto window = FindLocalWindow(handle);
  if (!window) SetLastError(WindowTable::Current()->Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  return window;
}

std::u16string KeyOf(LPCWSTR name_or_atom) {
  std::u16string name = name_or_atom ? ClassText(name_or_atom) : std::u16string();
  for (char16_t& each : name) {
    if (each >= 'A' && each <= 'Z') each = static_cast<char16_t>(each - 'A' + 'a');
  }
  return name;
}

}  // namespace

BOOL SetPropW(HWND handle, LPCWSTR name_or_atom, HANDLE value) {
  const auto window = Local(handle);
  const std::u16string name = KeyOf(name_or_atom);
  if (!window) return FALSE;
  if (name.empty()) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  std::scoped_lock lock(WaitLock());
  window->properties[name] = value;
  return TRUE;
}

HANDLE GetPropW(HWND handle, LPCWSTR name_or_atom) {
  const auto window = Local(handle);
  const std::u16string name = KeyOf(name_or_atom);
  if (!window) return nullptr;
  std::scoped_lock lock(WaitLock());
  const auto found = window->properties.find(name);
  return found == window->properties.end() ? nullptr : found->second;
}

HANDLE RemovePropW(HWND handle, LPCWSTR name_or_atom) {
  const HANDLE value = GetPropW(handle, name_or_atom);
  const auto window = FindLocalWindow(handle);
  const std::u16string name = KeyOf(name_or_atom);
  if (!window) return nullptr;
  std::scoped_lock lock(WaitLock());
  window->properties.erase(name);
  return value;
}
