#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "winhost/kernel/byte_sink.h"
#include "winhost/kernel/file_object.h"
#include "winhost/machine/faults.h"

namespace {

using winhost::FileObject;
using File = std::shared_ptr<FileObject>;

FILETIME ToFileTime(std::uint64_t time) { return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)}; }
std::uint64_t FromFileTime(const FILETIME& time) {
  return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

// Whether the plan lets this call on the file go on.
bool MayCall(const char* operation, const FileObject& file) {
  const winhost::Facts& facts = winhost::Machine::Current().facts();
  if (facts.faults.empty() && !facts.trace_calls) return true;  // the path has to be copied for the question
  const auto error = winhost::PlannedFault(operation, file.path());
  if (error) SetLastError(*error);
  return !error;
}

// The open file of a handle, unless the plan says that this call on it fails.
File Begin(const char* operation, HANDLE handle) {
  File file = winhost::ObjectAs<FileObject>(handle);
  if (!file) SetLastError(ERROR_INVALID_HANDLE);
  return file && MayCall(operation, *file) ? file : nullptr;
}

BOOL WriteToSink(winhost::ByteSink& sink, LPCVOID buffer, DWORD bytes, LPDWORD written) {
  DWORD done = 0;
  const bool ok = sink.Write(buffer, bytes, &done);
  if (written) *written = done;
  return ok;
}

std::optional<off_t> OffsetOf(const OVERLAPPED* overlapped) {
  if (!overlapped) return std::nullopt;
  return static_cast<off_t>((static_cast<std::uint64_t>(overlapped->OffsetHigh) << 32) | overlapped->Offset);
}

DWORD ErrorOfErrno(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ERROR_DISK_FULL;
    case EFAULT:
      return ERROR_NOACCESS;
    case EROFS:
      return ERROR_WRITE_PROTECT;
    default:
      return ERROR_GEN_FAILURE;
  }
}

// Room on a bounded drive for what a write adds to the file's length.
bool TakeRoom(const FileObject& file, std::optional<off_t> offset, std::uint64_t bytes, std::int64_t* taken) {
  winhost::FileSystem& files = winhost::FileSystem::Current();
  *taken = 0;
  if (!file.place().folder || !files.IsBounded(file.place().folder->drive())) return true;
  struct stat stat;
  if (fstat(file.fd(), &stat) != 0) return true;
  const off_t start = offset ? *offset : file.AppendsOnly() ? stat.st_size : lseek(file.fd(), 0, SEEK_CUR);
  const std::int64_t growth = start + static_cast<std::int64_t>(bytes) - stat.st_size;
  if (growth <= 0) return true;
  *taken = growth;
  return files.TakeBytes(file.place().folder->drive(), growth);
}

ssize_t WriteSome(const FileObject& file, const char* data, std::size_t bytes, std::optional<off_t> offset) {
  if (offset) return pwrite(file.fd(), data, bytes, *offset);
  if (file.AppendsOnly()) lseek(file.fd(), 0, SEEK_END);
  return write(file.fd(), data, bytes);
}

BOOL WriteAll(FileObject& file, const char* data, DWORD bytes, LPDWORD written, const OVERLAPPED* overlapped) {
  std::optional<off_t> offset = OffsetOf(overlapped);
  if (offset == static_cast<off_t>(-1)) offset = lseek(file.fd(), 0, SEEK_END);  // both words all ones: at the end
  std::int64_t taken = 0;
  if (!TakeRoom(file, offset, bytes, &taken)) return Fail(ERROR_DISK_FULL);
  DWORD done = 0;
  while (done < bytes) {
    const ssize_t some = WriteSome(file, data + done, bytes - done, offset ? *offset + done : offset);
    if (some < 0 && errno == EINTR) continue;
    if (some < 0) {
      if (taken != 0) winhost::FileSystem::Current().TakeBytes(file.place().folder->drive(), -(taken - done));
      if (written) *written = done;
      return Fail(ErrorOfErrno(errno));
    }
    done += static_cast<DWORD>(some);
  }
  if (bytes != 0) file.NoteWritten();
  if (written) *written = done;
  return TRUE;
}

std::optional<std::uint64_t> WantedTime(const FILETIME* time) {
  if (!time) return std::nullopt;
  const std::uint64_t value = FromFileTime(*time);
  // 0 leaves the time alone; all ones asks that this handle's use leave it alone, which it does.
  if (value == 0 || value == ~0ull) return std::nullopt;
  return value;
}

bool Seek(const FileObject& file, LONGLONG distance, DWORD method, off_t* position) {
  static constexpr int kFrom[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  if (method > FILE_END) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  *position = lseek(file.fd(), distance, kFrom[method]);
  if (*position >= 0) return true;
  SetLastError(errno == EINVAL ? ERROR_NEGATIVE_SEEK : ERROR_SEEK);
  return false;
}

}  // namespace

