#include "app/setup_driver.h"

#include "app/install_state.h"
#include "install/installer_thread.h"
#include "tests/src/install/install_fixture.h"

namespace {

using install_testing::InstallTest;

class SetupDriverTest : public InstallTest {};

TEST_F(SetupDriverTest, SecondWindowedStartOnlyActivatesTheFirst) {
  Start();
  const HWND first = OpenWindow();
  EXPECT_FALSE(vanta::runSetup());
  EXPECT_EQ(GetForegroundWindow(), first);
  EXPECT_EQ(Posted(), "");
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
