#include "lumo/core/markup_document.h"
#include "lumo/core/markup_encoding.h"

namespace lumo {
namespace {

constexpr DWORD kLargestFile = 512u << 20;  // bytes; its text must fit the address space beside it

bool ReadAll(HANDLE file, DWORD size, std::string* bytes) {
  bytes->resize(size);
  DWORD total = 0;
  while (total < size) {
    DWORD got = 0;
    if (!ReadFile(file, bytes->data() + total, size - total, &got, nullptr)) return false;
    if (!got) break;
    total += got;
  }
  bytes->resize(total);
  return true;
}

}  // namespace

bool MarkupDocument::LoadFile(const String& path) { return OpenFile(path) && ReadFileWhole(); }

bool MarkupDocument::OpenFile(const String& path) {
  if (InFileMode()) return false;
  LoadText({});
  file_.Reset(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file_) log_.Add(TEXT("file_error"), {{TEXT("code"), size_t{GetLastError()}}});
  return InFileMode();
}

bool MarkupDocument::ReadFileWhole() {
  if (!InFileMode()) return false;
  std::string bytes;
  LARGE_INTEGER size = {};
  const bool measured = GetFileSizeEx(file_.Get(), &size) && size.QuadPart <= kLargestFile;
  const bool read = measured && ReadAll(file_.Get(), static_cast<DWORD>(size.QuadPart), &bytes);
  file_.Reset();
  if (!read) {
    log_.Add(TEXT("file_error"));
    return false;
  }
  if (bytes.size() < static_cast<size_t>(size.QuadPart)) {
    log_.Add(TEXT("truncation_error"), {{TEXT("length"), bytes.size()}});
  }
  DecodedMarkup decoded = DecodeMarkup(bytes, &log_);
  encoding_ = std::move(decoded.encoding);
  return Index(std::move(decoded.text));
}

}  // namespace lumo
