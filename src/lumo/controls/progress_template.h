// ProgressTemplate: a label whose background is filled as far as a value goes. The state images are not drawn.
#pragma once

#include "lumo/controls/label_template.h"
#include "lumo/controls/progress_bar.h"

namespace lumo {

// What the layer holds (layer.h).
struct ProgressData {
  ProgressBar bar_;
};

template <class X>
class ProgressTemplate : protected ProgressData, public LabelTemplateTemplate<X> {
  using Base = LabelTemplateTemplate<X>;

 public:
  LUMO_LAYER ProgressTemplate() {
    bar_.SetOwner(*this);
    this->text_.SetStyle(DT_CENTER | DT_SINGLELINE);
    this->StartWithHeight(12);
  }
  LUMO_LAYER ~ProgressTemplate() override = default;

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
    return bar_.SetAttribute(name, value) || Base::SetAttribute(name, value);
  }
};

template <class X>
class ProgressTemplateTemplate : public ProgressTemplate<X> {
 public:
  LUMO_LAYER ProgressTemplateTemplate() = default;
  LUMO_LAYER ~ProgressTemplateTemplate() override = default;
};

}  // namespace lumo
