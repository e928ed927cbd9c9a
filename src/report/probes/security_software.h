// Other security products on this machine, known by their uninstall entries. Unreadable counts as absent.
#pragma once

#include "base/text.h"

namespace vanta {

// Whether an uninstall entry of that name can be opened: the user's before the machine's, each in the 32-bit view
// before the default one.
bool IsSoftwareInstalled(const String& entry_name);
// The report codes of what is installed, in the table's order, without a "|" at the end: "a|c". Empty: none.
String BuildSecuritySoftwareList();

}  // namespace vanta
