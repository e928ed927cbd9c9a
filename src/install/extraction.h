// Taking the product's files out of the payload archive.
#pragma once

#include "base/text.h"

namespace vanta {

// Makes the install directory where it is missing. False: ErrorCreateDir was posted and the reason logged.
bool EnsureInstallDirectory();

// Extracts every entry of the open payload archive into `directory`, replacing files that are there, and posts the
// progress after each file. False at the first failure, whose status was posted, and without a status when the setup
// window has gone meanwhile; what was extracted so far stays.
bool extractInstallerFiles(const String& directory);

}  // namespace vanta
