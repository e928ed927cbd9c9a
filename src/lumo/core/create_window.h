// The application's way to a window.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

class lumowin;

// Creates the window of a layout: `folder` below the theme folder (a separator is added when it has none at its end),
// `layout_file` in it. `handler` is told of its events and not owned. Null when it cannot be created; nothing is left
// then but the handler, which the caller destroys. No `rect` means position and size 0: the layout gives the size.
HWND CreateSkinWindow(const WCHAR* folder, const WCHAR* layout_file, lumowin* handler, HWND parent, const WCHAR* title,
                      DWORD style, DWORD ex_style, const RECT* rect);

}  // namespace lumo
