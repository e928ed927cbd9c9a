// Views of controls: colours, texts, progress, options and the rectangles of a layout.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"text"} → {"color", "color1", "color2", "dest", "gradient", "mode"}
nlohmann::json GlobalsColorSpecView(const nlohmann::json& input);
// {"xml": a whole layout, "scale"} → {"client": [width, height], "rects": name → rectangle in the client area}, device
// pixels; every named control, those of hidden pages where they are once their page is shown
nlohmann::json LayoutRectsView(const nlohmann::json& input);
// {"client": rectangle less the frame insets, or [width, height], "point", "sizebox", "caption": design pixels,
// "scale", "maximised", "control": tag under the point or null} → {"hit": client, caption, left, right, top, bottom,
// topleft, topright, bottomleft or bottomright}; device pixels but for what is said to be design pixels
nlohmann::json WindowHitView(const nlohmann::json& input);
// {"control": tag, "align": values set in order, "singleline", "endellipsis": attribute texts or null} → {"stored",
// "used"}
nlohmann::json TextStyleView(const nlohmann::json& input);
// {"colors": state number → colour text} → {"shown": four texts, by state}
nlohmann::json TextStateColorView(const nlohmann::json& input);
// {"width", "height", "left", "top", "min", "max", "value", "horizontal"} → {"min", "max", "value": after painting,
// "fill": inside the control, "colorRect", "imageRect"}
nlohmann::json ProgressFillView(const nlohmann::json& input);
// {"group": how many options, "ops": ["click", i], ["set0", i], ["set1", i]} → {"selected": by option, "events": [name,
// i] in order}
nlohmann::json EventsOptionsView(const nlohmann::json& input);

}  // namespace vantakit
