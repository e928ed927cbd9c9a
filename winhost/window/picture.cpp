#include "winhost/window/picture.h"

#include <algorithm>
#include <cstring>

namespace winhost {

std::shared_ptr<Picture> MakePicture(int width, int height) {
  auto picture = std::make_shared<Picture>();
  picture->width = std::max(width, 0);
  picture->height = std::max(height, 0);
  picture->bits.resize(picture->Offset(0, picture->height));
  return picture;
}

std::shared_ptr<Picture> FitPicture(const std::shared_ptr<Picture>& picture, int width, int height) {
  if (picture && picture->width == std::max(width, 0) && picture->height == std::max(height, 0)) return picture;
  auto fitted = MakePicture(width, height);
  if (!picture) return fitted;
  const auto row = static_cast<std::size_t>(std::min(picture->width, fitted->width)) * 4;
  const int rows = std::min(picture->height, fitted->height);
  for (int y = 0; row > 0 && y < rows; ++y) std::memcpy(fitted->At(0, y), picture->At(0, y), row);
  return fitted;
}

}  // namespace winhost
