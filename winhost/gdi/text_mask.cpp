#include "winhost/gdi/text_mask.h"

#include <algorithm>
#include <cmath>

#include "winhost/gdi/text_layout.h"

namespace winhost {
namespace {

constexpr double kSteps = 16;                    // fractions of a pixel that are told apart
constexpr double kMostPixels = 4 * 1024 * 1024;  // of a mask
constexpr std::size_t kKept = 4;                 // masks a block

double Baseline(const TextBlock& block, std::size_t line, const TextPlace& place) {
  return std::round(place.y + block.ascent + block.spacing * static_cast<double>(line));
}

struct Box {
  double left = 0, top = 0, right = 0, bottom = 0;
  bool Empty() const { return left >= right || top >= bottom; }
};

Box InkBox(const TextBlock& block, const TextPlace& place) {
  Box box{1e9, 1e9, -1e9, -1e9};
  for (std::size_t i = 0; i < block.lines.size(); ++i) {
    PangoRectangle ink, logical;
    pango_layout_line_get_extents(block.lines[i].line, &ink, &logical);
    const double x = place.x + LineLeft(block, i, place), y = Baseline(block, i, place);
    const double left = std::min(ink.x, 0), right = std::max(ink.x + ink.width, logical.width);
    const double top = std::min(ink.y, logical.y);
    const double bottom = std::max(ink.y + ink.height, logical.y + logical.height);
    box.left = std::min(box.left, x + left / PANGO_SCALE);
    box.right = std::max(box.right, x + right / PANGO_SCALE);
    box.top = std::min(box.top, y + top / PANGO_SCALE);
    box.bottom = std::max(box.bottom, y + bottom / PANGO_SCALE);
  }
  constexpr double kMargin = 2;  // slanted and emboldened glyphs reach a little beyond their boxes
  return {std::floor(box.left) - kMargin, std::floor(box.top) - kMargin, std::ceil(box.right) + kMargin,
          std::ceil(box.bottom) + kMargin};
}

// Lines below and through a text, at whole pixels.
void AddRules(cairo_t* context, const TextBlock& block, std::size_t index, double x, double y) {
  const double em = block.font.em;
  const double thickness = std::max(1.0, std::round(em / 18));
  const double width = block.lines[index].width;
  if (block.font.underline) cairo_rectangle(context, x, y + std::max(1.0, std::round(em / 12)), width, thickness);
  if (block.font.strikeout) cairo_rectangle(context, x, y - std::round(em * 0.27), width, thickness);
}

std::shared_ptr<const TextMask> Render(const TextBlock& block, const TextPlace& place) {
  const Box box = InkBox(block, place);
  if (box.Empty() || (box.right - box.left) * (box.bottom - box.top) > kMostPixels) return nullptr;
  auto mask = std::make_shared<TextMask>();
  mask->place = place;
  mask->left = static_cast<int>(box.left);
  mask->top = static_cast<int>(box.top);
  mask->coverage.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, static_cast<int>(box.right - box.left),
                                                  static_cast<int>(box.bottom - box.top)));
  const CairoContext context(cairo_create(mask->coverage.get()));
  cairo_translate(context.get(), -box.left, -box.top);
  if (!place.antialias) cairo_set_antialias(context.get(), CAIRO_ANTIALIAS_NONE);
  AddTextPath(context.get(), block, place);
  cairo_fill(context.get());
  cairo_surface_flush(mask->coverage.get());
  return mask;
}

bool SamePlace(const TextPlace& a, const TextPlace& b) {
  return a.align == b.align && a.box == b.box && a.x == b.x && a.y == b.y && a.whole_lines == b.whole_lines &&
         a.blank_ends == b.blank_ends && a.antialias == b.antialias;
}

}  // namespace

double LineLeft(const TextBlock& block, std::size_t line, const TextPlace& place) {
  const double width = place.blank_ends ? block.lines[line].whole_width : block.lines[line].width;
  const double free = place.box - width;
  const double left = place.align == TextAlign::Near ? 0 : place.align == TextAlign::Center ? free / 2 : free;
  return place.whole_lines ? std::floor(left) : left;
}

void AddTextPath(cairo_t* context, const TextBlock& block, const TextPlace& place) {
  for (std::size_t i = 0; i < block.lines.size(); ++i) {
    const double x = place.x + LineLeft(block, i, place), y = Baseline(block, i, place);
    cairo_move_to(context, x, y);
    pango_cairo_layout_line_path(context, block.lines[i].line);
    AddRules(context, block, i, x, y);
  }
}

std::shared_ptr<const TextMask> MaskOf(const TextBlock& block, const TextPlace& place) {
  TextPlace wanted = place;
  wanted.x = std::round((place.x - std::floor(place.x)) * kSteps) / kSteps;
  wanted.y = std::round((place.y - std::floor(place.y)) * kSteps) / kSteps;
  auto& kept = block.masks.kept;
  const auto found = std::ranges::find_if(kept, [&](const auto& mask) { return SamePlace(mask->place, wanted); });
  if (found != kept.end()) return *found;
  auto mask = Render(block, wanted);
  if (!mask) return nullptr;
  if (kept.size() == kKept) kept.erase(kept.begin());
  kept.push_back(mask);
  return mask;
}

}  // namespace winhost
