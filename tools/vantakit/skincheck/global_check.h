// global.xml of a theme: its definitions, and what is wrong with them.
#pragma once

#include "tools/vantakit/findings.h"
#include "tools/vantakit/skincheck/catalogue.h"
#include "tools/vantakit/skincheck/markup_source.h"
#include "tools/vantakit/skincheck/skin_theme.h"

namespace vantakit {

// Puts fonts, colours and themes into `theme`. Pictures of themes are checked where a window uses them.
void CheckGlobals(MarkupSource& source, Catalogue& catalogue, SkinTheme* theme, Findings* findings);

// The attributes of a Font or Color element, and the kinds of their values; none for other elements.
lumo::AttributeInfos GlobalAttributes(lumo::StringView tag);

}  // namespace vantakit
