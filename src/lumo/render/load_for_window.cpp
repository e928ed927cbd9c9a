#include "lumo/core/window.h"
#include "lumo/render/image_cache.h"

namespace lumo {

bool LoadImage(ImageAttribute& attribute, const Window* window) {
  return window ? LoadImage(attribute, window->ResourceFolder(), window->ScalePercent())
                : LoadImage(attribute, StringView(), 100);
}

}  // namespace lumo
