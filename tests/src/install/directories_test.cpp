#include "install/directories.h"

#include "app/install_state.h"
#include "base/registry.h"
#include "install/product_config.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::DirectoryCheck;
using vanta::String;

class DirectoriesTest : public testing_support::OnMachine {
 protected:
  String Resolved() {
    vanta::ResolveInstallDirectory();
    return vanta::GetInstallDirectory();
  }
  void Register(const String& path) {
    vanta::RegWriteString(HKEY_LOCAL_MACHINE, vanta::kAppPathsKey, TEXT("Path"), path);
  }
  DirectoryCheck Check(const String& path) { return vanta::CheckChosenDirectory(path, &chosen_); }
  String chosen_ = TEXT("before");
};

TEST_F(DirectoriesTest, DefaultLiesBelowTheProgramFiles) {
  Start();
  EXPECT_EQ(Resolved(), String(TEXT("C:\\Program Files (x86)\\VantaPictor")));
}

TEST_F(DirectoriesTest, WithoutProgramFilesTheBareNameIsTheDefault) {
  Start(R"({"folders": {"CSIDL_PROGRAM_FILES": ""}})");
  EXPECT_EQ(Resolved(), String(TEXT("VantaPictor")));
}

TEST_F(DirectoriesTest, RegisteredFolderWinsWhileItExists) {
  Start(R"({"drives": {"C": {}, "E": {}}})");
  Register(TEXT("E:\\Tools\\Viewer"));
  EXPECT_EQ(Resolved(), String(TEXT("C:\\Program Files (x86)\\VantaPictor")));
  std::filesystem::create_directories(Disk("E:\\Tools\\Viewer"));
  EXPECT_EQ(Resolved(), String(TEXT("E:\\Tools\\Viewer")));
}

TEST_F(DirectoriesTest, NoPathAndTooLongPathsAreNotStored) {
  Start();
  vanta::SetInstallDirectory(TEXT("C:\\mine"));
  vanta::SetInstallDirectory(nullptr);
  vanta::SetInstallDirectory(String(260, 'a').c_str());
  EXPECT_EQ(vanta::GetInstallDirectory(), String(TEXT("C:\\mine")));
}

TEST_F(DirectoriesTest, RoomyWritableFoldersAreAccepted) {
  Start(R"({"drives": {"C": {}, "D": {"free_bytes": 104857601}}})");
  EXPECT_EQ(Check(TEXT("D:\\")), DirectoryCheck::Accepted);
  EXPECT_EQ(chosen_, String(TEXT("D:\\VantaPictor")));
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "D"));
}

TEST_F(DirectoriesTest, OthersAreRefusedEachWithItsTip) {
  Start(R"({"drives": {"C": {}, "D": {"free_bytes": 104857600}, "E": {"file_system": "HFS+"},
            "F": {"read_only": true}}})");
  Put("C:\\file", "");
  const struct {
    const WCHAR* path;
    DirectoryCheck check;
    const WCHAR* tip;
  } rows[] = {
      {TEXT(""), DirectoryCheck::Ignored, TEXT("")},
      {TEXT("C:\\nowhere"), DirectoryCheck::Invalid, TEXT("STRID_PICTOR_TIPS_DIR_UNVALID")},
      {TEXT("C:\\file"), DirectoryCheck::NotWritable, TEXT("STRID_PICTOR_TIPS_DIR_NOTWRITE")},
      {TEXT("D:\\"), DirectoryCheck::NoSpace, TEXT("STRID_PICTOR_TIPS_DIR_NOSPACE")},
      {TEXT("E:\\"), DirectoryCheck::NotWritable, TEXT("STRID_PICTOR_TIPS_DIR_NOTWRITE")},
      {TEXT("F:\\"), DirectoryCheck::NotWritable, TEXT("STRID_PICTOR_TIPS_DIR_NOTWRITE")},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Check(row.path), row.check) << vanta::ToUtf8(row.path);
    EXPECT_EQ(vanta::DirectoryTip(row.check), String(row.tip));
    EXPECT_EQ(chosen_, String(TEXT("before")));
  }
}

TEST_F(DirectoriesTest, FolderTooLongForTheProductIsInvalid) {
  Start();
  const std::string name(245, 'x');
  std::filesystem::create_directories(Disk("C:\\" + name));
  EXPECT_EQ(Check(vanta::FromUtf8("C:\\" + name)), DirectoryCheck::Invalid);
  std::filesystem::create_directories(Disk("C:\\short"));
  EXPECT_EQ(Check(TEXT("C:\\short")), DirectoryCheck::Accepted);
}

TEST_F(DirectoriesTest, FailingProbeMeansNotWritableAndLeavesNothing) {
  Start(R"({"faults": [{"operation": "CreateFileW", "subject": "HITTEST_", "error": 5}]})");
  std::filesystem::create_directories(Disk("C:\\here"));
  EXPECT_FALSE(vanta::IsDirectoryWritable(TEXT("C:\\here")));
  EXPECT_TRUE(vanta::IsDirectoryWritable(TEXT("C:/here")));
  EXPECT_TRUE(std::filesystem::is_empty(Disk("C:\\here")));
}

}  // namespace
