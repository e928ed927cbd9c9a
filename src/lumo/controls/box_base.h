// BoxBase: a control with an ordered list of children and the layout that arranges them.
//
// Children are owned: a removed child is destroyed, through the window's queue when there is one and delayed destroy is
// on. With auto destroy off it is the caller's again, and children are not destroyed with the container.
#pragma once

#include "lumo/controls/control_base.h"
#include "lumo/controls/layout.h"

#include <functional>
#include <memory>
#include <vector>

namespace lumo {

class BoxBase : public ControlBase {
 public:
  BoxBase();  // with the stacked layout
  ~BoxBase() override;

  // Virtual operations, in the order of their slots after ControlBase's.
  // The nearest visible and enabled list element from `index` (cut into the list) on; -1 for none.
  virtual int FindSelectable(int index, bool forward) const;
  virtual ControlBase* GetItemAt(int index) const;  // null outside
  virtual bool SetItemIndex(ControlBase* child, int index);
  virtual int GetCount() const { return static_cast<int>(children_.size()); }
  virtual bool Add(ControlBase* child);  // takes ownership; false (and not taken) for null or a child of a container
  virtual bool AddAt(ControlBase* child, int index);  // also false for an index above the count
  virtual bool Remove(ControlBase* child);
  virtual bool RemoveAt(int index);  // false outside
  virtual void RemoveAll();
  virtual bool IsAutoDestroy() const { return autoDestroy_; }
  virtual void SetAutoDestroy(bool on) { autoDestroy_ = on; }
  virtual bool IsDelayedDestroy() const { return delayedDestroy_; }
  virtual void SetDelayedDestroy(bool on) { delayedDestroy_ = on; }
  virtual bool IsMouseChildEnabled() const { return mouseChild_; }
  virtual void SetMouseChildEnabled(bool on) { mouseChild_ = on; }

  int GetItemIndex(const ControlBase* child) const;  // -1 for none
  const std::vector<ControlBase*>& Children() const { return children_; }
  Layout& GetLayout() const { return *layout_; }
  void SetLayout(std::unique_ptr<Layout> layout);  // a new container is not re-arranged for it
  // Changes with every change of the list, so that a loop over it that calls out can tell.
  unsigned ListVersion() const { return listVersion_; }

  // How far the content is scrolled, device pixels; (0, 0) = no scroll bar.
  POINT ScrollOffset() const { return scroll_; }
  void SetScrollOffset(POINT offset);
  bool IsScrolled() const { return scroll_.x != 0 || scroll_.y != 0; }

  // Handlers of records that bubble up from descendants.
  void AttachBubbledEvent(int type, EventBinding binding) { bubbledCode_.Add(type, std::move(binding)); }

  BoxBase* AsBox() override { return this; }
  void SetWindow(Window* window, ControlBase* parent, bool init) override;
  void SetEnabled(bool enabled) override;
  void SetVisible(bool visible) override;
  void SetInternVisible(bool visible) override;
  void SetPos(RECT rect) override;
  SIZE EstimateSize(SIZE available) override;
  ControlBase* FindControl(FindControlProc proc, void* data, unsigned flags) override;
  int HandleEvent(_Msg& msg) override;
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override;
  static void ListAttributes(AttributeInfos* infos);  // its own rows, without the layout's
  void PaintChildren(IRender* render, const RECT& dirty) override;
  void ReleaseImages() override;
  int AttachXmlEvent(StringView kind, StringView type, StringView receiver, StringView list) override;

  // A child that is being destroyed by somebody else takes itself out.
  void DropDestroyed(ControlBase* child);

 protected:
  // The child that stood at `index` is out of the list, and gone or about to be.
  virtual void OnChildGone(int /*index*/) {}
  // Over the children as they are now; those that earlier calls destroy are passed over.
  void ForEachChild(const std::function<void(ControlBase&)>& act);
  void LeaveWindow() override;

 private:
  bool TakeIntoWindow(ControlBase* child);
  void LetGo(ControlBase* child);
  ControlBase* FindBelow(FindControlProc proc, void* data, unsigned flags);
  void ImposeVisibility();

  std::vector<ControlBase*> children_;
  std::unique_ptr<Layout> layout_;
  POINT scroll_ = {};
  unsigned listVersion_ = 0;
  bool autoDestroy_ = true;
  bool delayedDestroy_ = true;
  bool mouseChild_ = true;
  EventBindings bubbledCode_;
  EventBindings bubbledLayout_;
};

}  // namespace lumo
