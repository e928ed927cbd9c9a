#include "base/text.h"
#include "report/probes/browser.h"
#include "report/probes/internet_cafe.h"
#include "report/probes/security_software.h"
#include "report/probes/suite.h"
#include "tests/support/machine_fixture.h"

namespace vanta {
namespace {

class ProbesTest : public testing_support::OnMachine {};

// A key of the machine that has one value, so that it exists.
std::string Key(const std::string& key) { return "\"" + key + "\": {\"x\": \"1\"}"; }

TEST_F(ProbesTest, BareMachineHasNothing) {
  Start();
  EXPECT_EQ(BuildSecuritySoftwareList(), String());
  EXPECT_FALSE(IsInternetCafe());
  EXPECT_FALSE(IsSuiteInstalled());
  EXPECT_EQ(DetectBrowser(), BrowserAbsent);
}

TEST_F(ProbesTest, SecuritySoftwareIsFoundInEveryRootAndViewAndListedInOrder) {
  const char* const kUninstall = "\\\\SOFTWARE\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Uninstall\\\\";
  Start("{\"registry\": {" + Key(std::string("HKLM") + kUninstall + "HuorongSysdiag") + "," +
        Key(std::string("HKLM32") + kUninstall + "2345PCSafe") + "," +
        Key(std::string("HKCU") + kUninstall + "QQPCMgr") + "}}");
  // This process is 32-bit, so what only the 64-bit view holds stays unseen.
  EXPECT_EQ(BuildSecuritySoftwareList(), TEXT("a|c"));
  EXPECT_TRUE(IsSoftwareInstalled(TEXT("2345PCSafe")));
  EXPECT_FALSE(IsSoftwareInstalled(TEXT("Kingsoft Internet Security")));
}

TEST_F(ProbesTest, SixtyFourBitProcessSeesBothViews) {
  const char* const kUninstall = "\\\\SOFTWARE\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Uninstall\\\\";
  Start("{\"process_bits\": 64, \"registry\": {" + Key(std::string("HKLM") + kUninstall + "HuorongSysdiag") + "," +
        Key(std::string("HKLM32") + kUninstall + "Kingsoft Internet Security") + "}}");
  EXPECT_EQ(BuildSecuritySoftwareList(), TEXT("b|d"));
}

struct CafeCase {
  const char* name;
  std::string facts;
  bool cafe;
};
std::ostream& operator<<(std::ostream& out, const CafeCase& row) { return out << row.name; }

std::string Keys(std::initializer_list<const char*> keys) {
  std::string facts;
  for (const char* key : keys) facts += (facts.empty() ? "" : ",") + Key(key);
  return "{\"registry\": {" + facts + "}}";
}
std::string Runs(const char* program) { return std::string("{\"running\": [\"C:\\\\Cafe\\\\") + program + "\"]}"; }

class CafeTest : public testing_support::OnMachine, public testing::WithParamInterface<CafeCase> {};

TEST_P(CafeTest, IsJudgedBySigns) {
  Start(GetParam().facts);
  EXPECT_EQ(IsInternetCafe(), GetParam().cafe);
}

const CafeCase kCafeCases[] = {
    {"i8desk", Keys({"HKLM32\\\\SOFTWARE\\\\Goyoo\\\\i8desk"}), true},
    {"i8desk_running", Runs("I8DeskCliSvr.exe"), true},
    {"i8desk_service", R"({"services": {"I8DESKCLISVR": {"state": "stopped", "type": 16}}})", true},
    {"service_of_another_name", R"({"services": {"i8deskclisvr2": {}}})", false},
    {"icafe8", Keys({"HKLM32\\\\SOFTWARE\\\\iCafe8"}), true},
    {"icafe8_third_process", Runs("BarChargesView.exe"), true},
    {"sicent_second_key", Keys({"HKLM32\\\\SOFTWARE\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Run\\\\wxClient"}),
     true},
    {"sicent_running", Runs("clsmn.exe"), true},
    {"pubwin", Keys({"HKLM32\\\\SOFTWARE\\\\Hintsoft\\\\PubwinClient"}), true},
    {"pubwin_running", Runs("PUBWINCLIENT.EXE"), true},
    {"stnt_alone", Keys({"HKLM32\\\\SoftWare\\\\StntManager"}), false},
    {"stnt_with_driver",
     Keys({"HKLM32\\\\SoftWare\\\\StntManager", "HKLM\\\\SYSTEM\\\\CurrentControlSet\\\\Services\\\\STVDISKX"}), true},
    {"eyoo_two_of_three",
     Keys({"HKLM32\\\\SOFTWARE\\\\EYOOCLIENTSTATUS", "HKLM\\\\SYSTEM\\\\CurrentControlSet\\\\Services\\\\STVDISKX"}),
     false},
    {"eyoo_all",
     Keys({"HKLM32\\\\SOFTWARE\\\\EYOOCLIENTSTATUS", "HKLM\\\\SYSTEM\\\\CurrentControlSet\\\\Services\\\\STVDISKX",
           "HKLM\\\\SYSTEM\\\\CurrentControlSet\\\\Services\\\\stpdrive"}),
     true},
    {"game_menu_running", Runs("ManagerConsole.exe"), true},
    {"rzx_second_key", Keys({"HKLM32\\\\SOFTWARE\\\\Rzx Network"}), true},
    {"rzx_lower_case", Runs("rzxclient.exe"), true},
    {"qysoft_second_key", Keys({"HKLM32\\\\SOFTWARE\\\\Rainsoft"}), true},
    {"ybt_running", Runs("YBTClient.exe"), true},
    {"sunlike", Keys({"HKLM32\\\\SOFTWARE\\\\Sunlike"}), true},
    {"ssp_running", Runs("ssp.exe"), true},
    {"only_the_end_of_a_name", Runs("xssp.exe"), false},
};
INSTANTIATE_TEST_SUITE_P(Signs, CafeTest, testing::ValuesIn(kCafeCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ProbesTest, GameMenuFolderMakesACafeButAFileOfThatNameDoesNot) {
  Start(R"({"drives": {"D": {}}})");
  Put("D:\\HintSoft\\GameMenu", "a file");
  EXPECT_FALSE(IsInternetCafe());
  std::filesystem::remove(Disk("D:\\HintSoft\\GameMenu"));
  Put("D:\\HintSoft\\GameMenu\\menu.ini", "");
  EXPECT_TRUE(IsInternetCafe());
}

TEST_F(ProbesTest, UnreadableServiceListIsNoSign) {
  Start(R"({"services": {"i8deskclisvr": {}}, "faults": [{"operation": "OpenSCManagerW", "times": 100}]})");
  EXPECT_FALSE(IsInternetCafe());
}

TEST(SuiteDirectoryAboveTest, OnlyTheMakersShelvesLeadToTheSuite) {
  struct Row {
    const WCHAR* own;
    const WCHAR* suite;
  };
  const Row rows[] = {
      {TEXT("C:\\Bastion\\AppShelf"), TEXT("C:\\Bastion")},
      {TEXT("C:\\x\\bastion\\APPSHELF\\"), TEXT("C:\\x\\bastion")},
      {TEXT("C:\\Bastion\\Tools\\SML\\AppShelf"), TEXT("C:\\Bastion")},
      {TEXT("C:\\Bastion\\SML\\AppShelf"), TEXT("")},
      {TEXT("C:\\Other\\AppShelf"), TEXT("")},
      {TEXT("C:\\Bastion\\Other"), TEXT("")},
      {TEXT("AppShelf"), TEXT("")},
      {TEXT("SML\\AppShelf"), TEXT("")},
      {TEXT(""), TEXT("")},
  };
  for (const Row& row : rows) EXPECT_EQ(SuiteDirectoryAbove(row.own), String(row.suite)) << winhost::Narrow(row.own);
}

constexpr char kSuiteFacts[] =
    R"({"registry": {"HKLM32\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\bastion.exe": {"Path": "C:\\Suite"},
                     "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\bastion.exe": {"Path": "C:\\Suite"}}})";

