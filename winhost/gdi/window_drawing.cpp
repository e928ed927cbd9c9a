#include "winhost/gdi/window_drawing.h"

#include "winhost/dialogs/file_open_dialog.h"
#include "winhost/gdi/device_context.h"
#include "winhost/window/display.h"
#include "winhost/window/drawing.h"
#include "winhost/window/geometry.h"
#include "winhost/x11/x11_display.h"

namespace winhost {
namespace {

constexpr ULONG_PTR kSystemColors = 31;  // class backgrounds up to here are a colour's number plus one

void PaintNothing(HWND window) {
  PAINTSTRUCT paint;
  if (BeginPaint(window, &paint)) EndPaint(window, &paint);
}

bool Erase(HDC context, HBRUSH brush) {
  const auto number = reinterpret_cast<ULONG_PTR>(brush);
  if (number <= kSystemColors) brush = GetSysColorBrush(static_cast<int>(number) - 1);
  RECT clip;
  return GetClipBox(context, &clip) != RGN_ERROR && FillRect(context, &clip, brush);
}

bool FillRegion(HRGN region, const std::vector<RECT>& rects) {
  const HRGN made = MakeRegion(rects);
  const bool filled = made && CombineRgn(region, made, nullptr, RGN_COPY) != RGN_ERROR;
  if (made) DeleteObject(made);
  return filled;
}

void DeleteRegion(HRGN region) { DeleteObject(region); }

}  // namespace

bool RegisterWindowDrawing() {
  Drawing& drawing = TheDrawing();
  drawing.paint_nothing = PaintNothing;
  drawing.erase = Erase;
  drawing.region_rects = RegionRects;
  drawing.fill_region = FillRegion;
  drawing.delete_region = DeleteRegion;
  drawing.register_controls = RegisterTooltipClass;
  drawing.make_file_open_dialog = MakeDrawnFileOpenDialog;
  drawing.open_x11 = OpenX11Display;
  return true;
}

void Present(const Window& window, const RECT& part) {
  const auto info = window.table->Find(window.handle);
  if (!info) return;
  const WindowInfo top = TopOf(*info);
  const RECT inside = FrameOnScreen(*info), frame = FrameOnScreen(top);
  RECT shown = part;
  OffsetRect(&shown, inside.left - frame.left, inside.top - frame.top);
  Display::Current().Painted(top.window, shown);
}

}  // namespace winhost