BOOL ReadFile(HANDLE handle, LPVOID buffer, DWORD bytes, LPDWORD read_bytes, LPOVERLAPPED overlapped) {
  if (read_bytes) *read_bytes = 0;
  const File file = Begin("ReadFile", handle);
  if (!file) return FALSE;
  if (!file->MayRead()) return Fail(ERROR_ACCESS_DENIED);
  if (file->IsFolder()) return Fail(ERROR_INVALID_FUNCTION);
  DWORD done = 0;
  const std::optional<off_t> offset = OffsetOf(overlapped);
  while (done < bytes) {
    char* into = static_cast<char*>(buffer) + done;
    const ssize_t some =
        offset ? pread(file->fd(), into, bytes - done, *offset + done) : read(file->fd(), into, bytes - done);
    if (some < 0 && errno == EINTR) continue;
    if (some < 0) return Fail(ErrorOfErrno(errno));
    if (some == 0) break;
    done += static_cast<DWORD>(some);
  }
  if (read_bytes) *read_bytes = done;
  // Only a read at an explicit offset fails at the end; a plain one answers nothing.
  return offset && done == 0 && bytes != 0 ? Fail(ERROR_HANDLE_EOF) : TRUE;
}

BOOL WriteFile(HANDLE handle, LPCVOID buffer, DWORD bytes, LPDWORD written, LPOVERLAPPED overlapped) {
  if (written) *written = 0;
  const std::shared_ptr<winhost::KernelObject> object = winhost::FindObject(handle);
  const File file = std::dynamic_pointer_cast<FileObject>(object);
  if (!file) {
    const auto sink = std::dynamic_pointer_cast<winhost::ByteSink>(object);
    return sink ? WriteToSink(*sink, buffer, bytes, written) : Fail(ERROR_INVALID_HANDLE);
  }
  if (!MayCall("WriteFile", *file)) return FALSE;
  if (!file->MayWrite()) return Fail(ERROR_ACCESS_DENIED);
  if (!buffer && bytes != 0) return Fail(ERROR_NOACCESS);
  return WriteAll(*file, static_cast<const char*>(buffer), bytes, written, overlapped);
}

BOOL SetFilePointerEx(HANDLE handle, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method) {
  const File file = Begin("SetFilePointerEx", handle);
  off_t at;
  if (!file || !Seek(*file, distance.QuadPart, method, &at)) return FALSE;
  if (position) position->QuadPart = at;
  return TRUE;
}

DWORD SetFilePointer(HANDLE handle, LONG distance, PLONG distance_high, DWORD method) {
  const File file = Begin("SetFilePointer", handle);
  if (!file) return INVALID_SET_FILE_POINTER;
  LARGE_INTEGER wide;
  wide.QuadPart = distance;
  if (distance_high)
    wide.QuadPart = static_cast<LONGLONG>((static_cast<ULONGLONG>(static_cast<ULONG>(*distance_high)) << 32) |
                                          static_cast<ULONG>(distance));
  const off_t before = lseek(file->fd(), 0, SEEK_CUR);
  off_t at;
  if (!Seek(*file, wide.QuadPart, method, &at)) return INVALID_SET_FILE_POINTER;
  if (!distance_high && at > 0xFFFFFFFFll) {
    lseek(file->fd(), before, SEEK_SET);
    SetLastError(ERROR_INVALID_PARAMETER);
    return INVALID_SET_FILE_POINTER;
  }
  if (distance_high) *distance_high = static_cast<LONG>(at >> 32);
  const auto low = static_cast<DWORD>(at);
  if (low == INVALID_SET_FILE_POINTER) SetLastError(NO_ERROR);
  return low;
}

BOOL SetEndOfFile(HANDLE handle) {
  const File file = Begin("SetEndOfFile", handle);
  if (!file) return FALSE;
  if (!file->MayWrite()) return Fail(ERROR_ACCESS_DENIED);
  struct stat stat;
  const off_t end = lseek(file->fd(), 0, SEEK_CUR);
  if (end < 0 || fstat(file->fd(), &stat) != 0) return Fail(ERROR_GEN_FAILURE);
  winhost::FileSystem& files = winhost::FileSystem::Current();
  if (file->place().folder && !files.TakeBytes(file->place().folder->drive(), end - stat.st_size))
    return Fail(ERROR_DISK_FULL);
  if (ftruncate(file->fd(), end) != 0) return Fail(ErrorOfErrno(errno));
  file->NoteWritten();
  return TRUE;
}

BOOL FlushFileBuffers(HANDLE handle) {
  const File file = Begin("FlushFileBuffers", handle);
  if (!file) return FALSE;
  if (!file->MayWrite()) return Fail(ERROR_ACCESS_DENIED);
  return fdatasync(file->fd()) == 0 || errno == EINVAL ? TRUE : Fail(ErrorOfErrno(errno));
}

