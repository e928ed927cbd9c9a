#include "lumo/core/window_attributes.h"

#include "lumo/core/value_readers.h"

namespace lumo {
namespace {

SIZE ReadExtent(StringView value) {
  const POINT point = ReadPoint(value);
  return {point.x, point.y};
}

void SetLimit(SIZE& limit, StringView value) {
  const SIZE read = ReadExtent(value);
  if (read.cx >= 0 && read.cy >= 0) limit = read;
}

struct Row {
  StringView name;
  ValueKind kind;
  void (*set)(WindowAttributes& attributes, StringView value);
};

constexpr Row kRows[] = {
    {TEXT("caption"), ValueKind::Rect, [](WindowAttributes& a, StringView v) { a.caption = ReadRect(v); }},
    {TEXT("maxinfo"), ValueKind::Extent, [](WindowAttributes& a, StringView v) { SetLimit(a.maxinfo, v); }},
    {TEXT("mininfo"), ValueKind::Extent, [](WindowAttributes& a, StringView v) { SetLimit(a.mininfo, v); }},
    {TEXT("roundcorner"), ValueKind::Extent, [](WindowAttributes& a, StringView v) { a.roundcorner = ReadExtent(v); }},
    {TEXT("shadowattached"), ValueKind::Boolean,
     [](WindowAttributes& a, StringView v) { a.shadowattached = ReadInteger(v) != 0; }},
    {TEXT("shadowcorner"), ValueKind::Rect, [](WindowAttributes& a, StringView v) { a.shadowcorner = ReadRect(v); }},
    {TEXT("shadowimage"), ValueKind::Image, [](WindowAttributes& a, StringView v) { a.shadowimage = String(v); }},
    {TEXT("shadowround"), ValueKind::Rect, [](WindowAttributes& a, StringView v) { a.shadowround = ReadRect(v); }},
    {TEXT("size"), ValueKind::Extent, [](WindowAttributes& a, StringView v) { a.size = ReadExtent(v); }},
    {TEXT("sizebox"), ValueKind::Rect, [](WindowAttributes& a, StringView v) { a.sizebox = ReadRect(v); }},
    {TEXT("textid"), ValueKind::StringKey, [](WindowAttributes& a, StringView v) { a.textid = String(v); }},
};

}  // namespace

bool SetWindowAttribute(WindowAttributes& attributes, StringView name, StringView value) {
  for (const Row& row : kRows) {
    if (row.name != name) continue;
    row.set(attributes, value);
    return true;
  }
  return false;
}

void ListWindowAttributes(AttributeInfos* infos) {
  for (const Row& row : kRows) infos->push_back({row.name, row.kind});
}

}  // namespace lumo
