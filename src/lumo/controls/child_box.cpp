#include "lumo/controls/child_box.h"

#include "lumo/controls/attribute_table.h"
#include "lumo/core/builder.h"

namespace lumo {

void ChildBox::SetFile(StringView path) {
  file_ = path;
  const WeakRef<ControlBase> self(this);
  RemoveAll();
  if (!self || path.empty()) return;
  BoxBase* const content = BuildFromFile(file_.c_str());
  if (content && !(self && Add(content))) delete content;
}

namespace {
constexpr AttributeRow<ChildBox> kAttributes[] = {
    {TEXT("file"), kValueAs<ChildBox, ValueKind::LayoutFile, &ChildBox::SetFile>},
};
}  // namespace

bool ChildBox::SetAttribute(const WCHAR* name, const WCHAR* value) {
  return ApplyAttribute(kAttributes, *this, TextOf(name), TextOf(value)) || BoxBase::SetAttribute(name, value);
}

void ChildBox::ListAttributes(AttributeInfos* infos) { ListRows(kAttributes, infos); }

}  // namespace lumo
