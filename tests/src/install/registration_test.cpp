#include "install/app_paths.h"
#include "install/product_config.h"
#include "install/uninstall_entry.h"
#include "install/version.h"

#include "base/registry.h"
#include "base/unique.h"
#include "tests/src/install/install_fixture.h"

namespace {

using vanta::String;

class RegistrationTest : public install_testing::InstallTest {
 protected:
  std::string Text(const String& key, const WCHAR* name) {
    String text;
    return vanta::RegReadString(HKEY_LOCAL_MACHINE, key, name, &text) ? vanta::ToUtf8(text) : "(none)";
  }
  ULONGLONG Number(const WCHAR* key, const WCHAR* name, DWORD type) {
    ULONGLONG number = 0;
    DWORD size = sizeof number;
    vanta::UniqueKey opened;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, opened.Put());
    DWORD stored = 0;
    RegQueryValueExW(opened.Get(), name, nullptr, &stored, reinterpret_cast<BYTE*>(&number), &size);
    return stored == type ? number : ~0ull;
  }
};

TEST_F(RegistrationTest, UninstallEntryHasItsEightValues) {
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})");
  Put("C:\\app\\a", std::string(1500, 'a'));
  Put("C:\\app\\b", std::string(2500, 'a'));
  Put("C:\\app\\sub\\c", std::string(100, 'a'));
  InstallTo(TEXT("C:\\app"));
  EXPECT_TRUE(vanta::WriteUninstallEntry(HKEY_LOCAL_MACHINE));
  const String key = vanta::kUninstallKey;
  EXPECT_EQ(Text(key, TEXT("DisplayIcon")), "C:\\app\\VantaPictor.exe");
  EXPECT_EQ(Text(key, TEXT("DisplayName")), "VantaView");
  EXPECT_EQ(Text(key, TEXT("DisplayVersion")), vanta::ToUtf8(vanta::GetOwnVersion()));
  EXPECT_EQ(Number(vanta::kUninstallKey, TEXT("EstimatedSize"), REG_DWORD), 4u);
  EXPECT_EQ(Text(key, TEXT("InstallDate")), "20240305");
  EXPECT_EQ(Text(key, TEXT("InstallLocation")), "C:\\app");
  EXPECT_EQ(Text(key, TEXT("Publisher")), "publisher.invalid");
  EXPECT_EQ(Text(key, TEXT("UninstallString")), "C:\\app\\uninst.exe");
}

TEST_F(RegistrationTest, OneFailedValueDoesNotStopTheOthers) {
  Start(R"({"faults": [{"operation": "RegSetValueExW", "nth": 2}]})");
  InstallTo(TEXT("C:\\app"));
  EXPECT_FALSE(vanta::WriteUninstallEntry(HKEY_LOCAL_MACHINE));
  EXPECT_EQ(Text(vanta::kUninstallKey, TEXT("DisplayName")), "(none)");
  EXPECT_EQ(Text(vanta::kUninstallKey, TEXT("UninstallString")), "C:\\app\\uninst.exe");
}

TEST_F(RegistrationTest, AppPathsLeadToTheViewer) {
  Start();
  InstallTo(TEXT("C:\\app"));
  EXPECT_TRUE(vanta::WriteAppPaths(HKEY_LOCAL_MACHINE));
  EXPECT_EQ(Text(vanta::kAppPathsKey, TEXT("")), "C:\\app\\VantaPictor.exe");
  EXPECT_EQ(Text(vanta::kAppPathsKey, TEXT("Path")), "C:\\app");
}

TEST_F(RegistrationTest, InstallTimeIsLocalTimeInTicks) {
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}, "zone_bias_minutes": -480})");
  EXPECT_TRUE(vanta::WriteInstallTime());
  const SYSTEMTIME local = {2024, 3, 2, 5, 14, 7, 9, 0};
  FILETIME time = {};
  SystemTimeToFileTime(&local, &time);
  EXPECT_EQ(Number(TEXT("Software\\VantaPictor"), TEXT("inst_time"), REG_QWORD),
            static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

TEST_F(RegistrationTest, ChannelsAreKeptApart) {
  Start();
  EXPECT_EQ(vanta::ReadChannel(), String());
  EXPECT_TRUE(vanta::WriteChannel(TEXT("first")));
  EXPECT_TRUE(vanta::WriteNewChannel(TEXT("second")));
  EXPECT_EQ(vanta::ReadChannel(), String(TEXT("first")));
  EXPECT_EQ(vanta::ReadNewChannel(), String(TEXT("second")));
}

TEST_F(RegistrationTest, SizeOfNothingIsZero) {
  Start();
  EXPECT_EQ(vanta::GetDirectorySize(TEXT("C:\\nowhere")), 0u);
  EXPECT_EQ(vanta::GetDirectorySize(String()), 0u);
}

}  // namespace
