// What text is drawn with: fonts and string formats of GDI+, each made once.
//
// UI thread only.
#pragma once

#include "lumo/core/types.h"
#include "lumo/render/gdip.h"

namespace lumo {

// The looks of a string format that DT_ flags ask for. Pure.
struct TextStyle {
  bool ellipsis = false;
  int flags = 0;                                  // StringFormatFlags
  int align = Gdiplus::StringAlignmentNear;       // across
  int line_align = Gdiplus::StringAlignmentNear;  // down
};
TextStyle StyleOf(unsigned draw_text_flags, bool line_limit);

// A typographic format with that style; null when GDI+ refuses. Stays the cache's.
const Gdiplus::GpStringFormat* FormatFor(const TextStyle& style);

// The GDI+ font of a GDI font, made through its LOGFONT, else of the font selected into `dc`. Null when GDI+ has no
// such font either. Stays the cache's; a handle that is used again for another font is noticed.
const Gdiplus::GpFont* FontFor(HDC dc, HFONT font);

// Of a colour's text with an alpha over it: fully opaque text is drawn as 254. Pure.
DWORD TextColor(DWORD color, BYTE alpha);

// Drops all fonts and formats. Before GdiplusShutdown.
void ReleaseTextCaches();

}  // namespace lumo
