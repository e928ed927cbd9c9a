#include "winhost/net/tls_trust.h"

#include "winhost/machine/clock.h"
#include "winhost/trust/roots.h"

namespace winhost {
namespace {

constexpr std::uint64_t kUnixEpoch100ns = 116444736000000000ull;

}  // namespace

TlsTrust::TlsTrust(Machine& machine) : roots_(ReadRoots(machine, "tls_roots")) {}

void TlsTrust::ApplyTo(SSL_CTX* context) const {
  X509_STORE* const store = SSL_CTX_get_cert_store(context);
  for (const OwnedX509& root : roots_) X509_STORE_add_cert(store, root.get());
  const auto now = static_cast<time_t>((MachineTime100ns() - kUnixEpoch100ns) / 10'000'000);
  X509_VERIFY_PARAM_set_time(SSL_CTX_get0_param(context), now);
}

}  // namespace winhost
