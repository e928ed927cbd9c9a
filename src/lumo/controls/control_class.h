// What a control is, asked without run-time types.
#pragma once

#include <windows.h>

namespace lumo {

enum class ControlClass : BYTE {
  Box,
  HBox,
  VBox,
  MenuBox,
  ListContainerElement,
  Combo,
  Label,
  Button,
  Option,
  Slider,
  TabBox,
  Control,
  TileBox,
  ListBox,
  Progress,
  RichEdit,
  CheckBox,
  TreeView,
  TreeNode,
  ChildBox,
  LabelBox,
  MenuItem,
  ScrollBar,
  ButtonBox,
  OptionBox,
  CheckBoxBox,
  VirtualListBox,
  CircleProgress,
  ShadowBox,
};

// The class's name as the code spells it, "ListContainerElement".
const WCHAR* NameOfClass(ControlClass kind);

}  // namespace lumo
