// GDI+: the flat functions. Each answers a status; out-parameters are written on success only.
#pragma once

#include <gdiplusgpstubs.h>

namespace Gdiplus::DllExports {

// Graphics: where to draw and how.
GpStatus WINAPI GdipCreateFromHDC(HDC dc, GpGraphics** graphics);
GpStatus WINAPI GdipDeleteGraphics(GpGraphics* graphics);
GpStatus WINAPI GdipSetSmoothingMode(GpGraphics* graphics, SmoothingMode mode);
GpStatus WINAPI GdipSetPixelOffsetMode(GpGraphics* graphics, PixelOffsetMode mode);
GpStatus WINAPI GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint);
// States hold modes and transform. Restoring drops the later states; an unknown state is InvalidParameter.
GpStatus WINAPI GdipSaveGraphics(GpGraphics* graphics, GraphicsState* state);
GpStatus WINAPI GdipRestoreGraphics(GpGraphics* graphics, GraphicsState state);
GpStatus WINAPI GdipTranslateWorldTransform(GpGraphics* graphics, REAL dx, REAL dy, GpMatrixOrder order);
GpStatus WINAPI GdipRotateWorldTransform(GpGraphics* graphics, REAL degrees, GpMatrixOrder order);
GpStatus WINAPI GdipResetWorldTransform(GpGraphics* graphics);

// Brushes. A rectangle's gradient repeats beyond it; WrapModeClamp and an empty extent are refused.
GpStatus WINAPI GdipCreateSolidFill(ARGB color, GpSolidFill** brush);
GpStatus WINAPI GdipCreateLineBrushFromRect(const GpRectF* rect, ARGB color1, ARGB color2, LinearGradientMode mode,
                                            GpWrapMode wrap, GpLineGradient** brush);
// Shares of the second colour at positions from 0 to 1; more than one needs the first at 0 and the last at 1.
GpStatus WINAPI GdipSetLineBlend(GpLineGradient* brush, const REAL* factors, const REAL* positions, INT count);
GpStatus WINAPI GdipDeleteBrush(GpBrush* brush);

// Pens. The brush is copied. Mitred joins, flat ends, centred on the outline.
GpStatus WINAPI GdipCreatePen1(ARGB color, REAL width, GpUnit unit, GpPen** pen);
GpStatus WINAPI GdipCreatePen2(GpBrush* brush, REAL width, GpUnit unit, GpPen** pen);
GpStatus WINAPI GdipDeletePen(GpPen* pen);

// Paths. Lines and arcs go on from where the open figure ended; angles in degrees, clockwise from the right.
GpStatus WINAPI GdipCreatePath(GpFillMode mode, GpPath** path);
GpStatus WINAPI GdipClosePathFigure(GpPath* path);
GpStatus WINAPI GdipAddPathLine(GpPath* path, REAL x1, REAL y1, REAL x2, REAL y2);
GpStatus WINAPI GdipAddPathArc(GpPath* path, REAL x, REAL y, REAL width, REAL height, REAL start, REAL sweep);
GpStatus WINAPI GdipAddPathRectangle(GpPath* path, REAL x, REAL y, REAL width, REAL height);
GpStatus WINAPI GdipAddPathEllipse(GpPath* path, REAL x, REAL y, REAL width, REAL height);
GpStatus WINAPI GdipDeletePath(GpPath* path);

// Shapes. Drawing or filling one without extent draws nothing and is no error.
GpStatus WINAPI GdipFillPath(GpGraphics* graphics, GpBrush* brush, GpPath* path);
GpStatus WINAPI GdipDrawPath(GpGraphics* graphics, GpPen* pen, GpPath* path);
GpStatus WINAPI GdipFillRectangleI(GpGraphics* graphics, GpBrush* brush, INT x, INT y, INT width, INT height);
GpStatus WINAPI GdipDrawRectangleI(GpGraphics* graphics, GpPen* pen, INT x, INT y, INT width, INT height);
GpStatus WINAPI GdipFillEllipse(GpGraphics* graphics, GpBrush* brush, REAL x, REAL y, REAL width, REAL height);
GpStatus WINAPI GdipDrawEllipse(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height);
GpStatus WINAPI GdipDrawLineI(GpGraphics* graphics, GpPen* pen, INT x1, INT y1, INT x2, INT y2);
GpStatus WINAPI GdipDrawArc(GpGraphics* graphics, GpPen* pen, REAL x, REAL y, REAL width, REAL height, REAL start,
                            REAL sweep);

