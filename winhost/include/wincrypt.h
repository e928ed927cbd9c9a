// The few calls on certificates, over OpenSSL. A certificate context here comes from WinVerifyTrust's state
// (wintrust.h) and lives as long as that. CryptEncodeObject knows X509_PUBLIC_KEY_INFO and X.509 encoding only;
// anything else is ERROR_FILE_NOT_FOUND, as for an encoding that nobody has registered. CertGetEnhancedKeyUsage reads
// the extension of the certificate (flags are 0). Faults: "CryptEncodeObject", "CertGetEnhancedKeyUsage".
#pragma once

#include <windef.h>
#include <winerror.h>

#define X509_ASN_ENCODING 0x1
#define PKCS_7_ASN_ENCODING 0x10000
#define X509_PUBLIC_KEY_INFO (reinterpret_cast<LPCSTR>(8))
#define szOID_PKIX_KP_CODE_SIGNING "1.3.6.1.5.5.7.3.3"

using HCERTSTORE = void*;

struct CRYPT_INTEGER_BLOB {
  DWORD cbData;
  BYTE* pbData;
};
using CERT_NAME_BLOB = CRYPT_INTEGER_BLOB;
using CRYPT_OBJID_BLOB = CRYPT_INTEGER_BLOB;

struct CRYPT_BIT_BLOB {
  DWORD cbData;
  BYTE* pbData;
  DWORD cUnusedBits;
};

struct CRYPT_ALGORITHM_IDENTIFIER {
  LPSTR pszObjId;
  CRYPT_OBJID_BLOB Parameters;  // DER
};

struct CERT_PUBLIC_KEY_INFO {
  CRYPT_ALGORITHM_IDENTIFIER Algorithm;
  CRYPT_BIT_BLOB PublicKey;
};

struct CERT_EXTENSION {
  LPSTR pszObjId;
  BOOL fCritical;
  CRYPT_OBJID_BLOB Value;
};
using PCERT_EXTENSION = CERT_EXTENSION*;

// Filled here: NotBefore, NotAfter and SubjectPublicKeyInfo; the rest is zero.
struct CERT_INFO {
  DWORD dwVersion;
  CRYPT_INTEGER_BLOB SerialNumber;
  CRYPT_ALGORITHM_IDENTIFIER SignatureAlgorithm;
  CERT_NAME_BLOB Issuer;
  FILETIME NotBefore;
  FILETIME NotAfter;
  CERT_NAME_BLOB Subject;
  CERT_PUBLIC_KEY_INFO SubjectPublicKeyInfo;
  CRYPT_BIT_BLOB IssuerUniqueId;
  CRYPT_BIT_BLOB SubjectUniqueId;
  DWORD cExtension;
  PCERT_EXTENSION rgExtension;
};
using PCERT_INFO = CERT_INFO*;

struct CERT_CONTEXT {
  DWORD dwCertEncodingType;
  BYTE* pbCertEncoded;
  DWORD cbCertEncoded;
  PCERT_INFO pCertInfo;
  HCERTSTORE hCertStore;
};
using PCERT_CONTEXT = CERT_CONTEXT*;
using PCCERT_CONTEXT = const CERT_CONTEXT*;

struct CERT_ENHKEY_USAGE {
  DWORD cUsageIdentifier;
  LPSTR* rgpszUsageIdentifier;
};
using PCERT_ENHKEY_USAGE = CERT_ENHKEY_USAGE*;

// With a null buffer gives the size; a small one is ERROR_MORE_DATA.
BOOL WINAPI CryptEncodeObject(DWORD encoding, LPCSTR type, const void* structure, BYTE* encoded, DWORD* size);
// With a null `usage` gives the size; a small one is ERROR_MORE_DATA. A certificate without the extension gives no
// usages and the last error CRYPT_E_NOT_FOUND: good for every use.
BOOL WINAPI CertGetEnhancedKeyUsage(PCCERT_CONTEXT certificate, DWORD flags, PCERT_ENHKEY_USAGE usage, DWORD* size);
