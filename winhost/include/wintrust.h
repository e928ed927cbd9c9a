// WinVerifyTrust: Authenticode signatures embedded in PE files, verified for real over OpenSSL.
//
// Promised: only WINTRUST_ACTION_GENERIC_VERIFY_V2 with the file choice; digest over the file, signature over the
// message, code-signing use, the chain up to a root of the machine, the signer's validity at the machine's time or,
// with a time stamp, at the stamped one. Of several faults the answer is the first of: no signature 0x800B0100 (or
// 0x800B0003 for what is no PE file), digest 0x80096010, signer's signature 0x80096004, use 0x800B0110, chain
// 0x800B010A, root 0x800B0109, time 0x800B0101. The file is read through hFile where it is given, so share modes hold.
// Simplified: no revocation, no catalogues, no user interface, one signer, the primary signature only; a file with
// bytes behind its certificate table, or with other things than alignment in it, counts as unsigned. The machine's
// roots are its fact "trusted_roots": a list of PEM texts or paths of PEM files; none by default. Faults:
// "WinVerifyTrust" with the file's path; the error is the answer.
#pragma once

#include <windef.h>
#include <guiddef.h>
#include <wincrypt.h>

#define WTD_UI_ALL 1
#define WTD_UI_NONE 2
#define WTD_REVOKE_NONE 0x00000000
#define WTD_CHOICE_FILE 1
#define WTD_STATEACTION_IGNORE 0x00000000
#define WTD_STATEACTION_VERIFY 0x00000001
#define WTD_STATEACTION_CLOSE 0x00000002
#define WTD_CACHE_ONLY_URL_RETRIEVAL 0x00001000

struct WINTRUST_FILE_INFO {
  DWORD cbStruct;
  LPCWSTR pcwszFilePath;
  HANDLE hFile;  // null: opened by path
  GUID* pgKnownSubject;
};

struct WINTRUST_DATA {
  DWORD cbStruct;
  LPVOID pPolicyCallbackData;
  LPVOID pSIPClientData;
  DWORD dwUIChoice;
  DWORD fdwRevocationChecks;
  DWORD dwUnionChoice;
  union {
    WINTRUST_FILE_INFO* pFile;
    LPVOID pCatalog;
  };
  DWORD dwStateAction;
  HANDLE hWVTStateData;
  WCHAR* pwszURLReference;
  DWORD dwProvFlags;
  DWORD dwUIContext;
};

struct CRYPT_PROVIDER_CERT {
  DWORD cbStruct;
  PCCERT_CONTEXT pCert;
  BOOL fTrustedRoot;
  BOOL fSelfSigned;
  DWORD dwError;
};

struct CRYPT_PROVIDER_SGNR {
  DWORD cbStruct;
  FILETIME sftVerifyAsOf;
  DWORD csCertChain;
  CRYPT_PROVIDER_CERT* pasCertChain;  // the signer's certificate first
  DWORD dwError;
};

struct CRYPT_PROVIDER_DATA {
  DWORD cbStruct;
  WINTRUST_DATA* pWintrustData;
  DWORD csSigners;
  CRYPT_PROVIDER_SGNR* pasSigners;
  DWORD dwFinalError;
};

LONG WINAPI WinVerifyTrust(HWND window, GUID* action, LPVOID data);
// What a verification found out, until its state is closed; null where there is none.
CRYPT_PROVIDER_DATA* WINAPI WTHelperProvDataFromStateData(HANDLE state);
CRYPT_PROVIDER_SGNR* WINAPI WTHelperGetProvSignerFromChain(CRYPT_PROVIDER_DATA* data, DWORD signer, BOOL counter_signer,
                                                           DWORD counter_signer_index);
CRYPT_PROVIDER_CERT* WINAPI WTHelperGetProvCertFromChain(CRYPT_PROVIDER_SGNR* signer, DWORD index);
