#include "lumo/core/library.h"

#include "lumo/core/dpi.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/timers.h"
#include "lumo/render/gdip.h"
#include "lumo/render/text_style.h"

#include <commctrl.h>

namespace lumo {
namespace {

ULONG_PTR gdiplus_token = 0;

void StartGdiplus() {
  if (gdiplus_token) return;
  Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&gdiplus_token, &input, nullptr) != Gdiplus::Ok) gdiplus_token = 0;
}

void StopGdiplus() {
  ReleaseTextCaches();
  if (gdiplus_token) Gdiplus::GdiplusShutdown(gdiplus_token);
  gdiplus_token = 0;
}

void StartCommonControls() {
  INITCOMMONCONTROLSEX classes = {};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_BAR_CLASSES;  // tooltips among them
  InitCommonControlsEx(&classes);
}

}  // namespace

void InitLibrary(const ResourceSource& resources, bool dpi_aware, void (*load_texts)()) {
  SetResourceSource(&resources);
  if (dpi_aware) DeclareDpiAware();
  LoadGlobalResources();
  if (load_texts) load_texts();
  StartGdiplus();
  StartCommonControls();
  StartTimers();
}

void ShutdownLibrary() {
  ReleaseFonts();
  StopGdiplus();
  StopTimers();
  SetResourceSource(nullptr);
}

}  // namespace lumo
