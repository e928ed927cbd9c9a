// The certificates that this machine trusts as roots: its fact "trusted_roots".
#pragma once

#include <vector>

#include "winhost/machine/machine.h"
#include "winhost/trust/openssl_owners.h"

namespace winhost {

// The certificates that a fact lists. An entry is a PEM text or the path of a PEM file, relative to the machine's
// folder or absolute; one that cannot be read is reported on standard error and left out.
std::vector<OwnedX509> ReadRoots(Machine& machine, const char* fact);

// Read once a machine.
class TrustedRoots {
 public:
  explicit TrustedRoots(Machine& machine);
  // A store of its own for one verification.
  OwnedStore MakeStore() const;

 private:
  std::vector<OwnedX509> roots_;
};

}  // namespace winhost
