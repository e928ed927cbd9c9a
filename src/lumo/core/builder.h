// From a layout file to a tree of controls.
//
// Nothing here knows what an attribute means: each control gets its own, in document order. Tags that are not in the
// table are passed over with everything in them. UI thread only.
#pragma once

#include "lumo/core/load_markup.h"
#include "lumo/core/types.h"

#include <span>

namespace lumo {

class BoxBase;
class ControlBase;
class Window;

// A layout nested deeper than this is refused as a whole, and so is one that pulls in more files than this.
inline constexpr int kDeepestLayout = 256;
inline constexpr int kMostLayoutFiles = 256;

struct ControlTag {
  StringView tag;
  ControlBase* (*make)();
};
// The 31 tags, in their order.
std::span<const ControlTag> ControlTags();

// The tree of a window's layout, owned by the caller; null when it cannot be loaded or holds no control. A top-level
// element "Window" gives its attributes to the window, if that has its native handle. Of several controls at top level
// the last one is the tree and the others are destroyed.
ControlBase* BuildWindow(const WCHAR* path, Window* window);

// The children of the element at the document's main position: added to `parent`, which owns them, or, without one,
// the last of them is the caller's and the others are destroyed. The control made last at this level, or null; null too
// when the layout is nested too deep, and then the caller gets nothing and what was added stays with its parents.
ControlBase* Build(MarkupDocument* document, Window* window, ControlBase* parent);

// A new control, the caller's; null for a tag that is not in the table (compared exactly).
ControlBase* CreateControl(StringView tag);

// The last control of a layout that belongs to no window yet, the caller's; null when there is none, when it is no
// container, and when the file is being built already further out.
BoxBase* BuildFromFile(const WCHAR* path);

}  // namespace lumo
