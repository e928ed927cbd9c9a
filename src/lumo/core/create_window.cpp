#include "lumo/core/create_window.h"

#include "lumo/core/value_readers.h"
#include "lumo/core/window.h"

namespace lumo {

HWND CreateSkinWindow(const WCHAR* folder, const WCHAR* layout_file, lumowin* handler, HWND parent, const WCHAR* title,
                      DWORD style, DWORD ex_style, const RECT* rect) {
  auto* const window = new Window;
  const WeakRef<Window> alive(window);
  window->SetHandler(handler);
  window->SetResource(TextOf(folder), TextOf(layout_file));
  const HWND handle = window->Create(parent, title, style, ex_style, rect);
  if (handle) return handle;
  // A creation that failed late has already sent the final message, which deletes the window.
  delete alive.Get();
  return nullptr;
}

}  // namespace lumo
