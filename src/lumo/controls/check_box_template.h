// CheckBoxTemplate: a button with a selected state, which activation turns over.
#pragma once

#include "lumo/controls/button_template.h"
#include "lumo/controls/selection.h"

namespace lumo {

template <class X>
class CheckBoxTemplate : public ButtonTemplateTemplate<X> {
  using Base = ButtonTemplateTemplate<X>;

 public:
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
    if (IsSelected()) {
      this->PaintColorOfState(render, selection_.Colors());
    } else {
      Base::PaintStateColor(render);
    }
  }
  void PaintStateImages(IRender* render) override {
    if (IsSelected()) {
      this->PaintImagesOfState(render, ControlBase::SelectedBackImages);
      this->PaintImagesOfState(render, ControlBase::SelectedForeImages);
    } else {
      Base::PaintStateImages(render);
    }
  }
  void PaintText(IRender* render) override {
    if (IsSelected()) {
      this->text_.PaintSelected(render, selection_.TextColor());
    } else {
      Base::PaintText(render);
    }
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    if (TextOf(name) == kSelectedAttribute.name) {
      SetSelected(ReadBoolean(TextOf(value)), true);
      return true;
    }
    return selection_.SetAttribute(TextOf(name), TextOf(value)) || Base::SetAttribute(name, value);
  }

 protected:
  Selection selection_{*this};
};

template <class X>
class CheckBoxTemplateTemplate : public CheckBoxTemplate<X> {};

}  // namespace lumo
