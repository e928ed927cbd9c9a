#include "report/probes/os_version.h"

#include "base/text.h"
#include "tests/support/machine_fixture.h"

namespace vanta {
namespace {

TEST(ClassifyOsTest, EveryVersionHasItsNameAndCode) {
  struct Row {
    DWORD platform, major, minor, build;
    const WCHAR* name;
    DWORD code;
  };
  const Row rows[] = {
      {0, 3, 10, 0, TEXT("Windows 3.2"), 0x1},
      {0, 0, 0, 0, TEXT("Windows 3.2"), 0x1},
      {1, 4, 0, 950, TEXT("Windows 9x"), 0x8},
      {1, 4, 10, 2222, TEXT("Windows 9x"), 0x8},
      {1, 4, 90, 3000, TEXT("Windows ME"), 0x20},
      {1, 4, 20, 1, TEXT(""), 0},
      {2, 3, 51, 1057, TEXT("Windows NT"), 0x40},
      {2, 4, 0, 1381, TEXT("Windows NT"), 0x40},
      {2, 5, 0, 2195, TEXT("Windows 2000"), 0x80},
      {2, 5, 1, 2600, TEXT("Windows XP"), 0x100},
      {2, 5, 2, 3790, TEXT("Windows 2003"), 0x200},
      {2, 5, 3, 1, TEXT(""), 0},
      {2, 6, 0, 6002, TEXT("Windows Vista"), 0x400},
      {2, 6, 1, 7601, TEXT("Windows 7"), 0x800},
      {2, 6, 2, 9200, TEXT("Windows 8"), 0x1000},
      {2, 6, 3, 9600, TEXT("Windows 8.1"), 0x2000},
      {2, 6, 4, 9841, TEXT("Windows 10"), 0x4000},
      {2, 6, 4, 9860, TEXT("Windows 10"), 0x4000},
      {2, 6, 4, 9879, TEXT("Windows 10"), 0x4000},
      {2, 6, 4, 9880, TEXT(""), 0},
      {2, 10, 0, 10240, TEXT("Windows 10"), 0x4000},
      {2, 10, 0, 22631, TEXT("Windows 10"), 0x4000},
      {2, 10, 1, 1, TEXT(""), 0},
      {2, 11, 0, 1, TEXT(""), 0},
      {3, 10, 0, 1, TEXT(""), 0},
  };
  for (const Row& row : rows) {
    const OsRecord record = ClassifyOs(row.platform, row.major, row.minor, row.build);
    EXPECT_EQ(String(record.name), row.name)
        << row.platform << " " << row.major << "." << row.minor << "." << row.build;
    EXPECT_EQ(record.code, row.code);
  }
}

class OsVersionTest : public testing_support::OnMachine {};

TEST_F(OsVersionTest, XpIsNotVista) {
  Start(R"({"version": "xp", "windows_bits": 32})");
  EXPECT_TRUE(IsOsVersion(OsXp));
  EXPECT_TRUE(IsOsAtLeast(Os2000));
  EXPECT_FALSE(IsOsAtLeast(OsVista));
  EXPECT_FALSE(Is64BitOs());
  EXPECT_EQ(GetOsVersion().build, 2600u);
}

TEST_F(OsVersionTest, CurrentWindowsIsAtLeastEverything) {
  Start();
  EXPECT_TRUE(IsOsVersion(Os10));
  EXPECT_TRUE(IsOsAtLeast(Os10));
  EXPECT_TRUE(Is64BitOs());
}

TEST_F(OsVersionTest, Arm64CountsAsNot64Bit) {
  Start(R"({"architecture": "arm64"})");
  EXPECT_FALSE(Is64BitOs());
}

TEST_F(OsVersionTest, FailingKernelCallFallsBackToGetVersionEx) {
  Start(R"({"version": {"major": 6, "minor": 1, "build": 7601, "rtl_get_version_fails": true}})");
  EXPECT_TRUE(IsOsVersion(Os7));
}

TEST_F(OsVersionTest, MissingKernelCallLeavesZeros) {
  Start(R"({"version": {"major": 6, "minor": 1, "rtl_get_version": false}})");
  EXPECT_EQ(GetOsVersion().major, 0u);
  EXPECT_EQ(String(GetOsVersion().name), TEXT("Windows 3.2"));
}

}  // namespace
}  // namespace vanta
