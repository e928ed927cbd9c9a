// The DPI of processes and monitors, which Windows 8.1 and later export from shcore.dll: products look the functions up
// at run time. To fail: the fault plan, "SetProcessDpiAwareness", "GetDpiForMonitor" (an HRESULT).
#pragma once

#include <windef.h>

enum PROCESS_DPI_AWARENESS {
  PROCESS_DPI_UNAWARE = 0,
  PROCESS_SYSTEM_DPI_AWARE = 1,
  PROCESS_PER_MONITOR_DPI_AWARE = 2,
};

enum MONITOR_DPI_TYPE {
  MDT_EFFECTIVE_DPI = 0,
  MDT_ANGULAR_DPI = 1,
  MDT_RAW_DPI = 2,
  MDT_DEFAULT = MDT_EFFECTIVE_DPI,
};

// Once a process; later calls answer E_ACCESSDENIED.
HRESULT WINAPI SetProcessDpiAwareness(PROCESS_DPI_AWARENESS awareness);
HRESULT WINAPI GetDpiForMonitor(HMONITOR monitor, MONITOR_DPI_TYPE type, UINT* x, UINT* y);
