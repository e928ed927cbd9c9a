#include "lumo/controls/attribute_lists.h"

#include "lumo/controls/make_control.h"

namespace lumo {

AttributeInfos ControlAttributes() {
  AttributeInfos infos;
  ControlBase::ListAttributes(&infos);
  Layout::ListAttributes(&infos);
  TileLayout::ListAttributes(&infos);
  BoxBase::ListAttributes(&infos);
  TabBox::ListAttributes(&infos);
  ChildBox::ListAttributes(&infos);
  ControlText::ListAttributes(&infos);
  Selection::ListAttributes(&infos);
  infos.push_back(kGroupAttribute);
  ProgressBar::ListAttributes(&infos);
  CircleProgress::ListAttributes(&infos);
  return infos;
}

std::vector<StringView> WordsOf(ValueKind kind) {
  return kind == ValueKind::AlignWords ? AlignWords() : ControlBase::WordsOf(kind);
}

}  // namespace lumo
