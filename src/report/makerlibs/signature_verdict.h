// What an answer of WinVerifyTrust means to the setup.
#pragma once

#include <windows.h>

#include "report/makerlibs/certificate_table.h"

namespace vanta {

enum class SignatureVerdict {
  Unsigned,    // there is no signature to judge
  Refused,     // there is one, and it does not hold
  CompareKey,  // it holds over the file; the signer's key decides
};

// `code` is WinVerifyTrust's answer for a file whose table looks as `table` says. Pure.
//
// An untrusted root goes on to the key: a maker's private root is in nobody's store, and the pinned key is the stricter
// test. Nothing else that the system objects to is overruled.
SignatureVerdict JudgeSignature(LONG code, CertificateTable table);

}  // namespace vanta
