// What a path covers of each pixel, kept on the drawing thread: the same few outlines of controls are drawn again and
// again, and working out their coverage costs far more than laying it down.
//
// What is drawn is what Cairo draws without this. Forgotten are outlines that have not been drawn while the younger
// half of what is kept filled up.
#pragma once

#include "winhost/gdi/canvas.h"
#include "winhost/gdiplus/path.h"
#include "winhost/gdiplus/pen.h"

namespace winhost {

// Lays the context's source down through the path, filled where `pen` is null and else along its outline. False, and
// nothing is drawn, for paths that are large, turned or scaled.
bool PaintKeptOutline(cairo_t* context, const Path& path, const Pen* pen);

}  // namespace winhost
