// A picture of the walked setup.
#pragma once

#include <filesystem>

namespace vantakit {

// All its windows over a plain background, with a margin. Throws Failure when no window is shown or the file cannot be
// written. UI thread only.
void TakeShot(const std::filesystem::path& file);

}  // namespace vantakit
