#include "lumo/render/image_animation.h"

#include <stdlib.h>

#include "lumo/core/timers.h"
#include "lumo/render/image_info.h"

namespace lumo {
namespace {

constexpr int kFullTurn = 360;

int CountOf(const ImageAttribute& image) {
  return KindOfAnimation(image) == AnimationKind::Strip ? image.framecount : image.image->frames;
}

bool MayGoOn(const ImageAttribute& image) {
  return image.playcount == kEndless || image.animation.played < image.playcount;
}

// Endless pictures do not count: the number would not fit for ever.
void CountPlay(ImageAttribute& image) {
  if (image.playcount != kEndless) ++image.animation.played;
}

bool Turn(ImageAttribute& image) {
  AnimationState& state = image.animation;
  const LONGLONG next = LONGLONG{state.angle} + image.angle;
  if (llabs(next) <= kFullTurn) {
    state.angle = static_cast<int>(next);
    return true;
  }
  CountPlay(image);
  if (MayGoOn(image)) {
    state.angle = image.angle;
    return true;
  }
  state.angle = static_cast<int>((image.angle < 0 ? -kFullTurn : kFullTurn) - LONGLONG{image.angle} % kFullTurn);
  return false;
}

bool NextFrame(ImageAttribute& image) {
  AnimationState& state = image.animation;
  const int count = CountOf(image);
  if (state.frame + 1 < count) {
    ++state.frame;
    return true;
  }
  CountPlay(image);
  const bool goes_on = MayGoOn(image);
  state.frame = goes_on ? 0 : count - 1;
  return goes_on;
}

void EndTimer(ImageAttribute& image) {
  if (image.animation.timer) KillTimer(image.animation.timer);
  image.animation.timer = 0;
  image.animation.running = false;
}

void StartTimerFor(ImageAttribute& image, WeakBase* owner, Invalidate invalidate, DWORD delay);

void Step(ImageAttribute& image, WeakBase* owner, Invalidate invalidate) {
  if (!image.animation.running || !image.image) return EndTimer(image);
  const DWORD old_delay = StepDelay(image);
  const bool goes_on = MayGoOn(image) && Advance(image);
  const DWORD delay = StepDelay(image);
  if (!goes_on || old_delay == 0 || delay == 0) {
    EndTimer(image);
  } else if (delay != old_delay) {
    EndTimer(image);
    StartTimerFor(image, owner, invalidate, delay);
  }
  invalidate(owner);
}

void StartTimerFor(ImageAttribute& image, WeakBase* owner, Invalidate invalidate, DWORD delay) {
  // The attribute is a part of the owner, and the timer asks for the owner's life.
  image.animation.running = true;
  image.animation.timer =
      StartTimer(owner, delay, kEndless, [&image, owner, invalidate] { Step(image, owner, invalidate); });
}

}  // namespace

AnimationKind KindOfAnimation(const ImageAttribute& image) {
  if (!image.image) return AnimationKind::None;
  if (image.image->frames > 1) return AnimationKind::Frames;
  if (image.interval <= 0) return AnimationKind::None;
  if (image.framecount >= 2) return AnimationKind::Strip;
  return image.angle != 0 ? AnimationKind::Rotation : AnimationKind::None;
}

bool IsAnimationDue(const ImageAttribute& image) {
  return KindOfAnimation(image) != AnimationKind::None && !image.animation.running && MayGoOn(image);
}

DWORD StepDelay(const ImageAttribute& image) {
  if (KindOfAnimation(image) == AnimationKind::Frames) return image.image->FrameDelay(image.animation.frame);
  return image.interval > 0 ? static_cast<DWORD>(image.interval) : 0;
}

bool Advance(ImageAttribute& image) {
  switch (KindOfAnimation(image)) {
    case AnimationKind::None:
      return false;
    case AnimationKind::Rotation:
      return Turn(image);
    default:
      return NextFrame(image);
  }
}

bool StartAnimation(ImageAttribute& image, WeakBase* owner, Invalidate invalidate) {
  EndTimer(image);
  image.animation.frame = 0;
  image.animation.angle = 0;
  const DWORD delay = StepDelay(image);
  if (delay == 0) return false;
  StartTimerFor(image, owner, invalidate, delay);
  return true;
}

void StopAnimation(ImageAttribute& image) {
  EndTimer(image);
  image.animation = AnimationState();
}

}  // namespace lumo
