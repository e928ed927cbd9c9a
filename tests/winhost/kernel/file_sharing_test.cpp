#include "tests/winhost/kernel/file_fixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "winhost/kernel/files.h"

namespace {

using namespace testing_support;

constexpr DWORD kR = FILE_SHARE_READ, kW = FILE_SHARE_WRITE, kD = FILE_SHARE_DELETE;

TEST_F(FilesTest, SharingIsAskedBothWays) {
  struct Row {
    DWORD access, share, second_access, second_share;
    bool opens;
  } rows[] = {
      {GENERIC_READ, 0, GENERIC_READ, kR | kW | kD, false},
      {GENERIC_READ, kR, GENERIC_READ, kR, true},
      {GENERIC_READ, kR, GENERIC_WRITE, kR | kW, false},
      {GENERIC_WRITE, kR, GENERIC_READ, kR, false},
      {GENERIC_WRITE, kR, GENERIC_READ, kR | kW, true},
      {GENERIC_WRITE, kR | kW, GENERIC_WRITE, kR | kW, true},
      {GENERIC_READ, kR, DELETE, kR | kW | kD, false},
      {GENERIC_READ, kR | kD, DELETE, kR, true},
      {GENERIC_READ, 0, 0, 0, true},  // asking for nothing takes no part
      {0, 0, GENERIC_WRITE, 0, true},
  };
  Put("C:\\a.txt", "a");
  for (const Row& row : rows) {
    const HANDLE first = Open(u"C:\\a.txt", row.access, row.share);
    const DWORD error = OpenError(u"C:\\A.TXT", row.second_access, row.second_share, OPEN_EXISTING);
    EXPECT_EQ(error, row.opens ? 0u : DWORD{ERROR_SHARING_VIOLATION}) << &row - rows;
    CloseHandle(first);
    EXPECT_EQ(OpenError(u"C:\\A.TXT", row.second_access, row.second_share, OPEN_EXISTING), 0u);
  }
}

TEST_F(FilesTest, DeletionWaitsForTheLastHandle) {
  Put("C:\\a.txt", "a");
  const HANDLE first = Open(u"C:\\a.txt", GENERIC_READ, kR | kD);
  const HANDLE second = Open(u"C:\\a.txt", GENERIC_READ, kR | kD);
  EXPECT_TRUE(DeleteFileW(u"C:\\a.txt"));
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_READ, kAll, OPEN_EXISTING), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_ALWAYS), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(first);
  EXPECT_TRUE(Exists("C:\\a.txt"));
  EXPECT_EQ(Read(second), "a");
  CloseHandle(second);
  EXPECT_FALSE(Exists("C:\\a.txt"));
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_NEW), 0u);
}

TEST_F(FilesTest, DeleteOnCloseDeletes) {
  const HANDLE file = Open(u"C:\\a.txt", GENERIC_WRITE, kAll, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
  EXPECT_TRUE(Exists("C:\\a.txt"));
  CloseHandle(file);
  EXPECT_FALSE(Exists("C:\\a.txt"));
}

TEST_F(FilesTest, AnOpenFileIsDeletedOrMovedOnlyWhenItsHandlesShareThat) {
  Put("C:\\a.txt", "a");
  HANDLE file = Open(u"C:\\a.txt", GENERIC_READ, kR | kW);
  EXPECT_EQ(ErrorOf(DeleteFileW(u"C:\\a.txt")), DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_EQ(ErrorOf(MoveFileExW(u"C:\\a.txt", u"C:\\b.txt", 0)), DWORD{ERROR_SHARING_VIOLATION});
  CloseHandle(file);
  file = Open(u"C:\\a.txt", GENERIC_READ, kR | kD);
  EXPECT_TRUE(MoveFileExW(u"C:\\a.txt", u"C:\\b.txt", 0));
  EXPECT_EQ(OpenError(u"C:\\b.txt", GENERIC_WRITE, kAll, OPEN_EXISTING), DWORD{ERROR_SHARING_VIOLATION})
      << "the handle follows the file";
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_NEW), 0u);
  CloseHandle(file);
  EXPECT_EQ(OpenError(u"C:\\b.txt", GENERIC_WRITE, 0, OPEN_EXISTING), 0u);
}

TEST_F(FilesTest, ARunningImageCanBeMovedButNotDeletedOrWritten) {
  Put("C:\\a.exe", "MZ");
  const HANDLE image = winhost::OpenImage(u"C:\\a.exe");
  EXPECT_EQ(OpenError(u"C:\\a.exe", GENERIC_READ, kR, OPEN_EXISTING), 0u);
  EXPECT_EQ(OpenError(u"C:\\a.exe", GENERIC_WRITE, kAll, CREATE_ALWAYS), DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_EQ(ErrorOf(DeleteFileW(u"C:\\a.exe")), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_TRUE(MoveFileExW(u"C:\\a.exe", u"C:\\a.exe.123", MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(ErrorOf(DeleteFileW(u"C:\\a.exe.123")), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(image);
  EXPECT_TRUE(DeleteFileW(u"C:\\a.exe.123"));
}

TEST_F(FilesTest, SharingHoldsBetweenProcessesAndEndsWithThem) {
  Put("C:\\a.txt", "a");
  int ready[2], done[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(done), 0);
  Start();
  EXPECT_EQ(Attributes(u"C:\\a.txt"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
  const pid_t child = fork();
  if (child == 0) {
    const bool opened =
        CreateFileW(u"C:\\a.txt", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr) != INVALID_HANDLE_VALUE;
    char byte = opened ? 'y' : 'n';
    if (write(ready[1], &byte, 1) != 1 || read(done[0], &byte, 1) != 1) _exit(2);
    _exit(0);  // without closing, as a killed program would
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_EQ(byte, 'y');
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_READ, kAll, OPEN_EXISTING), DWORD{ERROR_SHARING_VIOLATION});
  ASSERT_EQ(write(done[1], &byte, 1), 1);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_READ, kAll, OPEN_EXISTING), 0u);
  for (const int end : {ready[0], ready[1], done[0], done[1]}) close(end);
}

TEST_F(FilesTest, OneOfManyThreadsMakesTheFile) {
  std::atomic<int> made{0}, refused{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 20; ++round) {
        const std::u16string name = u"C:\\file" + winhost::Wide(std::to_string(round));
        const HANDLE file = CreateFileW(name.c_str(), GENERIC_WRITE, kAll, nullptr, CREATE_NEW, 0, nullptr);
        ++(file == INVALID_HANDLE_VALUE ? refused : made);
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(made, 20);
  EXPECT_EQ(refused, 140);
}

}  // namespace
