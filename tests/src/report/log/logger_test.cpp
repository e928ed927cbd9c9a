#include "report/log/logger.h"

#include "base/paths.h"
#include "tests/support/machine_fixture.h"

#include <shlobj.h>
#include <stdlib.h>

#include <thread>

namespace {

using vanta::CxLogger;
using vanta::Log;

constexpr const WCHAR* kTag = TEXT("App");

class LoggerTest : public testing_support::OnMachine {
 protected:
  // A machine whose clock stands, with the setup in a downloads folder and these settings beside it.
  void Configure(const std::string& settings) {
    setenv("VANTA_IMAGE", "C:\\down\\setup.exe", 1);
    Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}})");
    Put("C:\\down\\setup.exe", "");
    if (!settings.empty()) Put("C:\\down\\xLogConfig.ini", settings);
  }
  std::string LogFolder(const std::string& name = "setup.exe") {
    return vanta::ToUtf8(vanta::GetSpecialFolder(CSIDL_APPDATA, false)) + "\\" + name;
  }
  std::string FileText(const std::string& name = "setup.exe") {
    const std::string bytes = Contents(LogFolder(name) + "\\Logs\\setup.exe.log");
    return winhost::Narrow({reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / 2});
  }
};

TEST_F(LoggerTest, WithoutSettingsNothingIsWrittenAnywhere) {
  Configure("");
  Log(kTag, TEXT("hello"));
  EXPECT_FALSE(Exists(LogFolder()));
}

TEST_F(LoggerTest, LevelTwoAppendsToTheFile) {
  Configure("[setup.exe]\r\nlog=2\r\n");
  Log(kTag, TEXT("number %d of %s"), 5, TEXT("many"));
  CxLogger second;  // as another run
  second.Write(nullptr, TEXT("plain 100%"));
  EXPECT_EQ(FileText(), "2024-03-05 14:07:09 [App] number 5 of many\r\n2024-03-05 14:07:09 [] plain 100%\r\n");
}

TEST_F(LoggerTest, SharedSectionWins) {
  Configure("[setup.exe]\r\nlog=3\r\n[*]\r\nlog=0\r\n");
  Log(kTag, TEXT("hello"));
  EXPECT_FALSE(Exists(LogFolder()));
}

TEST_F(LoggerTest, SharedSectionAloneCountsForEveryProgram) {
  Configure("[*]\r\nlog=1\r\n");
  Log(kTag, TEXT("hello"));
  EXPECT_FALSE(Exists(LogFolder()));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "debugger.jsonl"));
}

TEST_F(LoggerTest, FilterAndFolderNameAreObeyed) {
  Configure("[setup.exe]\r\nlog=2\r\nfilter=AppOther\r\nLogDirName=My Logs\r\n");
  Log(kTag, TEXT("yes"));
  Log(TEXT("CVantaHttpLog"), TEXT("no"));
  Log(nullptr, TEXT("no tag"));
  EXPECT_EQ(FileText("My Logs"), "2024-03-05 14:07:09 [App] yes\r\n");
}

TEST_F(LoggerTest, FileThatCannotBeOpenedSwitchesOnlyFileOutputOff) {
  Configure("[setup.exe]\r\nlog=3\r\n");
  std::filesystem::create_directories(Disk(LogFolder() + "\\Logs\\setup.exe.log"));
  Log(kTag, TEXT("hello"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "debugger.jsonl"));
}

TEST_F(LoggerTest, WithoutApplicationDataNoFileIsWrittenElsewhere) {
  setenv("VANTA_IMAGE", "C:\\down\\setup.exe", 1);
  Start(R"({"folders": {"CSIDL_APPDATA": ""}})");
  Put("C:\\down\\setup.exe", "");
  Put("C:\\down\\xLogConfig.ini", "[*]\r\nlog=3\r\n");
  Log(kTag, TEXT("hello"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "debugger.jsonl"));
  for (const auto& file : std::filesystem::recursive_directory_iterator(folder_)) {
    EXPECT_NE(file.path().filename(), "Logs") << file.path();
  }
}

TEST_F(LoggerTest, LinesOfSeveralThreadsNeverInterleave) {
  Configure("[setup.exe]\r\nlog=2\r\n");
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < 50; ++n) Log(kTag, TEXT("%s"), vanta::String(100, 'x'));
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string line = "2024-03-05 14:07:09 [App] " + std::string(100, 'x') + "\r\n";
  const std::string text = FileText();
  ASSERT_EQ(text.size(), line.size() * 200);
  for (size_t at = 0; at < text.size(); at += line.size()) ASSERT_EQ(text.substr(at, line.size()), line);
}

}  // namespace
