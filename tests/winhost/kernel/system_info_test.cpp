#include <windows.h>

#include <commctrl.h>

#include <cstring>

#include "tests/support/machine_fixture.h"
#include "winhost/kernel/system_exports.h"

namespace {

using String = std::u16string;

class SystemInfoTest : public testing_support::OnMachine {
 protected:
  // The export as this machine offers it; null: it has none.
  static FARPROC Find(const char* name) {
    for (const winhost::BuiltInExport& row : winhost::SystemExports()) {
      const bool present = !row.present || row.present(winhost::Machine::Current().facts());
      if (std::strcmp(row.name, name) == 0) return present ? row.function : nullptr;
    }
    return nullptr;
  }
  static LONG RtlGetVersion(OSVERSIONINFOEXW* version) {
    version->dwOSVersionInfoSize = sizeof *version;
    const auto function =
        reinterpret_cast<LONG (*)(OSVERSIONINFOW*)>(reinterpret_cast<void (*)()>(Find("RtlGetVersion")));
    return function(reinterpret_cast<OSVERSIONINFOW*>(version));
  }
};

TEST_F(SystemInfoTest, BothVersionCallsTellTheFacts) {
  Start(R"({"version": {"major": 6, "minor": 1, "build": 7601, "product_type": 3}})");
  OSVERSIONINFOEXW version{};
  EXPECT_EQ(RtlGetVersion(&version), 0);
  EXPECT_EQ(version.dwMajorVersion * 10 + version.dwMinorVersion, 61u);
  EXPECT_EQ(version.wProductType, VER_NT_SERVER);
  OSVERSIONINFOW plain{};
  EXPECT_FALSE(GetVersionExW(&plain)) << "its size is missing";
  plain.dwOSVersionInfoSize = sizeof plain;
  EXPECT_TRUE(GetVersionExW(&plain));
  EXPECT_EQ(plain.dwBuildNumber, 7601u);
}

TEST_F(SystemInfoTest, RtlGetVersionCanFail) {
  Start(R"({"version": {"rtl_get_version_fails": true}})");
  OSVERSIONINFOEXW version{};
  EXPECT_LT(RtlGetVersion(&version), 0);
}

TEST_F(SystemInfoTest, RtlGetVersionCanBeMissing) {
  Start(R"({"version": {"rtl_get_version": false}})");
  EXPECT_FALSE(Find("RtlGetVersion"));
  EXPECT_TRUE(Find("GetNativeSystemInfo"));
}

TEST_F(SystemInfoTest, OldWindowsLacksWhatCameLater) {
  Start(R"({"version": {"major": 5, "minor": 0, "build": 2195}, "windows_bits": 32})");
  EXPECT_FALSE(Find("GetNativeSystemInfo"));
  EXPECT_TRUE(Find("RtlGetVersion"));
}

struct Architecture {
  const char* facts;
  WORD native, own;
};

class ArchitectureTest : public SystemInfoTest, public testing::WithParamInterface<Architecture> {};

TEST_P(ArchitectureTest, NativeAndOwnProcessor) {
  Start(GetParam().facts);
  SYSTEM_INFO native, own;
  GetNativeSystemInfo(&native);
  GetSystemInfo(&own);
  EXPECT_EQ(native.wProcessorArchitecture, GetParam().native);
  EXPECT_EQ(own.wProcessorArchitecture, GetParam().own);
}

INSTANTIATE_TEST_SUITE_P(Machines, ArchitectureTest,
                         testing::Values(Architecture{R"({})", 9, 0}, Architecture{R"({"process_bits": 64})", 9, 9},
                                         Architecture{R"({"windows_bits": 32})", 0, 0},
                                         Architecture{R"({"architecture": "arm64"})", 12, 0},
                                         Architecture{R"({"architecture": "ia64", "process_bits": 64})", 6, 6}));

TEST_F(SystemInfoTest, NamesTellTheSizeTheyNeed) {
  Start(R"({"user": "José", "computer": "PC"})");
  WCHAR name[8];
  DWORD chars = 4;
  EXPECT_FALSE(GetUserNameW(name, &chars));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
  EXPECT_EQ(chars, 5u);
  EXPECT_TRUE(GetUserNameW(name, &chars));
  EXPECT_EQ(String(name), u"José");
  EXPECT_EQ(chars, 5u);
  EXPECT_TRUE(GetComputerNameW(name, &(chars = 8)));
  EXPECT_EQ(chars, 2u);
  EXPECT_FALSE(GetComputerNameW(name, &chars));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BUFFER_OVERFLOW});
  WCHAR folder[MAX_PATH];
  EXPECT_EQ(GetSystemDirectoryW(folder, MAX_PATH), 19u);
  EXPECT_EQ(String(folder), u"C:\\Windows\\system32");
  EXPECT_EQ(GetWindowsDirectoryW(folder, 10), 11u);
}

class ElevationTest : public SystemInfoTest, public testing::WithParamInterface<bool> {};

TEST_P(ElevationTest, TheTokenTellsIt) {
  Start(GetParam() ? R"({"elevated": true})" : R"({"elevated": false})");
  HANDLE token = nullptr;
  ASSERT_TRUE(OpenProcessToken(INVALID_HANDLE_VALUE, TOKEN_QUERY, &token));
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  EXPECT_FALSE(GetTokenInformation(token, TokenElevation, nullptr, 0, &size));
  EXPECT_TRUE(GetTokenInformation(token, TokenElevation, &elevation, size, &size));
  EXPECT_EQ(elevation.TokenIsElevated, GetParam() ? 1u : 0u);
  CloseHandle(token);
  SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
  PSID administrators = nullptr;
  ASSERT_TRUE(AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0,
                                       0, 0, &administrators));
  BOOL member = -1;
  EXPECT_TRUE(CheckTokenMembership(nullptr, administrators, &member));
  EXPECT_EQ(member, GetParam());
  FreeSid(administrators);
}

INSTANTIATE_TEST_SUITE_P(Both, ElevationTest, testing::Bool());

TEST_F(SystemInfoTest, CommonControlsWantTheirStructure) {
  Start();
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
  EXPECT_TRUE(InitCommonControlsEx(&classes));
  classes.dwSize = 4;
  EXPECT_FALSE(InitCommonControlsEx(&classes));
}

}  // namespace
