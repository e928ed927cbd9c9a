#include "winhost/window/us_keyboard.h"

namespace winhost {
namespace {

constexpr KeyRow kKeys[] = {
    {VK_ESCAPE, 0x01, 27, 27},
    {'1', 0x02, '1', '!'},
    {'2', 0x03, '2', '@'},
    {'3', 0x04, '3', '#'},
    {'4', 0x05, '4', '$'},
    {'5', 0x06, '5', '%'},
    {'6', 0x07, '6', '^'},
    {'7', 0x08, '7', '&'},
    {'8', 0x09, '8', '*'},
    {'9', 0x0A, '9', '('},
    {'0', 0x0B, '0', ')'},
    {VK_OEM_MINUS, 0x0C, '-', '_'},
    {VK_OEM_PLUS, 0x0D, '=', '+'},
    {VK_BACK, 0x0E, 8, 8},
    {VK_TAB, 0x0F, 9, 9},
    {'Q', 0x10, 'q', 'Q'},
    {'W', 0x11, 'w', 'W'},
    {'E', 0x12, 'e', 'E'},
    {'R', 0x13, 'r', 'R'},
    {'T', 0x14, 't', 'T'},
    {'Y', 0x15, 'y', 'Y'},
    {'U', 0x16, 'u', 'U'},
    {'I', 0x17, 'i', 'I'},
    {'O', 0x18, 'o', 'O'},
    {'P', 0x19, 'p', 'P'},
    {VK_OEM_4, 0x1A, '[', '{'},
    {VK_OEM_6, 0x1B, ']', '}'},
    {VK_RETURN, 0x1C, 13, 13},
    {VK_CONTROL, 0x1D},
    {'A', 0x1E, 'a', 'A'},
    {'S', 0x1F, 's', 'S'},
    {'D', 0x20, 'd', 'D'},
    {'F', 0x21, 'f', 'F'},
    {'G', 0x22, 'g', 'G'},
    {'H', 0x23, 'h', 'H'},
    {'J', 0x24, 'j', 'J'},
    {'K', 0x25, 'k', 'K'},
    {'L', 0x26, 'l', 'L'},
    {VK_OEM_1, 0x27, ';', ':'},
    {VK_OEM_7, 0x28, '\'', '"'},
    {VK_OEM_3, 0x29, '`', '~'},
    {VK_SHIFT, 0x2A},
    {VK_OEM_5, 0x2B, '\\', '|'},
    {'Z', 0x2C, 'z', 'Z'},
    {'X', 0x2D, 'x', 'X'},
    {'C', 0x2E, 'c', 'C'},
    {'V', 0x2F, 'v', 'V'},
    {'B', 0x30, 'b', 'B'},
    {'N', 0x31, 'n', 'N'},
    {'M', 0x32, 'm', 'M'},
    {VK_OEM_COMMA, 0x33, ',', '<'},
    {VK_OEM_PERIOD, 0x34, '.', '>'},
    {VK_OEM_2, 0x35, '/', '?'},
    {VK_MULTIPLY, 0x37, '*', '*'},
    {VK_MENU, 0x38},
    {VK_SPACE, 0x39, ' ', ' '},
    {VK_CAPITAL, 0x3A},
    {VK_F1, 0x3B},
    {VK_F1 + 1, 0x3C},
    {VK_F1 + 2, 0x3D},
    {VK_F4, 0x3E},
    {VK_F1 + 4, 0x3F},
    {VK_F1 + 5, 0x40},
    {VK_F1 + 6, 0x41},
    {VK_F1 + 7, 0x42},
    {VK_F1 + 8, 0x43},
    {VK_F10, 0x44},
    {VK_NUMLOCK, 0x145},
    {VK_SCROLL, 0x46},
    {VK_NUMPAD0 + 7, 0x47, '7', '7'},
    {VK_NUMPAD0 + 8, 0x48, '8', '8'},
    {VK_NUMPAD9, 0x49, '9', '9'},
    {VK_SUBTRACT, 0x4A, '-', '-'},
    {VK_NUMPAD0 + 4, 0x4B, '4', '4'},
    {VK_NUMPAD0 + 5, 0x4C, '5', '5'},
    {VK_NUMPAD0 + 6, 0x4D, '6', '6'},
    {VK_ADD, 0x4E, '+', '+'},
    {VK_NUMPAD0 + 1, 0x4F, '1', '1'},
    {VK_NUMPAD0 + 2, 0x50, '2', '2'},
    {VK_NUMPAD0 + 3, 0x51, '3', '3'},
    {VK_NUMPAD0, 0x52, '0', '0'},
    {VK_DECIMAL, 0x53, '.', '.'},
    {VK_F1 + 10, 0x57},
    {VK_F12, 0x58},
    {VK_DIVIDE, 0x135, '/', '/'},
    {VK_HOME, 0x147},
    {VK_UP, 0x148},
    {VK_PRIOR, 0x149},
    {VK_LEFT, 0x14B},
    {VK_RIGHT, 0x14D},
    {VK_END, 0x14F},
    {VK_DOWN, 0x150},
    {VK_NEXT, 0x151},
    {VK_INSERT, 0x152},
    {VK_DELETE, 0x153},
    {VK_LWIN, 0x15B},
    {VK_RWIN, 0x15C},
    {VK_APPS, 0x15D},
};

bool IsLetter(int key) { return key >= 'A' && key <= 'Z'; }

}  // namespace

const KeyRow* FindKey(int key) {
  for (const KeyRow& row : kKeys) {
    if (row.key == key) return &row;
  }
  return nullptr;
}

const KeyRow* FindKeyFor(char16_t character) {
  for (const KeyRow& row : kKeys) {
    if (character != 0 && (row.plain == character || row.shifted == character)) return &row;
  }
  return nullptr;
}

char16_t CharacterOf(int key, bool shift, bool control, bool capital) {
  const KeyRow* row = FindKey(key);
  if (!row) return 0;
  if (control) return IsLetter(key) ? static_cast<char16_t>(key - 'A' + 1) : row->plain < ' ' ? row->plain : u'\0';
  return shift != (capital && IsLetter(key)) ? row->shifted : row->plain;
}

}  // namespace winhost
