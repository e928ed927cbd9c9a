// Where the maker's security suite lies, if it is installed.
#pragma once

#include "base/text.h"

namespace vanta {

// The suite's directory, joined with `name` when one is given. Empty when no suite is known. The directory is found
// once a process; any thread.
String GetSuiteDirectory(const WCHAR* name);

// The suite directory that a program in `own_directory` belongs to: …\Bastion\AppShelf or
// …\Bastion\<any>\SML\AppShelf; empty when it is neither. Pure; names compare without regard to case.
String SuiteDirectoryAbove(StringView own_directory);

// Whether the suite's main program is there (reported as "1").
bool IsSuiteInstalled();

}  // namespace vanta
