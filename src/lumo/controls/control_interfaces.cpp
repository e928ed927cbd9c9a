#include "lumo/controls/control_interfaces.h"

#include "lumo/controls/box_base.h"

namespace lumo {

const String& IControl::GetName() { return AsControl()->Name(); }
Window* IControl::GetHostWindow() { return AsControl()->GetWindow(); }
RECT IControl::GetPosition() { return AsControl()->Position(); }
void IControl::SetAttribute(const WCHAR* name, const WCHAR* value) { AsControl()->SetAttribute(name, value); }
bool IControl::IsVisible() { return AsControl()->IsVisible(); }
void IControl::SetVisible(bool visible) { AsControl()->SetVisible(visible); }
void IControl::SetFadeVisible(bool visible) { AsControl()->SetFadeVisible(visible); }
bool IControl::IsEnabled() { return AsControl()->IsEnabled(); }
void IControl::SetEnabled(bool enabled) { AsControl()->SetEnabled(enabled); }
bool IControl::IsMouseEnabled() { return AsControl()->IsMouseEnabled(); }
void IControl::SetMouseEnabled(bool enabled) { AsControl()->SetMouseEnabled(enabled); }
bool IControl::IsKeyboardEnabled() { return AsControl()->IsKeyboardEnabled(); }
void IControl::SetKeyboardEnabled(bool enabled) { AsControl()->SetKeyboardEnabled(enabled); }
bool IControl::IsFocused() { return AsControl()->IsFocused(); }
void IControl::SetFocus() { AsControl()->SetFocus(); }
void IControl::Activate() { AsControl()->Activate(); }
void IControl::Invalidate() { AsControl()->Invalidate(); }
void IControl::SetBkImage(StringView image) { AsControl()->SetBkImage(image); }
String IControl::GetToolTip() { return AsControl()->GetToolTip(); }
void IControl::SetToolTipText(StringView text) { AsControl()->SetToolTipText(text); }
const String& IControl::GetDataId() { return AsControl()->DataId(); }

std::string ILabel::GetUtf8Text() const { return vanta::ToUtf8(GetText()); }
void ILabel::SetUtf8Text(std::string_view text) { SetText(vanta::FromUtf8(text)); }

template <class I>
int IContainer<I>::GetCount() {
  return this->AsControl()->AsBox()->GetCount();
}
template <class I>
ControlBase* IContainer<I>::GetItemAt(int index) {
  return this->AsControl()->AsBox()->GetItemAt(index);
}
template <class I>
int IContainer<I>::GetItemIndex(const ControlBase* child) {
  return this->AsControl()->AsBox()->GetItemIndex(child);
}
template <class I>
bool IContainer<I>::SetItemIndex(ControlBase* child, int index) {
  return this->AsControl()->AsBox()->SetItemIndex(child, index);
}
template <class I>
bool IContainer<I>::Add(ControlBase* child) {
  return this->AsControl()->AsBox()->Add(child);
}
template <class I>
bool IContainer<I>::AddAt(ControlBase* child, int index) {
  return this->AsControl()->AsBox()->AddAt(child, index);
}
template <class I>
bool IContainer<I>::Remove(ControlBase* child) {
  return this->AsControl()->AsBox()->Remove(child);
}
template <class I>
bool IContainer<I>::RemoveAt(int index) {
  return this->AsControl()->AsBox()->RemoveAt(index);
}
template <class I>
void IContainer<I>::RemoveAll() {
  this->AsControl()->AsBox()->RemoveAll();
}

template class IContainer<IControl>;
template class IContainer<ILabel>;
template class IContainer<IButton>;
template class IContainer<ICheckBox>;
template class IContainer<IOption>;

}  // namespace lumo
