// TabBox: shows one child, its current page, at a time.
#pragma once

#include "lumo/controls/box_t.h"

namespace lumo {

class TabBox final : public BoxT<TabBox, ITabBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::TabBox;

  // Sends "select" with the new and the previous index. False outside the list; true and nothing for the current page.
  bool Select(int index) override;
  bool SelectPage(const ControlBase* page) override;
  bool SelectPage(StringView name) override;
  int GetSelected() const override { return current_; }
  // Remembered until the box is initialised.
  void SetSelectedId(int index);

  ITabBox* AsTabBox() override { return this; }
  void SetWindow(Window* window, ControlBase* parent, bool init) override;
  void DoInit() override;
  bool AddAt(ControlBase* child, int index) override;
  bool SetItemIndex(ControlBase* child, int index) override;
  void RemoveAll() override;
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override;
  static void ListAttributes(AttributeInfos* infos);  // its own rows

 protected:
  void OnChildGone(int index) override;

 private:
  static void ShowPage(ControlBase& page, bool shown);

  int current_ = -1;
  int pending_ = -1;
  bool initialised_ = false;
};

}  // namespace lumo
