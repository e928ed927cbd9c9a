// Questions to a network adapter's driver (NDIS object identifiers), by the name of its device.
#pragma once

#include <windows.h>

#include <string>

#include "base/text.h"
#include "report/identity/device.h"

namespace vanta {

// How an adapter reaches the network, as far as its driver says.
enum class Medium { Unknown, Wired, Wireless, Other };

// An adapter's device for reading; `service` is its name ("{…}").
Device OpenAdapter(const String& service);

// The permanent address, "%02X" six times; empty when the driver does not tell one.
std::string PermanentAddress(Device& adapter);
// The physical medium or, where the driver does not tell it, the first medium in use.
Medium MediumOf(Device& adapter);

}  // namespace vanta
