#include "winhost/trust/verification.h"

#include <openssl/err.h>

#include <optional>

#include "winhost/machine/clock.h"
#include "winhost/machine/machine.h"
#include "winhost/trust/chain.h"
#include "winhost/trust/indirect_data.h"
#include "winhost/trust/pe_signature.h"
#include "winhost/trust/roots.h"
#include "winhost/trust/timestamp.h"

namespace winhost {
namespace {

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::uint64_t kUnixEpochSeconds = 11'644'473'600;  // since 1601

std::time_t MachineTime() {
  return static_cast<std::time_t>(MachineTime100ns() / kTicksPerSecond) - static_cast<std::time_t>(kUnixEpochSeconds);
}

FILETIME ToFileTime(std::time_t time) {
  const std::uint64_t ticks = (static_cast<std::uint64_t>(time) + kUnixEpochSeconds) * kTicksPerSecond;
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

OwnedPkcs7 ParseMessage(const std::vector<std::uint8_t>& der) {
  const std::uint8_t* at = der.data();
  OwnedPkcs7 message(d2i_PKCS7(nullptr, &at, static_cast<long>(der.size())));
  return message && at == der.data() + der.size() ? std::move(message) : nullptr;
}

// The one signer of the message and the certificate that names it.
struct Signer {
  PKCS7_SIGNER_INFO* info = nullptr;
  X509* certificate = nullptr;
};
std::optional<Signer> FindSigner(PKCS7* message) {
  STACK_OF(PKCS7_SIGNER_INFO)* signers = PKCS7_get_signer_info(message);
  if (sk_PKCS7_SIGNER_INFO_num(signers) != 1) return std::nullopt;
  PKCS7_SIGNER_INFO* info = sk_PKCS7_SIGNER_INFO_value(signers, 0);
  const X509List found(PKCS7_get0_signers(message, nullptr, 0));
  if (sk_X509_num(found.get()) != 1) return std::nullopt;
  return Signer{info, sk_X509_value(found.get(), 0)};
}

bool SignatureHolds(PKCS7* message, const IndirectData& signed_data) {
  const OwnedBio content(BIO_new_mem_buf(signed_data.content.data(), static_cast<int>(signed_data.content.size())));
  // The chain is judged apart, at the machine's time and by other rules.
  return content && PKCS7_verify(message, nullptr, nullptr, content.get(), nullptr, PKCS7_NOVERIFY | PKCS7_BINARY) == 1;
}

Verification Judge(const FileView& file, const PeSignature& place, PKCS7* message, const IndirectData& signed_data,
                   const Signer& signer) {
  const TrustedRoots& roots = Machine::Current().Get<TrustedRoots>();
  const std::time_t when = StampedTime(signer.info, roots.MakeStore()).value_or(MachineTime());
  const OwnedStore store = roots.MakeStore();
  ChainFindings chain = BuildChain(signer.certificate, message->d.sign->cert, store.get(), when);
  const auto digest = DigestPe(file, place, signed_data.algorithm);

  Verification result;
  result.verified_as_of = ToFileTime(when);
  result.certificates = std::move(chain.certificates);
  if (digest != signed_data.digest) {
    result.answer = TRUST_E_BAD_DIGEST;
  } else if (!SignatureHolds(message, signed_data)) {
    result.answer = TRUST_E_CERT_SIGNATURE;
  } else {
    result.answer = chain.Answer();
  }
  return result;
}

}  // namespace

Verification VerifyFile(HANDLE handle) {
  const FileView file(handle);
  const auto place = FindPeSignature(file);
  if (!place) return {TRUST_E_SUBJECT_FORM_UNKNOWN, {}, {}};
  const auto der = place->table_size ? ReadSignedMessage(file, *place) : std::nullopt;
  const OwnedPkcs7 message = der ? ParseMessage(*der) : nullptr;
  const auto signed_data = message ? ReadIndirectData(message.get()) : std::nullopt;
  const auto signer = signed_data ? FindSigner(message.get()) : std::nullopt;
  Verification result{TRUST_E_NOSIGNATURE, {}, {}};
  if (signer) result = Judge(file, *place, message.get(), *signed_data, *signer);
  ERR_clear_error();
  return result;
}

}  // namespace winhost
