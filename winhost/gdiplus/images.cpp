// Making images, and what can be asked of them.
#include <cstring>
#include <limits>

#include "winhost/gdiplus/decode.h"
#include "winhost/gdiplus/picture.h"

namespace winhost {
namespace {

constexpr std::size_t kMostFileBytes = 256 << 20;

std::vector<std::uint8_t> ReadAll(IStream& stream) {
  std::vector<std::uint8_t> bytes;
  constexpr ULONG kChunk = 64 << 10;
  for (ULONG done = kChunk; done > 0 && bytes.size() < kMostFileBytes;) {
    const std::size_t size = bytes.size();
    bytes.resize(size + kChunk);
    done = 0;
    if (FAILED(stream.Read(bytes.data() + size, kChunk, &done))) done = 0;
    bytes.resize(size + done);
  }
  return bytes;
}

std::shared_ptr<PictureObject> MakePicture(int width, int height, int stride, Gdiplus::PixelFormat format,
                                           BYTE* pixels) {
  auto picture = std::make_shared<PictureObject>(width, height, format);
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  picture->frames.emplace_back().pixels.resize(count, format & PixelFormatAlpha ? 0 : 0xFF000000);
  if (pixels) picture->foreign = ForeignPixels{pixels, stride};
  return picture;
}

bool AcceptableSize(INT width, INT height) {
  return width > 0 && height > 0 && width <= kMostPictureSide && height <= kMostPictureSide &&
         std::int64_t{width} * height <= kMostPicturePixels;
}

template <class Gp>
Gdiplus::GpStatus FromStream(IStream* stream, Gp** image) {
  if (!stream || !image) return Gdiplus::InvalidParameter;
  if (const auto status = RefuseMaking("GdipCreateBitmapFromStream")) return *status;
  auto picture = DecodePicture(ReadAll(*stream));
  return picture ? Hand(std::move(picture), image) : Gdiplus::InvalidParameter;
}

template <class Value>
Gdiplus::GpStatus Ask(Gdiplus::GpImage* image, Value* value, int PictureObject::*member) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || !value) return Gdiplus::InvalidParameter;
  *value = static_cast<Value>((*picture).*member);
  return Gdiplus::Ok;
}

// The frames that a picture has along a dimension; none where it does not have it.
std::optional<UINT> FramesAlong(const PictureObject& picture, const GUID& dimension) {
  if (dimension != (picture.timed ? Gdiplus::FrameDimensionTime : Gdiplus::FrameDimensionPage)) return std::nullopt;
  return static_cast<UINT>(picture.frames.size());
}

// A property's value in bytes; none where the picture has no such property.
std::optional<std::vector<BYTE>> PropertyValue(const PictureObject& picture, PROPID id, WORD* type) {
  std::vector<BYTE> value;
  if (picture.delays.empty()) return std::nullopt;
  if (id == PropertyTagFrameDelay) {
    value.resize(picture.delays.size() * sizeof(LONG));
    std::memcpy(value.data(), picture.delays.data(), value.size());
    *type = PropertyTagTypeLong;
    return value;
  }
  if (id != PropertyTagLoopCount) return std::nullopt;
  value = {static_cast<BYTE>(picture.repetitions), static_cast<BYTE>(picture.repetitions >> 8)};
  *type = PropertyTagTypeShort;
  return value;
}

}  // namespace
}  // namespace winhost

namespace Gdiplus::DllExports {

using winhost::GraphicsObjectAs;
using winhost::PictureObject;

GpStatus GdipCreateBitmapFromStream(IStream* stream, GpBitmap** bitmap) { return winhost::FromStream(stream, bitmap); }

GpStatus GdipCreateBitmapFromScan0(INT width, INT height, INT stride, PixelFormat format, BYTE* scan0,
                                   GpBitmap** bitmap) {
  if (!bitmap || !winhost::AcceptableSize(width, height) || !winhost::IsPixelFormat(format)) return InvalidParameter;
  const INT row = width * (format == PixelFormat24bppRGB ? 3 : 4);
  if (scan0 && (stride % 4 != 0 || std::abs(static_cast<long>(stride)) < row)) return InvalidParameter;
  if (const auto status = winhost::RefuseMaking("GdipCreateBitmapFromScan0")) return *status;
  return winhost::Hand(winhost::MakePicture(width, height, stride, format, scan0), bitmap);
}

GpStatus GdipDisposeImage(GpImage* image) { return winhost::Drop<PictureObject>(image); }

GpStatus GdipGetImageWidth(GpImage* image, UINT* width) { return winhost::Ask(image, width, &PictureObject::width); }
GpStatus GdipGetImageHeight(GpImage* image, UINT* height) {
  return winhost::Ask(image, height, &PictureObject::height);
}

GpStatus GdipImageGetFrameCount(GpImage* image, const GUID* dimension, UINT* count) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || !dimension || !count) return InvalidParameter;
  const auto frames = winhost::FramesAlong(*picture, *dimension);
  if (!frames) return Win32Error;
  *count = *frames;
  return Ok;
}

GpStatus GdipImageSelectActiveFrame(GpImage* image, const GUID* dimension, UINT frame) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || !dimension) return InvalidParameter;
  if (picture->lock) return ObjectBusy;
  const auto frames = winhost::FramesAlong(*picture, *dimension);
  if (!frames || frame >= *frames) return Win32Error;
  picture->shown = frame;
  return Ok;
}

GpStatus GdipGetPropertyItemSize(GpImage* image, PROPID id, UINT* bytes) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || !bytes) return InvalidParameter;
  WORD type;
  const auto value = winhost::PropertyValue(*picture, id, &type);
  if (!value) return PropertyNotFound;
  *bytes = static_cast<UINT>(sizeof(PropertyItem) + value->size());
  return Ok;
}

GpStatus GdipGetPropertyItem(GpImage* image, PROPID id, UINT bytes, PropertyItem* item) {
  const auto picture = GraphicsObjectAs<PictureObject>(image);
  if (!picture || !item) return InvalidParameter;
  WORD type;
  const auto value = winhost::PropertyValue(*picture, id, &type);
  if (!value) return PropertyNotFound;
  if (bytes != sizeof(PropertyItem) + value->size()) return InvalidParameter;
  *item = {id, static_cast<ULONG>(value->size()), type, item + 1};
  std::memcpy(item + 1, value->data(), value->size());
  return Ok;
}

}  // namespace Gdiplus::DllExports
