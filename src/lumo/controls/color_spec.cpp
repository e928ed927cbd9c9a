#include "lumo/controls/color_spec.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/core/pair_list.h"

namespace lumo {
namespace {

template <auto Field>
void Store(ColorSpec& spec, StringView part) {
  spec.*Field = part;
}
void StoreMode(ColorSpec& spec, int mode) { spec.mode = mode; }
void StoreDest(ColorSpec& spec, const RECT& dest) { spec.dest = dest; }

template <ValueKind Kind, auto Set>
constexpr AttributeValue<ColorSpec> kAs = kValueAs<ColorSpec, Kind, Set>;

constexpr AttributeRow<ColorSpec> kKeys[] = {
    {TEXT("color"), kAs<ValueKind::ColorName, &Store<&ColorSpec::color>>},
    {TEXT("color1"), kAs<ValueKind::ColorName, &Store<&ColorSpec::color1>>},
    {TEXT("color2"), kAs<ValueKind::ColorName, &Store<&ColorSpec::color2>>},
    {TEXT("dest"), kAs<ValueKind::Rect, &StoreDest>},
    {TEXT("mode"), kAs<ValueKind::Integer, &StoreMode>},
};
static_assert(SortedAndUnique(kKeys));

}  // namespace

void ColorSpec::Assign(StringView value) {
  *this = ColorSpec();
  text = color = value;
  PairReader pairs(text);
  StringView key, part;
  while (pairs.Next(&key, &part)) ApplyAttribute(kKeys, *this, key, part);
}

void ColorSpec::ListKeys(AttributeInfos* infos) { ListRows(kKeys, infos); }

}  // namespace lumo
