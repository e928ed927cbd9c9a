// What a maker sets when a setup is packed: who publishes it, which hosts it talks to and whose signatures it accepts.
//
// The block is resource RT_RCDATA 206 of the executable: UTF-8 lines (LF or CRLF), the first "VANTADEPLOY 1", then
// publisher=, statistics=, upgrade=, agreement= with a host name each and any number of maker_key= with 64 hexadecimal
// digits. Unknown keys and lines that break this are passed over; without the first line nothing counts.
#pragma once

#include "base/text.h"

#include <array>
#include <vector>

namespace vanta {

struct Deployment {
  // Host names, all but the publisher's perhaps with a port ("host:8443"); the defaults lie in a domain that never
  // resolves.
  String publisher = TEXT("publisher.invalid");
  String statistics_host = TEXT("statistics.invalid");
  String upgrade_host = TEXT("upgrade.invalid");
  String agreement_host = TEXT("agreement.invalid");
  // SHA-256 of the maker's public keys, each as DER SubjectPublicKeyInfo. None: no signature is accepted.
  std::vector<std::array<BYTE, 32>> maker_keys;
};

inline constexpr WORD kDeploymentResource = 206;

Deployment ParseDeployment(std::string_view utf8);

// This executable's block, read once. Any thread.
const Deployment& GetDeployment();

}  // namespace vanta
