// Everything of one theme: its global file, its layouts, and what nobody uses.
#pragma once

#include "tools/vantakit/findings.h"
#include "tools/vantakit/skincheck/skin_theme.h"

namespace vantakit {

// A machine must be current: pictures are drawn. With `unused`, definitions and pictures that no layout uses are
// warnings. Keys of the string table are marked as they are used.
Findings CheckTheme(SkinTheme& theme, bool unused);

}  // namespace vantakit