// Images. Bytes that are no picture are InvalidParameter, a format that is not known UnknownImageFormat. A bitmap over
// the caller's pixels (`scan0`) reads and writes them as long as it lives; without, it is made of zeros.
GpStatus WINAPI GdipCreateBitmapFromStream(IStream* stream, GpBitmap** bitmap);
GpStatus WINAPI GdipCreateBitmapFromScan0(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0,
                                          GpBitmap** bitmap);
GpStatus WINAPI GdipDisposeImage(GpImage* image);
GpStatus WINAPI GdipGetImageWidth(GpImage* image, UINT* width);
GpStatus WINAPI GdipGetImageHeight(GpImage* image, UINT* height);
// An animated GIF has frames along FrameDimensionTime; every picture has one along FrameDimensionPage at least.
GpStatus WINAPI GdipImageGetFrameCount(GpImage* image, const GUID* dimension, UINT* count);
GpStatus WINAPI GdipImageSelectActiveFrame(GpImage* image, const GUID* dimension, UINT frame);
// Pictures of several frames have PropertyTagFrameDelay (LONGs, hundredths of a second) and PropertyTagLoopCount.
GpStatus WINAPI GdipGetPropertyItemSize(GpImage* image, PROPID id, UINT* bytes);
GpStatus WINAPI GdipGetPropertyItem(GpImage* image, PROPID id, UINT bytes, PropertyItem* item);
GpStatus WINAPI GdipImageRotateFlip(GpImage* image, RotateFlipType type);
// 32-bit formats. One lock at a time; changes made through a write lock are taken over when it ends.
GpStatus WINAPI GdipBitmapLockBits(GpBitmap* bitmap, const GpRect* rect, UINT flags, PixelFormat format,
                                   BitmapData* data);
GpStatus WINAPI GdipBitmapUnlockBits(GpBitmap* bitmap, BitmapData* data);

GpStatus WINAPI GdipCreateImageAttributes(GpImageAttributes** attributes);
GpStatus WINAPI GdipDisposeImageAttributes(GpImageAttributes* attributes);
GpStatus WINAPI GdipSetImageAttributesColorMatrix(GpImageAttributes* attributes, ColorAdjustType type, BOOL enable,
                                                  const ColorMatrix* colors, const ColorMatrix* grays,
                                                  ColorMatrixFlags flags);
GpStatus WINAPI GdipSetImageAttributesWrapMode(GpImageAttributes* attributes, WrapMode wrap, ARGB outside, BOOL clamp);
GpStatus WINAPI GdipDrawImageRectRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height,
                                       INT from_x, INT from_y, INT from_width, INT from_height, GpUnit unit,
                                       const GpImageAttributes* attributes, DrawImageAbort abort, VOID* data);
GpStatus WINAPI GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width, INT height);

// Fonts.
GpStatus WINAPI GdipCreateFontFromLogfontW(HDC dc, const LOGFONTW* logfont, GpFont** font);
// Of the font that is selected into the DC.
GpStatus WINAPI GdipCreateFontFromDC(HDC dc, GpFont** font);
GpStatus WINAPI GdipDeleteFont(GpFont* font);

// String formats. The generic one is shared: deleting it does nothing, changing it changes it for all.
GpStatus WINAPI GdipStringFormatGetGenericTypographic(GpStringFormat** format);
GpStatus WINAPI GdipCloneStringFormat(const GpStringFormat* format, GpStringFormat** clone);
GpStatus WINAPI GdipDeleteStringFormat(GpStringFormat* format);
GpStatus WINAPI GdipSetStringFormatFlags(GpStringFormat* format, INT flags);
GpStatus WINAPI GdipSetStringFormatAlign(GpStringFormat* format, StringAlignment align);
GpStatus WINAPI GdipSetStringFormatLineAlign(GpStringFormat* format, StringAlignment align);
GpStatus WINAPI GdipSetStringFormatTrimming(GpStringFormat* format, StringTrimming trimming);

// Text. -1 characters: up to the terminator. A layout rectangle without width or height is unlimited that way.
GpStatus WINAPI GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT chars, const GpFont* font,
                               const RectF* layout, const GpStringFormat* format, const GpBrush* brush);
// The box around the lines that would be drawn; the last two (may be null) get the characters and lines that fit.
GpStatus WINAPI GdipMeasureString(GpGraphics* graphics, const WCHAR* text, INT chars, const GpFont* font,
                                  const RectF* layout, const GpStringFormat* format, RectF* box, INT* fitted,
                                  INT* lines);

}  // namespace Gdiplus::DllExports
