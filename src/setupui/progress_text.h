// The line beside the progress bar.
#pragma once

#include "base/text.h"

namespace vanta {

// The skin's template with every "%d" as the number and every "%%" as one percent sign. The template is a skin maker's:
// anything else after a percent sign stays as it is written. Pure.
String ProgressText(StringView text_template, int percent);

}  // namespace vanta
