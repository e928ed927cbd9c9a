// Image attributes: any text as a value, then another one over it, and where the result is drawn.

#include "lumo/render/image_attribute.h"

#include "lumo/render/image_painter.h"
#include "lumo/render/nine_grid.h"
#include "tests/fuzz/fuzz.h"

namespace {

constexpr RECT kClip = {0, 0, 64, 64};

void CheckCells(const lumo::ImageAttribute& image) {
  lumo::ImagePlace place;
  place.position = kClip;
  place.scale = 150;
  const lumo::CornerPair corners = lumo::ScaleCorners(image.corner, place.scale, false);
  const lumo::NineGrid grid = {kClip,
                               lumo::ImageDestination(place, image, nullptr),
                               image.source,
                               corners.dest,
                               corners.source,
                               image.xtiled != 0,
                               image.ytiled != 0,
                               kClip};
  std::size_t cells = 0;
  lumo::VisitCells(grid, [&](const lumo::GridCell& cell) {
    ++cells;
    FUZZ_EXPECT(cell.dest.left < cell.dest.right && cell.dest.top < cell.dest.bottom);
  });
  FUZZ_EXPECT(cells <= 64 * 64 + 8);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vanta::String text = vanta::FromUtf8({reinterpret_cast<const char*>(data), size});
  const std::size_t half = text.size() / 2;
  lumo::ImageAttribute image;
  image.Assign(text.substr(0, half));
  CheckCells(image);
  image.Assign(text.substr(half));
  FUZZ_EXPECT(image.text == text.substr(half));
  FUZZ_EXPECT(image.file.size() <= image.text.size());
  CheckCells(image);
  return 0;
}
