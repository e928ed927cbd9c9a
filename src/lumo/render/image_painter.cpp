#include "lumo/render/image_painter.h"

#include "lumo/core/scaling.h"
#include "lumo/render/image_cache.h"
#include "lumo/render/image_info.h"
#include "lumo/render/nine_grid.h"
#include "lumo/render/rect_math.h"
#include "lumo/render/render.h"

namespace lumo {
namespace {

// Starts the background's animation where that is due. A picture whose first frame has no delay stands still and is
// drawn as it is.
bool StartWhenDue(const AnimatedBackground& background) {
  ImageAttribute* const image = background.image;
  if (!image || !background.owner || !IsAnimationDue(*image)) return false;
  if (!StartAnimation(*image, background.owner, background.invalidate)) return false;
  // The first frame is there to be seen at once, not after its own delay.
  background.invalidate(background.owner);
  return true;
}

// Chooses the frame: a part of the picture, or the picture's own.
void ChooseFrame(const ImageAttribute& image, RECT* source) {
  if (image.framecount > 0 && image.interval != 0) {
    const LONG width = image.image->width / image.framecount;
    source->left = Saturate(source->left + LONGLONG{image.animation.frame} * width);
    source->right = Sum(source->left, width);
  } else {
    image.image->SelectFrame(image.animation.frame);
  }
}

int AngleOf(const ImageAttribute& image) {
  return KindOfAnimation(image) == AnimationKind::Rotation ? image.animation.angle : image.angle;
}

}  // namespace

RECT ImageDestination(const ImagePlace& place, const ImageAttribute& image, const RECT* target) {
  if (target && !IsEmpty(*target)) return *target;
  if (!IsGiven(image.dest)) return place.position;
  return Moved(ScaleRect(image.dest, place.scale), place.position.left, place.position.top);
}

RECT ImageSource(const ImageAttribute& image) {
  return IsGiven(image.source) ? image.source : RECT{0, 0, image.image->width, image.image->height};
}

void PaintImage(IRender* render, const ImagePlace& place, ImageAttribute& image, const RECT* target,
                const AnimatedBackground& background) {
  if (!LoadImage(image, place.window)) return;
  const RECT dest = ImageDestination(place, image, target);
  RECT source = ImageSource(image);
  if (StartWhenDue(background)) return;
  const CornerPair corners = ScaleCorners(image.corner, place.scale, image.image->scaled);
  ChooseFrame(image, &source);
  ImageDrawing drawing;
  drawing.clip = place.paint;
  drawing.border_round = place.border_round;
  drawing.bitmap = image.image->Bitmap();
  drawing.dest = dest;
  drawing.source = source;
  drawing.dest_corners = corners.dest;
  drawing.source_corners = corners.source;
  drawing.fade = image.fade;
  drawing.x_tiled = image.xtiled != 0;
  drawing.y_tiled = image.ytiled != 0;
  drawing.angle = AngleOf(image);
  render->DrawImage(drawing);
}

}  // namespace lumo
