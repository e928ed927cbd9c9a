#include "lumo/core/system_version.h"
#include "lumo/render/nine_grid.h"
#include "lumo/render/rect_math.h"
#include "lumo/render/render_gdiplus.h"

// Pictures.

namespace lumo {
namespace {

// How a picture's pixels are taken: opacity, and what lies beyond its edges, which is its own mirror image, so that
// nothing foreign bleeds into the border pixels of a stretched part.
UniqueGpAttributes MakeAttributes(BYTE fade) {
  UniqueGpAttributes attributes;
  Record(gdip::GdipCreateImageAttributes(attributes.Put()));
  if (!attributes) return attributes;
  Record(gdip::GdipSetImageAttributesWrapMode(attributes.Get(), Gdiplus::WrapModeTileFlipXY, 0, FALSE));
  if (!IsVistaOrLater()) return attributes;
  const Gdiplus::ColorMatrix matrix = {{{1, 0, 0, 0, 0},
                                        {0, 1, 0, 0, 0},
                                        {0, 0, 1, 0, 0},
                                        {0, 0, 0, static_cast<float>(fade) / 255.0F, 0},
                                        {0, 0, 0, 0, 1}}};
  Record(gdip::GdipSetImageAttributesColorMatrix(attributes.Get(), Gdiplus::ColorAdjustTypeBitmap, TRUE, &matrix,
                                                 nullptr, Gdiplus::ColorMatrixFlagsDefault));
  return attributes;
}

// Turns what is drawn next about the middle of a rectangle.
void TurnAbout(Gdiplus::GpGraphics* graphics, const RECT& rect, int angle) {
  const float x = (static_cast<float>(rect.left) + static_cast<float>(rect.right)) / 2;
  const float y = (static_cast<float>(rect.top) + static_cast<float>(rect.bottom)) / 2;
  Record(gdip::GdipTranslateWorldTransform(graphics, x, y, Gdiplus::MatrixOrderPrepend));
  Record(gdip::GdipRotateWorldTransform(graphics, static_cast<float>(angle), Gdiplus::MatrixOrderPrepend));
  Record(gdip::GdipTranslateWorldTransform(graphics, -x, -y, Gdiplus::MatrixOrderPrepend));
}

constexpr ULONGLONG kMostTurnedTiles = 1 << 16;

// Tiles outside the clip are left out; where a cell is turned any of them may come into it.
NineGrid GridOf(const ImageDrawing& drawing) {
  const RECT& tiles = drawing.angle ? drawing.dest : drawing.clip;
  return {drawing.clip,           drawing.dest,    drawing.source,  drawing.dest_corners,
          drawing.source_corners, drawing.x_tiled, drawing.y_tiled, tiles};
}

}  // namespace

void RenderGdiplus::DrawImage(const ImageDrawing& drawing) {
  if (!drawing.bitmap || !Meets(drawing.dest, drawing.clip)) return;
  const NineGrid grid = GridOf(drawing);
  const UniqueGraphics graphics = MakeGraphics(dc_.Get(), true);
  if (!graphics || (drawing.angle && CountTiles(grid) > kMostTurnedTiles)) return;
  const UniqueGpAttributes attributes = MakeAttributes(drawing.fade);
  VisitCells(grid, [&](const GridCell& cell) {
    if (drawing.angle) TurnAbout(graphics.Get(), cell.whole, drawing.angle);
    Record(gdip::GdipDrawImageRectRectI(graphics.Get(), drawing.bitmap, cell.dest.left, cell.dest.top,
                                        WidthOf(cell.dest), HeightOf(cell.dest), cell.source.left, cell.source.top,
                                        WidthOf(cell.source), HeightOf(cell.source), Gdiplus::UnitPixel,
                                        attributes.Get(), nullptr, nullptr));
    if (drawing.angle) Record(gdip::GdipResetWorldTransform(graphics.Get()));
  });
}

}  // namespace lumo
