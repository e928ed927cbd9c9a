#include "lumo/controls/text_align.h"

namespace lumo {
namespace {

struct Row {
  StringView word;
  UINT clears;
  UINT sets;
};
constexpr Row kRows[] = {
    {TEXT("left"), DT_CENTER | DT_RIGHT | DT_VCENTER | DT_SINGLELINE, 0},
    {TEXT("hcenter"), DT_RIGHT, DT_CENTER},
    {TEXT("right"), DT_CENTER | DT_VCENTER | DT_SINGLELINE, DT_RIGHT},
    {TEXT("top"), DT_VCENTER | DT_BOTTOM, DT_SINGLELINE},
    {TEXT("vcenter"), DT_BOTTOM, DT_VCENTER | DT_SINGLELINE},
    {TEXT("bottom"), DT_VCENTER, DT_BOTTOM | DT_SINGLELINE},
};

}  // namespace

UINT ApplyAlignWords(UINT style, StringView words) {
  for (const Row& row : kRows) {
    if (words.find(row.word) != StringView::npos) style = (style & ~row.clears) | row.sets;
  }
  return style;
}

std::vector<StringView> AlignWords() {
  std::vector<StringView> words;
  for (const Row& row : kRows) words.push_back(row.word);
  return words;
}

}  // namespace lumo
