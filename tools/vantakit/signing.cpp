#include "tools/vantakit/signing.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "tools/vantakit/commands.h"
#include "winhost/image/pe_image.h"

extern char** environ;

namespace vantakit {
namespace {

// Runs a program quietly; what it printed is returned in `output`.
int Run(const std::vector<std::string>& words, std::string* output) {
  int ends[2];
  if (pipe(ends) != 0) return -1;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
  posix_spawn_file_actions_adddup2(&actions, ends[1], 2);
  posix_spawn_file_actions_addclose(&actions, ends[0]);
  posix_spawn_file_actions_addclose(&actions, ends[1]);
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  pid_t child;
  const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  char buffer[4096];
  for (ssize_t got; !error && (got = read(ends[0], buffer, sizeof buffer)) > 0;)
    output->append(buffer, static_cast<std::size_t>(got));
  close(ends[0]);
  if (error) return -1;
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string TimeOfSigning(const std::filesystem::path& file) {
  if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH")) return epoch;
  struct stat status;
  return stat(file.c_str(), &status) == 0 ? std::to_string(status.st_mtime) : "0";
}

}  // namespace

std::string PublicKeyHash(const std::filesystem::path& certificate) {
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(certificate.c_str(), "rb"),
                                                   [](FILE* f) { return f ? std::fclose(f) : 0; });
  const std::unique_ptr<X509, void (*)(X509*)> x509(
      file ? PEM_read_X509(file.get(), nullptr, nullptr, nullptr) : nullptr, X509_free);
  if (!x509) throw Failure(certificate.string() + ": holds no certificate (PEM)");
  unsigned char* der = nullptr;
  const int size = i2d_X509_PUBKEY(X509_get_X509_PUBKEY(x509.get()), &der);
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int digest_size = 0;
  const bool hashed =
      size > 0 && EVP_Digest(der, static_cast<std::size_t>(size), digest, &digest_size, EVP_sha256(), nullptr) == 1;
  OPENSSL_free(der);
  if (!hashed) throw Failure(certificate.string() + ": the certificate holds no key");
  std::string hex;
  for (unsigned int i = 0; i < digest_size; ++i) {
    char pair[3];
    std::snprintf(pair, sizeof pair, "%02x", digest[i]);
    hex += pair;
  }
  return hex;
}

bool IsImage(winhost::Bytes file) { return winhost::PeImage::Open(file).has_value(); }

bool IsSigned(winhost::Bytes file) {
  const auto image = winhost::PeImage::Open(file);
  return image && image->Directory(winhost::PeImage::kCertificateDirectory).size != 0;
}

void SignImage(const SigningKey& key, const std::filesystem::path& in, const std::filesystem::path& out) {
  std::filesystem::remove(out);  // osslsigncode writes over no file
  std::string output;
  const int code = Run({"osslsigncode", "sign", "-h", "sha256", "-time", TimeOfSigning(in), "-certs",
                        key.certificate.string(), "-key", key.key.string(), "-in", in.string(), "-out", out.string()},
                       &output);
  if (code == -1) throw Failure("osslsigncode cannot be started");
  if (code != 0) throw Failure(in.string() + ": signing failed: " + output);
}

}  // namespace vantakit
