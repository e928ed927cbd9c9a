#include "report/http/network_library.h"

namespace vanta {

bool LoadNetworkLibrary() { return false; }

}  // namespace vanta
