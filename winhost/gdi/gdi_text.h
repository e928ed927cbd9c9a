// Text as GDI draws it: whole pixels, over the DC's background or through it.
#pragma once

#include "winhost/gdi/dc.h"
#include "winhost/gdi/text_layout.h"

namespace winhost {

// Draws with the DC's colours, the block's left top at device (x, y), within `clip` (device coordinates) and the DC's.
void DrawGdiText(const DeviceContext& dc, const TextBlock& block, const TextPlace& place, const Region* clip);

}  // namespace winhost
