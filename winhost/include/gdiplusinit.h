// GDI+: starting and ending it. Counted: every token is shut down once.
#pragma once

#include <gdiplustypes.h>

namespace Gdiplus {

struct GdiplusStartupInput {
  UINT32 GdiplusVersion;
  DebugEventProc DebugEventCallback;
  BOOL SuppressBackgroundThread;
  BOOL SuppressExternalCodecs;
  GdiplusStartupInput(DebugEventProc callback = nullptr, BOOL no_thread = FALSE, BOOL no_codecs = FALSE)
      : GdiplusVersion(1),
        DebugEventCallback(callback),
        SuppressBackgroundThread(no_thread),
        SuppressExternalCodecs(no_codecs) {}
};

struct GdiplusStartupOutput {
  void* NotificationHook = nullptr;
  void* NotificationUnhook = nullptr;
};

// UnsupportedGdiplusVersion for another version than 1; suppressing the background thread asks for an output.
GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input, GdiplusStartupOutput* output);
VOID WINAPI GdiplusShutdown(ULONG_PTR token);

}  // namespace Gdiplus
