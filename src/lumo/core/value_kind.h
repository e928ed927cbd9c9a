// What the value of an attribute is. The tables of the library say it of every row, and the kind of a row decides how
// its value is read; tools that check layouts ask the same tables.
#pragma once

#include "lumo/core/types.h"

#include <vector>

namespace lumo {

enum class ValueKind : BYTE {
  Text,       // anything
  Name,       // a control's
  StringKey,  // of the string table
  FontId,     // of the global fonts
  Themes,     // names of global themes, single spaces between them
  Group,      // of options
  Integer,
  Length,       // an integer; one below 0 is passed over
  Boolean,      // an integer: 0 is false
  Presence,     // the attribute counts, whatever its value
  Decimal,      // "1.6"
  Size,         // "stretch", "auto" or an integer
  Extent,       // width, height
  Rect,         // left, top, right, bottom
  Point,        // x, y
  Color,        // a colour's name, or pairs with the ends of a gradient
  ColorName,    // of the global colours
  Image,        // a picture's file, or pairs
  PictureFile,  // the file alone
  LayoutFile,   // below the theme folder
  AlignWords,   // any of the words of text_align.h
  HAlign,       // one of a few words
  VAlign,
  Cursor,
};

struct AttributeInfo {
  StringView name;
  ValueKind kind;
};
using AttributeInfos = std::vector<AttributeInfo>;

}  // namespace lumo
