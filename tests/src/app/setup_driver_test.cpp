#include "app/setup_driver.h"

#include "app/install_state.h"
#include "app/option_store.h"
#include "base/registry.h"
#include "install/installer_thread.h"
#include "install/product_config.h"
#include "tests/src/install/install_fixture.h"

namespace {

using install_testing::InstallTest;
using vanta::String;

class SetupDriverTest : public InstallTest {
 protected:
  ~SetupDriverTest() override { vanta::RemoveOption(TEXT("silent")); }
};

TEST_F(SetupDriverTest, SecondWindowedStartOnlyActivatesTheFirst) {
  Start();
  const HWND first = OpenWindow();
  EXPECT_FALSE(vanta::runSetup());
  EXPECT_EQ(GetForegroundWindow(), first);
  EXPECT_EQ(Posted(), "");
}

TEST_F(SetupDriverTest, SilentStartOverANewerProductIsRefused) {
  Start();
  vanta::SetOption(TEXT("silent"), String());
  vanta::RegWriteString(HKEY_LOCAL_MACHINE, vanta::kUninstallKey, TEXT("DisplayVersion"), TEXT("60000.0"));
  EXPECT_FALSE(vanta::runSetup());
}

TEST_F(SetupDriverTest, SilentStartWithoutPayloadFailsAndTellsNoWindow) {
  Start(R"({"faults": [{"operation": "FindResourceW", "nth": 0, "error": 1814}]})");
  OpenWindow();
  vanta::SetOption(TEXT("silent"), String());
  EXPECT_FALSE(vanta::runSetup());
  EXPECT_EQ(vanta::GetInstallState().target_window.load(), nullptr);
  EXPECT_EQ(Posted(), "");
}

TEST_F(SetupDriverTest, WindowIsToldOfTheStartAndOfTheMissingPayload) {
  Start(R"({"faults": [{"operation": "FindResourceW", "nth": 0, "error": 1814}]})");
  OpenWindow();
  EXPECT_FALSE(vanta::runInstaller());
  EXPECT_EQ(Posted(), "s0 p0 s8");
}

TEST_F(SetupDriverTest, ThreadThatFindsNoPayloadTellsTheWindowAndIsWaitedFor) {
  Start();
  OpenWindow();
  EXPECT_TRUE(vanta::StartInstallerThread());
  EXPECT_TRUE(vanta::WaitForInstallerThread(10000));
  EXPECT_EQ(Posted(), "s8 s2");
}

TEST_F(SetupDriverTest, EndWithoutAnInstallationDoesNotWait) {
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})");
  const DWORD before = GetTickCount();
  vanta::EndInstallation();
  EXPECT_EQ(GetTickCount(), before);
  vanta::GetInstallState().stop_requested = false;
}

}  // namespace
