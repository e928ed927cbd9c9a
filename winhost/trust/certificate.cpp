#include "winhost/trust/certificate.h"

#include <openssl/objects.h>

#include <cstring>
#include <ctime>

#include "winhost/machine/faults.h"
#include "winhost/trust/der.h"

namespace winhost {
namespace {

// The i2d functions: ask for the length, then write.
template <class T>
std::vector<std::uint8_t> Encode(int (*encode)(const T*, unsigned char**), const T* object) {
  const int length = object ? encode(object, nullptr) : 0;
  std::vector<std::uint8_t> der(length > 0 ? static_cast<std::size_t>(length) : 0);
  std::uint8_t* at = der.data();
  if (length > 0) encode(object, &at);
  return der;
}

FILETIME ToFileTime(const ASN1_TIME* time) {
  std::tm parts{};
  if (!time || !ASN1_TIME_to_tm(time, &parts)) return {};
  const auto ticks = static_cast<std::uint64_t>(timegm(&parts) + 11'644'473'600) * 10'000'000;
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

std::vector<std::uint8_t> View(const CRYPT_OBJID_BLOB& blob) { return {blob.pbData, blob.pbData + blob.cbData}; }

// SubjectPublicKeyInfo ::= SEQUENCE { SEQUENCE { algorithm, parameters }, BIT STRING }. Empty for a malformed object
// id.
std::vector<std::uint8_t> EncodePublicKey(const CERT_PUBLIC_KEY_INFO& key) {
  const OwnedObject object(key.Algorithm.pszObjId ? OBJ_txt2obj(key.Algorithm.pszObjId, 1) : nullptr);
  if (!object) return {};
  std::vector<std::uint8_t> algorithm = Encode<ASN1_OBJECT>(i2d_ASN1_OBJECT, object.get());
  const auto parameters = View(key.Algorithm.Parameters);
  algorithm.insert(algorithm.end(), parameters.begin(), parameters.end());
  std::vector<std::uint8_t> bits{static_cast<std::uint8_t>(key.PublicKey.cUnusedBits)};
  bits.insert(bits.end(), key.PublicKey.pbData, key.PublicKey.pbData + key.PublicKey.cbData);

  std::vector<std::uint8_t> both = WriteDer(kDerSequence, algorithm);
  const auto bit_string = WriteDer(kDerBitString, bits);
  both.insert(both.end(), bit_string.begin(), bit_string.end());
  return WriteDer(kDerSequence, both);
}

using OwnedUses = Owned<EXTENDED_KEY_USAGE, EXTENDED_KEY_USAGE_free>;

// The usages of a certificate, as dotted texts. `present`: whether it has the extension at all.
std::vector<std::string> Uses(X509* certificate, bool& present) {
  std::vector<std::string> uses;
  const OwnedUses found(
      static_cast<EXTENDED_KEY_USAGE*>(X509_get_ext_d2i(certificate, NID_ext_key_usage, nullptr, nullptr)));
  present = X509_get_ext_by_NID(certificate, NID_ext_key_usage, -1) >= 0;
  for (int i = 0; found && i < sk_ASN1_OBJECT_num(found.get()); ++i) {
    char text[128] = {};
    OBJ_obj2txt(text, sizeof(text), sk_ASN1_OBJECT_value(found.get(), i), 1);
    uses.emplace_back(text);
  }
  return uses;
}

}  // namespace

Certificate::Certificate(X509* certificate) : der_(Encode<X509>(i2d_X509, certificate)) {
  ASN1_OBJECT* algorithm = nullptr;
  const std::uint8_t* key = nullptr;
  int key_size = 0;
  X509_ALGOR* identifier = nullptr;
  X509_PUBKEY* public_key = X509_get_X509_PUBKEY(certificate);
  if (public_key && X509_PUBKEY_get0_param(&algorithm, &key, &key_size, &identifier, public_key)) {
    char name[128] = {};
    OBJ_obj2txt(name, sizeof(name), algorithm, 1);
    key_algorithm_ = name;
    key_parameters_ = Encode<ASN1_TYPE>(i2d_ASN1_TYPE, identifier->parameter);
    key_.assign(key, key + key_size);
  }
  CERT_PUBLIC_KEY_INFO& shown = info_.SubjectPublicKeyInfo;
  shown.Algorithm.pszObjId = key_algorithm_.data();
  shown.Algorithm.Parameters = {static_cast<DWORD>(key_parameters_.size()), key_parameters_.data()};
  shown.PublicKey = {static_cast<DWORD>(key_.size()), key_.data(), 0};
  info_.NotBefore = ToFileTime(X509_get0_notBefore(certificate));
  info_.NotAfter = ToFileTime(X509_get0_notAfter(certificate));
  context_ = {X509_ASN_ENCODING, der_.data(), static_cast<DWORD>(der_.size()), &info_, nullptr};
}

}  // namespace winhost

BOOL CryptEncodeObject(DWORD encoding, LPCSTR type, const void* structure, BYTE* encoded, DWORD* size) {
  using namespace winhost;
  if (const auto error = PlannedFault("CryptEncodeObject")) return Fail(*error);
  if ((encoding & 0xFFFF) != X509_ASN_ENCODING || type != X509_PUBLIC_KEY_INFO) return Fail(ERROR_FILE_NOT_FOUND);
  const auto der = EncodePublicKey(*static_cast<const CERT_PUBLIC_KEY_INFO*>(structure));
  if (der.empty()) return Fail(static_cast<DWORD>(E_INVALIDARG));
  const DWORD room = *size;
  *size = static_cast<DWORD>(der.size());
  if (!encoded) return TRUE;
  if (room < der.size()) return Fail(ERROR_MORE_DATA);
  std::memcpy(encoded, der.data(), der.size());
  return TRUE;
}

// One block: the structure, the pointers, the strings.
BOOL CertGetEnhancedKeyUsage(PCCERT_CONTEXT certificate, DWORD, PCERT_ENHKEY_USAGE usage, DWORD* size) {
  using namespace winhost;
  if (const auto error = PlannedFault("CertGetEnhancedKeyUsage")) return Fail(*error);
  const std::uint8_t* at = certificate->pbCertEncoded;
  const OwnedX509 parsed(d2i_X509(nullptr, &at, static_cast<long>(certificate->cbCertEncoded)));
  if (!parsed) return Fail(static_cast<DWORD>(E_INVALIDARG));
  bool present = false;
  const std::vector<std::string> uses = Uses(parsed.get(), present);
  std::size_t needed = sizeof(CERT_ENHKEY_USAGE) + uses.size() * sizeof(LPSTR);
  for (const std::string& use : uses) needed += use.size() + 1;
  const DWORD room = *size;
  *size = static_cast<DWORD>(needed);
  if (!usage) return TRUE;
  if (room < needed) return Fail(ERROR_MORE_DATA);
  usage->cUsageIdentifier = static_cast<DWORD>(uses.size());
  usage->rgpszUsageIdentifier = reinterpret_cast<LPSTR*>(usage + 1);
  char* text = reinterpret_cast<char*>(usage->rgpszUsageIdentifier + uses.size());
  for (std::size_t i = 0; i < uses.size(); ++i) {
    usage->rgpszUsageIdentifier[i] = text;
    std::memcpy(text, uses[i].c_str(), uses[i].size() + 1);
    text += uses[i].size() + 1;
  }
  SetLastError(present ? ERROR_SUCCESS : static_cast<DWORD>(CRYPT_E_NOT_FOUND));
  return TRUE;
}
