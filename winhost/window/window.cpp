#include "winhost/window/window.h"

#include <algorithm>
#include <unordered_map>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"
#include "winhost/window/drawing.h"
#include "winhost/window/update.h"

namespace winhost {
namespace {

// Both guarded by WaitLock.
struct Local {
  std::unordered_map<HWND, std::shared_ptr<Window>> windows;
  std::vector<std::shared_ptr<WindowClass>> classes;
};

Local& TheLocal() {
  static auto* local = new Local;  // windows of threads that end last still look here
  return *local;
}

bool Fail(DWORD error) {
  SetLastError(error);
  return false;
}

// A class registered for no module, or asked for by none, fits every module of the process.
bool Fits(const WindowClass& known, const std::u16string& name, HINSTANCE instance) {
  const HINSTANCE owner = known.values.hInstance;
  return EqualNoCase(known.name, name) &&
         (!owner || !instance || owner == instance || (known.values.style & CS_GLOBALCLASS));
}

std::shared_ptr<WindowClass> KnownClass(const std::u16string& name, HINSTANCE instance) {
  std::scoped_lock lock(WaitLock());
  const auto& classes = TheLocal().classes;
  const auto found = std::ranges::find_if(classes, [&](const auto& known) { return Fits(*known, name, instance); });
  return found == classes.end() ? nullptr : *found;
}

}  // namespace

std::shared_ptr<Window> FindLocalWindow(HWND window) {
  std::scoped_lock lock(WaitLock());
  const auto found = TheLocal().windows.find(window);
  return found == TheLocal().windows.end() ? nullptr : found->second;
}

std::vector<std::shared_ptr<Window>> LocalWindows(const std::function<bool(const Window&)>& wanted) {
  std::scoped_lock lock(WaitLock());
  std::vector<std::shared_ptr<Window>> found;
  for (const auto& [handle, window] : TheLocal().windows) {
    if (wanted(*window)) found.push_back(window);
  }
  return found;
}

std::shared_ptr<Window> MyWindow(HWND handle) {
  auto window = FindLocalWindow(handle);
  if (window && window->queue->thread == GetCurrentThreadId()) return window;
  SetLastError(WindowTable::Current()->Find(handle) ? ERROR_ACCESS_DENIED : ERROR_INVALID_WINDOW_HANDLE);
  return nullptr;
}

HWND WindowToPaint(const ThreadQueue& queue, const MessageFilter& filter) {
  for (const auto& [handle, window] : TheLocal().windows) {
    if (window->queue.get() != &queue || (window->update.Empty() && !window->internal_paint)) continue;
    if (filter.Admits({handle, WM_PAINT, 0, 0, 0, {}})) return handle;
  }
  return nullptr;
}

void EnterLocalWindow(std::shared_ptr<Window> window) {
  std::scoped_lock lock(WaitLock());
  ++window->window_class->windows;
  TheLocal().windows.emplace(window->handle, std::move(window));
}

void DropLocalWindow(HWND handle) {
  std::shared_ptr<Window> window;
  {
    std::scoped_lock lock(WaitLock());
    const auto found = TheLocal().windows.find(handle);
    if (found == TheLocal().windows.end()) return;
    window = std::move(found->second);
    TheLocal().windows.erase(found);
    --window->window_class->windows;
    window->queue->Forget(handle);
  }
  window->table->Remove(handle);
}

void DropWindowsOf(const ThreadQueue& queue) {
  std::vector<HWND> mine;
  {
    std::scoped_lock lock(WaitLock());
    for (const auto& [handle, window] : TheLocal().windows) {
      if (window->queue.get() == &queue) mine.push_back(handle);
    }
  }
  for (const HWND window : mine) DropLocalWindow(window);
}

std::u16string ClassText(LPCWSTR name_or_atom) {
  if (!IS_INTRESOURCE(name_or_atom)) return name_or_atom;
  return WindowTable::Current()->AtomText(static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name_or_atom)));
}

std::shared_ptr<WindowClass> FindWindowClass(LPCWSTR name_or_atom, HINSTANCE instance) {
  if (!name_or_atom) return nullptr;
  const std::u16string name = ClassText(name_or_atom);
  if (auto known = KnownClass(name, instance)) return known;
  if (!EqualNoCase(name, u"tooltips_class32") || !TheDrawing().register_controls) return nullptr;
  TheDrawing().register_controls();
  return KnownClass(name, instance);
}

LRESULT CallWindow(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
  const auto window = FindLocalWindow(handle);
  WNDPROC procedure = nullptr;
  if (window) {
    std::scoped_lock lock(WaitLock());
    procedure = window->procedure;
  }
  return procedure ? procedure(handle, message, wparam, lparam) : 0;
}

}  // namespace winhost

using namespace winhost;

ATOM RegisterClassExW(const WNDCLASSEXW* values) {
  if (!values || values->cbSize != sizeof(WNDCLASSEXW) || !values->lpfnWndProc || !values->lpszClassName ||
      values->cbWndExtra < 0 || values->cbClsExtra < 0) {
    return static_cast<ATOM>(Fail(ERROR_INVALID_PARAMETER));
  }
  const std::u16string name = ClassText(values->lpszClassName);
  if (const auto error = PlannedFault("RegisterClassExW", name)) return static_cast<ATOM>(Fail(*error));
  const ATOM atom = WindowTable::Current()->AtomOf(name);
  if (atom == 0) return static_cast<ATOM>(Fail(ERROR_INVALID_PARAMETER));
  std::scoped_lock lock(WaitLock());
  auto& classes = TheLocal().classes;
  if (std::ranges::any_of(classes, [&](const auto& known) { return Fits(*known, name, values->hInstance); })) {
    return static_cast<ATOM>(Fail(ERROR_CLASS_ALREADY_EXISTS));
  }
  auto made = std::make_shared<WindowClass>(WindowClass{*values, name, atom, 0});
  made->values.lpszClassName = made->values.lpszMenuName = nullptr;  // the caller's memory
  classes.push_back(std::move(made));
  return atom;
}

BOOL UnregisterClassW(LPCWSTR name_or_atom, HINSTANCE instance) {
  const auto known = FindWindowClass(name_or_atom, instance);
  if (!known) return Fail(ERROR_CLASS_DOES_NOT_EXIST);
  std::scoped_lock lock(WaitLock());
  if (known->windows > 0) return Fail(ERROR_CLASS_HAS_WINDOWS);
  std::erase(TheLocal().classes, known);
  return TRUE;
}

BOOL GetClassInfoExW(HINSTANCE instance, LPCWSTR name_or_atom, WNDCLASSEXW* values) {
  if (!values) return Fail(ERROR_INVALID_PARAMETER);
  const auto known = FindWindowClass(name_or_atom, instance);
  if (!known) return Fail(ERROR_CLASS_DOES_NOT_EXIST);
  *values = known->values;
  values->lpszClassName = name_or_atom;
  return TRUE;
}
