#include "winhost/trust/roots.h"

#include <openssl/pem.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace winhost {
namespace {

std::string PemText(const std::string& entry, const std::filesystem::path& folder) {
  if (entry.starts_with("-----BEGIN")) return entry;
  std::ifstream file(folder / entry, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

TrustedRoots::TrustedRoots(Machine& machine) {
  const auto& raw = machine.facts().raw;
  const auto list = raw ? raw->find("trusted_roots") : nlohmann::json::const_iterator();
  if (!raw || list == raw->end() || !list->is_array()) return;
  for (const auto& entry : *list) {
    if (!entry.is_string()) continue;
    const std::string pem = PemText(entry.get<std::string>(), machine.folder());
    const OwnedBio bio(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
    OwnedX509 root(bio ? PEM_read_bio_X509(bio.get(), nullptr, nullptr, nullptr) : nullptr);
    if (root) {
      roots_.push_back(std::move(root));
    } else {
      std::fprintf(stderr, "machine: trusted_roots: not a PEM certificate: %s\n", entry.get<std::string>().c_str());
    }
  }
}

OwnedStore TrustedRoots::MakeStore() const {
  OwnedStore store(X509_STORE_new());
  for (const OwnedX509& root : roots_) {
    if (store) X509_STORE_add_cert(store.get(), root.get());
  }
  return store;
}

}  // namespace winhost
