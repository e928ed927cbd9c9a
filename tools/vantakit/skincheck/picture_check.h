// Is a picture there, can it be drawn, and is it there for every scale?
#pragma once

#include "tools/vantakit/skincheck/value_check.h"

namespace vantakit {

// `scale` is an image attribute's extra factor. See CheckValue for what has to be started.
Remarks CheckPicture(SkinTheme& theme, lumo::StringView window_folder, lumo::StringView file, lumo::StringView scale);

}  // namespace vantakit
