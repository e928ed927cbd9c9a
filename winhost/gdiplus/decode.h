// Pictures in files: PNG, JPEG, GIF and BMP.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "winhost/gdiplus/picture.h"

namespace winhost {

// Null for bytes that are none of these, whose header is not whole or that hold more than a picture may (see
// picture.h). Pixels that a file which ends early does not hold are transparent or black.
std::shared_ptr<PictureObject> DecodePicture(std::span<const std::uint8_t> file);

}  // namespace winhost
