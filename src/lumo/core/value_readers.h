// Readers of attribute values. All pure; no reader looks past the end of its value.
//
// Numbers are read as the run-time's wcstol reads them with base 10: leading blanks, a sign, digits; what follows is
// left alone, no digits are 0, and what does not fit 32 bits becomes the nearest that does.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

// Attribute setters get terminated texts or null; null counts as empty.
inline StringView TextOf(const WCHAR* value) { return value ? StringView(value) : StringView(); }

// Takes a number off the front of `text`; without digits nothing is taken and the answer is 0.
int TakeInteger(StringView* text);

int ReadInteger(StringView value);
inline bool ReadBoolean(StringView value) { return ReadInteger(value) != 0; }

// "stretch", "auto" (SizeStretch, SizeAuto) or a number.
int ReadSize(StringView value);

// `count` numbers, each after exactly one separator following the one before; missing ones are 0.
void ReadIntegers(StringView value, int* numbers, int count);
RECT ReadRect(StringView value);    // left, top, right, bottom
POINT ReadPoint(StringView value);  // x, y; also width, height

// The digits of a hexadecimal number up to the first character that is none, cut to 32 bits as wcstoul cuts them:
// larger numbers become 0xFFFFFFFF.
DWORD ReadHexadecimal(StringView value);

}  // namespace lumo
