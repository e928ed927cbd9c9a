#include "winhost/gdiplus/image_attributes.h"

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;
using winhost::ImageAttributes;

GpStatus GdipCreateImageAttributes(GpImageAttributes** attributes) {
  if (!attributes) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateImageAttributes")) return *status;
  return winhost::Hand(std::make_shared<ImageAttributes>(), attributes);
}

GpStatus GdipDisposeImageAttributes(GpImageAttributes* attributes) {
  return winhost::Drop<ImageAttributes>(attributes);
}

GpStatus GdipSetImageAttributesColorMatrix(GpImageAttributes* handle, ColorAdjustType type, BOOL enable,
                                           const ColorMatrix* colors, const ColorMatrix*, ColorMatrixFlags flags) {
  const auto attributes = GraphicsObjectAs<ImageAttributes>(handle);
  if (!attributes || (enable && !colors) || flags != ColorMatrixFlagsDefault) return InvalidParameter;
  if (type != ColorAdjustTypeDefault && type != ColorAdjustTypeBitmap) return InvalidParameter;
  attributes->colors = enable ? std::optional(*colors) : std::nullopt;
  return Ok;
}

GpStatus GdipSetImageAttributesWrapMode(GpImageAttributes* handle, WrapMode wrap, ARGB, BOOL) {
  const auto attributes = GraphicsObjectAs<ImageAttributes>(handle);
  if (!attributes || wrap < WrapModeTile || wrap > WrapModeClamp) return InvalidParameter;
  attributes->wrap = wrap;
  return Ok;
}

}  // namespace Gdiplus::DllExports
