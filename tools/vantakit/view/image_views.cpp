#include "tools/vantakit/view/image_views.h"

#include <algorithm>
#include <stdexcept>

#include "base/sha256.h"
#include "lumo/render/image_attribute.h"
#include "lumo/render/nine_grid.h"
#include "lumo/render/rect_math.h"
#include "lumo/render/scale_file.h"
#include "lumo/render/vector_image.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {

using Json = nlohmann::json;

namespace {

constexpr size_t kMostCells = 100000;

Json JsonOf(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

RECT RectOf(const Json& json) { return {json.at(0), json.at(1), json.at(2), json.at(3)}; }

// Flags are written as booleans or as numbers.
bool FlagOf(const Json& input, const char* name) {
  const Json& flag = input.at(name);
  return flag.is_boolean() ? flag.get<bool>() : flag.get<int>() != 0;
}

const char* NameOf(lumo::GridCellName name) {
  static constexpr const char* kNames[] = {"centre", "top-left",    "top",    "top-right",   "left",
                                           "right",  "bottom-left", "bottom", "bottom-right"};
  return kNames[static_cast<size_t>(name)];
}

}  // namespace

Json ImageParseView(const Json& input) {
  lumo::ImageAttribute image;
  for (const Json& text : input.at("texts")) image.Assign(TextOf(text));
  return {{"text", vanta::ToUtf8(image.text)},
          {"file", vanta::ToUtf8(image.file)},
          {"dest", JsonOf(image.dest)},
          {"source", JsonOf(image.source)},
          {"corner", JsonOf(image.corner)},
          {"fade", image.fade},
          {"xtiled", image.xtiled},
          {"ytiled", image.ytiled},
          {"playcount", image.playcount},
          {"interval", image.interval},
          {"framecount", image.framecount},
          {"angle", image.angle},
          {"color", vanta::ToUtf8(image.color)},
          {"scale", vanta::ToUtf8(image.scale)}};
}

Json ImageScaleFileView(const Json& input) {
  const auto existing = input.at("existing").get<std::vector<std::string>>();
  const auto exists = [&](const vanta::String& path) {
    return std::find(existing.begin(), existing.end(), vanta::ToUtf8(path)) != existing.end();
  };
  return {{"path", vanta::ToUtf8(lumo::ChooseScaleFile(TextOf(input, "path"), input.at("scale"), exists))}};
}

Json ImageCellsView(const Json& input) {
  const lumo::CornerPair corners =
      lumo::ScaleCorners(RectOf(input.at("corner")), input.at("scale"), FlagOf(input, "alreadyScaled"));
  const RECT dest = RectOf(input.at("dest")), source = RectOf(input.at("source"));
  const bool x_tiled = FlagOf(input, "xtiled"), y_tiled = FlagOf(input, "ytiled");
  const lumo::NineGrid grid = {RectOf(input.at("clip")), dest,    source,  corners.dest,
                               corners.source,           x_tiled, y_tiled, dest};
  if (lumo::CountTiles(grid) > kMostCells) throw std::runtime_error("too many tiles");
  Json cells = Json::array();
  lumo::VisitCells(grid, [&](const lumo::GridCell& cell) {
    cells.push_back({NameOf(cell.name), JsonOf(cell.dest), JsonOf(cell.source)});
  });
  return {{"destCorners", JsonOf(corners.dest)}, {"sourceCorners", JsonOf(corners.source)}, {"cells", cells}};
}

Json ImageSvgView(const Json& input) {
  const Json& color = input.at("color");
  const DWORD argb = color.is_null() ? 0 : color.get<DWORD>();
  const auto pixels = lumo::DrawVector(input.at("svg").get_ref<const std::string&>(), input.at("scale"),
                                       TextOf(input, "scaleText"), color.is_null() ? nullptr : &argb);
  if (!pixels) return {{"width", nullptr}, {"height", nullptr}, {"sha256", nullptr}};
  const auto digest = vanta::Sha256(pixels->bgra.data(), pixels->bgra.size());
  return {{"width", pixels->width}, {"height", pixels->height}, {"sha256", HexOf(digest.data(), digest.size())}};
}

}  // namespace vantakit
