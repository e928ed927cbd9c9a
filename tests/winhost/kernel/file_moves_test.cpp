#include "tests/winhost/kernel/file_fixture.h"

#include <fstream>
#include <vector>

namespace {

using namespace testing_support;
using String = std::u16string;

class FileMovesTest : public FilesTest {
 protected:
  static DWORD Move(const char16_t* from, const char16_t* to, DWORD flags = 0) {
    return ErrorOf(MoveFileExW(from, to, flags));
  }
  std::string Deferred() {
    std::ifstream journal(folder_ / "deferred.jsonl");
    return std::string(std::istreambuf_iterator<char>(journal), {});
  }
  static std::vector<String> Names(const char16_t* pattern) {
    std::vector<String> names;
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(pattern, &data);
    if (find == INVALID_HANDLE_VALUE) return names;
    do names.emplace_back(data.cFileName);
    while (FindNextFileW(find, &data));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    FindClose(find);
    return names;
  }
  static DWORD FindError(const char16_t* pattern) {
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(pattern, &data);
    return find == INVALID_HANDLE_VALUE ? GetLastError() : static_cast<DWORD>(FindClose(find) - 1);
  }
};

TEST_F(FileMovesTest, AMoveReplacesOnlyWhenAskedTo) {
  Put("C:\\a.txt", "a");
  Put("C:\\b.txt", "b");
  Put("C:\\dir\\c.txt", "c");
  EXPECT_EQ(Move(u"C:\\a.txt", u"C:\\B.TXT"), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_EQ(Move(u"C:\\a.txt", u"C:\\dir", MOVEFILE_REPLACE_EXISTING), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(Move(u"C:\\none.txt", u"C:\\x.txt"), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(Move(u"C:\\a.txt", u"C:\\none\\x.txt"), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(Move(u"C:\\a.txt", u"C:\\b.txt", MOVEFILE_REPLACE_EXISTING), 0u);
  EXPECT_EQ(Contents("C:\\b.txt"), "a");
  EXPECT_FALSE(Exists("C:\\a.txt"));
  SetFileAttributesW(u"C:\\dir\\c.txt", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Move(u"C:\\b.txt", u"C:\\dir\\c.txt", MOVEFILE_REPLACE_EXISTING), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(FileMovesTest, AnOpenTargetIsNotReplaced) {
  Put("C:\\a.txt", "a");
  Put("C:\\b.txt", "b");
  const HANDLE file = Open(u"C:\\b.txt", GENERIC_READ, kAll);
  EXPECT_EQ(Move(u"C:\\a.txt", u"C:\\b.txt", MOVEFILE_REPLACE_EXISTING), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(file);
}

TEST_F(FileMovesTest, SpellingAloneCanChange) {
  Put("C:\\readme.txt", "a");
  EXPECT_EQ(Move(u"C:\\readme.txt", u"C:\\ReadMe.TXT"), 0u);
  EXPECT_EQ(Names(u"C:\\*"), std::vector<String>{u"ReadMe.TXT"});
}

TEST_F(FileMovesTest, FoldersMoveWithTheirContentUnlessSomethingIsOpen) {
  Put("C:\\old\\deep\\a.txt", "a");
  const HANDLE file = Open(u"C:\\old\\deep\\a.txt", GENERIC_READ, kAll);
  EXPECT_EQ(Move(u"C:\\old", u"C:\\new"), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(file);
  EXPECT_EQ(Move(u"C:\\old", u"C:\\new"), 0u);
  EXPECT_EQ(Attributes(u"C:\\old\\deep\\a.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(OpenError(u"C:\\new\\deep\\a.txt", GENERIC_WRITE, 0, OPEN_EXISTING), 0u);
}

TEST_F(FileMovesTest, BetweenDrivesOnlyACopyHelps) {
  Start(R"({"drives": {"D": {}}})");
  Put("C:\\a.txt", "a");
  EXPECT_EQ(Move(u"C:\\a.txt", u"D:\\a.txt"), DWORD{ERROR_NOT_SAME_DEVICE});
  EXPECT_EQ(Move(u"C:\\a.txt", u"D:\\a.txt", MOVEFILE_COPY_ALLOWED), 0u);
  EXPECT_EQ(Contents("D:\\a.txt"), "a");
  EXPECT_FALSE(Exists("C:\\a.txt"));
}

TEST_F(FileMovesTest, WishesForTheRestartAreWrittenDown) {
  Put("C:\\Dir\\a.txt", "a");
  EXPECT_EQ(Move(u"c:\\dir\\A.txt", nullptr, MOVEFILE_DELAY_UNTIL_REBOOT), 0u);
  EXPECT_EQ(Move(u"C:\\none.txt", nullptr, MOVEFILE_DELAY_UNTIL_REBOOT), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(Move(u"C:\\Dir\\a.txt", nullptr), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_TRUE(Exists("C:\\Dir\\a.txt"));
  EXPECT_NE(Deferred().find(R"("from":"C:\\Dir\\a.txt")"), std::string::npos) << Deferred();
  EXPECT_NE(Deferred().find(R"("to":null)"), std::string::npos);
}

TEST_F(FileMovesTest, WithoutElevationNothingWaitsForTheRestart) {
  Start(R"({"elevated": false})");
  Put("C:\\a.txt", "a");
  EXPECT_EQ(Move(u"C:\\a.txt", nullptr, MOVEFILE_DELAY_UNTIL_REBOOT), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(Deferred(), "");
}

TEST_F(FileMovesTest, CopiesKeepAttributesAndModificationTime) {
  Put("C:\\a.txt", std::string(100'000, 'x'));
  SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_TRUE(CopyFileW(u"C:\\a.txt", u"C:\\b.txt", TRUE));
  EXPECT_EQ(Contents("C:\\b.txt").size(), 100'000u);
  WIN32_FILE_ATTRIBUTE_DATA a, b;
  GetFileAttributesExW(u"C:\\a.txt", GetFileExInfoStandard, &a);
  GetFileAttributesExW(u"C:\\b.txt", GetFileExInfoStandard, &b);
  EXPECT_EQ(a.dwFileAttributes, b.dwFileAttributes);
  EXPECT_EQ(CompareFileTime(&a.ftLastWriteTime, &b.ftLastWriteTime), 0);
  EXPECT_EQ(ErrorOf(CopyFileW(u"C:\\a.txt", u"C:\\b.txt", TRUE)), DWORD{ERROR_FILE_EXISTS});
}

TEST_F(FileMovesTest, ListingsAreSortedFilteredAndBeginWithTheDots) {
  for (const char* name : {"C:\\d\\b.txt", "C:\\d\\A.TXT", "C:\\d\\c.doc", "C:\\d\\plain", "C:\\d\\sub\\x"})
    Put(name, "1");
  EXPECT_EQ(Names(u"C:\\d\\*"), (std::vector<String>{u".", u"..", u"A.TXT", u"b.txt", u"c.doc", u"plain", u"sub"}));
  EXPECT_EQ(Names(u"C:\\d\\*.*").size(), 7u);
  EXPECT_EQ(Names(u"C:\\D\\*.txt"), (std::vector<String>{u"A.TXT", u"b.txt"}));
  EXPECT_EQ(Names(u"C:/d/?.*"), (std::vector<String>{u".", u"..", u"A.TXT", u"b.txt", u"c.doc"}));
  EXPECT_EQ(Names(u"C:\\d\\*."), (std::vector<String>{u"plain", u"sub"}));
  EXPECT_EQ(Names(u"C:\\d\\B.TXT"), std::vector<String>{u"b.txt"});
  EXPECT_EQ(Names(u"C:\\*"), std::vector<String>{u"d"}) << "a drive's root has no dots";
  EXPECT_EQ(FindError(u"C:\\d\\*.exe"), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(FindError(u"C:\\d\\"), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(FindError(u"C:\\none\\*"), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(FileMovesTest, FoldersAreMadeOneLevelAtATime) {
  EXPECT_EQ(ErrorOf(CreateDirectoryW(u"C:\\a\\b", nullptr)), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_TRUE(CreateDirectoryW(u"C:\\a\\", nullptr));
  EXPECT_EQ(ErrorOf(CreateDirectoryW(u"C:\\A", nullptr)), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_TRUE(CreateDirectoryW(u"C:\\a\\b", nullptr));
  EXPECT_EQ(ErrorOf(RemoveDirectoryW(u"C:\\a")), DWORD{ERROR_DIR_NOT_EMPTY});
  Put("C:\\a\\file", "");
  EXPECT_EQ(ErrorOf(RemoveDirectoryW(u"C:\\a\\file")), DWORD{ERROR_DIRECTORY});
  EXPECT_EQ(ErrorOf(CreateDirectoryW(u"C:\\a\\file", nullptr)), DWORD{ERROR_ALREADY_EXISTS});
  EXPECT_TRUE(RemoveDirectoryW(u"C:\\a\\B"));
  EXPECT_EQ(Attributes(u"C:\\a\\b"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(FileMovesTest, CurrentDirectoryIsAFolderThatExists) {
  Put("C:\\Dir\\file", "");
  EXPECT_EQ(ErrorOf(SetCurrentDirectoryW(u"C:\\none")), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(ErrorOf(SetCurrentDirectoryW(u"C:\\Dir\\file")), DWORD{ERROR_DIRECTORY});
  ASSERT_TRUE(SetCurrentDirectoryW(u"c:\\DIR\\"));
  WCHAR text[MAX_PATH] = {};
  EXPECT_EQ(GetCurrentDirectoryW(MAX_PATH, text), 6u);
  EXPECT_EQ(String(text), u"C:\\Dir");
  EXPECT_EQ(GetCurrentDirectoryW(6, text), 7u);
  WCHAR* name = nullptr;
  EXPECT_EQ(GetFullPathNameW(u"..\\x\\y.txt", MAX_PATH, text, &name), 10u);
  EXPECT_EQ(String(text), u"C:\\x\\y.txt");
  EXPECT_EQ(String(name), u"y.txt");
}

TEST_F(FileMovesTest, VolumesAnswerWhatTheFactsSay) {
  Start(R"({"drives": {"D": {"file_system": "HFS+", "kind": "removable", "free_bytes": 104857600}}})");
  WCHAR name[16];
  EXPECT_TRUE(GetVolumeInformationW(u"D:\\", nullptr, 0, nullptr, nullptr, nullptr, name, 16));
  EXPECT_EQ(String(name), u"HFS+");
  EXPECT_EQ(ErrorOf(GetVolumeInformationW(u"D:\\", nullptr, 0, nullptr, nullptr, nullptr, name, 3)),
            DWORD{ERROR_BAD_LENGTH});
  EXPECT_EQ(ErrorOf(GetVolumeInformationW(u"D:", nullptr, 0, nullptr, nullptr, nullptr, name, 16)),
            DWORD{ERROR_INVALID_NAME});
  EXPECT_EQ(ErrorOf(GetVolumeInformationW(u"Q:\\", nullptr, 0, nullptr, nullptr, nullptr, name, 16)),
            DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(GetDriveTypeW(u"D:\\"), UINT{DRIVE_REMOVABLE});
  EXPECT_EQ(GetDriveTypeW(u"Q:\\"), UINT{DRIVE_NO_ROOT_DIR});
  ULARGE_INTEGER free;
  EXPECT_TRUE(GetDiskFreeSpaceExW(u"D:", &free, nullptr, nullptr));
  EXPECT_EQ(free.QuadPart, 104857600u);
  EXPECT_FALSE(GetDiskFreeSpaceExW(u"\\\\", &free, nullptr, nullptr));
  EXPECT_EQ(GetLogicalDrives() & 0xF, 0xCu);
}

}  // namespace
