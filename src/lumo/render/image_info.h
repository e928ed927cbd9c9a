// A decoded picture, shared by all who draw it and immutable but for the current frame of an animated bitmap.
#pragma once

#include "lumo/core/types.h"
#include "lumo/render/gdip.h"

#include <memory>
#include <vector>

namespace lumo {

// GDI+'s FrameDimensionTime, which import libraries do not carry.
inline constexpr GUID kTimeDimension = {0x6aedbd6d, 0x3fb5, 0x418a, {0x83, 0xa6, 0x7f, 0x45, 0x22, 0x9d, 0xc8, 0x72}};

class ImageInfo {
 public:
  ImageInfo() = default;
  ~ImageInfo();  // takes its own entry out of the cache
  ImageInfo(const ImageInfo&) = delete;
  ImageInfo& operator=(const ImageInfo&) = delete;

  Gdiplus::GpBitmap* Bitmap() const { return static_cast<Gdiplus::GpBitmap*>(bitmap.Get()); }
  // Of a frame, in milliseconds; 0 when the picture says none.
  DWORD FrameDelay(int frame) const;
  // Makes the frame the one that is drawn.
  void SelectFrame(int frame);

  String path;
  int width = 0;  // pixels
  int height = 0;
  bool scaled = false;  // drawn for the window's scale: its size is not scaled again
  UniqueGpImage bitmap;
  int frames = 1;
  std::vector<DWORD> frame_delays;  // in units of 10 ms
  bool cached = false;              // has an entry under cache_key
  DWORD cache_key = 0;

 private:
  int selected_ = 0;
};

}  // namespace lumo
