#include "report/http/transacted_file.h"

#include "base/late_function.h"

namespace vanta {
namespace {

using CreateTransactedCall = HANDLE(WINAPI*)(const WCHAR*, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE,
                                             HANDLE, USHORT*, void*);
constinit LateFunction<CreateTransactedCall> create_transacted(TEXT("Kernel32.dll"), "CreateFileTransactedW");

constexpr DWORD kAccess = GENERIC_READ | GENERIC_WRITE;

}  // namespace

HANDLE CreateFileForDownload(const String& path, HANDLE transaction) {
  if (!transaction) {
    return CreateFileW(path.c_str(), kAccess, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  const auto create = create_transacted.Get();
  if (!create) {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return INVALID_HANDLE_VALUE;
  }
  return create(path.c_str(), kAccess, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr,
                transaction, nullptr, nullptr);
}

}  // namespace vanta
