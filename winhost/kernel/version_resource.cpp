#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "winhost/image/host_image.h"
#include "winhost/image/mapped_file.h"
#include "winhost/image/version_info.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

// The file's version block, with its length word cut to the bytes that are there; empty with the last error set.
std::vector<std::byte> ReadVersionBlock(LPCWSTR path) {
  if (!path || !*path) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return {};
  }
  // The open handle keeps writers away while the mapping is read, and refuses what the share modes refuse.
  const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  const auto place = LinuxPath(path);
  const auto mapped = place ? MappedFile::Open(*place) : nullptr;
  const auto image = mapped ? OpenImage(mapped->bytes()) : std::nullopt;
  std::vector<std::byte> block;
  if (const auto found = image ? image->Find(kTypeVersion, VS_VERSION_INFO) : std::nullopt) {
    block.assign(found->begin(),
                 found->begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(found->size(), 0xFFFF)));
  }
  CloseHandle(file);
  if (block.size() >= 8) {
    const auto claimed = FieldOr0<std::uint16_t>(block, 0);
    PutField<std::uint16_t>(block, 0, std::min<std::uint16_t>(claimed, static_cast<std::uint16_t>(block.size())));
    return block;
  }
  SetLastError(image && block.empty() ? ERROR_RESOURCE_TYPE_NOT_FOUND : ERROR_RESOURCE_DATA_NOT_FOUND);
  return {};
}

bool FailsAsPlanned(const char* operation, LPCWSTR path) {
  const auto error = PlannedFault(operation, path ? std::u16string_view(path) : std::u16string_view());
  if (error) SetLastError(*error);
  return error.has_value();
}

}  // namespace
}  // namespace winhost

DWORD GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD unused) {
  if (unused) *unused = 0;
  if (winhost::FailsAsPlanned("GetFileVersionInfoSizeW", path)) return 0;
  return static_cast<DWORD>(winhost::ReadVersionBlock(path).size());
}

BOOL GetFileVersionInfoW(LPCWSTR path, DWORD, DWORD bytes, LPVOID block) {
  if (winhost::FailsAsPlanned("GetFileVersionInfoW", path)) return FALSE;
  if (!block) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const std::vector<std::byte> read = winhost::ReadVersionBlock(path);
  if (read.empty()) return FALSE;
  if (bytes < read.size()) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  std::memcpy(block, read.data(), read.size());
  return TRUE;
}

BOOL VerQueryValueW(LPCVOID block, LPCWSTR sub_block, LPVOID* value, PUINT length) {
  if (length) *length = 0;
  if (!block || !sub_block || !value) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const auto* begin = static_cast<const std::byte*>(block);
  WORD size;
  std::memcpy(&size, begin, sizeof size);
  const auto found = winhost::FindVersionValue({begin, size}, sub_block);
  if (!found || (found->value.empty() && !found->text)) {
    SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
    return FALSE;
  }
  *value = const_cast<std::byte*>(found->value.data());
  if (length) *length = found->length;
  return TRUE;
}
