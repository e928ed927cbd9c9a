// Lists, menus and trees, as far as they are containers with a layout and elements with a text: they take their
// attributes, hold their children and paint themselves.
#pragma once

#include "lumo/controls/h_layout.h"
#include "lumo/controls/labels.h"
#include "lumo/controls/tile_layout.h"
#include "lumo/controls/v_layout.h"
#include "lumo/controls/virtual_layout.h"

namespace lumo {

class ListBox : public BoxT<ListBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::ListBox;
  explicit ListBox(std::unique_ptr<Layout> layout) { SetLayout(std::move(layout)); }
};

class VirtualListBox final : public BoxT<VirtualListBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::VirtualListBox;
  VirtualListBox() { SetLayout(std::make_unique<VirtualLayout>()); }
};

class MenuBox final : public BoxT<MenuBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::MenuBox;
  MenuBox() { SetLayout(std::make_unique<VLayout>()); }
};

class Combo final : public BoxT<Combo, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::Combo;
};

// A list's element, selected alone in its group if it has one.
class ListContainerElement : public OptionTemplateTemplate<BoxT<ListContainerElement, IOptionBox, BoxBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::ListContainerElement;
  bool IsA(ControlClass kind) const override { return kind == Class() || kind == kClass; }
};

class MenuItem final : public ListContainerElement {
 public:
  ControlClass Class() const override { return ControlClass::MenuItem; }
};

class TreeNode final : public ListContainerElement {
 public:
  ControlClass Class() const override { return ControlClass::TreeNode; }
};

// Owns the node that its top nodes hang from; that one is not in the list of children and is never shown.
class TreeView final : public BoxT<TreeView, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::TreeView;
  TreeView();
  TreeNode& RootNode() { return *root_; }

 private:
  std::unique_ptr<TreeNode> root_;
};

class ScrollBar final : public ControlT<ScrollBar, IControl, ControlBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::ScrollBar;
};

class RichEdit final : public LabelTemplateTemplate<ControlT<RichEdit, ILabel, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::RichEdit;
};

}  // namespace lumo
