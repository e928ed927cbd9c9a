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
  ValueKind kind;
  void (*read)(ImageAttribute&, StringView);
} kKeys[] = {
    {TEXT("file"), ValueKind::PictureFile, ReadText<&ImageAttribute::file>},
    {TEXT("dest"), ValueKind::Rect, ReadSides<&ImageAttribute::dest>},
    {TEXT("source"), ValueKind::Rect, ReadSides<&ImageAttribute::source>},
    {TEXT("corner"), ValueKind::Rect, ReadSides<&ImageAttribute::corner>},
    {TEXT("fade"), ValueKind::Integer, ReadFade},
    {TEXT("xtiled"), ValueKind::Integer, ReadNumber<&ImageAttribute::xtiled>},
    {TEXT("ytiled"), ValueKind::Integer, ReadNumber<&ImageAttribute::ytiled>},
    {TEXT("playcount"), ValueKind::Integer, ReadNumber<&ImageAttribute::playcount>},
    {TEXT("interval"), ValueKind::Integer, ReadNumber<&ImageAttribute::interval>},
    {TEXT("framecount"), ValueKind::Integer, ReadNumber<&ImageAttribute::framecount>},
    {TEXT("angle"), ValueKind::Integer, ReadNumber<&ImageAttribute::angle>},
    {TEXT("color"), ValueKind::ColorName, ReadText<&ImageAttribute::color>},
    {TEXT("scale"), ValueKind::Decimal, ReadText<&ImageAttribute::scale>},
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

void ImageAttribute::ListKeys(AttributeInfos* infos) {
  for (const auto& row : kKeys) infos->push_back({row.key, row.kind});
}

void ImageAttribute::Release() { image.reset(); }

void ImageAttribute::Reset() {
  Release();
  file.clear();
}

}  // namespace lumo
