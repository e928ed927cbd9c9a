#include <windows.h>

#include "winhost/kernel/transacted_exports.h"

namespace winhost {
namespace {

HANDLE WINAPI CreateTransacted(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                               DWORD disposition, DWORD flags, HANDLE sample, HANDLE transaction, USHORT*, PVOID) {
  if (!transaction || transaction == INVALID_HANDLE_VALUE) {
    SetLastError(ERROR_INVALID_HANDLE);
    return INVALID_HANDLE_VALUE;
  }
  return CreateFileW(path, access, share, security, disposition, flags, sample);
}

bool HasTransactions(const Facts& facts) { return facts.AtLeast(6, 0); }

const BuiltInExport kExports[] = {
    {"kernel32.dll", "CreateFileTransactedW", AsExport(&CreateTransacted), HasTransactions}};

}  // namespace

std::span<const BuiltInExport> TransactedExports() { return kExports; }

}  // namespace winhost
