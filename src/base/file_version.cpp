#include "base/file_version.h"

#include "base/format.h"
#include "base/paths.h"

#include <memory>
#include <new>

namespace vanta {
namespace {

constexpr DWORD kFixedInfoSignature = 0xFEEF04BD;

// The fixed block is copied out: the resource's bytes promise no alignment and no length.
bool ReadFixedInfo(const String& path, VS_FIXEDFILEINFO* info) {
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
  if (!size) return false;
  const std::unique_ptr<BYTE[]> block(new (std::nothrow) BYTE[size]());
  if (!block || !GetFileVersionInfoW(path.c_str(), 0, size, block.get())) return false;
  void* value = nullptr;
  UINT length = 0;
  WCHAR root[] = TEXT("\\");
  if (!VerQueryValueW(block.get(), root, &value, &length) || !value || length < sizeof *info) return false;
  memcpy(info, value, sizeof *info);
  return info->dwSignature == kFixedInfoSignature;
}

}  // namespace

String GetFileVersionString(const String& path) {
  if (!PathExists(path)) return {};
  VS_FIXEDFILEINFO info = {};
  if (!ReadFixedInfo(path, &info)) return TEXT("0.0.0.0");
  return Format(TEXT("%d.%d.%d.%d"), HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                HIWORD(info.dwFileVersionLS), LOWORD(info.dwFileVersionLS));
}

}  // namespace vanta
