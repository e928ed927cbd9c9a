#include "winhost/image/pe_writer.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace winhost {
namespace {

// The loader maps no image of 2 GiB or more.
constexpr std::uint64_t kLargestImage = 0x7FFF0000;
// From here on a resource gets pages of its own behind all others.
constexpr std::size_t kLargeBlob = 64 * 1024;
constexpr std::uint64_t kPage = 4096;

// A resource section at an address: the directory tables as bytes and, behind them, where each blob goes.
struct Section {
  std::vector<std::byte> tables;
  struct Placed {
    std::uint64_t offset;
    Bytes bytes;
  };
  std::vector<Placed> blobs;
  std::uint64_t size = 0;
};

using Leaves = std::map<std::uint16_t, Bytes>;
using Names = std::map<ResourceName, Leaves>;
using Types = std::map<ResourceName, Names>;

class SectionBuilder {
 public:
  SectionBuilder(const ResourceTree& tree, std::uint32_t rva) : rva_(rva) {
    for (const auto& [key, blob] : tree) types_[key.type][key.name][key.language] = blob.bytes();
  }

  Section Build() {
    PlaceTables();
    PlaceBlobs();
    WriteTables();
    section_.size = end_;
    return std::move(section_);
  }

 private:
  static std::uint64_t TableSize(std::size_t entries) { return 16 + 8 * entries; }

  // Order in the section: all directory tables, all data entries, all names, small blobs, large blobs.
  void PlaceTables() {
    end_ = TableSize(types_.size());
    for (const auto& [type, names] : types_) {
      name_tables_.push_back(end_);
      end_ += TableSize(names.size());
    }
    for (const auto& [type, names] : types_) {
      for (const auto& [name, leaves] : names) {
        language_tables_.push_back(end_);
        end_ += TableSize(leaves.size());
      }
    }
    data_entries_ = end_;
    for (const auto& [type, names] : types_) {
      for (const auto& [name, leaves] : names) end_ += 16 * leaves.size();
    }
    for (const auto& [type, names] : types_) {
      PlaceText(type);
      for (const auto& [name, leaves] : names) PlaceText(name);
    }
  }

  void PlaceText(const ResourceName& name) {
    if (!name.IsText() || texts_.contains(name.text())) return;
    texts_[name.text()] = end_;
    end_ += 2 + 2 * name.text().size();
  }

  void PlaceBlobs() {
    end_ = AlignUp(end_, 16);
    section_.tables.resize(end_);
    for (const bool large : {false, true}) {
      for (const auto& [type, names] : types_) {
        for (const auto& [name, leaves] : names) {
          for (const auto& [language, bytes] : leaves) {
            if ((bytes.size() >= kLargeBlob) != large) continue;
            end_ = AlignUp(end_, large ? kPage : 16);
            offsets_[&bytes] = end_;
            section_.blobs.push_back({end_, bytes});
            end_ += bytes.size();
          }
        }
      }
    }
  }

  template <class Map>
  void Header(std::uint64_t at, const Map& entries) {
    std::uint16_t named = 0;
    if constexpr (!std::is_same_v<Map, Leaves>) {
      for (const auto& row : entries) named = static_cast<std::uint16_t>(named + (row.first.IsText() ? 1 : 0));
    }
    PutField<std::uint16_t>(section_.tables, at + 12, named);
    PutField<std::uint16_t>(section_.tables, at + 14, static_cast<std::uint16_t>(entries.size() - named));
  }

  void Entry(std::uint64_t at, std::uint32_t name, std::uint64_t target, bool directory) {
    PutField<std::uint32_t>(section_.tables, at, name);
    PutField<std::uint32_t>(section_.tables, at + 4,
                            static_cast<std::uint32_t>(target) | (directory ? 0x80000000u : 0u));
  }

  std::uint32_t NameField(const ResourceName& name) const {
    return name.IsText() ? static_cast<std::uint32_t>(texts_.at(name.text())) | 0x80000000u : name.id();
  }

  void WriteTables() {
    Header(0, types_);
    std::uint64_t type_entry = 16;
    std::uint64_t data_entry = data_entries_;
    auto name_table = name_tables_.begin();
    auto language_table = language_tables_.begin();
    for (const auto& [type, names] : types_) {
      Entry(type_entry, NameField(type), *name_table, true);
      type_entry += 8;
      Header(*name_table, names);
      std::uint64_t name_entry = *name_table++ + 16;
      for (const auto& [name, leaves] : names) {
        Entry(name_entry, NameField(name), *language_table, true);
        name_entry += 8;
        Header(*language_table, leaves);
        std::uint64_t leaf_entry = *language_table++ + 16;
        for (const auto& [language, bytes] : leaves) {
          Entry(leaf_entry, language, data_entry, false);
          leaf_entry += 8;
          PutField<std::uint32_t>(section_.tables, data_entry, rva_ + static_cast<std::uint32_t>(offsets_.at(&bytes)));
          PutField<std::uint32_t>(section_.tables, data_entry + 4, static_cast<std::uint32_t>(bytes.size()));
          data_entry += 16;
        }
      }
    }
    for (const auto& [text, at] : texts_) {
      PutField<std::uint16_t>(section_.tables, at, static_cast<std::uint16_t>(text.size()));
      std::memcpy(section_.tables.data() + at + 2, text.data(), 2 * text.size());
    }
  }

