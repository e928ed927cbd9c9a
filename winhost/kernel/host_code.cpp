#include "winhost/kernel/host_code.h"

#include <windows.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "winhost/image/host_image.h"
#include "winhost/image/mapped_file.h"

namespace winhost {
namespace {

// Out of memory, under the file's own name, which is what Linux shows of the process.
std::optional<HostCode> InMemory(const std::filesystem::path& path, Bytes code, DWORD* error) {
  HostCode file(memfd_create(path.filename().c_str(), MFD_CLOEXEC));
  while (file.descriptor() >= 0 && !code.empty()) {
    const ssize_t written = write(file.descriptor(), code.data(), code.size());
    if (written <= 0) break;
    code = code.subspan(static_cast<std::size_t>(written));
  }
  if (file.descriptor() >= 0 && code.empty()) return file;
  *error = ERROR_NOT_ENOUGH_MEMORY;
  return std::nullopt;
}

bool MayBeExecuted(const std::filesystem::path& path) { return access(path.c_str(), X_OK) == 0; }

}  // namespace

HostCode::~HostCode() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::optional<HostCode> OpenHostCode(const std::filesystem::path& path, DWORD* error) {
  std::error_code status;
  if (!std::filesystem::is_regular_file(path, status)) {
    *error = std::filesystem::exists(path, status) ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
    return std::nullopt;
  }
  const auto file = MappedFile::Open(path);
  if (!file) {
    *error = ERROR_ACCESS_DENIED;
    return std::nullopt;
  }
  if (IsElf(file->bytes())) {
    // A file that the machine wrote has no execute permission; Linux asks for one even of root.
    if (!MayBeExecuted(path)) return InMemory(path, file->bytes(), error);
    return HostCode(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  }
  const auto image = PeImage::Open(file->bytes());
  const Bytes code = image ? HostImage(*image) : Bytes();
  if (IsElf(code)) return InMemory(path, code, error);
  *error = ERROR_BAD_EXE_FORMAT;
  return std::nullopt;
}

}  // namespace winhost
