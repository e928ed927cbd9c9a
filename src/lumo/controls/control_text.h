// The text of a control: what it says, how it looks, how much room it takes. The text templates put it into their
// control and let its operations do their work.
#pragma once

#include "lumo/controls/control_state.h"
#include "lumo/controls/text_align.h"
#include "lumo/core/value_kind.h"
#include "lumo/core/weak.h"
#include "lumo/render/render.h"

namespace lumo {

class ControlBase;

class ControlText {
 public:
  ControlText();
  ~ControlText();
  ControlText(const ControlText&) = delete;
  ControlText& operator=(const ControlText&) = delete;
  // The control that this is a part of. Said once, before anything else is asked.
  void SetOwner(ControlBase& owner) { owner_ = &owner; }

  // False when the name is no text attribute.
  bool SetAttribute(const WCHAR* name, const WCHAR* value);
  static void ListAttributes(AttributeInfos* infos);

  String GetText() const;
  void SetText(StringView text);
  void SetTextId(StringView id);
  void SetFont(StringView id);
  void SetAlign(StringView words) { style_ = ApplyAlignWords(style_, words); }
  void SetStyle(UINT style) { style_ = style; }
  UINT Style() const { return style_; }
  UINT UsedStyle() const { return WithSingleLine(style_, singleLine_); }
  void SetEndEllipsis(bool on);
  void SetSingleLine(bool on);
  void SetLineLimit(bool on);
  void SetGdiText(bool on);
  void SetTextPadding(const RECT& design);  // scaled now
  void SetTextColor(int state, StringView color);
  const StateValues<String>& Colors() const { return colors_; }
  void SetAutoToolTip(bool on);
  bool HasAutoToolTip() const { return autoToolTip_; }

  void Paint(IRender* render) const;
  // The look of a selected control: `selected_color`, or the normal one when that is empty; neither line limit nor GDI
  // text, and the style as stored.
  void PaintSelected(IRender* render, StringView selected_color) const;
  // Device pixels, text padding included; 0 for a height that is not automatic.
  SIZE Measure(SIZE available) const;
  // Shows the saved tooltip only while the text does not fit. After every change of text or place.
  void UpdateToolTip();

 private:
  TextLook Look() const;
  RECT TextRect() const;
  SIZE MeasureAt(StringView text, int width_limit) const;
  int WidthLimit() const;
  bool Fits() const;

  ControlBase* owner_ = nullptr;
  String text_;
  String textId_;
  String font_;
  String savedToolTip_;
  StateValues<String> colors_;
  RECT padding_ = {};  // device pixels
  UINT style_ = kLabelStyle;
  bool singleLine_ = true;
  bool lineLimit_ = false;
  bool gdiText_ = false;
  bool autoToolTip_ = false;
};

// Around a change of place: at its end an automatic tooltip is shown or hidden, if the control is still there.
class ToolTipUpdate {
 public:
  ToolTipUpdate(ControlText& text, ControlBase& control);
  ToolTipUpdate(const ToolTipUpdate&) = delete;
  ToolTipUpdate& operator=(const ToolTipUpdate&) = delete;
  ~ToolTipUpdate();

 private:
  ControlText& text_;
  WeakRef<ControlBase> control_;  // none without an automatic tooltip
};

}  // namespace lumo
