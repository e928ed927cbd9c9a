// Views of pictures: how image attributes are read, which file a scale takes, where nine-grid cells lie, how SVG is
// drawn.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"texts": assigned one after another to one attribute} → every field of the attribute
nlohmann::json ImageParseView(const nlohmann::json& input);
// {"path", "scale", "existing": files that are there} → {"path"}
nlohmann::json ImageScaleFileView(const nlohmann::json& input);
// {"dest", "source", "corner", "scale", "alreadyScaled", "xtiled", "ytiled", "clip"} → {"destCorners",
// "sourceCorners", "cells": [name, dest, source] in drawing order}; refused beyond 100,000 tiles
nlohmann::json ImageCellsView(const nlohmann::json& input);
// {"svg", "scale", "scaleText", "color" (ARGB or null)} → {"width", "height", "sha256" of the pixels as straight blue,
// green, red, alpha}, all null where there is no picture
nlohmann::json ImageSvgView(const nlohmann::json& input);

}  // namespace vantakit
