#include "install/viewer_processes.h"

#include <fstream>

#include "tests/src/install/install_fixture.h"

namespace {

using vanta::String;

class ViewerProcessesTest : public install_testing::InstallTest {
 protected:
  std::string Ended() {
    std::ifstream file(folder_ / "exits.jsonl");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  bool HasEnded(const std::string& name) { return Ended().find(name) != std::string::npos; }
};

TEST_F(ViewerProcessesTest, FolderIsNoMerePrefix) {
  const struct {
    const WCHAR* path;
    const WCHAR* folder;
    bool inside;
  } rows[] = {
      {TEXT("C:\\app\\a.exe"), TEXT("C:\\app"), true},   {TEXT("c:\\APP\\sub\\a.exe"), TEXT("C:\\app"), true},
      {TEXT("C:\\app2\\a.exe"), TEXT("C:\\app"), false}, {TEXT("C:\\a.exe"), TEXT("C:\\app"), false},
      {TEXT("C:\\a.exe"), TEXT("C:\\"), true},           {TEXT(""), TEXT("C:\\app"), false},
      {TEXT("C:\\app"), TEXT("C:\\app"), false},         {TEXT("C:\\app\\a.exe"), TEXT(""), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(vanta::LiesInFolder(row.path, row.folder), row.inside) << vanta::ToUtf8(row.path);
  }
}

TEST_F(ViewerProcessesTest, ProgramsOfTheProductEndAndOthersStay) {
  Start(R"({"running": ["C:\\app\\VantaPictor.exe", "C:\\app\\tools\\helper.exe", "C:\\app2\\near.exe",
                        "C:\\above.exe"]})");
  Put("C:\\app\\VantaPictor.exe", "");
  InstallTo(TEXT("C:/app"));
  vanta::TerminateViewerProcesses();
  EXPECT_TRUE(HasEnded("VantaPictor.exe"));
  EXPECT_TRUE(HasEnded("helper.exe"));
  EXPECT_FALSE(HasEnded("near.exe"));
  EXPECT_FALSE(HasEnded("above.exe"));
}

TEST_F(ViewerProcessesTest, WithoutTheViewerNothingEnds) {
  Start(R"({"running": ["C:\\app\\other.exe"]})");
  InstallTo(TEXT("C:\\app"));
  vanta::TerminateViewerProcesses();
  EXPECT_EQ(Ended(), "");
}

}  // namespace
