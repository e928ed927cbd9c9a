#include <psapi.h>
#include <windows.h>

#include <algorithm>

#include "winhost/kernel/process_exports.h"
#include "winhost/kernel/process_object.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

// To be found at run time only, as it came with Vista. `chars` in: the buffer's; out: written, without the terminator.
BOOL WINAPI QueryFullProcessImageName(HANDLE handle, DWORD flags, LPWSTR path, PDWORD chars) {
  const auto process = ProcessOf(handle, PROCESS_QUERY_LIMITED_INFORMATION);
  if (!process) return FALSE;
  const std::u16string& image = process->entry().image;
  DWORD error = PlannedFault("QueryFullProcessImageNameW", image).value_or(ERROR_SUCCESS);
  if (!error && flags != 0) error = ERROR_INVALID_PARAMETER;  // the native form ("\Device\…") is not given here
  if (!error && image.size() >= *chars) error = ERROR_INSUFFICIENT_BUFFER;
  if (error) {
    SetLastError(error);
    return FALSE;
  }
  *std::ranges::copy(image, path).out = 0;
  *chars = static_cast<DWORD>(image.size());
  return TRUE;
}

const BuiltInExport kRows[] = {
    {"kernel32.dll", "QueryFullProcessImageNameW", AsExport(&QueryFullProcessImageName),
     [](const Facts& facts) { return facts.AtLeast(6, 0); }},
    {"kernel32.dll", "IsWow64Process", AsExport(&IsWow64Process),
     [](const Facts& facts) { return facts.AtLeast(5, 1); }},
};

}  // namespace

std::span<const BuiltInExport> ProcessExports() { return kRows; }

}  // namespace winhost

using namespace winhost;

DWORD GetModuleFileNameExW(HANDLE handle, HMODULE module, LPWSTR path, DWORD chars) {
  const auto process = ProcessOf(handle, PROCESS_QUERY_INFORMATION | PROCESS_VM_READ);
  if (!process) return 0;
  const std::u16string& image = process->entry().image;
  DWORD error = PlannedFault("GetModuleFileNameExW", image).value_or(ERROR_SUCCESS);
  if (!error && module) error = ERROR_INVALID_HANDLE;
  if (!error && chars == 0) error = ERROR_INSUFFICIENT_BUFFER;
  if (error) {
    SetLastError(error);
    return 0;
  }
  const auto copied = static_cast<DWORD>(std::min<std::size_t>(image.size(), chars - 1));
  *std::copy_n(image.data(), copied, path) = 0;
  if (copied == image.size()) return copied;
  SetLastError(ERROR_INSUFFICIENT_BUFFER);
  return chars;
}
