#include "install/deferred_delete.h"

#include <fstream>

#include "tests/support/machine_fixture.h"

namespace {

constexpr const WCHAR* kFile = TEXT("C:\\app\\ShellExt.dll");

class DeferredDeleteTest : public testing_support::OnMachine {
 protected:
  std::string Journal() {
    std::ifstream file(folder_ / "deferred.jsonl");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
};

TEST_F(DeferredDeleteTest, FileIsDeletedOrWasNotThere) {
  Start();
  EXPECT_TRUE(vanta::DeleteFileOrDefer(kFile, true));
  Put("C:\\app\\ShellExt.dll", "x");
  EXPECT_TRUE(vanta::DeleteFileOrDefer(kFile, true));
  EXPECT_FALSE(Exists("C:\\app\\ShellExt.dll"));
}

TEST_F(DeferredDeleteTest, ReadOnlyFileIsDeleted) {
  Start();
  Put("C:\\app\\ShellExt.dll", "x");
  SetFileAttributesW(kFile, FILE_ATTRIBUTE_READONLY);
  EXPECT_TRUE(vanta::DeleteFileOrDefer(kFile, false));
  EXPECT_FALSE(Exists("C:\\app\\ShellExt.dll"));
}

TEST_F(DeferredDeleteTest, FileThatCannotBeDeletedMakesRoomAtOnce) {
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true},
            "faults": [{"operation": "DeleteFileW", "subject": "ShellExt.dll", "times": 2}]})");
  Put("C:\\app\\ShellExt.dll", "old");
  EXPECT_FALSE(vanta::DeleteFileOrDefer(kFile, true));
  EXPECT_FALSE(Exists("C:\\app\\ShellExt.dll"));
  EXPECT_EQ(Contents("C:\\app\\ShellExt.dll." + std::to_string(GetTickCount())), "old");
  EXPECT_NE(Journal().find("ShellExt.dll." + std::to_string(GetTickCount())), std::string::npos);
}

TEST_F(DeferredDeleteTest, WithoutRenamingItStaysUntilTheRestart) {
  Start(R"({"faults": [{"operation": "DeleteFileW", "subject": "ShellExt.dll", "times": 2}]})");
  Put("C:\\app\\ShellExt.dll", "old");
  EXPECT_FALSE(vanta::DeleteFileOrDefer(kFile, false));
  EXPECT_EQ(Contents("C:\\app\\ShellExt.dll"), "old");
  EXPECT_NE(Journal().find("ShellExt.dll"), std::string::npos);
}

TEST_F(DeferredDeleteTest, FileThatCannotBeMovedIsNotDeletedUnderItsOwnName) {
  Start(R"({"faults": [{"operation": "DeleteFileW", "subject": "ShellExt.dll", "times": 2},
                       {"operation": "MoveFileExW", "subject": "ShellExt.dll"}]})");
  Put("C:\\app\\ShellExt.dll", "old");
  EXPECT_FALSE(vanta::DeleteFileOrDefer(kFile, true));
  EXPECT_EQ(Journal(), "");
}

}  // namespace
