#include <windows.h>

#include "tests/support/machine_fixture.h"
#include "winhost/kernel/service_table.h"

namespace {

using String = std::u16string;

class ServicesTest : public testing_support::OnMachine {
 protected:
  ~ServicesTest() override {
    for (SC_HANDLE handle : handles_) CloseServiceHandle(handle);
  }
  SC_HANDLE Manager(DWORD access = SC_MANAGER_ALL_ACCESS) { return Keep(OpenSCManagerW(nullptr, nullptr, access)); }
  SC_HANDLE Open(const WCHAR* name, DWORD access = SERVICE_ALL_ACCESS) {
    return Keep(OpenServiceW(Manager(SC_MANAGER_CONNECT), name, access));
  }
  DWORD StateOf(const WCHAR* name) { return FindService(winhost::Machine::Current(), name)->state; }
  DWORD StartTypeOf(const WCHAR* name) { return FindService(winhost::Machine::Current(), name)->start_type; }
  static BOOL SetStartType(SC_HANDLE service, DWORD start_type) {
    return ChangeServiceConfigW(service, SERVICE_NO_CHANGE, start_type, SERVICE_NO_CHANGE, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr);
  }

 private:
  SC_HANDLE Keep(SC_HANDLE handle) {
    if (handle) handles_.push_back(handle);
    return handle;
  }
  std::vector<SC_HANDLE> handles_;
};

TEST_F(ServicesTest, TheSchedulerRunsUnlessTheFactsSayOtherwise) {
  Start();
  SERVICE_STATUS status{};
  EXPECT_TRUE(QueryServiceStatus(Open(u"schedule"), &status));
  EXPECT_EQ(status.dwCurrentState, DWORD{SERVICE_RUNNING});
  EXPECT_FALSE(StartServiceW(Open(u"Schedule"), 0, nullptr));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SERVICE_ALREADY_RUNNING});
  EXPECT_FALSE(Open(u"None"));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SERVICE_DOES_NOT_EXIST});
}

TEST_F(ServicesTest, AStoppedServiceIsConfiguredStartedAndStaysSo) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "start_type": "disabled"}}})");
  const SC_HANDLE service = Open(u"Schedule");
  EXPECT_FALSE(StartServiceW(service, 0, nullptr));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SERVICE_DISABLED});
  EXPECT_TRUE(SetStartType(service, SERVICE_AUTO_START));
  EXPECT_FALSE(SetStartType(service, 5));
  EXPECT_TRUE(StartServiceW(service, 0, nullptr));
  winhost::MachineScope later(folder_);
  EXPECT_EQ(StateOf(u"Schedule"), DWORD{SERVICE_RUNNING});
  EXPECT_EQ(StartTypeOf(u"Schedule"), DWORD{SERVICE_AUTO_START});
}

TEST_F(ServicesTest, FullAccessCanBeRefusedWhileLessIsGranted) {
  Start(R"({"services": {"Schedule": {"state": "stopped", "full_access_error": 5, "start_error": 1068}}})");
  EXPECT_FALSE(Open(u"Schedule"));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  const SC_HANDLE service = Open(u"Schedule", SERVICE_START | SERVICE_CHANGE_CONFIG | READ_CONTROL | WRITE_DAC);
  EXPECT_TRUE(SetStartType(service, SERVICE_DEMAND_START));
  EXPECT_FALSE(StartServiceW(service, 0, nullptr));
  EXPECT_EQ(GetLastError(), 1068u);
  SERVICE_STATUS status{};
  EXPECT_FALSE(QueryServiceStatus(service, &status)) << "it was not opened for that";
}

TEST_F(ServicesTest, SecurityIsKeptByteForByteAndOpensWhatItLetsIn) {
  Start(R"({"services": {"Schedule": {"full_access_error": 5}, "Other": {}}})");
  DWORD needed = 0;
  const SC_HANDLE service = Open(u"Schedule", READ_CONTROL | WRITE_DAC);
  EXPECT_FALSE(QueryServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, nullptr, 0, &needed));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
  std::vector<BYTE> original(needed), open(needed), now(needed);
  EXPECT_TRUE(QueryServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, original.data(), needed, &needed));
  EXPECT_TRUE(QueryServiceObjectSecurity(Open(u"Other"), DACL_SECURITY_INFORMATION, open.data(), needed, &needed));
  EXPECT_NE(original, open);
  EXPECT_TRUE(SetServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, open.data()));
  EXPECT_TRUE(Open(u"Schedule"));
  EXPECT_TRUE(SetServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, original.data()));
  EXPECT_FALSE(Open(u"Schedule"));
  EXPECT_TRUE(QueryServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, now.data(), needed, &needed));
  EXPECT_EQ(now, original);
  EXPECT_FALSE(SetServiceObjectSecurity(service, DACL_SECURITY_INFORMATION, std::vector<BYTE>(20).data()));
}

TEST_F(ServicesTest, WithoutElevationServicesAreOnlyLookedAt) {
  Start(R"({"elevated": false})");
  EXPECT_FALSE(Manager());
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_FALSE(Open(u"Schedule", SERVICE_START));
  EXPECT_TRUE(Open(u"Schedule", SERVICE_QUERY_STATUS));
}

TEST_F(ServicesTest, EnumerationFillsWhatFitsAndResumes) {
  Start(R"({"services": {"i8deskclisvr": {"type": 16, "state": "stopped"}, "Driver": {"type": 1},
                         "RpcSs": {"state": "absent"}}})");
  const SC_HANDLE manager = Manager(SC_MANAGER_ENUMERATE_SERVICE);
  std::vector<String> names;
  DWORD needed = 0, count = 0, resume = 0, rounds = 0;
  for (BOOL done = FALSE; !done && rounds < 10; ++rounds) {
    std::vector<BYTE> buffer(120);
    done = EnumServicesStatusW(manager, SERVICE_WIN32, SERVICE_STATE_ALL,
                               reinterpret_cast<LPENUM_SERVICE_STATUSW>(buffer.data()), 120, &needed, &count, &resume);
    if (!done) {
      EXPECT_EQ(GetLastError(), DWORD{ERROR_MORE_DATA});
    }
    const auto* rows = reinterpret_cast<ENUM_SERVICE_STATUSW*>(buffer.data());
    for (DWORD i = 0; i < count; ++i) names.emplace_back(rows[i].lpServiceName);
  }
  EXPECT_EQ(rounds, 3u);
  EXPECT_EQ(names, (std::vector<String>{u"EventLog", u"Schedule", u"i8deskclisvr"}));
  std::vector<BYTE> buffer(4096);
  EXPECT_TRUE(EnumServicesStatusExW(manager, SC_ENUM_PROCESS_INFO, SERVICE_WIN32, SERVICE_INACTIVE, buffer.data(), 4096,
                                    &needed, &count, nullptr, nullptr));
  EXPECT_EQ(count, 1u);
}

TEST_F(ServicesTest, HandlesAreOfTheirKind) {
  Start();
  SERVICE_STATUS status{};
  EXPECT_FALSE(QueryServiceStatus(Manager(), &status));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
  EXPECT_FALSE(CloseServiceHandle(nullptr));
  EXPECT_FALSE(OpenSCManagerW(nullptr, u"Elsewhere", SC_MANAGER_CONNECT));
}

}  // namespace
