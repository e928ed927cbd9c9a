// What a layout's Window element says, in design pixels, and its table of names.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"

namespace lumo {

struct WindowAttributes {
  SIZE size = {};         // of the window, without frame insets
  RECT sizebox = {};      // widths of the sizing border
  RECT caption = {};      // drag area: left, top, right insets; bottom measured from the top
  SIZE roundcorner = {};  // ellipse of the region's corners; 0 by 0 is a plain rectangle
  SIZE mininfo = {};      // tracking limits; 0 is none
  SIZE maxinfo = {};
  bool shadowattached = false;
  String shadowimage;      // image attribute text
  RECT shadowcorner = {};  // how far the shadow reaches beyond each side
  RECT shadowround = {};   // corner squares of the window that the shadow fills too
  String textid;           // string-table key of the native title
};

// False for a name that a window does not have; attributes are then unchanged. An ill-formed mininfo or maxinfo (a
// negative number) is passed over.
bool SetWindowAttribute(WindowAttributes& attributes, StringView name, StringView value);
void ListWindowAttributes(AttributeInfos* infos);

}  // namespace lumo
