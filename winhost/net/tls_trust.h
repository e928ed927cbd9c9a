// Whom the machine's programs trust over TLS.
#pragma once

#include <openssl/ssl.h>

#include <vector>

#include "winhost/machine/machine.h"
#include "winhost/trust/openssl_owners.h"

namespace winhost {

// The machine's own roots, its fact "tls_roots": PEM texts or paths of PEM files, relative to the machine's folder or
// absolute. Read once a machine; one that cannot be read is reported on standard error and left out.
class TlsTrust {
 public:
  explicit TlsTrust(Machine& machine);
  // Adds the roots to what the context trusts already, and has it judge certificates at the machine's time.
  void ApplyTo(SSL_CTX* context) const;

 private:
  std::vector<OwnedX509> roots_;
};

}  // namespace winhost
