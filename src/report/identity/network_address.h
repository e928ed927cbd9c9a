// Identifier 1's network address: the lowest permanent address of all adapters, else NetBIOS's first adapter.
#pragma once

#include <string>

namespace vanta {

// Twelve capital hexadecimal digits; empty when nothing tells an address.
std::string LowestNetworkAddress();

}  // namespace vanta
