// Resources written into images and read back, and images that nobody should trust.
#include <gtest/gtest.h>

#include <random>

#include "winhost/image/host_image.h"
#include "winhost/image/icon.h"
#include "winhost/image/pe_writer.h"
#include "winhost/image/version_info.h"

namespace winhost {
namespace {

std::vector<std::byte> Raw(std::string_view text) {
  const auto* begin = reinterpret_cast<const std::byte*>(text.data());
  return {begin, begin + text.size()};
}
ResourceBlob Blob(std::string_view text) { return ResourceBlob(Raw(text)); }
std::string Text(std::optional<Bytes> bytes) {
  return bytes ? std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()) : "(none)";
}

ResourceTree Sample() {
  ResourceTree tree;
  SetResource(tree, kTypeRcData, 205, 0, Blob("payload"));
  SetResource(tree, ResourceName(u"skin"), 202, 0, Blob("the skin"));
  SetResource(tree, kTypeRcData, ResourceName(u"named"), 0, Blob(""));
  SetResource(tree, kTypeManifest, 1, 0x0409, Blob("<assembly/>"));
  return tree;
}

std::vector<std::byte> SampleImage(bool is64 = false) {
  return PlanResourceImage(Sample(), {.is64 = is64, .dll = false})->ToBytes();
}

// Adds a relocation section behind the resources, as linkers do.
std::vector<std::byte> WithRelocations(std::vector<std::byte> file) {
  const auto image = *PeImage::Open(file);
  const PeSection resources = image.sections()[0];
  const std::uint64_t header = image.section_table() + 40;
  const auto rva = static_cast<std::uint32_t>(AlignUp(resources.rva + resources.virtual_size, 4096));
  const auto offset = static_cast<std::uint32_t>(file.size());
  PutField<std::uint16_t>(file, image.coff_header() + 2, 2);
  PutField<std::uint32_t>(file, header + 8, 12);
  PutField<std::uint32_t>(file, header + 12, rva);
  PutField<std::uint32_t>(file, header + 16, 4096);
  PutField<std::uint32_t>(file, header + 20, offset);
  PutField<std::uint32_t>(file, image.DirectoryOffset(PeImage::kRelocationDirectory), rva);
  PutField<std::uint32_t>(file, image.DirectoryOffset(PeImage::kRelocationDirectory) + 4, 12);
  const auto relocations = Raw("RELOCATIONS!");
  file.insert(file.end(), relocations.begin(), relocations.end());
  file.resize(offset + 4096);
  return file;
}

std::uint32_t Checksum(const std::vector<std::byte>& file) {
  return FieldOr0<std::uint32_t>(file, PeImage::Open(file)->optional_header() + 64);
}

TEST(Resources, EveryKindOfNameIsReadBack) {
  for (const bool is64 : {false, true}) {
    const auto file = SampleImage(is64);
    const auto image = PeImage::Open(file);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Is64(), is64);
    EXPECT_EQ(image->Resources().size(), 4u);
    EXPECT_EQ(Text(image->Find(kTypeRcData, 205)), "payload");
    EXPECT_EQ(Text(image->Find(ResourceName(u"SkiN"), 202)), "the skin");
    EXPECT_EQ(Text(image->Find(kTypeRcData, ResourceName(u"Named"))), "");
    EXPECT_EQ(Text(image->Find(kTypeManifest, 1)), "<assembly/>");
    EXPECT_EQ(Text(image->Find(kTypeRcData, 206)), "(none)");
  }
}

TEST(Resources, NeutralLanguageComesBeforeEnglishBeforeTheFirst) {
  ResourceTree tree = {{{kTypeRcData, 1, 0x0804}, Blob("chinese")}};
  EXPECT_EQ(Text(FindInTree(tree, kTypeRcData, 1)->bytes()), "chinese");
  tree[{kTypeRcData, 1, 0x0409}] = Blob("english");
  EXPECT_EQ(Text(FindInTree(tree, kTypeRcData, 1)->bytes()), "english");
  tree[{kTypeRcData, 1, 0}] = Blob("neutral");
  EXPECT_EQ(Text(FindInTree(tree, kTypeRcData, 1)->bytes()), "neutral");
}

TEST(Resources, AddingKeepsWhatIsThereAndReplacesWhatIsNamed) {
  ResourceTree more;
  SetResource(more, kTypeRcData, 205, 0, Blob(std::string(300000, 'x')));
  SetResource(more, kTypeManifest, 1, 0, Blob("new"));
  const auto file = WithResources(SampleImage(), more);
  const auto image = PeImage::Open(file);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->Resources().size(), 4u);
  EXPECT_EQ(image->Find(kTypeRcData, 205)->size(), 300000u);
  EXPECT_EQ(Text(image->Find(kTypeManifest, 1)), "new");
  EXPECT_EQ(Text(image->Find(ResourceName(u"SKIN"), 202)), "the skin");
}

