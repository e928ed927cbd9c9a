// The one procedure of all library windows.
#pragma once

#include <windows.h>

namespace lumo {

// Expects the Window as creation parameter. Filter, handler and Window see a message in this order; the first that
// handles it answers, and DefWindowProcW gets the rest.
LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace lumo
