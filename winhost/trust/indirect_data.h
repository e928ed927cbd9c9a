// What an Authenticode message signs: the file's digest and its algorithm.
#pragma once

#include <openssl/evp.h>

#include <optional>
#include <vector>

#include "winhost/trust/der.h"
#include "winhost/trust/openssl_owners.h"
#include "winhost/trust/pe_signature.h"

namespace winhost {

struct IndirectData {
  std::vector<std::uint8_t> content;  // the content octets of the signed SEQUENCE: what the signer's digest is over
  const EVP_MD* algorithm = nullptr;
  std::vector<std::uint8_t> digest;
};

// Nothing when the message is no signed SpcIndirectDataContent with a digest algorithm that is known here.
std::optional<IndirectData> ReadIndirectData(const PKCS7* message);

// The digest of the file without checksum, directory entry and table. Nothing when reading fails.
std::optional<std::vector<std::uint8_t>> DigestPe(const FileView& file, const PeSignature& signature,
                                                  const EVP_MD* algorithm);

}  // namespace winhost