BOOL GetFileSizeEx(HANDLE handle, PLARGE_INTEGER size) {
  const File file = Begin("GetFileSizeEx", handle);
  if (!file) return FALSE;
  struct stat stat;
  if (file->IsNull() || fstat(file->fd(), &stat) != 0) return Fail(ERROR_INVALID_FUNCTION);
  size->QuadPart = file->IsFolder() ? 0 : stat.st_size;
  return TRUE;
}

DWORD GetFileSize(HANDLE handle, LPDWORD size_high) {
  LARGE_INTEGER size;
  if (!GetFileSizeEx(handle, &size)) return INVALID_FILE_SIZE;
  if (size_high) *size_high = static_cast<DWORD>(size.HighPart);
  if (size.LowPart == INVALID_FILE_SIZE) SetLastError(NO_ERROR);
  return size.LowPart;
}

DWORD GetFileType(HANDLE handle) {
  const std::shared_ptr<winhost::KernelObject> object = winhost::FindObject(handle);
  if (!object) return FILE_TYPE_UNKNOWN;
  const auto file = std::dynamic_pointer_cast<FileObject>(object);
  SetLastError(NO_ERROR);
  if (std::dynamic_pointer_cast<winhost::ByteSink>(object) || (file && file->IsNull())) return FILE_TYPE_CHAR;
  return file ? FILE_TYPE_DISK : FILE_TYPE_UNKNOWN;
}

BOOL GetFileTime(HANDLE handle, LPFILETIME creation, LPFILETIME access, LPFILETIME modification) {
  const File file = Begin("GetFileTime", handle);
  if (!file) return FALSE;
  winhost::FileStat stat;
  if (file->IsNull() || !winhost::ReadFileStat({file->fd(), nullptr}, &stat)) return Fail(ERROR_INVALID_FUNCTION);
  if (creation) *creation = ToFileTime(stat.creation);
  if (access) *access = ToFileTime(stat.access);
  if (modification) *modification = ToFileTime(stat.modification);
  return TRUE;
}

BOOL SetFileTime(HANDLE handle, const FILETIME* creation, const FILETIME* access, const FILETIME* modification) {
  const File file = Begin("SetFileTime", handle);
  if (!file) return FALSE;
  if (!file->MayWriteAttributes()) return Fail(ERROR_ACCESS_DENIED);
  if (file->IsNull()) return Fail(ERROR_INVALID_FUNCTION);
  for (const FILETIME* time : {creation, access, modification}) {
    // Above this Windows takes a time for a negative number.
    if (time && WantedTime(time) && (FromFileTime(*time) >> 63) != 0) return Fail(ERROR_INVALID_PARAMETER);
  }
  const winhost::FileTimes times{WantedTime(creation), WantedTime(access), WantedTime(modification)};
  if (!winhost::WriteFileTimes({file->fd(), nullptr}, times, file->TakeFresh())) return Fail(ERROR_ACCESS_DENIED);
  if (times.modification) file->NoteTimesSet();
  return TRUE;
}

BOOL GetFileInformationByHandle(HANDLE handle, LPBY_HANDLE_FILE_INFORMATION information) {
  const File file = Begin("GetFileInformationByHandle", handle);
  if (!file) return FALSE;
  winhost::FileStat stat;
  if (file->IsNull() || !winhost::ReadFileStat({file->fd(), nullptr}, &stat)) return Fail(ERROR_INVALID_FUNCTION);
  *information = {stat.attributes,
                  ToFileTime(stat.creation),
                  ToFileTime(stat.access),
                  ToFileTime(stat.modification),
                  static_cast<DWORD>(stat.device),
                  static_cast<DWORD>(stat.size >> 32),
                  static_cast<DWORD>(stat.size),
                  stat.links,
                  static_cast<DWORD>(stat.inode >> 32),
                  static_cast<DWORD>(stat.inode)};
  return TRUE;
}

DWORD GetFinalPathNameByHandleW(HANDLE handle, LPWSTR path, DWORD length, DWORD flags) {
  const File file = Begin("GetFinalPathNameByHandleW", handle);
  if (!file) return 0;
  if (flags != 0 || file->IsNull()) {
    SetLastError(flags != 0 ? ERROR_INVALID_PARAMETER : ERROR_INVALID_FUNCTION);
    return 0;
  }
  const std::u16string text = file->path();
  const bool network = text.compare(0, 2, u"\\\\") == 0;
  const std::u16string final_path = network ? u"\\\\?\\UNC" + text.substr(1) : u"\\\\?\\" + text;
  if (length <= final_path.size()) return static_cast<DWORD>(final_path.size() + 1);
  std::copy_n(final_path.c_str(), final_path.size() + 1, path);
  return static_cast<DWORD>(final_path.size());
}
