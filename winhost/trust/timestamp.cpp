#include "winhost/trust/timestamp.h"

#include <openssl/objects.h>

#include <string_view>

namespace winhost {
namespace {

constexpr char kTimeStampToken[] = "1.3.6.1.4.1.311.3.3.1";

OwnedPkcs7 FindToken(PKCS7_SIGNER_INFO* signer) {
  for (int i = 0; i < sk_X509_ATTRIBUTE_num(signer->unauth_attr); ++i) {
    X509_ATTRIBUTE* attribute = sk_X509_ATTRIBUTE_value(signer->unauth_attr, i);
    char name[80] = {};
    OBJ_obj2txt(name, sizeof(name), X509_ATTRIBUTE_get0_object(attribute), 1);
    if (std::string_view(name) != kTimeStampToken) continue;
    const ASN1_TYPE* value = X509_ATTRIBUTE_get0_type(attribute, 0);
    if (!value || value->type != V_ASN1_SEQUENCE) return nullptr;
    const std::uint8_t* at = ASN1_STRING_get0_data(value->value.sequence);
    return OwnedPkcs7(d2i_PKCS7(nullptr, &at, ASN1_STRING_length(value->value.sequence)));
  }
  return nullptr;
}

std::optional<std::time_t> TimeIn(PKCS7* token) {
  const Owned<TS_TST_INFO, TS_TST_INFO_free> info(PKCS7_to_TS_TST_INFO(token));
  std::tm parts{};
  if (!info || !ASN1_TIME_to_tm(TS_TST_INFO_get_time(info.get()), &parts)) return std::nullopt;
  return timegm(&parts);
}

}  // namespace

std::optional<std::time_t> StampedTime(PKCS7_SIGNER_INFO* signer, OwnedStore roots) {
  const OwnedPkcs7 token = FindToken(signer);
  if (!token || !roots || !PKCS7_type_is_signed(token.get())) return std::nullopt;
  const auto when = TimeIn(token.get());
  const OwnedTimestampCheck check(TS_VERIFY_CTX_new());
  if (!when || !check) return std::nullopt;
  X509_VERIFY_PARAM_set_time(X509_STORE_get0_param(roots.get()), *when);
  const ASN1_OCTET_STRING* signature = signer->enc_digest;
  TS_VERIFY_CTX_set_flags(check.get(), TS_VFY_VERSION | TS_VFY_SIGNATURE | TS_VFY_DATA);
  TS_VERIFY_CTX_set_data(check.get(), BIO_new_mem_buf(ASN1_STRING_get0_data(signature), ASN1_STRING_length(signature)));
  TS_VERIFY_CTX_set_store(check.get(), roots.release());  // both are the check's to free
  if (TS_RESP_verify_token(check.get(), token.get()) != 1) return std::nullopt;
  return when;
}

}  // namespace winhost
