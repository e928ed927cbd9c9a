// ChildBox: a container whose content is another layout file.
#pragma once

#include "lumo/controls/box_t.h"

namespace lumo {

class ChildBox final : public BoxT<ChildBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::ChildBox;

  // Replaces the content by the tree of a layout, a path below the theme folder. Nothing is left in it when the layout
  // cannot be built, and when it is being built already further out.
  void SetFile(StringView path);
  const String& File() const { return file_; }

  // "file": the path.
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override;
  static void ListAttributes(AttributeInfos* infos);  // its own rows

 private:
  String file_;
};

}  // namespace lumo
