// ProgressTemplate: a label whose background is filled as far as a value goes. The state images are not drawn.
#pragma once

#include "lumo/controls/label_template.h"
#include "lumo/controls/progress_bar.h"

namespace lumo {

template <class X>
class ProgressTemplate : public LabelTemplateTemplate<X> {
  using Base = LabelTemplateTemplate<X>;

 public:
  ProgressTemplate() {
    this->text_.SetStyle(DT_CENTER | DT_SINGLELINE);
    this->SetFixedHeight(12);
  }

  IProgress* AsProgress() override { return this; }
  ProgressBar* ProgressPart() override { return &bar_; }
  double GetValue() const override { return bar_.Range().value; }
  void SetValue(double value) override { bar_.SetValue(value); }
  void SetMax(double max) override { bar_.SetMaxFrom(max); }

  void PaintStateImages(IRender* render) override { bar_.Paint(render); }
  void ReleaseImages() override {
    Base::ReleaseImages();
    bar_.ReleaseImage();
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    return bar_.SetAttribute(TextOf(name), TextOf(value)) || Base::SetAttribute(name, value);
  }

 protected:
  ProgressBar bar_{*this};
};

template <class X>
class ProgressTemplateTemplate : public ProgressTemplate<X> {};

}  // namespace lumo
