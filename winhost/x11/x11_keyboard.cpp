#include "winhost/x11/x11_keyboard.h"

#include <windows.h>

#include "winhost/window/us_keyboard.h"

namespace winhost {
namespace {

struct NamedKey {
  xcb_keysym_t symbol;
  int key;
};

constexpr NamedKey kNamedKeys[] = {
    {0xFF08, VK_BACK},     {0xFF09, VK_TAB},     {0xFE20, VK_TAB},     {0xFF0D, VK_RETURN},   {0xFF1B, VK_ESCAPE},
    {0xFFFF, VK_DELETE},   {0xFF50, VK_HOME},    {0xFF51, VK_LEFT},    {0xFF52, VK_UP},       {0xFF53, VK_RIGHT},
    {0xFF54, VK_DOWN},     {0xFF55, VK_PRIOR},   {0xFF56, VK_NEXT},    {0xFF57, VK_END},      {0xFF63, VK_INSERT},
    {0xFF67, VK_APPS},     {0xFF7F, VK_NUMLOCK}, {0xFF14, VK_SCROLL},  {0xFFE1, VK_SHIFT},    {0xFFE2, VK_SHIFT},
    {0xFFE3, VK_CONTROL},  {0xFFE4, VK_CONTROL}, {0xFFE5, VK_CAPITAL}, {0xFFE9, VK_MENU},     {0xFFEA, VK_MENU},
    {0xFFEB, VK_LWIN},     {0xFFEC, VK_RWIN},    {0xFF8D, VK_RETURN},  {0xFFAA, VK_MULTIPLY}, {0xFFAB, VK_ADD},
    {0xFFAD, VK_SUBTRACT}, {0xFFAE, VK_DECIMAL}, {0xFFAF, VK_DIVIDE},  {0xFF95, VK_HOME},     {0xFF96, VK_LEFT},
    {0xFF97, VK_UP},       {0xFF98, VK_RIGHT},   {0xFF99, VK_DOWN},    {0xFF9A, VK_PRIOR},    {0xFF9B, VK_NEXT},
    {0xFF9C, VK_END},      {0xFF9E, VK_INSERT},  {0xFF9F, VK_DELETE},
};

constexpr xcb_keysym_t kF1 = 0xFFBE, kF12 = 0xFFC9, kPad0 = 0xFFB0, kPad9 = 0xFFB9, kUnicode = 0x01000000;

int NamedKeyOf(xcb_keysym_t symbol) {
  for (const NamedKey& row : kNamedKeys) {
    if (row.symbol == symbol) return row.key;
  }
  if (symbol >= kF1 && symbol <= kF12) return static_cast<int>(symbol - kF1) + VK_F1;
  if (symbol >= kPad0 && symbol <= kPad9) return static_cast<int>(symbol - kPad0) + VK_NUMPAD0;
  return 0;
}

char16_t CharacterOfSymbol(xcb_keysym_t symbol) {
  if ((symbol >= 0x20 && symbol <= 0x7E) || (symbol >= 0xA0 && symbol <= 0xFF)) return static_cast<char16_t>(symbol);
  if (symbol > kUnicode && symbol <= kUnicode + 0xFFFF) return static_cast<char16_t>(symbol - kUnicode);
  return 0;
}

bool IsLower(xcb_keysym_t symbol) { return symbol >= 'a' && symbol <= 'z'; }

}  // namespace

PressedKey X11Keyboard::Find(xcb_keycode_t code, std::uint16_t state) const {
  const xcb_keysym_t plain = xcb_key_symbols_get_keysym(symbols_.get(), code, 0);
  if (const xcb_keysym_t pad = xcb_key_symbols_get_keysym(symbols_.get(), code, 1);
      (state & XCB_MOD_MASK_2) && pad >= kPad0 && pad <= kPad9) {
    return {static_cast<int>(pad - kPad0) + VK_NUMPAD0, static_cast<char16_t>(pad - kPad0 + '0')};
  }
  if (const int key = NamedKeyOf(plain)) return {key, 0};
  const bool capital = (state & XCB_MOD_MASK_LOCK) && IsLower(plain);
  const bool shifted = ((state & XCB_MOD_MASK_SHIFT) != 0) != capital;
  xcb_keysym_t symbol = xcb_key_symbols_get_keysym(symbols_.get(), code, shifted ? 1 : 0);
  if (symbol == 0) symbol = plain;
  const KeyRow* row = FindKeyFor(CharacterOfSymbol(plain));
  if (state & XCB_MOD_MASK_CONTROL) return {row ? row->key : 0, 0};
  return {row ? row->key : VK_PACKET, CharacterOfSymbol(symbol)};
}

}  // namespace winhost
