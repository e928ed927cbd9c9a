#include "lumo/render/picture_decoder.h"

#include <ole2.h>

#include <string.h>

#include <algorithm>

#include "base/com_ptr.h"

namespace lumo {
namespace {

using vanta::ComPtr;

constexpr PROPID kFrameDelay = 0x5100;
constexpr UINT kMaxFrames = 4096;
constexpr UINT kMaxPropertySize = 1 << 20;  // bytes

// The stream frees its copy of the bytes with itself; GDI+ holds on to the stream for as long as the bitmap lives.
ComPtr<IStream> StreamOf(const std::vector<BYTE>& bytes) {
  ComPtr<IStream> stream;
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (!block) return stream;
  if (void* const memory = GlobalLock(block)) {
    memcpy(memory, bytes.data(), bytes.size());
    GlobalUnlock(block);
  }
  if (FAILED(CreateStreamOnHGlobal(block, TRUE, stream.Put()))) GlobalFree(block);
  return stream;
}

int CountFrames(Gdiplus::GpImage* image) {
  UINT frames = 0;
  Record(gdip::GdipImageGetFrameCount(image, &kTimeDimension, &frames));
  return static_cast<int>(std::clamp(frames, 1U, kMaxFrames));
}

// One number a frame; empty when the picture carries none.
std::vector<DWORD> ReadDelays(Gdiplus::GpImage* image) {
  UINT size = 0;
  if (gdip::GdipGetPropertyItemSize(image, kFrameDelay, &size) != Gdiplus::Ok) return {};
  if (size < sizeof(Gdiplus::PropertyItem) || size > kMaxPropertySize) return {};
  std::vector<Gdiplus::PropertyItem> block(size / sizeof(Gdiplus::PropertyItem) + 1);
  Gdiplus::PropertyItem* const item = block.data();
  if (gdip::GdipGetPropertyItem(image, kFrameDelay, size, item) != Gdiplus::Ok || !item->value) return {};
  const size_t count = std::min<size_t>(item->length, size) / sizeof(DWORD);
  std::vector<DWORD> delays(count);
  memcpy(delays.data(), item->value, count * sizeof(DWORD));
  return delays;
}

}  // namespace

std::shared_ptr<ImageInfo> DecodePicture(const std::vector<BYTE>& file) {
  if (file.empty()) return nullptr;
  const ComPtr<IStream> stream = StreamOf(file);
  Gdiplus::GpBitmap* bitmap = nullptr;
  if (!stream.Get() || gdip::GdipCreateBitmapFromStream(stream.Get(), &bitmap) != Gdiplus::Ok) return nullptr;
  auto image = std::make_shared<ImageInfo>();
  image->bitmap.Reset(bitmap);
  UINT width = 0, height = 0;
  Record(gdip::GdipGetImageWidth(bitmap, &width));
  Record(gdip::GdipGetImageHeight(bitmap, &height));
  if (!width || !height || width > 0x7FFF || height > 0x7FFF) return nullptr;
  image->width = static_cast<int>(width);
  image->height = static_cast<int>(height);
  image->frames = CountFrames(bitmap);
  if (image->frames > 1) image->frame_delays = ReadDelays(bitmap);
  return image;
}

}  // namespace lumo