  std::uint32_t rva_;
  Types types_;
  Section section_;
  std::uint64_t end_ = 0;
  std::vector<std::uint64_t> name_tables_;
  std::vector<std::uint64_t> language_tables_;
  std::uint64_t data_entries_ = 0;
  std::map<std::u16string, std::uint64_t> texts_;
  std::map<const Bytes*, std::uint64_t> offsets_;
};

std::uint64_t SizeOf(const ResourceTree& tree) {
  std::uint64_t size = 0;
  for (const auto& [key, blob] : tree)
    size += blob.bytes().size() + kPage + 2 * key.type.text().size() + 2 * key.name.text().size();
  return size;
}

void AddSection(FilePlan& plan, std::uint64_t file_offset, Section section, std::uint32_t file_alignment) {
  const std::uint64_t size = section.size;
  plan.PadTo(file_offset);
  plan.Add(std::move(section.tables));
  for (const Section::Placed& blob : section.blobs) {
    plan.PadTo(file_offset + blob.offset);
    plan.AddView(blob.bytes);
  }
  plan.PadTo(file_offset + AlignUp(size, file_alignment));
}

void SetChecksum(FilePlan& plan, std::uint64_t offset) {
  plan.Patch32(offset, 0);
  plan.Patch32(offset, plan.Sum() + static_cast<std::uint32_t>(plan.size()));
}

void WriteSectionHeader(std::vector<std::byte>& head, std::uint64_t at, const PeSection& section) {
  PutField<std::uint32_t>(head, at + 8, section.virtual_size);
  PutField<std::uint32_t>(head, at + 12, section.rva);
  PutField<std::uint32_t>(head, at + 16, section.file_size);
  PutField<std::uint32_t>(head, at + 20, section.file_offset);
}

// One rewriting of a linked image.
class Rewrite {
 public:
  Rewrite(const PeImage& image, ResourceTree tree)
      : image_(image), tree_(std::move(tree)), sections_(image.sections()) {
    section_alignment_ = FieldOr0<std::uint32_t>(image.file(), image.optional_header() + 32);
    file_alignment_ = FieldOr0<std::uint32_t>(image.file(), image.optional_header() + 36);
  }

  std::optional<FilePlan> Run(std::string* why) {
    if (const char* refusal = Refusal()) {
      *why = refusal;
      return std::nullopt;
    }
    PeSection& own = sections_[resources_];
    Section section = SectionBuilder(tree_, own.rva).Build();
    const std::uint32_t old_file_size = own.file_size;
    own.virtual_size = static_cast<std::uint32_t>(section.size);
    own.file_size = static_cast<std::uint32_t>(AlignUp(section.size, file_alignment_));
    MoveRelocations(own);
    FilePlan plan;
    plan.Add(Head(own, old_file_size));
    AddSection(plan, own.file_offset, std::move(section), file_alignment_);
    if (relocations_) {
      const PeSection& old = image_.sections()[*relocations_];
      plan.AddView(image_.file().subspan(old.file_offset, old.file_size));
    }
    if (plan.size() > kLargestImage) {
      *why = "the executable would exceed 2 GiB";
      return std::nullopt;
    }
    SetChecksum(plan, image_.optional_header() + 64);
    return plan;
  }

 private:
  const char* Refusal() {
    if (image_.Directory(PeImage::kCertificateDirectory).size != 0)
      return "the executable is signed already; pack first, then sign";
    const bool aligned = std::has_single_bit(section_alignment_) && std::has_single_bit(file_alignment_);
    if (!aligned || file_alignment_ > section_alignment_ || section_alignment_ < 4096 || section_alignment_ > 65536 ||
        sections_.empty() || image_.directory_count() <= PeImage::kRelocationDirectory) {
      return "the executable's headers make no sense";
    }
    if (SizeOf(tree_) > kLargestImage) return "the executable would exceed 2 GiB";
    for (const PeSection& section : sections_) {
      if (!Part(image_.file(), section.file_offset, section.file_size)) return "the executable is cut short";
    }
    if (!FindOrAddSection()) return "the executable has no room for a resource section";
    const PeSection& own = sections_[resources_];
    if (own.header_offset + 40 > own.file_offset || own.rva > kLargestImage - SizeOf(tree_)) {
      return "the executable's headers make no sense";
    }
    if (!TailIsMovable()) return "the executable has sections behind its resources; strip it first";
    return nullptr;
  }

