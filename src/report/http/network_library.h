// The maker's optional network library.
#pragma once

namespace vanta {

// Loads "vantanetbase.dll" once a process; false when it is absent or refused. Reporting transport is off in this
// build, so the library is not looked for and the answer is false.
bool LoadNetworkLibrary();

}  // namespace vanta
