// Programs of the installed product that still run.
#pragma once

#include "base/text.h"

namespace vanta {

// Ends every program that runs from the install directory or below it, but for this one. Failures are passed over.
void TerminateViewerProcesses();

// The path, written without "." and "..", lies inside the folder. Pure.
bool LiesInFolder(const String& path, const String& folder);

}  // namespace vanta
