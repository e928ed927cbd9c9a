#include "lumo/controls/control_class.h"

namespace lumo {

const WCHAR* NameOfClass(ControlClass kind) {
  static constexpr const WCHAR* kNames[] = {
      TEXT("Box"),
      TEXT("HBox"),
      TEXT("VBox"),
      TEXT("MenuBox"),
      TEXT("ListContainerElement"),
      TEXT("Combo"),
      TEXT("Label"),
      TEXT("Button"),
      TEXT("Option"),
      TEXT("Slider"),
      TEXT("TabBox"),
      TEXT("Control"),
      TEXT("TileBox"),
      TEXT("ListBox"),
      TEXT("Progress"),
      TEXT("RichEdit"),
      TEXT("CheckBox"),
      TEXT("TreeView"),
      TEXT("TreeNode"),
      TEXT("ChildBox"),
      TEXT("LabelBox"),
      TEXT("MenuItem"),
      TEXT("ScrollBar"),
      TEXT("ButtonBox"),
      TEXT("OptionBox"),
      TEXT("CheckBoxBox"),
      TEXT("VirtualListBox"),
      TEXT("CircleProgress"),
      TEXT("ShadowBox"),
  };
  static_assert(sizeof(kNames) / sizeof(kNames[0]) == static_cast<size_t>(ControlClass::ShadowBox) + 1);
  return kNames[static_cast<size_t>(kind)];
}

}  // namespace lumo
