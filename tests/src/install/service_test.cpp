#include "install/service.h"

#include "base/unique.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::UniqueService;

class ServiceTest : public testing_support::OnMachine {
 protected:
  struct State {
    DWORD current = 0;
    DWORD start_type = 0;
  };
  State Read() {
    const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
    const UniqueService service(
        OpenServiceW(manager.Get(), TEXT("Schedule"), SERVICE_QUERY_STATUS | SERVICE_QUERY_CONFIG));
    SERVICE_STATUS status = {};
    QueryServiceStatus(service.Get(), &status);
    alignas(8) BYTE bytes[8192];
    DWORD needed = 0;
    auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGW*>(bytes);
    QueryServiceConfigW(service.Get(), config, sizeof bytes, &needed);
    return {status.dwCurrentState, config->dwStartType};
  }
};

TEST_F(ServiceTest, StoppedServiceIsStartedAndSetToStartByItself) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "start_type": "manual"}}})");
  EXPECT_TRUE(vanta::EnsureServiceRunning(TEXT("Schedule")));
  EXPECT_EQ(Read().current, static_cast<DWORD>(SERVICE_RUNNING));
  EXPECT_EQ(Read().start_type, static_cast<DWORD>(SERVICE_AUTO_START));
}

TEST_F(ServiceTest, LesserRightsDoWhereFullAccessIsRefused) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "start_type": "disabled", "full_access_error": 5}}})");
  EXPECT_TRUE(vanta::EnsureServiceRunning(TEXT("Schedule")));
  EXPECT_EQ(Read().current, static_cast<DWORD>(SERVICE_RUNNING));
}

TEST_F(ServiceTest, RunningAndPendingServicesAreLeftAlone) {
  for (const std::string state : {"running", "start_pending"}) {
    Start(R"({"services": {"Schedule": {"state": ")" + state + R"(", "start_type": "manual"}}})");
    EXPECT_TRUE(vanta::EnsureServiceRunning(TEXT("Schedule")));
    EXPECT_EQ(Read().start_type, static_cast<DWORD>(SERVICE_DEMAND_START));
  }
}

TEST_F(ServiceTest, MissingOrBrokenServiceIsNotRunning) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "start_error": 5}}})");
  EXPECT_FALSE(vanta::EnsureServiceRunning(TEXT("Schedule")));
  EXPECT_FALSE(vanta::EnsureServiceRunning(TEXT("NoSuchService")));
}

}  // namespace
