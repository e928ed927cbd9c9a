#include "tools/vantakit/walk/keys.h"

#include <windows.h>

#include "tools/vantakit/commands.h"

namespace vantakit {
namespace {

struct KeyName {
  const char* name;
  int key;
};

constexpr KeyName kKeys[] = {
    {"Shift", VK_SHIFT},    {"Ctrl", VK_CONTROL},  {"Alt", VK_MENU},     {"Tab", VK_TAB},       {"Space", VK_SPACE},
    {"Return", VK_RETURN},  {"Enter", VK_RETURN},  {"Esc", VK_ESCAPE},   {"Escape", VK_ESCAPE}, {"Left", VK_LEFT},
    {"Right", VK_RIGHT},    {"Up", VK_UP},         {"Down", VK_DOWN},    {"Home", VK_HOME},     {"End", VK_END},
    {"Backspace", VK_BACK}, {"Delete", VK_DELETE}, {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT},
};

int KeyOf(const std::string& name) {
  for (const KeyName& row : kKeys) {
    if (name == row.name) return row.key;
  }
  if (name.size() == 1 && ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9'))) return name[0];
  if (name.size() == 2 && name[0] == 'F' && name[1] >= '1' && name[1] <= '9') return VK_F1 + (name[1] - '1');
  throw Failure("no key is called \"" + name + "\"");
}

}  // namespace

std::vector<int> ParseKeys(const std::string& text) {
  std::vector<int> keys;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find('+', begin), text.size());
    keys.push_back(KeyOf(text.substr(begin, end - begin)));
    begin = end + 1;
  }
  return keys;
}

}  // namespace vantakit
