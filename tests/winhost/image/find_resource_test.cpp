// Resources and versions as programs of a machine ask for them.
#include <windows.h>

#include <cstring>

#include "tests/support/machine_fixture.h"
#include "winhost/image/host_image.h"
#include "winhost/image/version_info.h"
#include "winhost/kernel/resources.h"

namespace {

using namespace winhost;
using testing_support::OnMachine;
using Text = std::u16string;

ResourceBlob Blob(std::string_view text) {
  const auto* begin = reinterpret_cast<const std::byte*>(text.data());
  return ResourceBlob({begin, begin + text.size()});
}
std::string AsText(const std::vector<std::byte>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class FindResourceTest : public OnMachine {
 protected:
  void Provide() {
    ResourceTree tree;
    SetResource(tree, kTypeRcData, 205, 0, Blob("payload"));
    SetResource(tree, ResourceName(u"SKIN"), 202, 0x0804, Blob("the skin"));
    SetProgramResources(tree);
  }
  static std::string Load(HRSRC resource) {
    const auto* data = static_cast<const char*>(LockResource(LoadResource(nullptr, resource)));
    return data ? std::string(data, SizeofResource(nullptr, resource)) : "(none)";
  }
};

TEST_F(FindResourceTest, NumbersNumbersInTextAndTextAreNames) {
  Start();
  Provide();
  EXPECT_EQ(Load(FindResourceW(nullptr, MAKEINTRESOURCEW(205), RT_RCDATA)), "payload");
  EXPECT_EQ(Load(FindResourceW(nullptr, u"#205", u"#10")), "payload");
  EXPECT_EQ(Load(FindResourceW(nullptr, u"#202", u"skin")), "the skin");
  EXPECT_EQ(Load(FindResourceExW(nullptr, u"Skin", u"#202", 0x0804)), "the skin");
}

TEST_F(FindResourceTest, WhatIsMissingIsToldApart) {
  Start();
  Provide();
  EXPECT_EQ(FindResourceW(nullptr, u"#1", RT_RCDATA), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
  EXPECT_EQ(FindResourceW(nullptr, u"#205", RT_MANIFEST), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_RESOURCE_TYPE_NOT_FOUND);
  EXPECT_EQ(FindResourceExW(nullptr, u"SKIN", u"#202", 0x0409), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_RESOURCE_LANG_NOT_FOUND);
  SetProgramResources({});
  EXPECT_EQ(FindResourceW(nullptr, u"#205", RT_RCDATA), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_RESOURCE_DATA_NOT_FOUND);
}

TEST_F(FindResourceTest, AHandleThatWasNeverGivenIsRefused) {
  Start();
  Provide();
  EXPECT_EQ(SizeofResource(nullptr, nullptr), 0u);
  EXPECT_EQ(LoadResource(nullptr, reinterpret_cast<HRSRC>(this)), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(FindResourceTest, EachCallFailsAsPlanned) {
  Start(R"({"faults": [{"operation": "FindResourceW", "subject": "#10/#205", "nth": 2, "error": 1812},
                       {"operation": "LoadResource", "nth": 1, "error": 8},
                       {"operation": "SizeofResource", "nth": 1, "error": 9}]})");
  Provide();
  const HRSRC resource = FindResourceW(nullptr, u"#205", RT_RCDATA);
  ASSERT_TRUE(resource);
  EXPECT_EQ(FindResourceW(nullptr, u"#205", RT_RCDATA), nullptr);
  EXPECT_EQ(LoadResource(nullptr, resource), nullptr);
  EXPECT_EQ(GetLastError(), 8u);
  EXPECT_EQ(SizeofResource(nullptr, resource), 0u);
  EXPECT_EQ(GetLastError(), 9u);
  EXPECT_EQ(Load(resource), "payload");
}

class FileVersionTest : public OnMachine {
 protected:
  static ResourceTree Versioned(std::vector<std::byte> block) {
    ResourceTree tree;
    SetResource(tree, kTypeVersion, 1, 0, ResourceBlob(std::move(block)));
    return tree;
  }
  static std::vector<std::byte> Block() {
    VersionInfo info;
    info.file = *VersionNumber::Parse("1.2.3.4");
    info.strings = {{u"ProductName", u"VantaView"}};
    return BuildVersionResource(info);
  }
  std::vector<BYTE> Read(const Text& path) {
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    if (block.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
      return {};
    return block;
  }
};

TEST_F(FileVersionTest, IsReadFromBothKindsOfFile) {
  Start();
  std::string why;
  const std::string elf = "\177ELF…";
  Put("C:\\pe.exe", AsText(PlanResourceImage(Versioned(Block()), {})->ToBytes()));
  const auto* program = reinterpret_cast<const std::byte*>(elf.data());
  Put("C:\\elf.exe", AsText(PlanAppended({program, elf.size()}, Versioned(Block()), &why)->ToBytes()));
  for (const WCHAR* path : {u"C:\\pe.exe", u"C:\\elf.exe"}) {
    const auto block = Read(path);
    ASSERT_FALSE(block.empty());
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), u"\\", &value, &length));
    ASSERT_EQ(length, sizeof(VS_FIXEDFILEINFO));
    VS_FIXEDFILEINFO fixed;
    std::memcpy(&fixed, value, sizeof fixed);
    EXPECT_EQ(fixed.dwFileVersionMS, 0x00010002u);
    EXPECT_EQ(fixed.dwFileVersionLS, 0x00030004u);
    ASSERT_TRUE(VerQueryValueW(block.data(), u"\\StringFileInfo\\080404B0\\ProductName", &value, &length));
    EXPECT_EQ(Text(static_cast<const WCHAR*>(value), length - 1), u"VantaView");
    EXPECT_FALSE(VerQueryValueW(block.data(), u"\\Nothing", &value, &length));
  }
}

TEST_F(FileVersionTest, FilesWithoutOneSayWhy) {
  Start();
  Put("C:\\text.exe", "MZ and nothing else");
  Put("C:\\none.exe", AsText(PlanResourceImage({}, {})->ToBytes()));
  const std::pair<const WCHAR*, DWORD> rows[] = {{u"C:\\absent.exe", ERROR_FILE_NOT_FOUND},
                                                 {u"C:\\text.exe", ERROR_RESOURCE_DATA_NOT_FOUND},
                                                 {u"C:\\none.exe", ERROR_RESOURCE_TYPE_NOT_FOUND}};
  for (const auto& [path, error] : rows) {
    EXPECT_EQ(GetFileVersionInfoSizeW(path, nullptr), 0u);
    EXPECT_EQ(GetLastError(), error);
  }
}

TEST_F(FileVersionTest, ALengthThatLiesIsCutToTheResource) {
  Start();
  auto block = Block();
  PutField<std::uint16_t>(block, 0, 0xFFFF);
  PutField<std::uint16_t>(block, 2, 0xFFFF);
  Put("C:\\lies.exe", AsText(PlanResourceImage(Versioned(block), {})->ToBytes()));
  const auto read = Read(u"C:\\lies.exe");
  ASSERT_EQ(read.size(), block.size());
  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(read.data(), u"\\", &value, &length));
  EXPECT_LE(static_cast<const BYTE*>(value) + length, read.data() + read.size());
}

TEST_F(FileVersionTest, TooSmallABufferIsRefused) {
  Start();
  Put("C:\\pe.exe", AsText(PlanResourceImage(Versioned(Block()), {})->ToBytes()));
  BYTE small[16];
  EXPECT_FALSE(GetFileVersionInfoW(u"C:\\pe.exe", 0, sizeof small, small));
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

}  // namespace
