// The windows that this process has made, so that none outlives its shutdown. UI thread only.
#pragma once

#include <windows.h>

namespace vanta {

void RegisterWindow(HWND window);
void UnregisterWindow(HWND window);
// Destroys what is still registered, the newest first.
void DestroyRegisteredWindows();

}  // namespace vanta
