// CheckBoxTemplate: a button with a selected state, which activation turns over.
#pragma once

#include "lumo/controls/button_template.h"
#include "lumo/controls/selection.h"

namespace lumo {

// What the layer holds (layer.h).
struct CheckBoxData {
  Selection selection_;
};

template <class X>
class CheckBoxTemplate : protected CheckBoxData, public ButtonTemplateTemplate<X> {
  using Base = ButtonTemplateTemplate<X>;

 public:
  LUMO_LAYER CheckBoxTemplate() { selection_.SetOwner(*this); }
  LUMO_LAYER ~CheckBoxTemplate() override = default;

  bool IsSelected() const override { return selection_.IsSelected(); }
  void SetSelected(bool selected, bool notify) override {
    if (selected == selection_.IsSelected()) return;
    selection_.Set(selected);
    if (notify && !SendFrom(*this, selected ? EventSelect : EventUnselect)) return;
    this->Invalidate();
  }

  void Activate() override {
    if (this->IsActive()) SetSelected(!IsSelected(), true);
  }
  bool HasStateVisuals() const override { return Base::HasStateVisuals() || selection_.HasVisuals(); }
  ImageAttribute* GetSizingImage() override {
    ImageAttribute* const image = Base::GetSizingImage();
    return image ? image : selection_.SizingImage();
  }
  void PaintStateColor(IRender* render) override {
    if (!selection_.PaintColor(render)) Base::PaintStateColor(render);
  }
  void PaintStateImages(IRender* render) override {
    if (!selection_.PaintImages(render)) Base::PaintStateImages(render);
  }
  void PaintText(IRender* render) override {
    if (!selection_.PaintText(render, this->text_)) Base::PaintText(render);
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    if (IsNamed(kSelectedAttribute, name)) {
      SetSelected(ReadBoolean(TextOf(value)), true);
      return true;
    }
    return selection_.SetAttribute(name, value) || Base::SetAttribute(name, value);
  }
};

template <class X>
class CheckBoxTemplateTemplate : public CheckBoxTemplate<X> {
 public:
  LUMO_LAYER CheckBoxTemplateTemplate() = default;
  LUMO_LAYER ~CheckBoxTemplateTemplate() override = default;
};

}  // namespace lumo
