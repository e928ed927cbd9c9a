#include "winhost/image/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace winhost {

std::shared_ptr<const MappedFile> MappedFile::Open(const std::filesystem::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return nullptr;
  struct stat status;
  Bytes bytes;
  int error = fstat(file, &status) != 0 ? errno : 0;
  if (!error && !S_ISREG(status.st_mode)) error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  if (!error && status.st_size > 0) {
    const auto size = static_cast<std::size_t>(status.st_size);
    void* address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (address == MAP_FAILED) {
      error = errno;
    } else {
      bytes = {static_cast<const std::byte*>(address), size};
    }
  }
  close(file);
  errno = error;
  if (error) return nullptr;
  return std::shared_ptr<const MappedFile>(new MappedFile(bytes));
}

MappedFile::~MappedFile() {
  if (!bytes_.empty()) munmap(const_cast<std::byte*>(bytes_.data()), bytes_.size());
}

}  // namespace winhost
