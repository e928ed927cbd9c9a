#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/window/display.h"
#include "winhost/window/geometry.h"
#include "winhost/window/screen.h"
#include "winhost/window/window.h"

namespace winhost::screen {
namespace {

// What a window adds to a picture, with nothing that another thread could still change.
struct Sheet {
  Picture picture;
  std::optional<RectSet> shape;
  Layer layer;
  bool layered = false;
};

std::optional<Sheet> SheetOf(const WindowInfo& info) {
  const auto window = FindLocalWindow(info.window);
  if (!window) return std::nullopt;
  std::scoped_lock lock(WaitLock());
  const int width = info.place.right - info.place.left, height = info.place.bottom - info.place.top;
  Sheet sheet;
  sheet.picture = *FitPicture(window->picture, width, height);
  sheet.shape = window->shape;
  sheet.layered = (info.ex_style & WS_EX_LAYERED) != 0;
  if (sheet.layered) sheet.layer = window->layer;
  return sheet;
}

std::uint8_t Scale(int value, int by) { return static_cast<std::uint8_t>((value * by + 127) / 255); }

// Premultiplied over premultiplied.
void Blend(const std::uint8_t* from, bool use_alpha, int alpha, std::uint8_t* to) {
  const int cover = use_alpha ? Scale(from[3], alpha) : alpha;
  for (int i = 0; i < 3; ++i)
    to[i] = static_cast<std::uint8_t>(std::min(Scale(from[i], alpha) + Scale(to[i], 255 - cover), 255));
  to[3] = static_cast<std::uint8_t>(std::min(cover + Scale(to[3], 255 - cover), 255));
}

void LayRect(const Sheet& sheet, const RECT& part, POINT at, Picture& picture) {
  for (int y = part.top; y < part.bottom; ++y) {
    const int to_y = y + at.y;
    if (to_y < 0 || to_y >= picture.height) continue;
    for (int x = part.left; x < part.right; ++x) {
      const int to_x = x + at.x;
      if (to_x < 0 || to_x >= picture.width) continue;
      Blend(sheet.picture.At(x, y), sheet.layered && sheet.layer.per_pixel, sheet.layer.alpha, picture.At(to_x, to_y));
    }
  }
}

void Lay(const Sheet& sheet, POINT at, Picture& picture) {
  const RECT all{0, 0, sheet.picture.width, sheet.picture.height};
  RectSet parts = sheet.shape.value_or(RectSet(all));
  parts.Intersect(all);
  for (const RECT& part : parts.rects()) LayRect(sheet, part, at, picture);
}

// The window and its children from the back to the front; children do not reach beyond their parent's client area.
Picture Assemble(const WindowInfo& info) {
  const auto sheet = SheetOf(info);
  if (!sheet) return {};
  Picture picture = *MakePicture(sheet->picture.width, sheet->picture.height);
  Lay(*sheet, {0, 0}, picture);
  const auto children = WindowTable::Current()->List(
      [&](const WindowInfo& each) { return each.parent == info.window && each.child() && each.shown(); });
  for (auto child = children.rbegin(); child != children.rend(); ++child) {
    Sheet inner{Assemble(*child), RectSet(info.client), {255, true}, true};
    const POINT at{info.client.left + child->place.left, info.client.top + child->place.top};
    inner.shape->Move(-at.x, -at.y);
    Lay(inner, at, picture);
  }
  return picture;
}

}  // namespace

Picture Snapshot(HWND window) {
  const auto info = WindowTable::Current()->Find(window);
  return info ? Assemble(*info) : Picture{};
}

Picture Snapshot(DWORD background) {
  const SIZE size = Size();
  Picture picture = *MakePicture(size.cx, size.cy);
  const std::uint8_t color[] = {static_cast<std::uint8_t>(background), static_cast<std::uint8_t>(background >> 8),
                                static_cast<std::uint8_t>(background >> 16), 255};
  for (std::size_t i = 0; i < picture.bits.size(); ++i) picture.bits[i] = color[i % 4];
  const auto windows = WindowTable::Current()->List(
      [](const WindowInfo& info) { return info.top_level() && info.shown() && !(info.style & WS_MINIMIZE); });
  for (auto info = windows.rbegin(); info != windows.rend(); ++info) {
    const Sheet sheet{Assemble(*info), std::nullopt, {255, true}, true};
    Lay(sheet, {info->place.left, info->place.top}, picture);
  }
  return picture;
}

SIZE Size() { return Display::Current().Size(); }

}  // namespace winhost::screen
