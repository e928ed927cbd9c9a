#include "winhost/gdiplus/string_format.h"

namespace winhost {

std::shared_ptr<StringFormat> StringFormat::Copy() const {
  auto copy = std::make_shared<StringFormat>();
  copy->flags = flags;
  copy->align = align;
  copy->line_align = line_align;
  copy->trimming = trimming;
  copy->margin = margin;
  return copy;
}

namespace {

std::shared_ptr<StringFormat> Typographic() {
  auto format = std::make_shared<StringFormat>();
  format->flags =
      Gdiplus::StringFormatFlagsNoFitBlackBox | Gdiplus::StringFormatFlagsLineLimit | Gdiplus::StringFormatFlagsNoClip;
  format->trimming = Gdiplus::StringTrimmingNone;
  format->margin = 0;
  return format;
}

Gdiplus::GpStringFormat* Enter(std::shared_ptr<StringFormat> format) {
  return reinterpret_cast<Gdiplus::GpStringFormat*>(EnterObject(std::move(format), true));
}

template <class Value>
Gdiplus::GpStatus Set(Gdiplus::GpStringFormat* handle, Value StringFormat::*member, Value value, Value last) {
  const auto format = GraphicsObjectAs<StringFormat>(handle);
  if (!format || value < Value{} || value > last) return Gdiplus::InvalidParameter;
  (*format).*member = value;
  return Gdiplus::Ok;
}

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;
using winhost::StringFormat;

GpStatus GdipStringFormatGetGenericTypographic(GpStringFormat** format) {
  if (!format) return InvalidParameter;
  if (!winhost::GdiplusStarted()) return GdiplusNotInitialized;
  static GpStringFormat* const shared = winhost::Enter(winhost::Typographic());
  *format = shared;
  return Ok;
}

GpStatus GdipCloneStringFormat(const GpStringFormat* handle, GpStringFormat** clone) {
  const auto format = GraphicsObjectAs<StringFormat>(handle);
  return format && clone ? winhost::Hand(format->Copy(), clone) : InvalidParameter;
}

GpStatus GdipDeleteStringFormat(GpStringFormat* format) {
  if (winhost::IsPermanentObject(format) && GraphicsObjectAs<StringFormat>(format)) return Ok;
  return winhost::Drop<StringFormat>(format);
}

GpStatus GdipSetStringFormatFlags(GpStringFormat* handle, INT flags) {
  const auto format = GraphicsObjectAs<StringFormat>(handle);
  if (!format) return InvalidParameter;
  format->flags = flags;
  return Ok;
}

GpStatus GdipSetStringFormatAlign(GpStringFormat* format, StringAlignment align) {
  return winhost::Set(format, &StringFormat::align, align, StringAlignmentFar);
}
GpStatus GdipSetStringFormatLineAlign(GpStringFormat* format, StringAlignment align) {
  return winhost::Set(format, &StringFormat::line_align, align, StringAlignmentFar);
}
GpStatus GdipSetStringFormatTrimming(GpStringFormat* format, StringTrimming trimming) {
  return winhost::Set(format, &StringFormat::trimming, trimming, StringTrimmingEllipsisPath);
}

}  // namespace Gdiplus::DllExports
