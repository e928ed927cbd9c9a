#include "app/window_registry.h"

#include "base/lock.h"

#include <vector>

namespace vanta {
namespace {

constinit Lazy<std::vector<HWND>> windows;

}  // namespace

void RegisterWindow(HWND window) { windows.Get().push_back(window); }

void UnregisterWindow(HWND window) { std::erase(windows.Get(), window); }

void DestroyRegisteredWindows() {
  // A window's WM_DESTROY may unregister it and others.
  while (!windows.Get().empty()) {
    const HWND window = windows.Get().back();
    windows.Get().pop_back();
    DestroyWindow(window);
  }
}

}  // namespace vanta
