#include "winhost/image/pe_image.h"

#include <algorithm>

namespace winhost {
namespace {

constexpr std::uint16_t kPe32 = 0x10B;
constexpr std::uint16_t kPe32Plus = 0x20B;
constexpr std::size_t kMostLeaves = 65536;

}  // namespace

std::optional<PeImage> PeImage::Open(Bytes file) {
  PeImage image(file);
  if (ReadField<std::uint16_t>(file, 0) != 0x5A4D) return std::nullopt;  // "MZ"
  image.pe_ = FieldOr0<std::uint32_t>(file, 60);
  if (ReadField<std::uint32_t>(file, image.pe_) != 0x00004550u) return std::nullopt;  // "PE\0\0"
  const auto optional_size = FieldOr0<std::uint16_t>(file, image.pe_ + 20);
  const auto optional = Part(file, image.optional_header(), optional_size);
  if (!optional) return std::nullopt;
  const auto magic = FieldOr0<std::uint16_t>(*optional, 0);
  if (magic != kPe32 && magic != kPe32Plus) return std::nullopt;
  image.is64_ = magic == kPe32Plus;
  const std::uint32_t fixed = image.is64_ ? 112 : 96;
  if (optional_size < fixed) return std::nullopt;
  image.directory_count_ =
      std::min<std::uint32_t>(FieldOr0<std::uint32_t>(*optional, fixed - 4), (optional_size - fixed) / 8);

  image.section_table_ = image.optional_header() + optional_size;
  const auto count = FieldOr0<std::uint16_t>(file, image.pe_ + 6);
  if (!Part(file, image.section_table_, 40ull * count)) return std::nullopt;
  for (std::uint64_t at = image.section_table_; image.sections_.size() < count; at += 40) {
    image.sections_.push_back({FieldOr0<std::uint32_t>(file, at + 12), FieldOr0<std::uint32_t>(file, at + 8),
                               FieldOr0<std::uint32_t>(file, at + 20), FieldOr0<std::uint32_t>(file, at + 16), at});
  }
  return image;
}

bool PeImage::IsDll() const { return (FieldOr0<std::uint16_t>(file_, pe_ + 22) & 0x2000) != 0; }

PeDirectory PeImage::Directory(int index) const {
  if (index < 0 || static_cast<std::uint32_t>(index) >= directory_count_) return {0, 0};
  const std::uint64_t at = DirectoryOffset(index);
  return {FieldOr0<std::uint32_t>(file_, at), FieldOr0<std::uint32_t>(file_, at + 4)};
}

std::optional<Bytes> PeImage::AtRva(std::uint32_t rva, std::uint32_t size) const {
  for (const PeSection& section : sections_) {
    // What VirtualSize adds beyond the file's data is zeros that no file holds.
    const auto data = Part(file_, section.file_offset, section.file_size);
    if (!data || rva < section.rva) continue;
    if (const auto part = Part(*data, rva - section.rva, size)) return part;
  }
  return std::nullopt;
}

// Walks the three levels type → name → language. The depth is fixed and the leaves are counted, so neither a cycle nor
// a table of tables that all point to one place takes long.
struct ResourceReader {
  const PeImage& image;
  Bytes section;  // from the root directory on
  ResourceTree tree;
  std::size_t visited = 0;

  std::optional<ResourceName> Name(std::uint32_t field) const {
    if (!(field & 0x80000000u))
      return field <= 0xFFFF ? std::optional(ResourceName(static_cast<std::uint16_t>(field))) : std::nullopt;
    const std::uint32_t at = field & 0x7FFFFFFFu;
    const auto length = ReadField<std::uint16_t>(section, at);
    if (!length || *length == 0) return std::nullopt;
    const auto units = Part(section, at + 2ull, 2ull * *length);
    if (!units) return std::nullopt;
    std::u16string text(*length, u'\0');
    std::memcpy(text.data(), units->data(), units->size());
    return ResourceName(text);
  }

  template <class Visit>
  void Entries(std::uint32_t offset, Visit visit) {
    if (!Part(section, offset, 16)) return;
    const std::uint32_t count =
        FieldOr0<std::uint16_t>(section, offset + 12u) + FieldOr0<std::uint16_t>(section, offset + 14u);
    for (std::uint32_t i = 0; i < count && visited < kMostLeaves; ++i, ++visited) {
      const auto entry = Part(section, offset + 16ull + 8ull * i, 8);
      if (!entry) return;
      visit(FieldOr0<std::uint32_t>(*entry, 0), FieldOr0<std::uint32_t>(*entry, 4));
    }
  }

  void Leaf(const ResourceKey& key, std::uint32_t offset) {
    if (!Part(section, offset, 16)) return;
    const auto data =
        image.AtRva(FieldOr0<std::uint32_t>(section, offset), FieldOr0<std::uint32_t>(section, offset + 4u));
    if (data) tree.emplace(key, ResourceBlob::View(*data));
  }

  void Read() {
    constexpr std::uint32_t kDirectory = 0x80000000u;
    Entries(0, [&](std::uint32_t type_field, std::uint32_t names) {
      const auto type = Name(type_field);
      if (!type || !(names & kDirectory)) return;
      Entries(names & ~kDirectory, [&](std::uint32_t name_field, std::uint32_t languages) {
        const auto name = Name(name_field);
        if (!name || !(languages & kDirectory)) return;
        Entries(languages & ~kDirectory, [&](std::uint32_t language, std::uint32_t leaf) {
          if (language <= 0xFFFF && !(leaf & kDirectory)) {
            Leaf({*type, *name, static_cast<std::uint16_t>(language)}, leaf);
          }
        });
      });
    });
  }
};

ResourceTree PeImage::Resources() const {
  const PeDirectory directory = Directory(kResourceDirectory);
  if (directory.rva == 0) return {};
  for (const PeSection& section : sections_) {
    const auto data = Part(file_, section.file_offset, section.file_size);
    if (!data || directory.rva < section.rva || directory.rva - section.rva >= data->size()) continue;
    ResourceReader reader{*this, data->subspan(directory.rva - section.rva), {}, 0};
    reader.Read();
    return std::move(reader.tree);
  }
  return {};
}

std::optional<Bytes> PeImage::Find(const ResourceName& type, const ResourceName& name) const {
  const ResourceTree tree = Resources();
  const ResourceBlob* blob = FindInTree(tree, type, name);
  return blob ? std::optional(blob->bytes()) : std::nullopt;
}

}  // namespace winhost
