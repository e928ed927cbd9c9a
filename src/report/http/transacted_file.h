// The file that a download is written to.
#pragma once

#include <windows.h>

#include "base/text.h"

namespace vanta {

// Creates the file anew, for reading and writing, with read sharing; inside the transaction where one is given.
// INVALID_HANDLE_VALUE on failure, and with a transaction on a Windows that has none for files.
HANDLE CreateFileForDownload(const String& path, HANDLE transaction);

}  // namespace vanta
