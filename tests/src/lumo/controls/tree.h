// Verbs of the control tests: trees written down in place, rectangles that compare and print.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <initializer_list>
#include <memory>
#include <ostream>
#include <utility>

#include "lumo/controls/make_control.h"
#include "lumo/core/window.h"

namespace lumo_tests {

using lumo::String;
using lumo::StringView;

using Attributes = std::initializer_list<std::pair<const WCHAR*, const WCHAR*>>;

// A control with attributes, then its children, which it owns.
template <class T = lumo::Control, class... Children>
T* Make(Attributes attributes, Children*... children) {
  T* const control = new T;
  for (const auto& [name, value] : attributes) static_cast<lumo::ControlBase*>(control)->SetAttribute(name, value);
  if constexpr (sizeof...(children) > 0) (control->Add(children), ...);
  return control;
}
inline void Set(lumo::ControlBase* control, const WCHAR* name, const WCHAR* value) {
  control->SetAttribute(name, value);
}

struct Place {
  LONG left, top, right, bottom;
  bool operator==(const Place&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const Place& p) {
  return out << "(" << p.left << "," << p.top << "," << p.right << "," << p.bottom << ")";
}
inline Place PlaceOf(const lumo::ControlBase* control) {
  const RECT& r = control->Position();
  return {r.left, r.top, r.right, r.bottom};
}

struct Size {
  LONG width, height;
  bool operator==(const Size&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const Size& s) { return out << s.width << "x" << s.height; }
inline Size Measured(lumo::ControlBase* control, LONG width = 99999, LONG height = 99999) {
  const SIZE size = control->EstimateSize({width, height});
  return {size.cx, size.cy};
}

// At 100 percent unless a case says otherwise.
class ControlsTest : public testing::Test {
 protected:
  ControlsTest() { lumo::SetGlobalScalePercent(100); }
  ~ControlsTest() override { lumo::SetGlobalScalePercent(100); }

  // Takes the tree over and gives it a rectangle.
  template <class T>
  T* Lay(T* root, RECT rect) {
    root_.reset(root);
    root->SetPos(rect);
    return root;
  }

  std::unique_ptr<lumo::ControlBase> root_;
};

}  // namespace lumo_tests
