// Reading PE files (32 and 64 bit) from memory, whatever is in them: headers, sections and the resource section.
// Nothing outside the given bytes is ever read, cyclic and overlapping structures end.
//
// A "host image" is how the Linux build keeps Windows' way of one file, one image:
//   - the setup is a Linux program with padding to 4096, a PE that holds nothing but resources, and a footer behind it;
//   - the payload's programs and libraries are PE files (so they can be signed and carry a version) whose RT_RCDATA
//     resource "HOSTIMAGE" is the Linux program or library.
#pragma once

#include <optional>
#include <string>

#include "winhost/image/bytes.h"
#include "winhost/image/resource_tree.h"

namespace winhost {

struct PeSection {
  std::uint32_t rva;
  std::uint32_t virtual_size;
  std::uint32_t file_offset;
  std::uint32_t file_size;
  std::uint64_t header_offset;  // of its 40 bytes in the section table
};

struct PeDirectory {
  std::uint32_t rva;  // for the certificate table a file offset
  std::uint32_t size;
};

// A view of a PE file; the bytes must outlive it.
class PeImage {
 public:
  static constexpr int kResourceDirectory = 2;
  static constexpr int kCertificateDirectory = 4;
  static constexpr int kRelocationDirectory = 5;

  // None when the headers are not those of a PE file or do not lie inside the bytes.
  static std::optional<PeImage> Open(Bytes file);

  Bytes file() const { return file_; }
  bool Is64() const { return is64_; }
  bool IsDll() const;
  std::uint16_t machine() const { return FieldOr0<std::uint16_t>(file_, pe_ + 4); }
  // Offset of the optional header in the file.
  std::uint64_t optional_header() const { return pe_ + 24; }
  std::uint64_t coff_header() const { return pe_ + 4; }
  std::uint64_t section_table() const { return section_table_; }
  const std::vector<PeSection>& sections() const { return sections_; }
  int directory_count() const { return static_cast<int>(directory_count_); }
  // Zeros when the image has no such directory.
  PeDirectory Directory(int index) const;
  std::uint64_t DirectoryOffset(int index) const { return optional_header() + (is64_ ? 112u : 96u) + 8u * index; }

  // All resources, as views of the file; damaged branches are left out. At most 65,536 leaves are listed.
  ResourceTree Resources() const;
  // One resource (FindInTree's rule for the language); empty when there is none. A resource of no bytes has data() set.
  std::optional<Bytes> Find(const ResourceName& type, const ResourceName& name) const;

 private:
  friend struct ResourceReader;
  explicit PeImage(Bytes file) : file_(file) {}
  std::optional<Bytes> AtRva(std::uint32_t rva, std::uint32_t size) const;

  Bytes file_;
  std::uint64_t pe_ = 0;
  bool is64_ = false;
  std::uint32_t directory_count_ = 0;
  std::uint64_t section_table_ = 0;
  std::vector<PeSection> sections_;
};

}  // namespace winhost
