// Clip regions over SaveDC and RestoreDC.
#pragma once

#include "lumo/render/render.h"

#include <vector>

namespace lumo {

class GdiClip final : public IClip {
 public:
  void Push(HDC dc, const RECT& rect) override;
  void Pop(HDC dc) override;

 private:
  std::vector<int> saved_;  // tokens of SaveDC
};

}  // namespace lumo
