#include "lumo/render/file_bytes.h"

#include <shlwapi.h>

#include "base/unique.h"
#include "lumo/core/resource_source.h"

namespace lumo {
namespace {

constexpr size_t kLargestFile = 64 << 20;
constexpr DWORD kPiece = 1 << 16;

std::vector<BYTE> ReadFromDisk(const String& path) {
  std::vector<BYTE> bytes;
  const vanta::UniqueFile file(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return bytes;
  for (;;) {
    const size_t before = bytes.size();
    bytes.resize(before + kPiece);
    DWORD got = 0;
    if (!ReadFile(file.Get(), bytes.data() + before, kPiece, &got, nullptr)) return {};
    bytes.resize(before + got);
    if (got == 0) return bytes;
    if (bytes.size() > kLargestFile) return {};
  }
}

String InAnsiCodePage(const String& path) {
  const int length = static_cast<int>(path.size());
  std::string narrow(
      static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, path.data(), length, nullptr, 0, nullptr, nullptr)), '\0');
  const int bytes = static_cast<int>(narrow.size());
  WideCharToMultiByte(CP_ACP, 0, path.data(), length, narrow.data(), bytes, nullptr, nullptr);
  String wide(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, narrow.data(), bytes, nullptr, 0)), 0);
  MultiByteToWideChar(CP_ACP, 0, narrow.data(), bytes, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

}  // namespace

bool PictureFileExists(const String& path) {
  return Resources().IsPackaged() ? Resources().Exists(path) : PathFileExistsW(path.c_str()) != FALSE;
}

std::vector<BYTE> ReadPictureFile(const String& path) {
  if (!Resources().IsPackaged()) return ReadFromDisk(path);
  std::vector<BYTE> bytes;
  if (!Resources().Read(path, &bytes) || bytes.size() > kLargestFile) bytes.clear();
  return bytes;
}

std::vector<BYTE> ReadVectorFile(const String& path) {
  return Resources().IsPackaged() ? ReadPictureFile(path) : ReadFromDisk(InAnsiCodePage(path));
}

}  // namespace lumo
