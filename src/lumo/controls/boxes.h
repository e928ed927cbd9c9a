// The plain containers.
#pragma once

#include "lumo/controls/box_t.h"
#include "lumo/controls/h_layout.h"
#include "lumo/controls/tile_layout.h"
#include "lumo/controls/v_layout.h"

namespace lumo {

class Box final : public BoxT<Box, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::Box;
};

class VBox final : public BoxT<VBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::VBox;
  VBox() { SetLayout(std::make_unique<VLayout>()); }
};

class HBox final : public BoxT<HBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::HBox;
  HBox() { SetLayout(std::make_unique<HLayout>()); }
};

class TileBox final : public BoxT<TileBox, IBox, BoxBase> {
 public:
  static constexpr ControlClass kClass = ControlClass::TileBox;
  TileBox() { SetLayout(std::make_unique<TileLayout>()); }
};

}  // namespace lumo
