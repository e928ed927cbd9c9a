// Output to a debugger: a line in the machine's journal "debugger".
#pragma once

#include <minwindef.h>

void WINAPI OutputDebugStringW(LPCWSTR text);
