// Extraction: into files, with their folders, attributes and times, and into buffers.

#include <string.h>

#include <algorithm>

#include "base/unique.h"
#include "install/zip/reader_state.h"

namespace vanta {
namespace {

// Ahead of the last separator, it included; empty where there is none.
StringView FolderPart(StringView path) {
  size_t length = path.size();
  while (length > 0 && path[length - 1] != TEXT('\\') && path[length - 1] != TEXT('/')) --length;
  return path.substr(0, length);
}

bool IsAbsolute(StringView path) {
  return path.starts_with(TEXT('\\')) || path.starts_with(TEXT('/')) || (path.size() >= 2 && path[1] == TEXT(':'));
}

HANDLE Create(const String& path, DWORD attributes) {
  return CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr);
}

// Windows replaces no read-only file, and no hidden or system one with another that is not; an earlier version of this
// very file may be one. Where that was not the reason the file keeps its attributes.
HANDLE CreateOverProtected(const String& path, DWORD attributes) {
  constexpr DWORD kProtected = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  const DWORD old = GetFileAttributesW(path.c_str());
  if (old == INVALID_FILE_ATTRIBUTES || (old & FILE_ATTRIBUTE_DIRECTORY) || !(old & kProtected)) {
    return INVALID_HANDLE_VALUE;
  }
  if (!SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL)) return INVALID_HANDLE_VALUE;
  const HANDLE file = Create(path, attributes);
  if (file == INVALID_HANDLE_VALUE) SetFileAttributesW(path.c_str(), old);
  return file;
}

bool WriteAll(HANDLE file, ByteSpan bytes) {
  DWORD written = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  return WriteFile(file, bytes.data(), size, &written, nullptr) && written == size;
}

}  // namespace

HANDLE ZipReader::CreateOutput(StringView folder, const String& path) {
  for (;;) {
    const bool remembered = folders_.Remembers(folder);
    if (!remembered) folders_.Ensure(folder);
    const HANDLE file = Create(path, entry_.info.attributes);
    if (file != INVALID_HANDLE_VALUE) return file;
    if (GetLastError() == ERROR_ACCESS_DENIED) return CreateOverProtected(path, entry_.info.attributes);
    if (!remembered || GetLastError() != ERROR_PATH_NOT_FOUND) return file;
    // The remembered folder is gone meanwhile: look again.
    folders_.Forget();
  }
}

ZipError ZipReader::WriteEntry(HANDLE file) {
  if (!read_buffer_) read_buffer_ = std::make_unique<BYTE[]>(EntryStream::kPieceSize);
  if (const ZipError error = stream_.Start(entry_.data, password_)) return error;
  while (stream_.Remaining() > 0) {
    ByteSpan piece;
    if (const ZipError error = stream_.Read(read_buffer_.get(), EntryStream::kPieceSize, &piece)) return error;
    if (!WriteAll(file, piece)) return ZipWrite;
  }
  if (const ZipError error = stream_.Finish()) return error;
  const ZipEntryInfo& info = entry_.info;
  SetFileTime(file, &info.creation_time, &info.access_time, &info.modification_time);
  return ZipOk;
}

ZipError ZipReader::ExtractToFile(LONG index, const WCHAR* path) {
  if (!path || !*path) return ZipArgs;
  if (const ZipError error = Load(index)) return error;
  open_index_ = kNone;
  if (!entry_.extractable) return ZipNoFile;
  const bool is_folder = entry_.info.attributes & FILE_ATTRIBUTE_DIRECTORY;
  if (is_folder) return folders_.Ensure(IsAbsolute(path) ? String(path) : base_ + path) ? ZipOk : ZipNoFile;
  if (!entry_.info.name[0]) return ZipNoFile;
  const String full = IsAbsolute(FolderPart(path)) ? String(path) : base_ + path;
  UniqueFile file(CreateOutput(FolderPart(full), full));
  if (!file) return ZipNoFile;
  return WriteEntry(file.Get());
}

ZipError ZipReader::FillBuffer(BYTE* buffer, DWORD length, DWORD* delivered) {
  while (stream_.Remaining() > 0 && *delivered < length) {
    ByteSpan piece;
    // No more room than remains, so that the caller's buffer stays untouched behind the entry's declared end.
    const DWORD room = std::min(length - *delivered, stream_.Remaining());
    if (const ZipError error = stream_.Read(buffer + *delivered, room, &piece)) return error;
    if (piece.data() != buffer + *delivered) memcpy(buffer + *delivered, piece.data(), piece.size());
    *delivered += static_cast<DWORD>(piece.size());
  }
  return stream_.Remaining() > 0 ? ZipMore : stream_.Finish();
}

ZipError ZipReader::ExtractToMemory(LONG index, void* buffer, DWORD length, DWORD* delivered) {
  DWORD unused = 0;
  if (!delivered) delivered = &unused;
  *delivered = 0;
  if (!buffer && length > 0) return ZipArgs;
  ZipError result = ZipOk;
  if (open_index_ == kNone || open_index_ != index) {
    open_index_ = kNone;
    result = Load(index);
    if (!result) result = stream_.Start(entry_.data, password_);
  }
  if (!result) result = FillBuffer(static_cast<BYTE*>(buffer), length, delivered);
  open_index_ = result == ZipMore ? index : kNone;
  if (result != ZipOk && result != ZipMore) *delivered = 0;
  return result;
}

}  // namespace vanta
