// GDI+: the types behind its handles. They have the SDK's bases, so that call sites convert as they do there, and
// nothing inside: no object of these types exists, a pointer is only a number.
#pragma once

#include <gdiplusenums.h>
#include <gdiplustypes.h>

namespace Gdiplus {

using GpPoint = Point;
using GpPointF = PointF;
using GpRect = Rect;
using GpRectF = RectF;
using GpFillMode = FillMode;
using GpMatrixOrder = MatrixOrder;
using GpUnit = Unit;
using GpWrapMode = WrapMode;

class GpBrush {};
class GpFont {};
class GpGraphics {};
class GpImage {};
class GpImageAttributes {};
class GpPath {};
class GpPen {};
class GpStringFormat {};

class GpBitmap : public GpImage {};
class GpLineGradient : public GpBrush {};
class GpSolidFill : public GpBrush {};

}  // namespace Gdiplus
