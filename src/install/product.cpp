#include "install/product.h"

#include "base/paths.h"
#include "install/directories.h"
#include "report/probes/os_version.h"

namespace vanta {

String InstalledFile(StringView name) { return JoinPath(GetInstallDirectory(), name); }

String ChosenProgram() { return InstalledFile(IsOsAtLeast(Os7) ? kSiblingProgram : kViewerProgram); }

}  // namespace vanta
