// The selected state's look, shared by check boxes and options: pictures, colours and the text colour that replace the
// normal ones while the control is selected.
#pragma once

#include "lumo/controls/color_spec.h"
#include "lumo/controls/control_base.h"
#include "lumo/core/value_kind.h"

namespace lumo {

// Whether it is selected: the control's own business, since what that does differs.
inline constexpr AttributeInfo kSelectedAttribute = {TEXT("selected"), ValueKind::Boolean};

class Selection {
 public:
  // `owner` is the control that this is a part of.
  explicit Selection(ControlBase& owner) : owner_(owner) {}
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  // False when the name is none of the selected state's looks.
  bool SetAttribute(StringView name, StringView value);
  static void ListAttributes(AttributeInfos* infos);  // with "selected"
  void SetTextColor(StringView color);
  void SetColor(int state, StringView text);
  void SetImage(ControlBase::ImageKind kind, int state, StringView text) { owner_.SetStateImage(kind, state, text); }

  bool IsSelected() const { return selected_; }
  void Set(bool selected) { selected_ = selected; }
  const String& TextColor() const { return textColor_; }
  const StateValues<ColorSpec>& Colors() const { return colors_; }
  bool HasVisuals() const { return colors_.AnySet(); }
  // The selected normal image, for the size of a control without other pictures; null for none.
  ImageAttribute* SizingImage() const;

 private:
  ControlBase& owner_;
  bool selected_ = false;
  String textColor_;
  StateValues<ColorSpec> colors_;
};

// Sends `type` with the control as sender, if it is in a window. False when it is gone now.
bool SendFrom(ControlBase& control, int type);

}  // namespace lumo
