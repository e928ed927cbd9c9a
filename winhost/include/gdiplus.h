// GDI+ by its flat functions: types in Gdiplus, functions in Gdiplus::DllExports, as the SDK has them.
//
// Promises: shapes, gradients and text are antialiased as asked for; positions are exact to a fraction of a pixel.
// Colours and bitmap pixels are straight ARGB; what is drawn into a 32-bit DIB section is premultiplied with right
// alpha. PixelOffsetModeHalf and HighQuality put pixel edges at whole coordinates, the other modes pixel centres.
// Gradients mix straight colours at pixel centres. A graphics on a DC draws through the DC's clip region, origins and
// current bitmap as they are at the time of each call. Text is shaped without hinting, its glyphs at fractions of a
// pixel; grey antialiasing unless SingleBitPerPixel is asked for. Pictures: PNG, JPEG, GIF (frames and their delays)
// and BMP, decoded when they are loaded; at most 16,384 pixels a side and 64 Mi pixels in all frames together.
// Images are sampled bilinearly, with their neighbours inside the picture; outside it is transparent, unless the image
// attributes' wrap mode repeats the source rectangle. Handles are never reused at once: wrong and stale ones answer
// InvalidParameter. Before GdiplusStartup nothing can be made: GdiplusNotInitialized.
// Simplifies: units are pixels (UnitWorld and UnitPixel). ClearType is drawn in grey. Text
// contrast is not adjusted. Every face name stands for one font file (winhost/gdi/font_substitution.h). Right-to-left
// and vertical text, tab stops and hot-key underlines: not at all. EllipsisWord trims at characters.
// To fail: the fault plan, with GpStatus numbers: "GdiplusStartup", "GdipBitmapLockBits" and every function that makes
// something by its name, such as "GdipCreateBitmapFromStream" ("GdipCreatePen1" stands for both makers of pens).
#pragma once

#include <wingdi.h>
#include <objidl.h>

#include <gdiplustypes.h>

#include <gdiplusenums.h>

#include <gdiplusgpstubs.h>

#include <gdiplusinit.h>

#include <gdiplusflat.h>
