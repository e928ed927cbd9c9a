// A network address by way of NetBIOS, for machines whose adapters' drivers tell none.
#pragma once

#include <string>

namespace vanta {

// The address of NetBIOS's first adapter, twelve capital hexadecimal digits. Empty without NetBIOS or when any of its
// three steps fails. The library is loaded from the system folder on demand.
std::string NetbiosAddress();

}  // namespace vanta
