#include "install/extraction.h"

#include "install/setup_messages.h"
#include "tests/src/install/install_fixture.h"

namespace {

using install_testing::InstallTest;
using vanta::String;

constexpr const WCHAR* kDirectory = TEXT("C:\\app\\VantaPictor");
constexpr std::uint32_t kFolder = 0x10;

class ExtractionTest : public InstallTest {
 protected:
  bool Extract() {
    std::filesystem::create_directories(Disk("C:\\app\\VantaPictor"));
    OpenWindow();
    OpenPayload();
    return vanta::extractInstallerFiles(kDirectory);
  }
};

TEST_F(ExtractionTest, FilesArriveAndEachPostsItsShare) {
  Start();
  for (const char* name : {"a.txt", "config/config.xml", "c.txt"}) zip_.AddDeflated(name, name);
  EXPECT_TRUE(Extract());
  EXPECT_EQ(Contents("C:\\app\\VantaPictor\\config\\config.xml"), "config/config.xml");
  EXPECT_EQ(Posted(), "p0 p33 p66");
}

TEST_F(ExtractionTest, FoldersAreMadeAndPostNothing) {
  Start();
  zip_.AddStored("lang/", "").external = kFolder;
  zip_.AddStored("deep/er/", "").external = kFolder;
  EXPECT_TRUE(Extract());
  EXPECT_TRUE(std::filesystem::is_directory(Disk("C:\\app\\VantaPictor\\deep\\er")));
  EXPECT_EQ(Posted(), "");
}

TEST_F(ExtractionTest, NamesThatAreNoFilesAreNotWritten) {
  for (const char* name :
       {"C:", "..", "CON", "x.", "a\tb", "ab:c", "foo \\x", "foo./x", "new\\nul\\x", "new\\deep\\x "}) {
    Start();
    zip_ = {};
    zip_.AddStored(name, "x");
    EXPECT_FALSE(Extract()) << name;
    EXPECT_EQ(Posted(), "s5") << name;
    EXPECT_TRUE(std::filesystem::is_empty(Disk("C:\\app\\VantaPictor"))) << name;
  }
}

TEST_F(ExtractionTest, FoldersThatNoneMayBeNamedAreNotMadeHalf) {
  for (const char* name : {"foo \\bar/", "new\\aux\\bar/", "new\\x./"}) {
    Start();
    zip_ = {};
    zip_.AddStored(name, "").external = kFolder;
    EXPECT_FALSE(Extract()) << name;
    EXPECT_EQ(Posted(), "s4") << name;
    EXPECT_TRUE(std::filesystem::is_empty(Disk("C:\\app\\VantaPictor"))) << name;
  }
}

TEST_F(ExtractionTest, UnreadableEntryStopsWithItsStatus) {
  Start();
  zip_.AddStored("a.txt", "1").central_signature = 0;
  EXPECT_FALSE(Extract());
  EXPECT_EQ(Posted(), "s3");
}

TEST_F(ExtractionTest, WithoutAnOpenPayloadTheNumberOfEntriesIsUnreadable) {
  Start();
  OpenWindow();
  EXPECT_FALSE(vanta::extractInstallerFiles(kDirectory));
  EXPECT_EQ(Posted(), "s9");
}

TEST_F(ExtractionTest, PathThatDoesNotFitIsAFolderThatCannotBeMade) {
  Start();
  zip_.AddStored(std::string(250, 'n'), "x");
  EXPECT_FALSE(Extract());
  EXPECT_EQ(Posted(), "s4");
}

TEST_F(ExtractionTest, ClosedWindowEndsItBeforeTheNextFileWithoutAStatus) {
  Start();
  zip_.AddStored("a.txt", "1");
  vanta::GetInstallState().stop_requested = true;
  EXPECT_FALSE(Extract());
  vanta::GetInstallState().stop_requested = false;
  EXPECT_EQ(Posted(), "");
  EXPECT_FALSE(Exists("C:\\app\\VantaPictor\\a.txt"));
}

TEST_F(ExtractionTest, InstallDirectoryThatCannotBeMadeIsReported) {
  Start(R"({"faults": [{"operation": "CreateDirectoryW", "nth": 0, "error": 5}]})");
  OpenWindow();
  InstallTo(kDirectory);
  EXPECT_FALSE(vanta::EnsureInstallDirectory());
  EXPECT_EQ(Posted(), "s4");
}

TEST_F(ExtractionTest, ProgressOnlyGrowsButTheFirstIsAlwaysPosted) {
  Start();
  vanta::InstallState& state = vanta::GetInstallState();
  state.progress = 0;
  state.progress_posted = false;
  vanta::PostSetupProgress(7);
  EXPECT_EQ(state.progress.load(), 7);
  EXPECT_FALSE(state.progress_posted.load());
  OpenWindow();
  for (const LONG percent : {0, 0, 3, 2, 3, 4}) vanta::PostSetupProgress(percent);
  EXPECT_EQ(Posted(), "p0 p3 p4");
}

}  // namespace
