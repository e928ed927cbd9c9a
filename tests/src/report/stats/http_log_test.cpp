#include "report/stats/http_log.h"

#include <chrono>
#include <sstream>
#include <thread>
#include <vector>

#include "base/registry.h"
#include "report/identity/machine_identity.h"
#include "report/stats/report_url.h"
#include "tests/support/https_server.h"
#include "tests/support/machine_fixture.h"

namespace vanta {
namespace {

class HttpLogTest : public testing_support::OnMachine {
 protected:
  HttpLogTest() { setenv("VANTA_IMAGE", "C:\\Setup\\VantaPictorSetup.exe", 1); }

  void OnMachineWith(const std::string& facts) {
    Start(facts);
    Put("C:\\Setup\\xLogConfig.ini", "[*]\r\nlog=2\r\n");
    sender_.emplace();
    sender_->SetUseWinInet(true);
  }
  // The messages of the log, with their tags.
  std::vector<std::string> Lines() {
    const std::string bytes =
        Contents("C:\\Users\\user\\AppData\\Roaming\\VantaPictorSetup.exe\\Logs\\VantaPictorSetup.exe.log");
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 2) text += bytes[i];
    std::istringstream all(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(all, line);) lines.push_back(line.substr(0, line.size() - 1));
    return lines;
  }
  // Waits for what other threads do, for as long as a hung test may take.
  template <class Condition>
  bool Eventually(Condition&& condition) {
    for (int i = 0; i < 20000; ++i) {
      if (condition()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
  }
  bool SentLines(size_t count) {
    return Eventually([&] { return Lines().size() >= count && !sender_->IsBusy(); });
  }

  std::optional<CVantaHttpLog> sender_;
};

TEST_F(HttpLogTest, StatusArrivesWithTheMachinesParameters) {
  testing_support::HttpsServer server;
  OnMachineWith(server.Facts(R"("version": "7", "registry": {
      "HKLM32\\Software\\VantaPictor\\Config": {"channel": "first", "newChannel": "second"},
      "HKLM32\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\QQPCMgr": {"x": "y"},
      "HKLM32\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\2345PCSafe": {"x": "y"},
      "HKLM32\\SOFTWARE\\iCafe8": {"x": "y"}}, )"));
  sender_->SetVersion(TEXT("1.2"));
  EXPECT_TRUE(sender_->PostStatus(TEXT("0"), false));
  ASSERT_TRUE(SentLines(1));
  const std::string query = "/bastion/instcomp.htm?soft=2023022111&status=0&m=" + ToUtf8(MachineIdText()) +
                            "&m2=" + ToUtf8(MachineId2Text()) +
                            "&channel=second&ochannel=first&version=1.2&sysver=6.1.7601&pa=x64&s1=0&s2=0&com=a|c&nb=1";
  EXPECT_TRUE(server.Requests().starts_with("GET " + query + " [")) << server.Requests();
  EXPECT_EQ(server.RequestCount(), 1);
  EXPECT_EQ(Lines()[0].substr(20), "[CVantaHttpLog] https://statistics.invalid" + query);
}

TEST_F(HttpLogTest, ParametersAreReadOnceAndSettingsEachTime) {
  testing_support::HttpsServer server;
  OnMachineWith(server.Facts());
  sender_->PostStatus(TEXT("0"), false);
  RegWriteString(HKEY_LOCAL_MACHINE, TEXT("Software\\VantaPictor\\Config"), TEXT("channel"), TEXT("late"));
  sender_->PostStatus(TEXT("1"), false);
  ASSERT_TRUE(SentLines(2));
  EXPECT_NE(Lines()[1].find("&channel=&ochannel=&version=&"), std::string::npos) << Lines()[1];
  sender_->SetChannel(TEXT("mine"));
  sender_->SetVersion(TEXT("9"));
  sender_->PostStatus(TEXT("1"), false);
  ASSERT_TRUE(SentLines(3));
  EXPECT_NE(Lines()[2].find("&channel=mine&ochannel=&version=9&"), std::string::npos) << Lines()[2];
}

TEST_F(HttpLogTest, NothingIsProbedBeforeTheFirstReport) {
  OnMachineWith(R"({"trace_calls": true})");
  sender_->SetChannel(TEXT("x"));
  sender_->SetVersion(TEXT("1"));
  sender_->WaitBeforeExit();
  sender_.reset();
  std::ifstream calls(folder_ / "calls.jsonl");
  const std::string all(std::istreambuf_iterator<char>(calls), {});
  EXPECT_EQ(all.find("Reg"), std::string::npos) << all;
  EXPECT_EQ(all.find("CreateThread"), std::string::npos) << all;
}

// The clock runs so fast that the fifteen minutes take milliseconds.
constexpr char kFast[] = R"({"clock": {"at": "2024-03-05T14:00:00", "speed": 20000}})";

TEST_F(HttpLogTest, FailedReportIsTriedAgainThreeTimes) {
  OnMachineWith(kFast);
  const DWORD before = GetTickCount();
  sender_->PostStatus(TEXT("0"), true);
  ASSERT_TRUE(SentLines(4));
  EXPECT_GE(GetTickCount() - before, 1800000u);
  const auto minute = [](const std::string& line) {
    return std::stoi(line.substr(11, 2)) * 60 + std::stoi(line.substr(14, 2));
  };
  const auto lines = Lines();
  for (int i = 1; i < 4; ++i) {
    EXPECT_GE(minute(lines[i]) - minute(lines[i - 1]), 5 * i) << lines[i];
    EXPECT_EQ(lines[i].substr(20), lines[0].substr(20));
  }
  Sleep(3600000);
  EXPECT_EQ(Lines().size(), 4u) << "no fifth try";
}

TEST_F(HttpLogTest, RetriesComeExactlyWhenAStandingClockReachesThem) {
  OnMachineWith(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}})");
  sender_->PostStatus(TEXT("0"), true);
  ASSERT_TRUE(SentLines(1));
  for (const DWORD minutes : {5u, 10u, 15u}) {
    const size_t tries = Lines().size();
    Sleep(minutes * 60000 - 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(Lines().size(), tries) << "a millisecond early";
    Sleep(1);
    ASSERT_TRUE(SentLines(tries + 1)) << minutes;
  }
  Sleep(3600000);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(Lines().size(), 4u);
}

TEST_F(HttpLogTest, WithoutTheFlagAFailedReportIsLost) {
  OnMachineWith(kFast);
  sender_->PostStatus(TEXT("0"), false);
  ASSERT_TRUE(SentLines(1));
  Sleep(3600000);
  EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(HttpLogTest, WithoutATimerAFailedReportIsLost) {
  OnMachineWith(R"({"clock": {"at": "2024-03-05T14:00:00", "speed": 20000},
                    "faults": [{"operation": "timeSetEvent", "nth": 0}]})");
  sender_->PostStatus(TEXT("0"), true);
  ASSERT_TRUE(SentLines(1));
  Sleep(3600000);
  EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(HttpLogTest, WithoutWinInetTheNetworkLibraryIsNeeded) {
  testing_support::HttpsServer server;
  OnMachineWith(server.Facts());
  sender_->SetUseWinInet(false);
  sender_->PostStatus(TEXT("0"), false);
  ASSERT_TRUE(SentLines(1));
  EXPECT_EQ(server.RequestCount(), 0);
}

TEST_F(HttpLogTest, WithoutAThreadNothingIsQueued) {
  OnMachineWith(
      R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}, "faults": [{"operation": "CreateThread"}]})");
  EXPECT_FALSE(sender_->PostStatus(TEXT("0"), true));
  EXPECT_FALSE(sender_->PostStatus(TEXT("0"), true));
  const DWORD before = GetTickCount();
  sender_->WaitBeforeExit();
  EXPECT_EQ(GetTickCount(), before) << "a stopped sender needs no grace";
}

TEST_F(HttpLogTest, OnlyABusySenderIsGivenItsGrace) {
  testing_support::HttpsServer server;
  OnMachineWith(R"({"clock": {"at": "2024-03-05T14:00:00", "stands": true}, "tls_roots": [")" + server.Root() +
                R"("], "hosts": {"statistics.invalid": "127.0.0.1:)" + std::to_string(server.Port("silent")) +
                R"("}})");
  DWORD before = GetTickCount();
  sender_->WaitBeforeExit();
  EXPECT_EQ(GetTickCount(), before);
  sender_->PostStatus(TEXT("0"), false);
  before = GetTickCount();
  sender_->WaitBeforeExit();
  EXPECT_GE(GetTickCount() - before, 3000u);
  EXPECT_TRUE(sender_->IsBusy());
}

