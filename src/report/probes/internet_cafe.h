// Whether the machine carries internet-café management software.
#pragma once

namespace vanta {

// Looks at registry keys, running processes, services and one folder, anew at each call. Whatever cannot be read counts
// as absent.
bool IsInternetCafe();

}  // namespace vanta
