// Drawing an image attribute for a control.
#pragma once

#include "lumo/render/image_animation.h"

namespace lumo {

class IRender;
class Window;

// What drawing needs to know of the control.
struct ImagePlace {
  const Window* window = nullptr;  // null: scale 100
  int scale = 100;                 // percent
  RECT position = {};
  RECT paint = {};         // the part of the position that is being painted
  RECT border_round = {};  // scaled
};

// The control's animated background: it is started when it is due. Null: there is none.
struct AnimatedBackground {
  ImageAttribute* image = nullptr;
  WeakBase* owner = nullptr;  // the control; the image is a part of it
  Invalidate invalidate = nullptr;
};

// Loads the picture where that has not happened and draws it into `target`, or, when that is null or empty, into the
// attribute's "dest" inside the position, or into the whole position. Draws nothing, and resets the attribute, when
// there is no picture. When the background's animation is started by this call nothing is drawn this time.
void PaintImage(IRender* render, const ImagePlace& place, ImageAttribute& image, const RECT* target,
                const AnimatedBackground& background);

// Where it goes and what of it is drawn. Pure.
RECT ImageDestination(const ImagePlace& place, const ImageAttribute& image, const RECT* target);
RECT ImageSource(const ImageAttribute& image);  // the picture must be loaded

}  // namespace lumo
