// How much of a progress control is filled. Pure; double precision, so that no range overflows or divides by zero.
#pragma once

#include <windows.h>

namespace lumo {

struct ProgressRange {
  int min = 0;
  int max = 100;
  double value = 0;

  // What painting leaves: a maximum above the minimum and a value between the two.
  void Settle();
  // Of the way from the minimum to the maximum, 0 to 1, once settled.
  double Fraction() const;
};

// The filled part relative to the control's top-left corner: from the left, or from the bottom. The range is settled.
RECT ProgressFill(const ProgressRange& range, LONG width, LONG height, bool horizontal);

}  // namespace lumo
