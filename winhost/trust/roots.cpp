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

std::vector<OwnedX509> ReadRoots(Machine& machine, const char* fact) {
  std::vector<OwnedX509> roots;
  const auto& raw = machine.facts().raw;
  const auto list = raw ? raw->find(fact) : nlohmann::json::const_iterator();
  if (!raw || list == raw->end() || !list->is_array()) return roots;
  for (const auto& entry : *list) {
    if (!entry.is_string()) continue;
    const std::string pem = PemText(entry.get<std::string>(), machine.folder());
    const OwnedBio bio(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
    OwnedX509 root(bio ? PEM_read_bio_X509(bio.get(), nullptr, nullptr, nullptr) : nullptr);
    if (root) {
      roots.push_back(std::move(root));
    } else {
      std::fprintf(stderr, "machine: %s: not a PEM certificate: %s\n", fact, entry.get<std::string>().c_str());
    }
  }
  return roots;
}

TrustedRoots::TrustedRoots(Machine& machine) : roots_(ReadRoots(machine, "trusted_roots")) {}

OwnedStore TrustedRoots::MakeStore() const {
  OwnedStore store(X509_STORE_new());
  for (const OwnedX509& root : roots_) {
    if (store) X509_STORE_add_cert(store.get(), root.get());
  }
  return store;
}

}  // namespace winhost
