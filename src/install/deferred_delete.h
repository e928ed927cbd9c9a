// Removing files that others may hold open.
#pragma once

#include "base/text.h"

namespace vanta {

// True when the file is gone afterwards. Otherwise it is removed at the next restart, with `rename_first` after having
// been moved to its own name, "." and the tick count, so that its name is free at once; false then, whether or not that
// could be arranged.
bool DeleteFileOrDefer(const String& path, bool rename_first);

}  // namespace vanta
