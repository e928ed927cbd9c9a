// The selected state's look, shared by check boxes and options: pictures, colours and the text colour that replace the
// normal ones while the control is selected.
#pragma once

#include "lumo/controls/color_spec.h"
#include "lumo/controls/control_base.h"
#include "lumo/core/value_kind.h"

namespace lumo {

class ControlText;

// Whether it is selected: the control's own business, since what that does differs.
inline constexpr AttributeInfo kSelectedAttribute = {TEXT("selected"), ValueKind::Boolean};

bool IsNamed(const AttributeInfo& attribute, const WCHAR* name);

class Selection {
 public:
  Selection();
  ~Selection();
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;
  // The control that this is a part of. Said once, before anything else is asked.
  void SetOwner(ControlBase& owner) { owner_ = &owner; }

  // False when the name is none of the selected state's looks.
  bool SetAttribute(const WCHAR* name, const WCHAR* value);
  static void ListAttributes(AttributeInfos* infos);  // with "selected"
  void SetTextColor(StringView color);
  void SetColor(int state, StringView text);
  void SetImage(ControlBase::ImageKind kind, int state, StringView text) { owner_->SetStateImage(kind, state, text); }

  bool IsSelected() const { return selected_; }
  void Set(bool selected) { selected_ = selected; }
  bool HasVisuals() const { return colors_.AnySet(); }
  // What is drawn in place of the normal look; false, and nothing is, while the control is not selected.
  bool PaintColor(IRender* render) const;
  bool PaintImages(IRender* render) const;
  bool PaintText(IRender* render, const ControlText& text) const;
  // The selected normal image, for the size of a control without other pictures; null for none.
  ImageAttribute* SizingImage() const;

 private:
  ControlBase* owner_ = nullptr;
  bool selected_ = false;
  String textColor_;
  StateValues<ColorSpec> colors_;
};

// Sends `type` with the control as sender, if it is in a window. False when it is gone now.
bool SendFrom(ControlBase& control, int type);

}  // namespace lumo