TEST_F(ProbesTest, SuiteDirectoryComesFromTheRegistryAndStays) {
  Start(kSuiteFacts);
  EXPECT_EQ(GetSuiteDirectory(nullptr), TEXT("C:\\Suite"));
  EXPECT_EQ(GetSuiteDirectory(TEXT("a.dll")), TEXT("C:\\Suite\\a.dll"));
  EXPECT_FALSE(IsSuiteInstalled());
  Put("C:\\Suite\\bastion.exe", "x");
  EXPECT_TRUE(IsSuiteInstalled());
}

class BrowserTest : public testing_support::OnMachine {
 protected:
  static constexpr char kUninstall[] =
      R"("HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Skyline6": {"InstallLocation": "C:\\Sky"})";
  static constexpr char kClientState[] =
      R"("HKCU\\Software\\Vanta\\Skyline6\\Update\\ClientState\\{02E720BD-2B50-4404-947C-65DBE64F6970}":
         {"UninstallString": "C:\\Sky\\6.0\\Installer\\setup.exe"})";
  void StartWith(const std::string& registry) { Start("{\"registry\": {" + registry + "}}"); }
};

TEST_F(BrowserTest, MainProgramBesideTheVersionFolderIsState1) {
  StartWith(kClientState);
  EXPECT_EQ(DetectBrowser(), BrowserAbsent);
  Put("C:\\Sky\\Skylinecore.exe", "x");
  EXPECT_EQ(DetectBrowser(), BrowserCoreOnly);
  Put("C:\\Sky\\Skyline.exe", "x");
  EXPECT_EQ(DetectBrowser(), BrowserPresent);
}

TEST_F(BrowserTest, CoreWithUninstallEntryIsState2) {
  StartWith(kUninstall);
  Put("C:\\Sky\\Skylinecore.exe", "x");
  EXPECT_EQ(DetectBrowser(), BrowserCoreInstalled);
  EXPECT_EQ(FindBrowserInstaller(), TEXT("C:\\Sky\\0.0.0.0\\Installer\\setup.exe"));
}

TEST_F(BrowserTest, DirectoryWithoutProgramsGivesWayToTheNextSource) {
  StartWith(std::string(R"("HKCU\\Software\\Vanta\\Skyline6\\Chrome": {"last_install_path": "C:\\Gone"},)") +
            kUninstall);
  Put("C:\\Sky\\Skyline.exe", "x");
  EXPECT_EQ(DetectBrowser(), BrowserPresent);
}

TEST_F(BrowserTest, LastInstallPathIsTheApplicationsParent) {
  StartWith(R"("HKCU\\Software\\Vanta\\Skyline6\\Chrome": {"last_install_path": "C:\\P"})");
  Put("C:\\P\\Skyline6\\Application\\Skyline.exe", "x");
  EXPECT_EQ(DetectBrowser(), BrowserPresent);
}

TEST_F(BrowserTest, ValuesOfOtherTypesAreNothing) {
  StartWith(R"("HKCU\\Software\\Vanta\\Skyline6\\Chrome": {"last_install_path": {"type": "REG_DWORD", "value": 5}})");
  EXPECT_EQ(DetectBrowser(), BrowserAbsent);
}

}  // namespace
}  // namespace vanta
