// Keys, certificates and signatures made at test time with the openssl and osslsigncode programs, so that what the code
// under test reads was written by somebody else.
#pragma once

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "winhost/image/host_image.h"
#include "winhost/image/pe_writer.h"

namespace testing_support {

class Signing {
 public:
  Signing() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vanta-keys-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~Signing() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  // A key pair and its self-signed certificate for one use ("codeSigning", "serverAuth" …).
  void MakeSigner(const std::string& name, const std::string& use = "codeSigning") {
    Run("openssl req -x509 -days 3650 -subj /CN=" + name + NewKey(name) + " -out " + Cert(name) +
        " -addext basicConstraints=critical,CA:FALSE -addext extendedKeyUsage=" + use);
  }
  // Another certificate, under a name of its own, on the key pair of a signer.
  void MakeOnKeyOf(const std::string& signer, const std::string& name, const std::string& use) {
    std::filesystem::copy_file(Key(signer), Key(name));
    Run("openssl req -x509 -days 3650 -subj /CN=" + name + " -key " + Key(name) + " -out " + Cert(name) +
        " -addext extendedKeyUsage=" + use);
  }
  void MakeRoot(const std::string& name) {
    Run("openssl req -x509 -days 7300 -subj /CN=" + name + NewKey(name) + " -out " + Cert(name) +
        " -addext keyUsage=critical,keyCertSign");
  }
  // A signer below a root; valid from today for `days` days.
  void MakeIssued(const std::string& name, const std::string& root, const std::string& use = "codeSigning",
                  int days = 3650) {
    const std::string extensions = (folder_ / "extensions").string();
    std::ofstream(extensions) << "basicConstraints=critical,CA:FALSE\nextendedKeyUsage=critical," << use << "\n";
    Run("openssl req -new -subj /CN=" + name + NewKey(name) + " -out " + Cert(name) + ".csr");
    Run("openssl x509 -req -in " + Cert(name) + ".csr -CA " + Cert(root) + " -CAkey " + Key(root) +
        " -CAcreateserial -days " + std::to_string(days) + " -extfile " + extensions + " -out " + Cert(name));
  }

  // Replaces the file by a signed one. `more` goes to osslsigncode.
  void Sign(const std::filesystem::path& file, const std::string& name, const std::string& more = "") {
    const std::string out = file.string() + ".signed";
    Run("osslsigncode sign -h sha256 -certs " + Cert(name) + " -key " + Key(name) + " " + more + " -in '" +
        file.string() + "' -out '" + out + "'");
    std::filesystem::rename(out, file);
  }

  // SHA-256 of the certificate's public key, as openssl computes it.
  std::string KeyHash(const std::string& name) {
    return Output("openssl x509 -in " + Cert(name) + " -pubkey -noout | openssl pkey -pubin -outform DER | " +
                  "openssl dgst -sha256 -r | cut -c1-64 | tr -d '\\n'");
  }
  std::string Key(const std::string& name) const { return (folder_ / (name + ".key")).string(); }
  std::string Cert(const std::string& name) const { return (folder_ / (name + ".crt")).string(); }

 private:
  std::string NewKey(const std::string& name) const {
    return " -nodes -newkey ec -pkeyopt ec_paramgen_curve:P-256 -keyout " + Key(name);
  }
  static void Run(const std::string& command) {
    if (std::system((command + " >/dev/null 2>&1").c_str()) == 0) return;
    std::fprintf(stderr, "failed: %s\n", command.c_str());
    std::abort();
  }
  static std::string Output(const std::string& command) {
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    for (int c = 0; pipe && (c = std::fgetc(pipe)) != EOF;) text.push_back(static_cast<char>(c));
    if (pipe) pclose(pipe);
    return text;
  }

  std::filesystem::path folder_;
};

inline std::string AsText(const std::vector<std::byte>& bytes) {
  return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

// A small unsigned PE file.
inline std::string SmallProgram(bool is64 = false) {
  winhost::ResourceTree resources;
  resources[{winhost::kTypeRcData, std::uint16_t{1}, 0}] =
      winhost::ResourceBlob(std::vector<std::byte>(3000, std::byte{0x5A}));
  const auto plan = winhost::PlanResourceImage(resources, {.is64 = is64, .dll = false});
  return plan ? AsText(plan->ToBytes()) : std::string();
}

}  // namespace testing_support
