// How many graphics objects the process holds, for tests that look for leaks. Stock and other permanent objects do not
// count. Any thread.
#pragma once

namespace winhost {

enum class ObjectKind {
  DeviceContext,
  Bitmap,
  Font,
  Brush,
  Region,
  GpGraphics,
  GpBrush,
  GpPen,
  GpPath,
  GpImage,
  GpImageAttributes,
  GpFont,
  GpStringFormat,
  Count,
};

int CountObjects(ObjectKind kind);
int CountAllObjects();

}  // namespace winhost
