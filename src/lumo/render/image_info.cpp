#include "lumo/render/image_info.h"

#include "lumo/render/image_cache.h"

namespace lumo {

ImageInfo::~ImageInfo() {
  if (cached) image_cache_detail::Forget(cache_key);
}

DWORD ImageInfo::FrameDelay(int frame) const {
  constexpr DWORD kLongest = 0x7FFFFFFF / 10;
  if (frame < 0 || static_cast<size_t>(frame) >= frame_delays.size()) return 0;
  const DWORD delay = frame_delays[static_cast<size_t>(frame)];
  return (delay < kLongest ? delay : kLongest) * 10;
}

void ImageInfo::SelectFrame(int frame) {
  if (frames < 2 || frame < 0 || frame >= frames || frame == selected_) return;
  Record(gdip::GdipImageSelectActiveFrame(bitmap.Get(), &kTimeDimension, static_cast<UINT>(frame)));
  selected_ = frame;
}

}  // namespace lumo
