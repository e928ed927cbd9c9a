#include <objbase.h>
#include <shobjidl.h>

#include "tests/support/machine_fixture.h"
#include "winhost/shell/link_file.h"

namespace {

using testing_support::OnMachine;
using winhost::LinkFile;
using winhost::ReadLink;
using winhost::WriteLink;

LinkFile Sample() {
  LinkFile link;
  link.target = TEXT("C:\\Program Files\\Vanta\\查看器.exe");
  link.arguments = TEXT("/src=start");
  link.working_directory = TEXT("C:\\Program Files\\Vanta");
  link.icon = link.target;
  link.icon_index = -3;
  link.description = TEXT("a picture viewer");
  link.show_command = 7;
  link.attributes = FILE_ATTRIBUTE_ARCHIVE;
  link.size = 12345;
  return link;
}

TEST(LinkFileTest, WhatIsWrittenIsRead) {
  const auto link = ReadLink(WriteLink(Sample()));
  ASSERT_TRUE(link);
  EXPECT_EQ(link->target, Sample().target);
  EXPECT_EQ(link->arguments, Sample().arguments);
  EXPECT_EQ(link->working_directory, Sample().working_directory);
  EXPECT_EQ(link->icon, Sample().icon);
  EXPECT_EQ(link->icon_index, -3);
  EXPECT_EQ(link->description, Sample().description);
  EXPECT_EQ(link->relative_path, TEXT(""));
  EXPECT_EQ(link->show_command, 7u);
  EXPECT_EQ(link->size, 12345u);
}

TEST(LinkFileTest, TheIdentifierListAloneNamesTheTarget) {
  std::string bytes = WriteLink(Sample());
  bytes[20] = static_cast<char>(bytes[20] & ~0x02);  // says that there is no link info
  const std::size_t list =
      76 + 2 + static_cast<unsigned char>(bytes[76]) + 256u * static_cast<unsigned char>(bytes[77]);
  std::uint32_t info_size;
  std::memcpy(&info_size, bytes.data() + list, 4);
  bytes.erase(list, info_size);
  const auto link = ReadLink(bytes);
  ASSERT_TRUE(link);
  EXPECT_EQ(link->target, Sample().target);
  EXPECT_EQ(link->arguments, Sample().arguments);
}

TEST(LinkFileTest, EveryCutIsRefusedOrReadWithinBounds) {
  const std::string whole = WriteLink(Sample());
  for (std::size_t size = 0; size + 4 < whole.size(); ++size) EXPECT_FALSE(ReadLink(whole.substr(0, size))) << size;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char value : {'\0', '\x7F', '\xFF'}) {
      std::string damaged = whole;
      damaged[at] = value;
      ReadLink(damaged);
    }
  }
}

class ShellLinkTest : public OnMachine {
 protected:
  void SetUp() override { CoInitialize(nullptr); }
  void TearDown() override {
    if (file_) file_->Release();
    if (link_) link_->Release();
    CoUninitialize();
  }
  void Make() {
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, reinterpret_cast<void**>(&link_));
    link_->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file_));
  }
  std::optional<LinkFile> Saved() { return ReadLink(Contents("C:\\a.lnk")); }

  IShellLinkW* link_ = nullptr;
  IPersistFile* file_ = nullptr;
};

TEST_F(ShellLinkTest, SavingReplacesAndRemembersTheTarget) {
  Start();
  Put("C:\\x\\y.exe", "12345");
  Put("C:\\a.lnk", "something longer than any link could be" + std::string(5000, '.'));
  Make();
  EXPECT_EQ(link_->SetPath(TEXT("C:\\x\\y.exe")), S_OK);
  EXPECT_EQ(link_->SetIconLocation(TEXT("C:\\x\\y.exe"), 0), S_OK);
  EXPECT_EQ(file_->IsDirty(), S_OK);
  EXPECT_EQ(file_->Save(TEXT("C:\\a.lnk"), TRUE), S_OK);
  EXPECT_EQ(file_->IsDirty(), S_FALSE);
  ASSERT_TRUE(Saved());
  EXPECT_EQ(Saved()->size, 5u);
  EXPECT_TRUE(Saved()->written.dwHighDateTime);
  EXPECT_LT(Contents("C:\\a.lnk").size(), 1000u);

  link_->SetArguments(TEXT("/now"));
  EXPECT_EQ(file_->Save(nullptr, TRUE), S_OK);  // to the remembered file
  EXPECT_EQ(Saved()->arguments, TEXT("/now"));
}

TEST_F(ShellLinkTest, ALoadedLinkAnswers) {
  Start();
  Put("C:\\a.lnk", WriteLink(Sample()));
  Make();
  ASSERT_EQ(file_->Load(TEXT("C:\\a.lnk"), STGM_READ), S_OK);
  WCHAR path[MAX_PATH], few[5];
  int icon = 0;
  EXPECT_EQ(link_->GetPath(path, MAX_PATH, nullptr, SLGP_RAWPATH), S_OK);
  EXPECT_EQ(std::u16string(path), Sample().target);
  EXPECT_EQ(link_->GetArguments(few, 5), S_OK);
  EXPECT_EQ(std::u16string(few), TEXT("/src"));
  EXPECT_EQ(link_->GetIconLocation(path, MAX_PATH, &icon), S_OK);
  EXPECT_EQ(icon, -3);
  LPOLESTR file = nullptr;
  EXPECT_EQ(file_->GetCurFile(&file), S_OK);
  EXPECT_EQ(std::u16string(file), TEXT("C:\\a.lnk"));
  CoTaskMemFree(file);
}

TEST_F(ShellLinkTest, FailuresAreTheFileSystems) {
  Start(
      R"({"faults": [{"operation": "WriteFile", "error": 112}, {"operation": "IShellLinkW::SetPath", "nth": 2, "error": 8}]})");
  Put("C:\\b.lnk", "no link");
  Make();
  link_->SetPath(TEXT("C:\\x.exe"));
  EXPECT_EQ(link_->SetPath(TEXT("C:\\x.exe")), HRESULT_FROM_WIN32(8));
  EXPECT_EQ(file_->Save(TEXT("C:\\a.lnk"), TRUE), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
  EXPECT_EQ(file_->Save(TEXT("C:\\none\\a.lnk"), TRUE), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(file_->Save(nullptr, TRUE), E_INVALIDARG);
  EXPECT_EQ(file_->Load(TEXT("C:\\b.lnk"), STGM_READ), E_FAIL);
  EXPECT_EQ(file_->Load(TEXT("C:\\c.lnk"), STGM_READ), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(link_->SetPath(std::u16string(300, u'a').c_str()), E_INVALIDARG);
}

}  // namespace
