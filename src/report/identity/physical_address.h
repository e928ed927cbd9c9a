// Identifier 2's network address: the lowest of the physical adapters' addresses, wired before wireless.
#pragma once

#include <string>

namespace vanta {

// Twelve capital hexadecimal digits; empty when no physical adapter tells an address.
std::string PhysicalNetworkAddress();

}  // namespace vanta
