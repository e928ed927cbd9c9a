#include "install/version.h"

#include "base/registry.h"
#include "install/product_config.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::String;

class VersionTest : public testing_support::OnMachine {};

TEST_F(VersionTest, PartsAreComparedAsNumbers) {
  const struct {
    const char* a;
    const char* b;
    int value;
  } rows[] = {
      {"2.0.0.1", "2.0.0.0", 1},
      {"2.0", "2.0.0.0", 0},
      {"10.0.0.0", "9.9.9.9", 1},
      {"", "1.0", -1},
      {"", "", 0},
      {"", "0.0.0.0", 0},
      {"1.2.x.4", "1.2.0.4", 0},
      {"1.2.7x.4", "1.2.7.4", 0},
      {"1..3", "1.0.3", 0},
      {"1.2.", "1.2", 0},
      {" 5", "5", 0},
      {"-3", "2", -5},
      {"3.1", "5.9", -2},
      {"99999999999", "2147483647", 0},
      {"2147483647", "-2147483648", 2147483647},
      {"-2147483648", "2147483647", -2147483647 - 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(vanta::CompareVersions(vanta::FromUtf8(row.a), vanta::FromUtf8(row.b)), row.value)
        << row.a << " " << row.b;
  }
}

TEST_F(VersionTest, FilesWithoutVersionAreToldFromNoFiles) {
  Start();
  Put("C:\\a.exe", "no program");
  EXPECT_EQ(vanta::GetFileVersionString(TEXT("C:\\a.exe")), String(TEXT("0.0.0.0")));
  EXPECT_EQ(vanta::GetFileVersionString(TEXT("C:\\b.exe")), String());
  EXPECT_EQ(vanta::GetFileVersionString(String()), String());
}

TEST_F(VersionTest, NewerInstalledProductMakesThisTheLowerSetup) {
  Start();
  EXPECT_FALSE(vanta::isLowerSetup());
  vanta::RegWriteString(HKEY_LOCAL_MACHINE, vanta::kUninstallKey, TEXT("DisplayVersion"), vanta::GetOwnVersion());
  EXPECT_FALSE(vanta::isLowerSetup());
  vanta::RegWriteString(HKEY_LOCAL_MACHINE, vanta::kUninstallKey, TEXT("DisplayVersion"), TEXT("60000.0.0.1"));
  EXPECT_TRUE(vanta::isLowerSetup());
}

TEST_F(VersionTest, UnsignedSiblingProgramIsNoInstallation) {
  Start();
  EXPECT_FALSE(vanta::IsInstalled());
  Put("C:\\Program Files (x86)\\VantaPictor\\VantaGlimpse.exe", "unsigned");
  EXPECT_FALSE(vanta::IsInstalled());
}

}  // namespace
