#include "tests/winhost/kernel/file_fixture.h"

#include <sys/xattr.h>

#include <filesystem>

namespace {

using namespace testing_support;

FILETIME Time(ULONGLONG ticks) { return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)}; }
ULONGLONG Ticks(const FILETIME& time) {
  return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

constexpr ULONGLONG kPast = 130'000'000'123'456'789;     // 2012, not on a whole second
constexpr ULONGLONG kEarlier = 125'911'584'000'000'001;  // 2000
constexpr ULONGLONG kBefore1970 = 116'444'735'990'000'001;
constexpr ULONGLONG kFuture = 160'000'000'000'000'003;

class FileTimesTest : public FilesTest {
 protected:
  struct Three {
    ULONGLONG creation, access, modification;
    bool operator==(const Three&) const = default;
  };
  static void Set(const std::u16string& path, const Three& times) {
    const HANDLE file = Open(path, GENERIC_WRITE, kAll, OPEN_ALWAYS);
    const FILETIME creation = Time(times.creation), access = Time(times.access),
                   modification = Time(times.modification);
    EXPECT_TRUE(SetFileTime(file, times.creation ? &creation : nullptr, times.access ? &access : nullptr,
                            times.modification ? &modification : nullptr));
    CloseHandle(file);
  }
  static Three Get(const std::u16string& path) {
    const HANDLE file = Open(path);
    FILETIME creation, access, modification;
    EXPECT_TRUE(GetFileTime(file, &creation, &access, &modification));
    CloseHandle(file);
    WIN32_FILE_ATTRIBUTE_DATA data;
    EXPECT_TRUE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(Ticks(data.ftCreationTime), Ticks(creation));
    EXPECT_EQ(Ticks(data.ftLastWriteTime), Ticks(modification));
    return {Ticks(creation), Ticks(access), Ticks(modification)};
  }
  bool HasExtra(const char* path) { return getxattr(Disk(path).c_str(), "user.vanta.file", nullptr, 0) > 0; }
};

TEST_F(FileTimesTest, AllThreeTimesAreKeptToTheTick) {
  const Three rows[] = {{kPast, kPast, kPast},       {kEarlier, kPast, kPast}, {kPast, kEarlier, kEarlier},
                        {kFuture, kFuture, kFuture}, {kPast, kPast, kFuture},  {kBefore1970, kBefore1970, kBefore1970},
                        {kPast, kFuture, kEarlier}};
  int number = 0;
  for (const Three& row : rows) {
    SCOPED_TRACE(number);
    const std::u16string fresh = u"C:\\new" + winhost::Wide(std::to_string(number++));
    Set(fresh, row);
    EXPECT_EQ(Get(fresh), row);
    Set(u"C:\\same.txt", row);
    EXPECT_EQ(Get(u"C:\\same.txt"), row);
  }
}

TEST_F(FileTimesTest, EqualTimesOfANewFileNeedNoExtraAttribute) {
  Set(u"C:\\a.txt", {kPast, kPast, kPast});
  EXPECT_FALSE(HasExtra("C:\\a.txt"));
}

TEST_F(FileTimesTest, TimesThatAreNotGivenStay) {
  Set(u"C:\\a.txt", {kPast, kPast, kPast});
  Set(u"C:\\a.txt", {0, 0, kFuture});
  EXPECT_EQ(Get(u"C:\\a.txt"), (Three{kPast, kPast, kFuture}));
  Set(u"C:\\a.txt", {kEarlier, 0, 0});
  EXPECT_EQ(Get(u"C:\\a.txt"), (Three{kEarlier, kPast, kFuture}));
}

TEST_F(FileTimesTest, WritingMovesTheModificationTimeOnly) {
  Set(u"C:\\a.txt", {kPast, kPast, kPast});
  const HANDLE file = Open(u"C:\\a.txt", GENERIC_WRITE);
  Write(file, "more");
  CloseHandle(file);
  EXPECT_EQ(Get(u"C:\\a.txt").creation, kPast);
  EXPECT_GT(Get(u"C:\\a.txt").modification, kPast);
}

TEST_F(FileTimesTest, AttributesAndTimesDoNotDisturbEachOther) {
  Set(u"C:\\a.txt", {kEarlier, kPast, kPast});
  SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Get(u"C:\\a.txt").creation, kEarlier);
  SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN);
  Set(u"C:\\a.txt", {kPast, kPast, kPast});
  EXPECT_EQ(Attributes(u"C:\\a.txt"), DWORD{FILE_ATTRIBUTE_HIDDEN});
}

TEST_F(FileTimesTest, SettingNeedsWriteAccessAndASaneTime) {
  Put("C:\\a.txt", "a");
  const FILETIME past = Time(kPast), negative = Time(1ull << 63);
  const HANDLE reader = Open(u"C:\\a.txt", GENERIC_READ);
  EXPECT_EQ(ErrorOf(SetFileTime(reader, nullptr, nullptr, &past)), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(reader);
  const HANDLE writer = Open(u"C:\\a.txt", FILE_WRITE_ATTRIBUTES);
  EXPECT_EQ(ErrorOf(SetFileTime(writer, nullptr, nullptr, &past)), 0u);
  EXPECT_EQ(ErrorOf(SetFileTime(writer, nullptr, nullptr, &negative)), DWORD{ERROR_INVALID_PARAMETER});
  CloseHandle(writer);
}

TEST_F(FileTimesTest, FilesFollowTheMachinesClock) {
  Start(R"({"clock": {"at": "2012-06-07T08:09:10", "stands": true}, "zone_bias_minutes": -60})");
  const HANDLE file = Open(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_NEW);
  Write(file, "a");
  CloseHandle(file);
  SYSTEMTIME written;
  const FILETIME modification = Time(Get(u"C:\\a.txt").modification);
  FileTimeToSystemTime(&modification, &written);
  EXPECT_EQ(written.wYear, 2012);
  EXPECT_EQ(written.wHour, 7);
  EXPECT_EQ(Get(u"C:\\a.txt").creation, Ticks(modification));
  CreateDirectoryW(u"C:\\dir", nullptr);
  WIN32_FILE_ATTRIBUTE_DATA folder;
  GetFileAttributesExW(u"C:\\dir", GetFileExInfoStandard, &folder);
  EXPECT_EQ(Ticks(folder.ftCreationTime), Ticks(modification));
}

}  // namespace
