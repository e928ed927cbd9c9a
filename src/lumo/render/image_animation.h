// Animated background images: frames of a bitmap, frames side by side in one bitmap, or a picture that turns.
#pragma once

#include "lumo/core/weak.h"
#include "lumo/render/image_attribute.h"

namespace lumo {

enum class AnimationKind { None, Frames, Strip, Rotation };

// By what the attribute and its loaded picture say; None without a picture.
AnimationKind KindOfAnimation(const ImageAttribute& image);

// Animated, not running, allowed to play and not played out.
bool IsAnimationDue(const ImageAttribute& image);

// Milliseconds that the current frame stays; 0: it does not move on.
DWORD StepDelay(const ImageAttribute& image);

// Moves the state on by one step. False when the picture has been played as often as it may: it then stands on its last
// frame, or one step short of a full turn.
bool Advance(ImageAttribute& image);

// Asks the owner to be painted again.
using Invalidate = void (*)(WeakBase* owner);

// Starts at the first frame. False when its delay is 0: nothing runs then. `invalidate` is called at each step for as
// long as `owner` lives; the attribute must live as long as the owner, at the same place.
bool StartAnimation(ImageAttribute& image, WeakBase* owner, Invalidate invalidate);

// Kills the timer and goes back to the first frame; a picture that was played out may play again.
void StopAnimation(ImageAttribute& image);

}  // namespace lumo