  bool FindOrAddSection() {
    const PeDirectory directory = image_.Directory(PeImage::kResourceDirectory);
    for (std::size_t i = 0; i < sections_.size(); ++i) {
      if (directory.rva != 0 && sections_[i].rva == directory.rva) {
        resources_ = i;
        return true;
      }
    }
    if (directory.rva != 0) return false;  // resources in the middle of another section
    const std::uint64_t table_end = image_.section_table() + 40 * (sections_.size() + 1);
    std::uint64_t first_data = FieldOr0<std::uint32_t>(image_.file(), image_.optional_header() + 60);
    std::uint64_t rva = 0;
    std::uint64_t file_end = 0;
    for (const PeSection& section : sections_) {
      if (section.file_size) first_data = std::min<std::uint64_t>(first_data, section.file_offset);
      rva =
          std::max<std::uint64_t>(rva, section.rva + std::uint64_t{std::max(section.virtual_size, section.file_size)});
      file_end = std::max<std::uint64_t>(file_end, section.file_offset + std::uint64_t{section.file_size});
    }
    if (table_end > first_data || rva > kLargestImage || file_end > kLargestImage) return false;
    added_ = true;
    resources_ = sections_.size();
    sections_.push_back({static_cast<std::uint32_t>(AlignUp(rva, section_alignment_)), 0,
                         static_cast<std::uint32_t>(AlignUp(file_end, file_alignment_)), 0,
                         image_.section_table() + 40 * sections_.size()});
    return true;
  }

  // Behind the resources only the relocations may stand: nothing but their data directory points at them.
  bool TailIsMovable() {
    const PeSection& own = sections_[resources_];
    const std::uint32_t relocation_rva = image_.Directory(PeImage::kRelocationDirectory).rva;
    for (std::size_t i = 0; i < sections_.size(); ++i) {
      const bool behind = sections_[i].rva > own.rva ||
                          (i != resources_ && sections_[i].file_size && sections_[i].file_offset >= own.file_offset);
      if (!behind) continue;
      if (relocation_rva == 0 || sections_[i].rva != relocation_rva || relocations_) return false;
      relocations_ = i;
    }
    return true;
  }

  void MoveRelocations(const PeSection& own) {
    std::uint64_t end = AlignUp(own.rva + std::uint64_t{own.virtual_size}, section_alignment_);
    if (relocations_) {
      PeSection& moved = sections_[*relocations_];
      moved.rva = static_cast<std::uint32_t>(end);
      moved.file_offset = own.file_offset + own.file_size;
      end = AlignUp(end + moved.virtual_size, section_alignment_);
    }
    image_size_ = static_cast<std::uint32_t>(end);
  }

  std::vector<std::byte> Head(const PeSection& own, std::uint32_t old_file_size) const {
    const Bytes file = image_.file();
    const auto before = file.first(std::min<std::uint64_t>(own.file_offset, file.size()));
    std::vector<std::byte> head(before.begin(), before.end());
    const std::uint64_t optional = image_.optional_header();
    WriteSectionHeader(head, own.header_offset, own);
    if (added_) {
      std::memcpy(head.data() + own.header_offset, ".rsrc\0\0\0", 8);
      PutField<std::uint32_t>(head, own.header_offset + 36, 0x40000040);  // initialised data, readable
      PutField<std::uint16_t>(head, image_.coff_header() + 2, static_cast<std::uint16_t>(sections_.size()));
    }
    if (relocations_) {
      const PeSection& moved = sections_[*relocations_];
      WriteSectionHeader(head, moved.header_offset, moved);
      PutField<std::uint32_t>(head, image_.DirectoryOffset(PeImage::kRelocationDirectory), moved.rva);
    }
    PutField<std::uint32_t>(head, image_.DirectoryOffset(PeImage::kResourceDirectory), own.rva);
    PutField<std::uint32_t>(head, image_.DirectoryOffset(PeImage::kResourceDirectory) + 4, own.virtual_size);
    const auto initialised = FieldOr0<std::uint32_t>(file, optional + 8);
    PutField<std::uint32_t>(head, optional + 8, initialised - old_file_size + own.file_size);
    PutField<std::uint32_t>(head, optional + 56, image_size_);
    // Symbols lay behind the sections and are not carried over.
    PutField<std::uint64_t>(head, image_.coff_header() + 8, 0);
    return head;
  }

