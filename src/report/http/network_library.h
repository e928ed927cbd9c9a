// The maker's optional network library "vantanetbase.dll".
#pragma once

#include "report/http/network_functions.h"

namespace vanta {

enum NetworkLibraryState : int {
  NetworkNotTried = 0,
  NetworkLoaded = 1,
  NetworkFailed = 2,
};

// Finds, judges, loads and initialises the library, once a process; later calls tell what came of it. 0 when it is
// loaded, 2 otherwise. Any thread.
//
// A library inside the maker's security suite is taken as it is when the self-protection driver vouches for this
// process. Anything else is taken only when the base library's trust check decides about the file and does not refuse
// it. The file cannot be changed between the check and the loading.
int LoadNetworkLibrary();

// The loaded library's functions; null while it is not loaded. Some of them may be null.
const CVantaNetExportFuncs* GetNetworkFunctions();

}  // namespace vanta