TEST(Resources, RelocationsMoveBehindAGrownSection) {
  ResourceTree more;
  SetResource(more, kTypeRcData, 205, 0, Blob(std::string(100001, 'x')));
  const auto file = WithResources(WithRelocations(SampleImage()), more);
  const auto image = PeImage::Open(file);
  ASSERT_TRUE(image);
  const PeSection& resources = image->sections()[0];
  const PeSection& relocations = image->sections()[1];
  EXPECT_EQ(image->Directory(PeImage::kRelocationDirectory).rva, relocations.rva);
  EXPECT_EQ(relocations.rva, AlignUp(resources.rva + resources.virtual_size, 4096));
  EXPECT_EQ(Text(Part(file, relocations.file_offset, 12)), "RELOCATIONS!");
  EXPECT_EQ(image->Directory(PeImage::kResourceDirectory).size, resources.virtual_size);
  EXPECT_EQ(FieldOr0<std::uint32_t>(file, image->optional_header() + 56), AlignUp(relocations.rva + 12, 4096));
}

TEST(Resources, LargeOnesLieOnPagesBehindTheSmall) {
  ResourceTree tree = Sample();
  SetResource(tree, kTypeRcData, 1, 0, Blob(std::string(70000, 'a')));
  const auto file = PlanResourceImage(tree, {})->ToBytes();
  const auto image = PeImage::Open(file);
  const auto large = *image->Find(kTypeRcData, 1);
  EXPECT_EQ((large.data() - file.data()) % 4096, 0);
  EXPECT_GT(large.data(), image->Find(kTypeRcData, 205)->data());
}

TEST(Resources, WrittenTwiceTheFileIsTheSame) {
  const auto once = WithResources(SampleImage(), Sample());
  EXPECT_EQ(WithResources(once, Sample()), once);
  EXPECT_NE(Checksum(once), 0u);
}

TEST(Resources, SignedOrUnsoundExecutablesAreNotRewritten) {
  std::string why;
  auto file = SampleImage();
  const auto image = *PeImage::Open(file);
  PutField<std::uint32_t>(file, image.DirectoryOffset(PeImage::kCertificateDirectory) + 4, 8);
  EXPECT_FALSE(PlanWithResources(file, Sample(), &why));
  EXPECT_EQ(why, "the executable is signed already; pack first, then sign");
  file = SampleImage();
  PutField<std::uint32_t>(file, image.optional_header() + 36, 3);
  EXPECT_FALSE(PlanWithResources(file, Sample(), &why));
  EXPECT_FALSE(PlanWithResources(Raw("MZ"), Sample(), &why));
}

// Every byte of the headers and tables set to something else, and every cut: nothing is read outside the file.
TEST(HostileImage, DamageAnywhereIsSurvived) {
  const auto good = WithRelocations(SampleImage());
  std::mt19937 random(7);
  for (std::size_t at = 0; at < good.size(); at += at < 1024 || (at >= 4096 && at < 4600) ? 1 : 509) {
    for (const unsigned value : {0x00u, 0x7Fu, 0x80u, 0xFFu, static_cast<unsigned>(random() & 0xFF)}) {
      auto file = good;
      file[at] = static_cast<std::byte>(value);
      if (const auto image = PeImage::Open(file)) image->Resources();
      WithResources(file, Sample());
    }
    const std::vector<std::byte> cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(at));
    if (const auto image = PeImage::Open(cut)) image->Resources();
    WithResources(cut, Sample());
  }
}

TEST(HostileImage, ATableThatContainsItselfEnds) {
  auto file = SampleImage();
  const auto root = PeImage::Open(file)->sections()[0].file_offset;
  PutField<std::uint16_t>(file, root + 14, 0xFFFF);
  for (std::size_t entry = root + 16; entry + 8 < file.size(); entry += 8) {
    PutField<std::uint32_t>(file, entry, 7);
    PutField<std::uint32_t>(file, entry + 4, 0x80000000u);
  }
  EXPECT_TRUE(PeImage::Open(file)->Resources().empty());
}

TEST(HostImage, ResourcesBehindALinuxProgramAreFoundAndReplaced) {
  const auto program = Raw("\177ELF and so on");
  std::string why;
  const auto once = PlanAppended(program, Sample(), &why)->ToBytes();
  EXPECT_EQ(Text(Part(once, 0, program.size())), Text(program));
  EXPECT_EQ(Text(OpenImage(once)->Find(kTypeRcData, 205)), "payload");
  ResourceTree more;
  SetResource(more, kTypeRcData, 205, 0, Blob("another"));
  const auto twice = PlanAppended(once, more, &why)->ToBytes();
  EXPECT_EQ(Text(OpenImage(twice)->Find(kTypeRcData, 205)), "another");
  EXPECT_EQ(Text(OpenImage(twice)->Find(ResourceName(u"SKIN"), 202)), "the skin");
  EXPECT_EQ(twice.size(), once.size());
  EXPECT_FALSE(OpenImage(program));
}

