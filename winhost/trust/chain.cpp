#include "winhost/trust/chain.h"

#include <openssl/x509v3.h>

namespace winhost {
namespace {

// Notes every fault and goes on, so that all of them are known in the end.
int Note(int ok, X509_STORE_CTX* context) {
  if (ok) return 1;
  auto* findings = static_cast<ChainFindings*>(X509_STORE_CTX_get_app_data(context));
  switch (X509_STORE_CTX_get_error(context)) {
    case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
    case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
      findings->untrusted_root = true;
      break;
    case X509_V_ERR_CERT_NOT_YET_VALID:
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_ERROR_IN_CERT_NOT_BEFORE_FIELD:
    case X509_V_ERR_ERROR_IN_CERT_NOT_AFTER_FIELD:
      findings->out_of_time = true;
      break;
    case X509_V_ERR_CERT_SIGNATURE_FAILURE:
    case X509_V_ERR_UNABLE_TO_DECRYPT_CERT_SIGNATURE:
    case X509_V_ERR_UNABLE_TO_DECODE_ISSUER_PUBLIC_KEY:
      findings->bad_signature = true;
      break;
    default:
      findings->incomplete = true;
  }
  return 1;
}

bool AllowsCodeSigning(X509* certificate) {
  // All bits are set where the extension is missing.
  return (X509_get_extended_key_usage(certificate) & XKU_CODE_SIGN) != 0;
}

}  // namespace

LONG ChainFindings::Answer() const {
  if (bad_signature) return TRUST_E_CERT_SIGNATURE;
  if (wrong_use) return CERT_E_WRONG_USAGE;
  if (incomplete) return CERT_E_CHAINING;
  if (untrusted_root) return CERT_E_UNTRUSTEDROOT;
  if (out_of_time) return CERT_E_EXPIRED;
  return ERROR_SUCCESS;
}

ChainFindings BuildChain(X509* leaf, STACK_OF(X509) * others, X509_STORE* store, std::time_t when) {
  ChainFindings findings;
  const OwnedStoreContext context(X509_STORE_CTX_new());
  if (!context || !X509_STORE_CTX_init(context.get(), store, leaf, others)) {
    findings.incomplete = true;
    return findings;
  }
  X509_STORE_CTX_set_app_data(context.get(), &findings);
  X509_STORE_CTX_set_verify_cb(context.get(), Note);
  X509_VERIFY_PARAM* rules = X509_STORE_CTX_get0_param(context.get());
  X509_VERIFY_PARAM_set_purpose(rules, X509_PURPOSE_ANY);  // the use is looked at below, over the whole chain
  X509_VERIFY_PARAM_set_time(rules, when);
  if (X509_verify_cert(context.get()) <= 0) findings.incomplete = true;

  STACK_OF(X509)* chain = X509_STORE_CTX_get0_chain(context.get());
  for (int i = 0; i < sk_X509_num(chain); ++i) {
    X509* certificate = sk_X509_value(chain, i);
    if (!AllowsCodeSigning(certificate)) findings.wrong_use = true;
    X509_up_ref(certificate);
    findings.certificates.emplace_back(certificate);
  }
  if (findings.certificates.empty()) {
    X509_up_ref(leaf);
    findings.certificates.emplace_back(leaf);
  }
  return findings;
}

}  // namespace winhost
