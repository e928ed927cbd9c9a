#include "lumo/render/image_attribute.h"

#include <algorithm>

#include "lumo/core/pair_list.h"
#include "lumo/core/value_readers.h"
#include "lumo/render/image_info.h"

namespace lumo {
namespace {

void ReadFade(ImageAttribute& image, StringView value) {
  image.fade = static_cast<BYTE>(std::clamp(ReadInteger(value), 0, 255));
}

template <auto Field>
void ReadNumber(ImageAttribute& image, StringView value) {
  image.*Field = ReadInteger(value);
}
template <auto Field>
void ReadText(ImageAttribute& image, StringView value) {
  image.*Field = value;
}
template <auto Field>
void ReadSides(ImageAttribute& image, StringView value) {
  image.*Field = ReadRect(value);
}

constexpr struct {
  StringView key;
  void (*read)(ImageAttribute&, StringView);
} kKeys[] = {
    {TEXT("file"), ReadText<&ImageAttribute::file>},
    {TEXT("dest"), ReadSides<&ImageAttribute::dest>},
    {TEXT("source"), ReadSides<&ImageAttribute::source>},
    {TEXT("corner"), ReadSides<&ImageAttribute::corner>},
    {TEXT("fade"), ReadFade},
    {TEXT("xtiled"), ReadNumber<&ImageAttribute::xtiled>},
    {TEXT("ytiled"), ReadNumber<&ImageAttribute::ytiled>},
    {TEXT("playcount"), ReadNumber<&ImageAttribute::playcount>},
    {TEXT("interval"), ReadNumber<&ImageAttribute::interval>},
    {TEXT("framecount"), ReadNumber<&ImageAttribute::framecount>},
    {TEXT("angle"), ReadNumber<&ImageAttribute::angle>},
    {TEXT("color"), ReadText<&ImageAttribute::color>},
    {TEXT("scale"), ReadText<&ImageAttribute::scale>},
};

}  // namespace

void ImageAttribute::Assign(StringView value) {
  Release();
  text = file = value;
  dest = source = kWholeRect;
  corner = {};
  xtiled = ytiled = interval = framecount = 0;
  playcount = -1;
  PairReader pairs(text);
  for (StringView key, read; pairs.Next(&key, &read);) {
    for (const auto& row : kKeys) {
      if (row.key == key) row.read(*this, read);
    }
  }
}

void ImageAttribute::Release() { image.reset(); }

void ImageAttribute::Reset() {
  Release();
  file.clear();
}

}  // namespace lumo
