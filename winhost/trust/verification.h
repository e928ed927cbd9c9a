// One verification of a file's Authenticode signature.
#pragma once

#include <windows.h>

#include <vector>

#include "winhost/trust/openssl_owners.h"

namespace winhost {

struct Verification {
  LONG answer = 0;                      // what WinVerifyTrust says
  FILETIME verified_as_of = {};         // the time at which the chain was judged
  std::vector<OwnedX509> certificates;  // the signer's chain, its own first; empty without a readable signature
};

// Reads the file through `file`. Never throws for what the file holds.
Verification VerifyFile(HANDLE file);

}  // namespace winhost
