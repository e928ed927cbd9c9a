#include "install/launch.h"
#include "install/shell_extension.h"
#include "install/shortcuts.h"
#include "install/updater_task.h"

#include <shlobj.h>
#include <taskschd.h>

#include <fstream>

#include "base/com_ptr.h"
#include "base/com_values.h"
#include "base/paths.h"
#include "setupui/string_table.h"
#include "tests/src/install/install_fixture.h"

namespace {

using vanta::ComPtr;
using vanta::String;

class ShellStepsTest : public install_testing::InstallTest {
 protected:
  void Begin(std::string_view facts = "{}") {
    Start(facts);
    com_.emplace(static_cast<DWORD>(COINIT_APARTMENTTHREADED));
    InstallTo(TEXT("C:\\app"));
    Put("C:\\skin\\gdstrings.ini", "STRID_PICTOR_NAME=VantaView\nSTRID_PICTOR_UNINST_ONLY=\xE5\x8D\xB8\xE8\xBD\xBD\n");
    vanta::LoadStringTable(TEXT("C:\\skin\\"));
    GetFolder(CSIDL_PROGRAMS);
    GetFolder(CSIDL_DESKTOP);
  }
  static String GetFolder(int id) { return vanta::GetSpecialFolder(id, true); }

  // A link as "target|arguments|working directory|icon file|icon index".
  std::string Link(const String& path) {
    ComPtr<IShellLinkW> link;
    ComPtr<IPersistFile> file;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, link.PutVoid());
    link.As(IID_IPersistFile, file);
    if (FAILED(file->Load(path.c_str(), STGM_READ))) return "(none)";
    WCHAR target[MAX_PATH] = {}, arguments[MAX_PATH] = {}, folder[MAX_PATH] = {}, icon[MAX_PATH] = {};
    int index = -1;
    link->GetPath(target, MAX_PATH, nullptr, SLGP_RAWPATH);
    link->GetArguments(arguments, MAX_PATH);
    link->GetWorkingDirectory(folder, MAX_PATH);
    link->GetIconLocation(icon, MAX_PATH, &index);
    return vanta::ToUtf8(String(target) + TEXT("|") + arguments + TEXT("|") + folder + TEXT("|") + icon + TEXT("|")) +
           std::to_string(index);
  }
  std::string Journal(const char* name) {
    std::ifstream file(folder_ / (std::string(name) + ".jsonl"));
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  bool Launched(const std::string& text) { return Journal("launches").find(text) != std::string::npos; }

  std::optional<vanta::ComScope> com_;
};

TEST_F(ShellStepsTest, ShortcutsLeadToTheProgramAndTheUninstaller) {
  Begin();
  vanta::CreateShortcuts();
  const String menu = GetFolder(CSIDL_PROGRAMS) + TEXT("\\VantaPictor\\");
  EXPECT_EQ(Link(menu + TEXT("VantaView.lnk")),
            "C:\\app\\VantaGlimpse.exe|/src=start|C:\\app|C:\\app\\VantaGlimpse.exe|0");
  EXPECT_EQ(Link(menu + TEXT("卸载VantaView.lnk")), "C:\\app\\uninst.exe||C:\\app|C:\\app\\uninst.exe|0");
  EXPECT_EQ(Link(GetFolder(CSIDL_DESKTOP) + TEXT("\\VantaView.lnk")),
            "C:\\app\\VantaGlimpse.exe|/src=desktop|C:\\app|C:\\app\\VantaGlimpse.exe|0");
}

TEST_F(ShellStepsTest, ShellExtensionFitsTheBitnessOfWindows) {
  Begin(R"({"windows_bits": 32})");
  EXPECT_EQ(vanta::GetShellExtensionPath(), String(TEXT("C:\\app\\ShellExt.dll")));
}

TEST_F(ShellStepsTest, ShellExtensionIsReleasedAndRegisteredOnlyWhereItExists) {
  Begin();
  vanta::ReleaseShellExtension();
  vanta::RegisterShellExtension();
  EXPECT_EQ(Journal("launches"), "");
  Put("C:\\app\\ShellExt64.dll", "x");
  Put("C:\\app\\ShellExt.dll", "x");
  vanta::ReleaseShellExtension();
  EXPECT_TRUE(Launched(R"(/u /s \"C:\\app\\ShellExt64.dll\")"));
  EXPECT_FALSE(Exists("C:\\app\\ShellExt64.dll"));
  EXPECT_FALSE(Exists("C:\\app\\ShellExt.dll"));
}

TEST_F(ShellStepsTest, DesktopShellStartsProgramsWithoutTheSetupsRights) {
  Begin();
  EXPECT_TRUE(vanta::LaunchAsDesktopUser(nullptr, TEXT("C:\\app\\x.exe"), TEXT("/src=setup"), nullptr, SW_SHOWNORMAL));
  EXPECT_TRUE(Launched(R"("/src=setup")"));
  EXPECT_TRUE(Launched(R"("elevated":false)"));
}

TEST_F(ShellStepsTest, UpdaterTaskIsRegisteredOnceForAdministrators) {
  Begin(R"({"clock": {"at": "2024-02-29T23:30:00", "stands": true}})");
  vanta::ScheduleUpdater();
  vanta::ScheduleUpdater();
  ComPtr<ITaskService> service;
  ComPtr<ITaskFolder> folder;
  ComPtr<IRegisteredTask> task;
  const vanta::Variant none;
  CoCreateInstance(CLSID_TaskScheduler, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskService, service.PutVoid());
  ASSERT_EQ(service->Connect(none.Get(), none.Get(), none.Get(), none.Get()), S_OK);
  ASSERT_EQ(service->GetFolder(vanta::Bstr(TEXT("\\")).Get(), folder.Put()), S_OK);
  ASSERT_EQ(folder->GetTask(vanta::Bstr(TEXT("VantaPictorUpdate")).Get(), task.Put()), S_OK);
  BSTR text = nullptr;
  ASSERT_EQ(task->get_Xml(&text), S_OK);
  const std::string xml = vanta::ToUtf8(text);
  SysFreeString(text);
  for (const char* part : {"<StartBoundary>2024-03-01T0", "<Interval>PT1H</Interval>", "HighestAvailable",
                           "<StartWhenAvailable>true</StartWhenAvailable>", "C:\\app\\VantaPictorUpdate.exe",
                           "--silent --src=auto --lnk", "VantaView升级程序"}) {
    EXPECT_NE(xml.find(part), std::string::npos) << part << "\n" << xml;
  }
}

}  // namespace
