#include "report/makerlibs/file_signature.h"

#include <windows.h>
#include <wincrypt.h>
#include <wintrust.h>
#include <softpub.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/deployment.h"
#include "base/paths.h"
#include "base/sha256.h"
#include "report/makerlibs/signature_verdict.h"

namespace vanta {
namespace {

constexpr SignatureResult kUnsigned{0, TrustUndecided};
constexpr SignatureResult kRefused{1, TrustRefused};
constexpr SignatureResult kMakersOwn{2, TrustMaker};

// One run of WinVerifyTrust. What it found out (the signer's chain) stays readable until the object goes.
class Verification {
 public:
  Verification(HANDLE file, const String& path) {
    file_.cbStruct = sizeof(file_);
    file_.pcwszFilePath = path.c_str();
    file_.hFile = file;
    data_.cbStruct = sizeof(data_);
    data_.dwUIChoice = WTD_UI_NONE;
    data_.fdwRevocationChecks = WTD_REVOKE_NONE;
    data_.dwUnionChoice = WTD_CHOICE_FILE;
    data_.pFile = &file_;
    data_.dwStateAction = WTD_STATEACTION_VERIFY;
    data_.dwProvFlags = WTD_CACHE_ONLY_URL_RETRIEVAL;  // an installation must not wait for a certificate server
    code_ = WinVerifyTrust(NoWindow(), &action_, &data_);
  }
  ~Verification() {
    data_.dwStateAction = WTD_STATEACTION_CLOSE;
    WinVerifyTrust(NoWindow(), &action_, &data_);
  }
  Verification(const Verification&) = delete;
  Verification& operator=(const Verification&) = delete;

  LONG code() const { return code_; }
  // The certificate of the signature that was verified; null when there is none. Taken from the verification itself and
  // not from a second reading of the file, so that it cannot be another one.
  PCCERT_CONTEXT Signer() const {
    CRYPT_PROVIDER_DATA* found = WTHelperProvDataFromStateData(data_.hWVTStateData);
    CRYPT_PROVIDER_SGNR* signer = found ? WTHelperGetProvSignerFromChain(found, 0, FALSE, 0) : nullptr;
    CRYPT_PROVIDER_CERT* leaf = signer ? WTHelperGetProvCertFromChain(signer, 0) : nullptr;
    return leaf ? leaf->pCert : nullptr;
  }

 private:
  static HWND NoWindow() { return static_cast<HWND>(INVALID_HANDLE_VALUE); }  // says that there is no user to ask

  GUID action_ = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  WINTRUST_FILE_INFO file_ = {};
  WINTRUST_DATA data_ = {};
  LONG code_ = 0;
};

// SHA-256 of the certificate's public key as DER SubjectPublicKeyInfo.
bool HashPublicKey(PCCERT_CONTEXT certificate, Sha256Hash& hash) {
  const CERT_PUBLIC_KEY_INFO& key = certificate->pCertInfo->SubjectPublicKeyInfo;
  DWORD size = 0;
  if (!CryptEncodeObject(X509_ASN_ENCODING, X509_PUBLIC_KEY_INFO, &key, nullptr, &size)) return false;
  std::vector<BYTE> encoded(size);
  if (!CryptEncodeObject(X509_ASN_ENCODING, X509_PUBLIC_KEY_INFO, &key, encoded.data(), &size)) return false;
  hash = Sha256(encoded.data(), size);
  return true;
}

// An untrusted root can hide that the certificate is for something else, so its use is looked at here as well.
bool IsForCodeSigning(PCCERT_CONTEXT certificate) {
  DWORD size = 0;
  if (!CertGetEnhancedKeyUsage(certificate, 0, nullptr, &size)) return false;
  std::vector<ULONGLONG> buffer(size / sizeof(ULONGLONG) + 1);  // aligned for the structure
  auto* usage = reinterpret_cast<CERT_ENHKEY_USAGE*>(buffer.data());
  if (!CertGetEnhancedKeyUsage(certificate, 0, usage, &size)) return false;
  if (usage->cUsageIdentifier == 0) return GetLastError() == static_cast<DWORD>(CRYPT_E_NOT_FOUND);  // for any use
  for (DWORD i = 0; i < usage->cUsageIdentifier; ++i) {
    if (std::strcmp(usage->rgpszUsageIdentifier[i], szOID_PKIX_KP_CODE_SIGNING) == 0) return true;
  }
  return false;
}

bool IsMakersCertificate(PCCERT_CONTEXT certificate) {
  Sha256Hash hash;
  if (!certificate || !IsForCodeSigning(certificate) || !HashPublicKey(certificate, hash)) return false;
  const auto& keys = GetDeployment().maker_keys;
  return std::find(keys.begin(), keys.end(), hash) != keys.end();
}

}  // namespace

UniqueFile OpenForCheck(const String& path) {
  return UniqueFile(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

SignatureResult CheckFileSignature(HANDLE file, const String& path) {
  const CertificateTable table = ReadCertificateTable(file);
  if (table == CertificateTable::NoProgram || table == CertificateTable::None) return kUnsigned;
  const Verification verification(file, path);
  if (JudgeSignature(verification.code(), table) != SignatureVerdict::CompareKey) return kRefused;
  return IsMakersCertificate(verification.Signer()) ? kMakersOwn : kRefused;
}

SignatureResult CheckFileSignature(const String& path) {
  const UniqueFile file = OpenForCheck(path);
  return file ? CheckFileSignature(file.Get(), path) : kUnsigned;
}

bool IsSignedMakerFile(const String& path) { return FileExists(path) && CheckFileSignature(path).Accepted(); }

}  // namespace vanta
