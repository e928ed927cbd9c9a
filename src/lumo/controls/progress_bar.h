// The range and the fill of a progress control; the progress template puts it into its control.
#pragma once

#include "lumo/controls/color_spec.h"
#include "lumo/controls/progress_fill.h"
#include "lumo/core/value_kind.h"
#include "lumo/render/image_attribute.h"

namespace lumo {

class ControlBase;
class IRender;

class ProgressBar {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  // The control that this is a part of. Said once, before anything else is asked.
  void SetOwner(ControlBase& owner) { owner_ = &owner; }

  // False when the name is no progress attribute.
  bool SetAttribute(const WCHAR* name, const WCHAR* value);
  static void ListAttributes(AttributeInfos* infos);
  void SetHorizontal(bool horizontal);
  void SetMin(int min);
  void SetMax(int max);
  void SetMaxFrom(double max);  // truncated, and cut to 32 bits
  void SetValue(double value);
  void SetWholeValue(int value) { SetValue(value); }
  void SetImage(StringView text);
  void SetColor(StringView text);

  bool IsHorizontal() const { return horizontal_; }
  const ProgressRange& Range() const { return range_; }
  // Settles the range and gives the filled part of the control's position, device pixels of the client area.
  RECT SettleFill();
  void Paint(IRender* render);
  void ReleaseImage() { image_.Release(); }

 private:
  ControlBase* owner_ = nullptr;
  bool horizontal_ = true;
  ProgressRange range_;
  ImageAttribute image_;
  ColorSpec color_;
};

}  // namespace lumo
