// vantakit pack: what ends up in a packed setup, and what is refused with which words.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "base/deployment.h"
#include "install/zip/zip_reader.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/deployment_block.h"
#include "tools/vantakit/signing.h"
#include "winhost/image/host_image.h"
#include "winhost/image/mapped_file.h"
#include "winhost/image/version_info.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;
using winhost::Bytes;
using winhost::ResourceName;

constexpr char kKeyHash[] = "00112233445566778899aabbccddeeff00112233445566778899aabbccddeeff";

class PackTest : public testing::Test {
 protected:
  PackTest() {
    std::string pattern = (fs::temp_directory_path() / "vanta-pack-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    Write("bare", "\177ELF a program");
    Write("payload/VantaPictor.exe", "the viewer");
    Write("payload/config/config.xml", "<config/>");
    Write("skin/resources/lang/zh-CN/gdstrings.ini", "A = B\n");
    Write("skin/README", "not packed");
  }
  ~PackTest() override { fs::remove_all(folder_); }

  void Write(const std::string& name, std::string_view text) {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  std::string Path(const std::string& name) { return (folder_ / name).string(); }

  // Runs the command; "" when it succeeds, otherwise its message.
  std::string Pack(std::vector<std::string> more = {"--version=1.2.3.4"}, const std::string& bare = "bare") {
    std::vector<std::string> words = {"pack",   "--setup",    Path(bare), "--payload",      Path("payload"),
                                      "--skin", Path("skin"), "--out",    Path("setup.exe")};
    words.insert(words.end(), more.begin(), more.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    try {
      return RunPack(static_cast<int>(argv.size()), argv.data()) == 0 ? "" : "failed";
    } catch (const Failure& failure) {
      return failure.what();
    }
  }
  bool Mentions(const std::string& message, const std::string& words) { return message.find(words) != message.npos; }

  std::string Resource(const ResourceName& type, std::uint16_t id) {
    file_ = winhost::MappedFile::Open(Path("setup.exe"));
    const auto image = file_ ? winhost::OpenImage(file_->bytes()) : std::nullopt;
    const auto found = image ? image->Find(type, id) : std::nullopt;
    return found ? std::string(reinterpret_cast<const char*>(found->data()), found->size()) : "(none)";
  }
  // The names in an archive, as the setup's own reader lists them.
  std::string Names(const std::string& archive) {
    vanta::ZipReader* reader = vanta::OpenFromMemory(archive.data(), archive.size(), nullptr);
    std::string names;
    vanta::ZipEntryInfo info;
    for (LONG i = 0; reader && vanta::GetEntry(reader, i, &info) == vanta::ZipOk; ++i) {
      names += vanta::ToUtf8(info.name) + " ";
    }
    vanta::Close(reader);
    return names;
  }

  fs::path folder_;
  std::shared_ptr<const winhost::MappedFile> file_;
};

TEST_F(PackTest, PayloadAndSkinAreArchivesInTheirPlaces) {
  ASSERT_EQ(Pack(), "");
  EXPECT_EQ(Names(Resource(winhost::kTypeRcData, 205)), "VantaPictor.exe config/config.xml ");
  EXPECT_EQ(Names(Resource(ResourceName(u"SKIN"), 202)), "resources/lang/zh-CN/gdstrings.ini ");
}

TEST_F(PackTest, EntriesKeepTheirTimeInUtc) {
  ASSERT_EQ(Pack(), "");
  const std::string archive = Resource(winhost::kTypeRcData, 205);
  vanta::ZipReader* reader = vanta::OpenFromMemory(archive.data(), archive.size(), nullptr);
  vanta::ZipEntryInfo info;
  ASSERT_EQ(vanta::GetEntry(reader, 0, &info), vanta::ZipOk);
  for (const FILETIME& time : {info.modification_time, info.access_time, info.creation_time}) {
    const auto ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    EXPECT_EQ(ticks, 1700000000ull * 10000000 + 116444736000000000ull);
  }
  EXPECT_EQ(info.attributes, static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE));
  vanta::Close(reader);
}

TEST_F(PackTest, TheSameInputGivesTheSameBytes) {
  ASSERT_EQ(Pack(), "");
  const std::string once(Resource(winhost::kTypeRcData, 205));
  for (const auto& file : fs::recursive_directory_iterator(folder_ / "payload")) {
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(5));
  }
  ASSERT_EQ(Pack(), "");
  EXPECT_EQ(Resource(winhost::kTypeRcData, 205), once);
}

TEST_F(PackTest, TheDeploymentBlockIsWhatTheSetupReads) {
  ASSERT_EQ(
      Pack({"--version=1.2.3.4", "--publisher=www.example.com", "--statistics=s.example.com", "--maker-key", kKeyHash}),
      "");
  const vanta::Deployment read = vanta::ParseDeployment(Resource(winhost::kTypeRcData, 206));
  EXPECT_EQ(read.publisher, u"www.example.com");
  EXPECT_EQ(read.statistics_host, u"s.example.com");
  EXPECT_EQ(read.upgrade_host, vanta::Deployment().upgrade_host);
  ASSERT_EQ(read.maker_keys.size(), 1u);
  EXPECT_EQ(read.maker_keys[0][1], 0x11);
}

TEST_F(PackTest, WhatIsNotGivenStaysWhenASetupIsPackedAgain) {
  ASSERT_EQ(Pack({"--version=1.2.3.4", "--publisher=www.example.com", "--maker-key", kKeyHash}), "");
  fs::rename(folder_ / "setup.exe", folder_ / "first");
  ASSERT_EQ(Pack({}, "first"), "");
  const std::string block = Resource(winhost::kTypeVersion, 1);
  const auto fixed = winhost::FindVersionValue({reinterpret_cast<const std::byte*>(block.data()), block.size()}, u"\\");
  ASSERT_TRUE(fixed);
  EXPECT_EQ(winhost::FieldOr0<std::uint32_t>(fixed->value, 8), 0x00010002u);
  const vanta::Deployment read = vanta::ParseDeployment(Resource(winhost::kTypeRcData, 206));
  EXPECT_EQ(read.publisher, u"www.example.com");
  EXPECT_EQ(read.maker_keys.size(), 1u);
}

TEST_F(PackTest, WrongArgumentsAreNamed) {
  const struct {
    std::vector<std::string> more;
    const char* words;
  } rows[] = {
      {{}, "--version is missing"},
      {{"--version", "1.2.3"}, "four numbers"},
      {{"--version=1.2.3.4", "--version=1.2.3.4"}, "--version is given twice"},
      {{"--nonsense"}, "no option --nonsense"},
      {{"stray"}, "unexpected argument \"stray\""},
      {{"--release=yes"}, "--release takes no value"},
      {{"--version=1.2.3.4", "--level=12"}, "--level"},
      {{"--version=1.2.3.4", "--icon", "/nonexistent.ico"}, "/nonexistent.ico: cannot be read"},
      {{"--version=1.2.3.4", "--publisher", "http://x/"}, "publisher: \"http://x/\" is no host name"},
      {{"--version=1.2.3.4", "--publisher", "a\nmaker_key=1"}, "is no host name"},
      {{"--version=1.2.3.4", "--maker-key", "1234"}, "is not 64 hexadecimal digits"},
      {{"--version=1.2.3.4", "--maker-cert", "/nonexistent.pem"}, "holds no certificate"},
      {{"--version=1.2.3.4", "--sign-key", "k"}, "--sign-key and --sign-cert belong together"},
  };
  for (const auto& row : rows) {
    const std::string message = Pack(row.more);
    EXPECT_TRUE(Mentions(message, row.words)) << message << "\nwants: " << row.words;
    EXPECT_FALSE(fs::exists(folder_ / "setup.exe"));
  }
}

TEST_F(PackTest, NamesThatCouldNotBeInstalledAreRefused) {
  const struct {
    const char* name;
    const char* words;
  } rows[] = {
      {"aux.txt", "aux.txt: Windows would make another file"},
      {"dir/nul", "dir/nul: Windows would make another file"},
      {"a:b", "a:b: "},
      {"back\\slash", "Windows has no such character"},
      {"what?", "Windows has no such character"},
      {"dot.", "Windows would make another file"},
      {"\xFF\xFE", "the name is no UTF-8"},
      {"vantapictor.EXE", "but for the case of letters"},
      {"CONFIG/more.xml", "but for the case of letters"},
  };
  for (const auto& row : rows) {
    Write(std::string("payload/") + row.name, "x");
    const std::string message = Pack();
    EXPECT_TRUE(Mentions(message, row.words)) << message << "\nwants: " << row.words;
    fs::remove(folder_ / "payload" / row.name);
    fs::remove(folder_ / "payload" / "CONFIG");
  }
  Write("payload/" + std::string(120, 'a') + "/" + std::string(140, 'b'), "x");
  EXPECT_TRUE(Mentions(Pack(), "more than 259 bytes"));
}

TEST_F(PackTest, UnfitFoldersAndSetupsAreRefused) {
  fs::remove_all(folder_ / "skin/resources");
  EXPECT_TRUE(Mentions(Pack(), "holds no folder \"resources\""));
  Write("skin/resources/x", "x");
  Write("bare", "no program at all");
  EXPECT_TRUE(Mentions(Pack(), "not a Windows executable"));
  fs::create_directory_symlink(folder_, folder_ / "payload/around");
  EXPECT_TRUE(Mentions(Pack(), "a link to a folder"));
  fs::remove_all(folder_ / "payload");
  EXPECT_TRUE(Mentions(Pack(), "no such folder"));
  fs::create_directories(folder_ / "payload");
  EXPECT_TRUE(Mentions(Pack(), "holds no files"));
}

TEST_F(PackTest, AFailureLeavesNothingBehind) {
  Write("bare", "no program at all");
  ASSERT_NE(Pack(), "");
  std::size_t left = 0;
  for (const auto& entry : fs::directory_iterator(folder_))
    left += entry.path().filename().string().starts_with(".vantakit");
  EXPECT_EQ(left, 0u);
  EXPECT_FALSE(fs::exists(folder_ / "setup.exe"));
}

TEST_F(PackTest, AReleaseHasNoPlaceholders) {
  EXPECT_TRUE(Mentions(Pack({"--version=1.2.3.4", "--release"}), "publisher.invalid"));
  DeploymentFields good{"a.com", "b.com", "c.com", "d.com", {kKeyHash}};
  EXPECT_TRUE(FindPlaceholders(good).empty());
  for (const char* placeholder : {"x.invalid", "INVALID", "a.Invalid"}) {
    DeploymentFields fields = good;
    fields.upgrade = placeholder;
    EXPECT_EQ(FindPlaceholders(fields).size(), 1u) << placeholder;
  }
  good.maker_keys.clear();
  EXPECT_EQ(FindPlaceholders(good).size(), 1u);
}

TEST_F(PackTest, AReleaseRefusesWhatCheckFinds) {
  const std::string message = Pack({"--version=1.2.3.4", "--release", "--publisher=a.com", "--statistics=b.com",
                                    "--upgrade=c.com", "--agreement=d.com", "--maker-key", kKeyHash});
  EXPECT_TRUE(Mentions(message, "uninst.exe: missing")) << message;
}

TEST_F(PackTest, ProgramsOfThePayloadAreSignedOnce) {
  const std::string make = "openssl req -x509 -newkey rsa:2048 -nodes -keyout " + Path("k.pem") + " -out " +
                           Path("c.pem") + " -subj /CN=Maker -days 2 2>/dev/null";
  ASSERT_EQ(system(make.c_str()), 0);
  const auto image = winhost::PlanResourceImage({}, {.is64 = false, .dll = false})->ToBytes();
  Write("payload/VantaPictor.exe", {reinterpret_cast<const char*>(image.data()), image.size()});
  ASSERT_EQ(Pack({"--version=1.2.3.4", "--level=0", "--sign-key", Path("k.pem"), "--sign-cert", Path("c.pem")}), "");
  const vanta::Deployment read = vanta::ParseDeployment(Resource(winhost::kTypeRcData, 206));
  ASSERT_EQ(read.maker_keys.size(), 1u);

  const std::string archive = Resource(winhost::kTypeRcData, 205);
  vanta::ZipReader* reader = vanta::OpenFromMemory(archive.data(), archive.size(), nullptr);
  vanta::ZipEntryInfo info;
  ASSERT_EQ(vanta::GetEntry(reader, 0, &info), vanta::ZipOk);
  std::vector<std::byte> program(info.uncompressed_size);
  ASSERT_EQ(vanta::ExtractToMemory(reader, 0, program.data(), info.uncompressed_size), vanta::ZipOk);
  vanta::Close(reader);
  EXPECT_TRUE(IsSigned(program));

  // Packed again, the signed one goes in as it is.
  Write("payload/VantaPictor.exe", {reinterpret_cast<const char*>(program.data()), program.size()});
  ASSERT_EQ(Pack({"--version=1.2.3.4", "--level=0", "--sign-key", Path("k.pem"), "--sign-cert", Path("c.pem")}), "");
  EXPECT_EQ(Resource(winhost::kTypeRcData, 205), archive);
}

}  // namespace
}  // namespace vantakit
