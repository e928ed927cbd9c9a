// What only some controls have: colours, pictures, texts beside the name. Made with the first attribute that needs it,
// so that a plain spacer stays small.
#pragma once

#include "lumo/controls/color_spec.h"
#include "lumo/controls/control_base.h"
#include "lumo/render/image_attribute.h"
#include "lumo/render/render.h"

namespace lumo {

struct ControlLooks {
  ColorSpec bkColor;
  StateValues<ColorSpec> stateColors;
  StateValues<ColorSpec> stateBorderColors;
  StateValues<ImageAttribute> stateImages[ControlBase::ImageKindCount];
  String borderColor;  // name
  ImageAttribute bkImage;
  RECT borderRound = {};    // design pixels
  POINT renderOffset = {};  // device pixels
  String toolTipText;
  String toolTipTextId;
  String dataId;
  std::unique_ptr<IRender> copy;  // off-screen copy of the control's own painting
};

}  // namespace lumo
