// Signatures of Windows images and the keys behind them.
#pragma once

#include <filesystem>
#include <string>

#include "winhost/image/bytes.h"

namespace vantakit {

// SHA-256 of the public key (DER SubjectPublicKeyInfo) of the first certificate in a PEM file: 64 hexadecimal digits.
// Throws Failure when there is none.
std::string PublicKeyHash(const std::filesystem::path& certificate);

// Whether a file is a Windows image, and one that is signed already.
bool IsImage(winhost::Bytes file);
bool IsSigned(winhost::Bytes file);

struct SigningKey {
  std::filesystem::path key;          // PEM
  std::filesystem::path certificate;  // PEM
};
// Writes a signed copy of `in` to `out` (SHA-256). The time of signing is the file's, so that signing twice gives
// the same bytes. Throws Failure with what osslsigncode says.
void SignImage(const SigningKey& key, const std::filesystem::path& in, const std::filesystem::path& out);

}  // namespace vantakit
