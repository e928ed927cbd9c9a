// A layout in a real window, drawn anew whenever a file of the skin changes.
#pragma once

#include <filesystem>
#include <string>

#include "tools/vantakit/preview/dressing.h"
#include "tools/vantakit/preview/stage.h"
#include "tools/vantakit/preview/trace.h"

namespace vantakit {

// Until the window is closed; 0. A skin that does not load any more is named on standard error, and the window stays as
// it was.
int RunLive(Stage& stage, const std::filesystem::path& skin, const std::string& layout, const Dressing& dressing,
            Trace& trace);

}  // namespace vantakit
