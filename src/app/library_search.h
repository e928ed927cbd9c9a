// Where this process takes its libraries from.
#pragma once

namespace vanta {

// First of all in the process: from here on libraries that are named without a path come from the system folder, so
// that nothing planted beside the setup is loaded. Covers the libraries that are linked to be loaded on first use.
void RestrictLibrarySearch();

}  // namespace vanta