TEST_F(HttpLogTest, InstallReportTellsWhetherItArrived) {
  testing_support::HttpsServer server;
  OnMachineWith(server.Facts());
  sender_->SetVersion(TEXT("1.2"));
  EXPECT_TRUE(sender_->SendInstallReport(InstallReportEndpoint(TEXT("upgrade.invalid"))));
  EXPECT_TRUE(server.Requests().starts_with("GET /upgrade/install?appname=lumen&mid=" + ToUtf8(MachineIdText()) +
                                            "&mid2=" + ToUtf8(MachineId2Text()) +
                                            "&systemVersion=10.0.19045&version=1.2 ["))
      << server.Requests();
  EXPECT_FALSE(sender_->SendInstallReport(TEXT("https://nobody.invalid/upgrade/install")));
  EXPECT_EQ(Lines().size(), 0u) << "it leaves no line";
}

TEST_F(HttpLogTest, DeadServerHoldsTheInstallReportUpForSeconds) {
  testing_support::HttpsServer server;
  OnMachineWith(server.Facts(R"("clock": {"at": "2024-03-05T14:00:00", "speed": 25}, )"));
  for (const auto& endpoint : {server.Url("/never"), server.Url("/slow"), server.Url("/", "silent")}) {
    const DWORD before = GetTickCount();
    EXPECT_FALSE(sender_->SendInstallReport(FromUtf8(endpoint)));
    EXPECT_GE(GetTickCount() - before, 5000u) << endpoint;
  }
}

TEST_F(HttpLogTest, ReportsOfManyThreadsAllArriveInTheLog) {
  OnMachineWith("{}");
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([this] {
      for (int n = 0; n < 25; ++n) sender_->PostStatus(TEXT("0"), false);
    });
  }
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(SentLines(200));
  EXPECT_EQ(Lines().size(), 200u);
}

}  // namespace
}  // namespace vanta