TEST(HostImage, AWrappedProgramComesOutWhole) {
  const auto program = Raw("\177ELF" + std::string(100000, 'p'));
  const auto file = WrapHostImage(program, Sample(), {.is64 = true, .dll = true})->ToBytes();
  const auto image = PeImage::Open(file);
  ASSERT_TRUE(image);
  EXPECT_TRUE(image->IsDll());
  EXPECT_EQ(image->machine(), 0x8664);
  EXPECT_EQ(Text(HostImage(*image)), Text(program));
  const auto windows_program = SampleImage();
  EXPECT_TRUE(HostImage(*PeImage::Open(windows_program)).empty());
}

VersionInfo SampleVersion() {
  VersionInfo info;
  info.file = *VersionNumber::Parse("1.2.3.65535");
  info.product = *VersionNumber::Parse("4.0.0.0");
  info.strings = {{u"ProductName", u"VantaView"}, {u"Empty", u""}};
  return info;
}

TEST(VersionResource, ValuesAreFoundByPath) {
  const auto block = BuildVersionResource(SampleVersion());
  const auto fixed = FindVersionValue(block, u"\\");
  ASSERT_TRUE(fixed);
  EXPECT_EQ(fixed->length, 52u);
  EXPECT_EQ(FieldOr0<std::uint32_t>(fixed->value, 8), 0x00010002u);
  EXPECT_EQ(FieldOr0<std::uint32_t>(fixed->value, 12), 0x0003FFFFu);
  const auto translation = FindVersionValue(block, u"\\VarFileInfo\\Translation");
  ASSERT_TRUE(translation);
  EXPECT_EQ(FieldOr0<std::uint32_t>(translation->value, 0), 0x04B00804u);
  const auto name = FindVersionValue(block, u"\\stringfileinfo\\080404b0\\PRODUCTNAME");
  ASSERT_TRUE(name);
  EXPECT_EQ(name->length, 10u);
  EXPECT_FALSE(FindVersionValue(block, u"\\StringFileInfo\\040904B0\\ProductName"));
  EXPECT_EQ(VersionStrings(block), SampleVersion().strings);
}

TEST(VersionResource, DamageAnywhereIsSurvived) {
  const auto good = BuildVersionResource(SampleVersion());
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (const unsigned value : {0x00u, 0x01u, 0x7Fu, 0xFFu}) {
      auto block = good;
      block[at] = static_cast<std::byte>(value);
      FindVersionValue(block, u"\\StringFileInfo\\080404B0\\ProductName");
      VersionStrings(block);
    }
    const std::vector<std::byte> cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(at));
    FindVersionValue(cut, u"\\VarFileInfo\\Translation");
  }
}

TEST(VersionNumber, IsFourNumbersAndNothingElse) {
  EXPECT_EQ(VersionNumber::Parse("10.0.0.65535")->Text(), "10.0.0.65535");
  for (const char* wrong : {"", "1.2.3", "1.2.3.4.5", "1.2.3.65536", "1.2.3.-4", "1.2.3.x", " 1.2.3.4", "1..2.3"}) {
    EXPECT_FALSE(VersionNumber::Parse(wrong)) << wrong;
  }
}

TEST(Icon, PicturesBecomeResourcesAndTheListNamesThem) {
  std::vector<std::byte> ico = {std::byte{0}, std::byte{0}, std::byte{1}, std::byte{0}, std::byte{1}, std::byte{0}};
  ico.resize(22);
  PutField<std::uint32_t>(ico, 14, 3);
  PutField<std::uint32_t>(ico, 18, 22);
  const auto picture = Raw("pic");
  ico.insert(ico.end(), picture.begin(), picture.end());
  ResourceTree tree;
  std::string why;
  ASSERT_TRUE(AddIcon(tree, ico, 201, 5, &why));
  EXPECT_EQ(Text(FindInTree(tree, kTypeIcon, 5)->bytes()), "pic");
  EXPECT_EQ(FieldOr0<std::uint16_t>(FindInTree(tree, kTypeGroupIcon, 201)->bytes(), 18), 5);
  ico.pop_back();
  EXPECT_FALSE(AddIcon(tree, ico, 201, 5, &why));
  EXPECT_EQ(why, "picture 1 lies outside the icon file");
}

}  // namespace
}  // namespace winhost
