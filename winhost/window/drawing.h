// What the drawing library brings to windows. A program that draws links it, and it fills this in before main; in any
// other program windows are there as ever, and nobody sees that they stay empty.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <vector>

namespace winhost {

class Display;

struct Drawing {
  // BeginPaint and EndPaint with nothing between.
  void (*paint_nothing)(HWND window) = nullptr;
  // Fills the DC's clip with the class's background brush, which may be a system colour's number plus one.
  bool (*erase)(HDC context, HBRUSH brush) = nullptr;
  std::optional<std::vector<RECT>> (*region_rects)(HRGN region) = nullptr;
  bool (*fill_region)(HRGN region, const std::vector<RECT>& rects) = nullptr;
  void (*delete_region)(HRGN region) = nullptr;
  // Registers the window classes of the common controls that there are.
  void (*register_controls)() = nullptr;
  // The class CLSID_FileOpenDialog.
  HRESULT (*make_file_open_dialog)(REFIID iid, void** object) = nullptr;
  // The X display that the environment names; null, with a line on standard error, when there is none.
  std::unique_ptr<Display> (*open_x11)() = nullptr;
};

Drawing& TheDrawing();

}  // namespace winhost
