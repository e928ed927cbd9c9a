// LabelTemplate: what makes a control a label. X is the ControlT or BoxT at the root of the chain.
#pragma once

#include "lumo/controls/control_text.h"
#include "lumo/controls/control_t.h"
#include "lumo/core/value_readers.h"

namespace lumo {

template <class X>
class LabelTemplate : public X {
 public:
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
    if (!text_.HasAutoToolTip()) return X::SetPos(rect);
    const WeakRef<ControlBase> self(this);
    X::SetPos(rect);
    if (self) text_.UpdateToolTip();
  }
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override {
    return text_.SetAttribute(TextOf(name), TextOf(value)) || X::SetAttribute(name, value);
  }

 protected:
  ControlText text_{*this};
};

template <class X>
class LabelTemplateTemplate : public LabelTemplate<X> {};

}  // namespace lumo
