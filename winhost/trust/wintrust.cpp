#include <windows.h>
#include <wintrust.h>
#include <softpub.h>

#include <deque>

#include "winhost/machine/faults.h"
#include "winhost/trust/certificate.h"
#include "winhost/trust/verification.h"

namespace {

using winhost::Certificate;
using winhost::Verification;

// What a state handle stands for, from VERIFY to CLOSE.
struct State {
  explicit State(const Verification& found, WINTRUST_DATA* data) {
    for (const auto& certificate : found.certificates) {
      const Certificate& kept = certificates.emplace_back(certificate.get());
      const bool self_signed = X509_self_signed(certificate.get(), 0) == 1;
      chain.push_back({sizeof(CRYPT_PROVIDER_CERT), kept.context(), self_signed && found.answer == 0, self_signed, 0});
    }
    signer = {sizeof(CRYPT_PROVIDER_SGNR), found.verified_as_of, static_cast<DWORD>(chain.size()), chain.data(), 0};
    provider = {sizeof(CRYPT_PROVIDER_DATA), data, chain.empty() ? 0u : 1u, chain.empty() ? nullptr : &signer,
                static_cast<DWORD>(found.answer)};
  }
  std::deque<Certificate> certificates;
  std::vector<CRYPT_PROVIDER_CERT> chain;
  CRYPT_PROVIDER_SGNR signer = {};
  CRYPT_PROVIDER_DATA provider = {};
};

Verification VerifyByInfo(const WINTRUST_FILE_INFO& info) {
  const HANDLE file = info.hFile ? info.hFile
                                 : CreateFileW(info.pcwszFilePath, GENERIC_READ, FILE_SHARE_READ, nullptr,
                                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {CRYPT_E_FILE_ERROR, {}, {}};
  Verification found = winhost::VerifyFile(file);
  if (!info.hFile) CloseHandle(file);
  return found;
}

LONG Verify(WINTRUST_DATA& data) {
  const WINTRUST_FILE_INFO* info = data.pFile;
  if (data.dwUnionChoice != WTD_CHOICE_FILE || !info || (!info->hFile && !info->pcwszFilePath)) {
    return ERROR_INVALID_PARAMETER;
  }
  const std::u16string_view subject = info->pcwszFilePath ? info->pcwszFilePath : u"";
  if (const auto error = winhost::PlannedFault("WinVerifyTrust", subject)) return static_cast<LONG>(*error);
  const Verification found = VerifyByInfo(*info);
  if (data.dwStateAction == WTD_STATEACTION_VERIFY) data.hWVTStateData = new State(found, &data);
  return found.answer;
}

}  // namespace

LONG WinVerifyTrust(HWND, GUID* action, LPVOID argument) {
  const GUID known = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  auto* data = static_cast<WINTRUST_DATA*>(argument);
  if (!action || !data || data->cbStruct < offsetof(WINTRUST_DATA, pwszURLReference)) return ERROR_INVALID_PARAMETER;
  if (*action != known) return TRUST_E_PROVIDER_UNKNOWN;
  if (data->dwStateAction == WTD_STATEACTION_CLOSE) {
    delete static_cast<State*>(data->hWVTStateData);
    data->hWVTStateData = nullptr;
    return ERROR_SUCCESS;
  }
  LONG answer = TRUST_E_SUBJECT_NOT_TRUSTED;
  try {
    answer = Verify(*data);
  } catch (const std::bad_alloc&) {
    answer = E_OUTOFMEMORY;
  }
  SetLastError(static_cast<DWORD>(answer));
  return answer;
}

CRYPT_PROVIDER_DATA* WTHelperProvDataFromStateData(HANDLE state) {
  return state ? &static_cast<State*>(state)->provider : nullptr;
}

CRYPT_PROVIDER_SGNR* WTHelperGetProvSignerFromChain(CRYPT_PROVIDER_DATA* data, DWORD signer, BOOL counter_signer,
                                                    DWORD) {
  return data && !counter_signer && signer < data->csSigners ? data->pasSigners + signer : nullptr;
}

CRYPT_PROVIDER_CERT* WTHelperGetProvCertFromChain(CRYPT_PROVIDER_SGNR* signer, DWORD index) {
  return signer && index < signer->csCertChain ? signer->pasCertChain + index : nullptr;
}
