// The time stamp on a signature (an RFC 3161 token among the signer's unsigned attributes).
#pragma once

#include <ctime>
#include <optional>

#include "winhost/trust/openssl_owners.h"

namespace winhost {

// The stamped time. Nothing without a stamp, and for one that does not hold: not over this signature, not signed by a
// time-stamping certificate that was valid then, or not below one of `roots`, which is used up.
std::optional<std::time_t> StampedTime(PKCS7_SIGNER_INFO* signer, OwnedStore roots);

}  // namespace winhost
