// GDI+'s flat functions and the owners of what they make.
//
// Include this instead of <gdiplus.h>: the order of its headers matters. Nothing here is pulled into namespace lumo,
// where Image, Font, Color and Region would collide. UI thread only, between GdiplusStartup and GdiplusShutdown.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

#include "base/unique.h"

namespace lumo {

namespace gdip = Gdiplus::DllExports;

using UniqueGraphics = vanta::Unique<Gdiplus::GpGraphics*, &gdip::GdipDeleteGraphics>;
using UniqueGpBrush = vanta::Unique<Gdiplus::GpBrush*, &gdip::GdipDeleteBrush>;
using UniqueGpPen = vanta::Unique<Gdiplus::GpPen*, &gdip::GdipDeletePen>;
using UniqueGpPath = vanta::Unique<Gdiplus::GpPath*, &gdip::GdipDeletePath>;
using UniqueGpImage = vanta::Unique<Gdiplus::GpImage*, &gdip::GdipDisposeImage>;
using UniqueGpFont = vanta::Unique<Gdiplus::GpFont*, &gdip::GdipDeleteFont>;
using UniqueGpFormat = vanta::Unique<Gdiplus::GpStringFormat*, &gdip::GdipDeleteStringFormat>;
using UniqueGpAttributes = vanta::Unique<Gdiplus::GpImageAttributes*, &gdip::GdipDisposeImageAttributes>;

// Keeps the last status that was not Ok, for a debugger's eye; drawing goes on whatever it says.
void Record(Gdiplus::GpStatus status);
Gdiplus::GpStatus LastGdipFailure();

// Graphics on a device context, anti-aliased; pixels are centred on whole coordinates unless `half_pixels`, where they
// lie between them. The context's origin and clip region are those of the moment of making. Null when GDI+ refuses.
UniqueGraphics MakeGraphics(HDC dc, bool half_pixels);

UniqueGpBrush MakeSolidBrush(DWORD argb);
// From `from` to `to` over the rectangle, repeating outside it. Null for an empty rectangle or an unknown mode.
UniqueGpBrush MakeGradientBrush(const RECT& rect, DWORD from, DWORD to, int mode);
// Width in device pixels.
UniqueGpPen MakePen(DWORD argb, float width);

}  // namespace lumo
