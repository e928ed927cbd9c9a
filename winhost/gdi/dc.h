// What stands behind an HDC.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "winhost/gdi/bitmap.h"
#include "winhost/gdi/brush.h"
#include "winhost/gdi/font.h"
#include "winhost/gdi/region.h"

namespace winhost {

// What SaveDC keeps.
struct DcState {
  POINT window_origin{};
  std::optional<Region> clip;  // device coordinates; none: everything
  HBITMAP bitmap = nullptr;    // memory DCs only
  HFONT font = nullptr;
  HBRUSH brush = nullptr;
  std::shared_ptr<Font> font_object;  // keeps a font that is deleted while it is selected
  std::shared_ptr<SolidBrush> brush_object;
  COLORREF text_color = RGB(0, 0, 0);
  COLORREF background = RGB(255, 255, 255);
  int background_mode = OPAQUE;
  int stretch_mode = BLACKONWHITE;
};

struct DeviceContext final : GraphicsObject {
  static constexpr ObjectKind kKind = ObjectKind::DeviceContext;
  enum class Target { Memory, Pixels, Screen };
  explicit DeviceContext(Target kind);
  ~DeviceContext() override;  // gives up its bitmap

  // Null for the screen.
  Surface* Pixels() const { return surface.get(); }
  // What drawing may touch, in device coordinates; within the pixels.
  Region Drawable() const;
  POINT ToDevice(POINT point) const;
  RECT ToDevice(const RECT& rect) const;
  POINT Shift() const { return ToDevice(POINT{0, 0}); }

  Target target;
  std::shared_ptr<Surface> surface;
  std::shared_ptr<Bitmap> bitmap_object;
  std::optional<Region> visible;
  SIZE screen{};
  DcState state;
  std::vector<DcState> saved;
};

// Device coordinates stay below this, so that sums and differences of a few of them fit an int.
inline constexpr LONG kFarAway = 0x1FFFFFFF;
// Edges from a corner and sizes, which may be negative; cut at kFarAway.
RECT RectAt(int x, int y, int width, int height);

std::shared_ptr<DeviceContext> FindDc(HDC dc);
// Selects a bitmap into a memory DC; null: refused, and nothing changes.
HBITMAP SelectBitmap(DeviceContext& dc, HBITMAP bitmap);

}  // namespace winhost
