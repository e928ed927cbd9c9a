// A file's bytes, mapped for reading.
#pragma once

#include <filesystem>
#include <memory>

#include "winhost/image/bytes.h"

namespace winhost {

class MappedFile {
 public:
  // Null when the file cannot be read (errno says why); an empty file has no bytes.
  static std::shared_ptr<const MappedFile> Open(const std::filesystem::path& path);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  // Valid as long as this object, also when the file is deleted or replaced meanwhile.
  Bytes bytes() const { return bytes_; }

 private:
  explicit MappedFile(Bytes bytes) : bytes_(bytes) {}
  Bytes bytes_;
};

}  // namespace winhost
