// DPI awareness and the scales that follow from it.
#pragma once

#include <windows.h>

namespace lumo {

// Asks for system DPI awareness: Shcore.dll's call first, user32.dll's second; systems before Vista count as aware.
// Sets the process-wide scale: from the system's DPI when aware, else 100. The result is whether the process is aware.
bool DeclareDpiAware();

// The system's DPI: the effective one of the monitor at (1, 1) from Windows 8 on, 96 where that fails; before, the
// screen's own.
int ReadSystemDpi();

// 96 dpi = 100 percent.
inline int ScaleOfDpi(int dpi) { return MulDiv(dpi, 100, 96); }

}  // namespace lumo
