// A certificate as the crypt32 structures show it.
#pragma once

#include <windows.h>
#include <wincrypt.h>

#include <cstdint>
#include <string>
#include <vector>

#include "winhost/trust/openssl_owners.h"

namespace winhost {

// Owns everything that its context points to, so it must not move.
class Certificate {
 public:
  explicit Certificate(X509* certificate);
  Certificate(const Certificate&) = delete;
  Certificate& operator=(const Certificate&) = delete;
  PCCERT_CONTEXT context() const { return &context_; }

 private:
  std::vector<std::uint8_t> der_;
  std::string key_algorithm_;
  std::vector<std::uint8_t> key_parameters_;
  std::vector<std::uint8_t> key_;
  CERT_INFO info_ = {};
  CERT_CONTEXT context_ = {};
};

}  // namespace winhost
