// A network address from the IP helper's list of adapters, for machines whose adapters' drivers tell none.
#pragma once

#include <string>
#include <vector>

#include "report/identity/adapter_class.h"

namespace vanta {

// The lowest address of the listed adapters that are physical by `known`, wired before wireless; empty without any. The
// library is loaded from the system folder on demand.
std::string IpHelperAddress(const std::vector<ClassAdapter>& known);

}  // namespace vanta