  const PeImage& image_;
  ResourceTree tree_;
  std::vector<PeSection> sections_;
  std::uint32_t section_alignment_ = 0;
  std::uint32_t file_alignment_ = 0;
  std::size_t resources_ = 0;
  std::optional<std::size_t> relocations_;
  bool added_ = false;
  std::uint32_t image_size_ = 0;
};

constexpr std::uint32_t kResourceImageHead = 4096;  // headers; file offsets equal addresses in a resource image

std::vector<std::byte> ResourceImageHead(const Section& section, ResourceImageKind kind) {
  std::vector<std::byte> head(kResourceImageHead);
  constexpr std::uint32_t pe = 64;
  const std::uint32_t optional_size = (kind.is64 ? 112u : 96u) + 16 * 8;
  const auto size = static_cast<std::uint32_t>(section.size);
  const auto file_size = static_cast<std::uint32_t>(AlignUp(size, kPage));
  PutField<std::uint16_t>(head, 0, 0x5A4D);
  PutField<std::uint32_t>(head, 60, pe);
  PutField<std::uint32_t>(head, pe, 0x00004550);
  PutField<std::uint16_t>(head, pe + 4, kind.is64 ? 0x8664 : 0x014C);
  PutField<std::uint16_t>(head, pe + 6, 1);
  PutField<std::uint16_t>(head, pe + 20, static_cast<std::uint16_t>(optional_size));
  // Relocations stripped, executable, then 32-bit machine or large addresses, library.
  const std::uint16_t bits = kind.is64 ? 0x0020 : 0x0100;
  PutField<std::uint16_t>(head, pe + 22, static_cast<std::uint16_t>(0x0003 | bits | (kind.dll ? 0x2000 : 0)));
  constexpr std::uint32_t optional = pe + 24;
  PutField<std::uint16_t>(head, optional, kind.is64 ? 0x20B : 0x10B);
  PutField<std::uint32_t>(head, optional + 8, file_size);
  PutField<std::uint32_t>(head, optional + 20, kResourceImageHead);
  if (kind.is64) {
    PutField<std::uint64_t>(head, optional + 24, kind.dll ? 0x180000000u : 0x140000000u);
  } else {
    PutField<std::uint32_t>(head, optional + 28, kind.dll ? 0x10000000 : 0x00400000);
  }
  PutField<std::uint32_t>(head, optional + 32, kPage);
  PutField<std::uint32_t>(head, optional + 36, kPage);
  PutField<std::uint16_t>(head, optional + 40, 5);  // system version 5.1
  PutField<std::uint16_t>(head, optional + 42, 1);
  PutField<std::uint16_t>(head, optional + 48, 5);
  PutField<std::uint16_t>(head, optional + 50, 1);
  PutField<std::uint32_t>(head, optional + 56, kResourceImageHead + file_size);
  PutField<std::uint32_t>(head, optional + 60, kResourceImageHead);
  PutField<std::uint16_t>(head, optional + 68, 2);  // windows, not console
  PutField<std::uint32_t>(head, optional + (kind.is64 ? 108u : 92u), 16);
  const std::uint32_t directories = optional + (kind.is64 ? 112u : 96u);
  PutField<std::uint32_t>(head, directories + 8 * PeImage::kResourceDirectory, kResourceImageHead);
  PutField<std::uint32_t>(head, directories + 8 * PeImage::kResourceDirectory + 4, size);
  const std::uint32_t table = optional + optional_size;
  std::memcpy(head.data() + table, ".rsrc\0\0\0", 8);
  WriteSectionHeader(head, table, {kResourceImageHead, size, kResourceImageHead, file_size, table});
  PutField<std::uint32_t>(head, table + 36, 0x40000040);
  return head;
}

}  // namespace

std::optional<FilePlan> PlanWithResources(Bytes bare, const ResourceTree& resources, std::string* why) {
  const auto image = PeImage::Open(bare);
  if (!image) {
    *why = "not a Windows executable";
    return std::nullopt;
  }
  ResourceTree merged = image->Resources();
  std::erase_if(merged, [&](const auto& row) { return FindInTree(resources, row.first.type, row.first.name); });
  merged.insert(resources.begin(), resources.end());
  return Rewrite(*image, std::move(merged)).Run(why);
}

std::vector<std::byte> WithResources(Bytes bare, const ResourceTree& resources) {
  std::string why;
  const auto plan = PlanWithResources(bare, resources, &why);
  return plan ? plan->ToBytes() : std::vector<std::byte>();
}

std::optional<FilePlan> PlanResourceImage(const ResourceTree& resources, ResourceImageKind kind) {
  if (SizeOf(resources) > kLargestImage) return std::nullopt;
  Section section = SectionBuilder(resources, kResourceImageHead).Build();
  FilePlan plan;
  plan.Add(ResourceImageHead(section, kind));
  AddSection(plan, kResourceImageHead, std::move(section), kPage);
  if (plan.size() > kLargestImage) return std::nullopt;
  SetChecksum(plan, 64 + 24 + 64);
  return plan;
}

}  // namespace winhost
