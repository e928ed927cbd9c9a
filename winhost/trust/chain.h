// A certificate's way up to a root, judged as the publishing policy judges it.
#pragma once

#include <windows.h>

#include <ctime>
#include <vector>

#include "winhost/trust/openssl_owners.h"

namespace winhost {

struct ChainFindings {
  bool bad_signature = false;  // a certificate of the chain is not signed by the next
  bool wrong_use = false;      // not for signing code
  bool incomplete = false;     // the chain ends before a root, or an issuer is none
  bool untrusted_root = false;
  bool out_of_time = false;
  std::vector<OwnedX509> certificates;  // the signer's first

  // The answer of WinVerifyTrust for these.
  LONG Answer() const;
};

// `others` are the certificates that came with the message; `store` holds the machine's roots.
ChainFindings BuildChain(X509* leaf, STACK_OF(X509) * others, X509_STORE* store, std::time_t when);

}  // namespace winhost
