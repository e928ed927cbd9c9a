// The value of an image-valued attribute: which file, which part of it, where and how it is drawn.
//
// A value is a bare file name or a list of pairs, key='value', separated by blanks: file dest source corner fade xtiled
// ytiled playcount interval framecount angle color scale. Reading stops at the first malformed pair and keeps what came
// before; unknown keys and pairs with an empty value are passed over.
#pragma once

#include "lumo/core/types.h"
#include "lumo/core/value_kind.h"

#include <memory>

namespace lumo {

class ImageInfo;

// Where an animated background image stands. Its timer belongs to the control.
struct AnimationState {
  int frame = 0;
  int angle = 0;  // degrees
  bool running = false;
  int played = 0;  // times
  unsigned timer = 0;
};

struct ImageAttribute {
  static constexpr RECT kWholeRect = {-1, -1, -1, -1};

  // Sets the attribute anew: the picture is let go, everything but fade, angle, color and scale goes back to its
  // default, then the text is stored and read. Stop the animation first. Nothing is loaded.
  void Assign(StringView value);
  // The keys of the pairs.
  static void ListKeys(AttributeInfos* infos);
  // Lets go of the picture; it is loaded again on the next use.
  void Release();
  // What a file that cannot be read leaves: no picture and no file, so it is not tried again until Assign.
  void Reset();

  bool IsSet() const { return !text.empty(); }

  std::shared_ptr<ImageInfo> image;
  String text;
  String file;
  RECT dest = kWholeRect;    // inside the control, unscaled; counts when no side is -1
  RECT source = kWholeRect;  // in image pixels; counts when no side is -1
  RECT corner = {};          // nine-grid widths, unscaled
  BYTE fade = 255;
  int xtiled = 0;
  int ytiled = 0;
  int playcount = -1;  // -1 = endless
  int interval = 0;    // milliseconds
  int framecount = 0;  // frames side by side
  int angle = 0;       // degrees
  String color;        // name of a global colour, for vector pictures
  String scale;        // extra factor, for vector pictures
  AnimationState animation;
};

// No side is -1.
constexpr bool IsGiven(const RECT& rect) {
  return rect.left != -1 && rect.top != -1 && rect.right != -1 && rect.bottom != -1;
}

}  // namespace lumo
