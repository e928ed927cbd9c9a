// Layout: how a container measures and places its children. This one stacks them on top of each other.
//
// All sizes in device pixels. A layout neither owns its container nor the children.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"

#include <vector>

namespace lumo {

class BoxBase;
class ControlBase;
using ControlList = std::vector<ControlBase*>;

class Layout {
 public:
  Layout() = default;
  Layout(const Layout&) = delete;
  Layout& operator=(const Layout&) = delete;
  virtual ~Layout() = default;

  // False when the name is not the layout's.
  virtual bool SetAttribute(StringView name, const WCHAR* value);
  static void ListAttributes(AttributeInfos* infos);
  // Gives every child its rectangle inside `inner`; the size used. Stops early when a child's callback changes the list
  // or destroys the container, which has asked for a new pass by then.
  virtual SIZE ArrangeChild(const ControlList& children, const RECT& inner);
  // The content's size; without a visible child (-9999, -9999) and padding.
  virtual SIZE EstimateLayout(const ControlList& children, SIZE available);
  virtual LONG GetChildMargin() const { return childMargin_; }
  virtual void SetChildMargin(LONG design);  // scaled now

  void SetOwner(BoxBase* owner) { owner_ = owner; }
  BoxBase* Owner() const { return owner_; }
  void SetPadding(const RECT& design);
  RECT ScaledPadding() const;

 protected:
  SIZE WithPadding(LONGLONG width, LONGLONG height) const;

 private:
  BoxBase* owner_ = nullptr;
  LONG childMargin_ = 0;
  RECT padding_ = {};  // design pixels
};

}  // namespace lumo
