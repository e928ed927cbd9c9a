// String formats.
#pragma once

#include "winhost/gdiplus/handles.h"

namespace winhost {

struct StringFormat final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::GpStringFormat;
  StringFormat() : GraphicsObject(kKind) {}
  std::shared_ptr<StringFormat> Copy() const;

  INT flags = 0;
  Gdiplus::StringAlignment align = Gdiplus::StringAlignmentNear;
  Gdiplus::StringAlignment line_align = Gdiplus::StringAlignmentNear;
  Gdiplus::StringTrimming trimming = Gdiplus::StringTrimmingCharacter;
  double margin = 1.0 / 6;  // ems left free on either side of a line
};

}  // namespace winhost
