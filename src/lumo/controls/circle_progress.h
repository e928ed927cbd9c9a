// CircleProgress: the value as an arc from the top, with an optional picture at the arc's end.
#pragma once

#include "lumo/controls/progress_template.h"

namespace lumo {

class CircleProgress final : public ProgressTemplateTemplate<ControlT<CircleProgress, IProgress, ControlBase>> {
 public:
  static constexpr ControlClass kClass = ControlClass::CircleProgress;

  void SetCircular(bool circular);
  void SetCircleWidth(int width);  // of the pen, design pixels
  void SetIndicator(StringView file);
  void SetClockwise(bool clockwise);  // a change turns the indicator by 180 degrees
  void SetBackColor(StringView name);
  void SetForeColor(StringView name);
  void SetGradientColor(StringView name);

  void PaintStateImages(IRender* render) override;
  void ReleaseImages() override;
  bool SetAttribute(const WCHAR* name, const WCHAR* value) override;
  static void ListAttributes(AttributeInfos* infos);  // its own rows

 private:
  using Base = ProgressTemplateTemplate<ControlT<CircleProgress, IProgress, ControlBase>>;
  void PaintArc(IRender* render);

  bool circular_ = true;
  bool clockwise_ = true;
  bool turned_ = false;
  int circleWidth_ = 1;
  DWORD backColor_ = 0;
  DWORD foreColor_ = 0;
  DWORD gradientColor_ = 0;
  ImageAttribute indicator_;
};

}  // namespace lumo
