// Bitmap files decoded by GDI+ from memory.
#pragma once

#include "lumo/render/image_info.h"

#include <memory>
#include <vector>

namespace lumo {

// Size, frames and their delays included; path and cache key are the caller's. Null for what GDI+ cannot decode.
std::shared_ptr<ImageInfo> DecodePicture(const std::vector<BYTE>& file);

}  // namespace lumo
