// LabelTemplate: what makes a control a label. X is the ControlT or BoxT at the root of the chain.
#pragma once

#include "lumo/controls/control_text.h"
#include "lumo/controls/control_t.h"
#include "lumo/core/value_readers.h"

namespace lumo {

// What the layer holds (layer.h).
struct LabelData {
  ControlText text_;
};

template <class X>
class LabelTemplate : protected LabelData, public X {
 public:
  LUMO_LAYER LabelTemplate() { text_.SetOwner(*this); }
  LUMO_LAYER ~LabelTemplate() override = default;

  String GetText() const override { return text_.GetText(); }
  void SetText(StringView text) override { text_.SetText(text); }
  void SetTextId(StringView id) override { text_.SetTextId(id); }

  ILabel* AsLabel() override { return this; }
  ControlText* TextPart() override { return &text_; }
  SIZE EstimateContent(SIZE available) override { return text_.Measure(available); }
  void PaintText(IRender* render) override { text_.Paint(render); }
  // A text that changes its colour is worth a repaint, whatever else does not change.
  bool HasStateVisuals() const override { return X::HasStateVisuals() || text_.Colors().AnySet(); }
  void SetPos(RECT rect) override {
    const ToolTipUpdate update(text_, *this);
    X::SetPos(rect);
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    return text_.SetAttribute(name, value) || X::SetAttribute(name, value);
  }
};

template <class X>
class LabelTemplateTemplate : public LabelTemplate<X> {
 public:
  LUMO_LAYER LabelTemplateTemplate() = default;
  LUMO_LAYER ~LabelTemplateTemplate() override = default;
};

}  // namespace lumo
