// What windows are called: their titles.
#pragma once

#include <windows.h>

#include <string>

namespace winhost {

// False when there is no such window. Null is the empty text.
bool SetTitle(HWND window, LPCWSTR title);
// Copies with a terminator, cut to the capacity; the characters without it.
int CopyText(const std::u16string& text, LPWSTR out, int capacity);

}  // namespace winhost
