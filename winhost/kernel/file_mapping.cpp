#include <sys/mman.h>
#include <sys/stat.h>
#include <windows.h>

#include <mutex>
#include <unordered_map>

#include "winhost/kernel/file_object.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

// Keeps its file open, so that views can be made after the file's own handle has closed.
class Mapping final : public KernelObject {
 public:
  Mapping(std::shared_ptr<FileObject> mapped, DWORD page_protection, std::uint64_t bytes)
      : file(std::move(mapped)), protection(page_protection), size(bytes) {}
  const std::shared_ptr<FileObject> file;
  const DWORD protection;
  const std::uint64_t size;
};

struct Views {
  std::mutex lock;
  std::unordered_map<const void*, std::size_t> sizes;
};
Views& TheViews() {
  static Views* views = new Views;
  return *views;
}

DWORD MayMap(const FileObject& file, DWORD protection, std::uint64_t size) {
  if (protection != PAGE_READONLY && protection != PAGE_READWRITE && protection != PAGE_WRITECOPY) {
    return ERROR_INVALID_PARAMETER;
  }
  if (!file.MayRead() || (protection == PAGE_READWRITE && !file.MayWrite())) return ERROR_ACCESS_DENIED;
  struct stat stat;
  if (fstat(file.fd(), &stat) != 0 || !S_ISREG(stat.st_mode)) return ERROR_BAD_EXE_FORMAT;
  if (stat.st_size == 0) return ERROR_FILE_INVALID;
  return size > static_cast<std::uint64_t>(stat.st_size) ? ERROR_NOT_ENOUGH_MEMORY : 0;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

HANDLE CreateFileMappingW(HANDLE handle, LPSECURITY_ATTRIBUTES, DWORD protection, DWORD size_high, DWORD size_low,
                          LPCWSTR name) {
  const auto file = ObjectAs<FileObject>(handle);
  std::uint64_t size = (static_cast<std::uint64_t>(size_high) << 32) | size_low;
  DWORD error = file ? PlannedFault("CreateFileMappingW", file->path()).value_or(0) : DWORD{ERROR_INVALID_HANDLE};
  if (error == 0) error = name ? DWORD{ERROR_NOT_SUPPORTED} : MayMap(*file, protection, size);
  struct stat stat;
  if (error == 0 && fstat(file->fd(), &stat) != 0) error = ERROR_FILE_INVALID;
  if (error != 0) {
    SetLastError(error);
    return nullptr;
  }
  if (size == 0) size = static_cast<std::uint64_t>(stat.st_size);
  return MakeHandle(std::make_shared<Mapping>(file, protection, size));
}

LPVOID MapViewOfFile(HANDLE handle, DWORD access, DWORD offset_high, DWORD offset_low, SIZE_T bytes) {
  const auto mapping = ObjectAs<Mapping>(handle);
  const std::uint64_t offset = (static_cast<std::uint64_t>(offset_high) << 32) | offset_low;
  DWORD error =
      mapping ? PlannedFault("MapViewOfFile", mapping->file->path()).value_or(0) : DWORD{ERROR_INVALID_HANDLE};
  if (error == 0 && (offset % 0x10000 != 0)) error = ERROR_MAPPED_ALIGNMENT;
  if (error == 0 && (offset > mapping->size || bytes > mapping->size - offset)) error = ERROR_ACCESS_DENIED;
  const bool writes = (access & FILE_MAP_WRITE) != 0;
  if (error == 0 && writes && mapping->protection != PAGE_READWRITE) error = ERROR_ACCESS_DENIED;
  if (error == 0) {
    const std::size_t length = bytes ? bytes : static_cast<std::size_t>(mapping->size - offset);
    const bool copies = !writes && (access & FILE_MAP_COPY) != 0;
    void* view = mmap(nullptr, length, PROT_READ | (writes || copies ? PROT_WRITE : 0),
                      writes ? MAP_SHARED : MAP_PRIVATE, mapping->file->fd(), static_cast<off_t>(offset));
    if (view != MAP_FAILED) {
      std::scoped_lock lock(TheViews().lock);
      TheViews().sizes[view] = length;
      return view;
    }
    error = ERROR_NOT_ENOUGH_MEMORY;
  }
  SetLastError(error);
  return nullptr;
}

BOOL UnmapViewOfFile(LPCVOID view) {
  std::scoped_lock lock(TheViews().lock);
  const auto found = TheViews().sizes.find(view);
  if (found == TheViews().sizes.end()) {
    SetLastError(ERROR_INVALID_ADDRESS);
    return FALSE;
  }
  munmap(const_cast<void*>(view), found->second);
  TheViews().sizes.erase(found);
  return TRUE;
}
