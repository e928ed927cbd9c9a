// A US keyboard: what its keys are called, and which character they give.
#pragma once

#include <windows.h>

namespace winhost {

struct KeyRow {
  int key;   // VK_…
  int scan;  // set 1; 0x100 added for the extended keys
  char16_t plain = 0;
  char16_t shifted = 0;
};

// Null for a key that this keyboard does not have.
const KeyRow* FindKey(int key);
// The key that gives this character, with or without Shift; null for none.
const KeyRow* FindKeyFor(char16_t character);
// The character of a key; 0 for none. Control makes letters to the codes 1 … 26.
char16_t CharacterOf(int key, bool shift, bool control, bool capital);

}  // namespace winhost
