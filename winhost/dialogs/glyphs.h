// The dialogs' small pictures, drawn to any size.
#pragma once

#include <windows.h>

namespace winhost {

enum class Glyph { Folder, Drive, Removable, Disc, Network, Computer, Up, Close };

// Fits it into the box, which is taken as 16 units wide and high. `ink` is for those that are mere lines.
void DrawGlyph(HDC context, Glyph glyph, const RECT& box, COLORREF ink);

}  // namespace winhost
