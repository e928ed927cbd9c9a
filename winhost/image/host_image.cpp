#include "winhost/image/host_image.h"

#include <array>
#include <cstring>

namespace winhost {
namespace {

constexpr std::u16string_view kHostImage = u"HOSTIMAGE";
constexpr std::array<char, 16> kMagic = {'W', 'i', 'n', 'h', 'o', 's', 't', ' ',
                                         'i', 'm', 'a', 'g', 'e', ' ', '1', '\n'};
constexpr std::size_t kFooter = kMagic.size() + 16;  // magic, offset (8), size (8)
constexpr std::uint64_t kPage = 4096;

struct Appended {
  std::uint64_t program_size;  // without the padding where that is not known: up to the image
  Bytes image;
};

std::optional<Appended> FindAppended(Bytes file) {
  if (file.size() < kFooter) return std::nullopt;
  const Bytes footer = file.last(kFooter);
  if (std::memcmp(footer.data(), kMagic.data(), kMagic.size()) != 0) return std::nullopt;
  const auto offset = FieldOr0<std::uint64_t>(footer, kMagic.size());
  const auto image =
      Part(file.first(file.size() - kFooter), offset, FieldOr0<std::uint64_t>(footer, kMagic.size() + 8));
  if (!image) return std::nullopt;
  return Appended{offset, *image};
}

}  // namespace

bool IsElf(Bytes file) { return file.size() >= 4 && std::memcmp(file.data(), "\177ELF", 4) == 0; }

std::optional<PeImage> OpenImage(Bytes file) {
  if (!IsElf(file)) return PeImage::Open(file);
  const auto appended = FindAppended(file);
  return appended ? PeImage::Open(appended->image) : std::nullopt;
}

std::optional<FilePlan> PlanAppended(Bytes elf, const ResourceTree& resources, std::string* why) {
  if (!IsElf(elf)) {
    *why = "not a Linux program";
    return std::nullopt;
  }
  ResourceTree merged = resources;
  if (const auto old = FindAppended(elf)) {
    if (const auto image = PeImage::Open(old->image)) {
      for (const auto& [key, blob] : image->Resources()) {
        if (!FindInTree(resources, key.type, key.name)) merged.emplace(key, blob);
      }
    }
    elf = elf.first(old->program_size);
  }
  const auto image = PlanResourceImage(merged, {.is64 = false, .dll = false});
  if (!image) {
    *why = "the executable would exceed 2 GiB";
    return std::nullopt;
  }
  FilePlan plan;
  plan.AddView(elf);
  plan.PadTo(AlignUp(elf.size(), kPage));
  std::vector<std::byte> footer(kFooter);
  std::memcpy(footer.data(), kMagic.data(), kMagic.size());
  PutField<std::uint64_t>(footer, kMagic.size(), plan.size());
  PutField<std::uint64_t>(footer, kMagic.size() + 8, image->size());
  plan.AddPlan(*image);
  plan.Add(std::move(footer));
  return plan;
}

std::optional<FilePlan> WrapHostImage(Bytes elf, const ResourceTree& resources, ResourceImageKind kind) {
  ResourceTree tree = resources;
  SetResource(tree, kTypeRcData, ResourceName(kHostImage), 0, ResourceBlob::View(elf));
  return PlanResourceImage(tree, kind);
}

Bytes HostImage(const PeImage& image) {
  const auto found = image.Find(kTypeRcData, ResourceName(kHostImage));
  return found && IsElf(*found) ? *found : Bytes();
}

}  // namespace winhost
