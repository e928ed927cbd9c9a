#include "report/makerlibs/signature_verdict.h"

namespace vanta {

SignatureVerdict JudgeSignature(LONG code, CertificateTable table) {
  if (table == CertificateTable::NoProgram || table == CertificateTable::None) return SignatureVerdict::Unsigned;
  if (table == CertificateTable::Damaged) return SignatureVerdict::Refused;
  const bool holds = code == ERROR_SUCCESS || code == static_cast<LONG>(CERT_E_UNTRUSTEDROOT);
  return holds ? SignatureVerdict::CompareKey : SignatureVerdict::Refused;
}

}  // namespace vanta
