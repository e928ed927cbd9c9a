#include "lumo/controls/child_box.h"

#include "lumo/core/builder.h"
#include "lumo/core/value_readers.h"

namespace lumo {

void ChildBox::SetFile(StringView path) {
  file_ = path;
  const WeakRef<ControlBase> self(this);
  RemoveAll();
  if (!self || path.empty()) return;
  BoxBase* const content = BuildFromFile(file_.c_str());
  if (content && !(self && Add(content))) delete content;
}

void ChildBox::SetAttribute(const WCHAR* name, const WCHAR* value) {
  if (TextOf(name) == TEXT("file")) {
    SetFile(TextOf(value));
  } else {
    BoxBase::SetAttribute(name, value);
  }
}

}  // namespace lumo
