#include <psapi.h>
#include <shellapi.h>
#include <tlhelp32.h>
#include <windows.h>

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"
#include "winhost/kernel/launch.h"
#include "winhost/kernel/process_table.h"
#include "winhost/kernel/system_programs.h"

namespace {

using nlohmann::json;
using QueryImageName = BOOL(WINAPI*)(HANDLE, DWORD, LPWSTR, PDWORD);

constexpr const WCHAR* kViewer = TEXT("C:\\App\\Viewer.exe");
constexpr DWORD kReadImage = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ;

class ProcessesTest : public testing_support::OnMachine {
 protected:
  ~ProcessesTest() override {
    for (const auto& [id, name] : Snapshot()) {
      if (id != 4 && id != GetCurrentProcessId()) End(id);
    }
  }

  std::map<DWORD, std::u16string> Snapshot() {
    std::map<DWORD, std::u16string> found;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
      found[entry.th32ProcessID] = entry.szExeFile;
    }
    CloseHandle(snapshot);
    return found;
  }

  DWORD IdOf(const std::u16string& name) {
    for (const auto& [id, file] : Snapshot()) {
      if (file == name) return id;
    }
    return 0;
  }

  bool End(DWORD id, UINT code = 0) {
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
    const bool ended = process && TerminateProcess(process, code);
    CloseHandle(process);
    return ended;
  }

  // A Linux program under a Windows name.
  void PutProgram(const char* windows_path, const char* linux_program) {
    std::filesystem::create_directories(Disk(windows_path).parent_path());
    std::filesystem::copy_file(linux_program, Disk(windows_path));
  }

  std::vector<json> Journal(const char* name) {
    std::vector<json> lines;
    std::ifstream file(folder_ / (std::string(name) + ".jsonl"));
    for (std::string line; std::getline(file, line);) lines.push_back(json::parse(line));
    return lines;
  }

  DWORD Launch(const WCHAR* file, const WCHAR* parameters = TEXT("")) {
    winhost::LaunchRequest request;
    request.file = file;
    request.parameters = parameters;
    request.by = "test";
    DWORD error = 0;
    winhost::LaunchProgram(request, &error);
    return error;
  }

  std::u16string ImageOf(DWORD id) {
    WCHAR path[MAX_PATH] = {};
    const HANDLE process = OpenProcess(kReadImage, FALSE, id);
    GetModuleFileNameExW(process, nullptr, path, MAX_PATH);
    CloseHandle(process);
    return path;
  }
};

TEST_F(ProcessesTest, ThisProcessAndTheSystemsAreListed) {
  Start();
  auto found = Snapshot();
  EXPECT_EQ(found[0], u"[System Process]");
  EXPECT_EQ(found[4], u"System");
  EXPECT_TRUE(found.contains(GetCurrentProcessId()));
}

TEST_F(ProcessesTest, LaunchedProgramIsListedUntilItIsEnded) {
  Start();
  PutProgram("C:\\App\\Viewer.exe", "/bin/sleep");
  ASSERT_EQ(Launch(kViewer, TEXT("1000")), 0u);
  const DWORD id = IdOf(u"Viewer.exe");
  ASSERT_NE(id, 0u);
  EXPECT_EQ(ImageOf(id), kViewer);

  const HANDLE process = OpenProcess(kReadImage | PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
  DWORD code = 0;
  EXPECT_TRUE(GetExitCodeProcess(process, &code));
  EXPECT_EQ(code, STILL_ACTIVE);
  EXPECT_TRUE(TerminateProcess(process, 9));
  EXPECT_EQ(WaitForSingleObject(process, INFINITE), WAIT_OBJECT_0);
  EXPECT_TRUE(GetExitCodeProcess(process, &code));
  EXPECT_EQ(code, 9u);
  EXPECT_FALSE(TerminateProcess(process, 9));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(process);
  EXPECT_EQ(IdOf(u"Viewer.exe"), 0u);
  EXPECT_EQ(Journal("exits").at(0)["image"], "C:\\App\\Viewer.exe");
}

TEST_F(ProcessesTest, HandleDoesOnlyWhatItWasOpenedFor) {
  Start(R"({"running": ["C:\\Café\\x.exe"]})");
  const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, winhost::kFirstMadeUpId);
  WCHAR path[MAX_PATH];
  EXPECT_EQ(GetModuleFileNameExW(process, nullptr, path, MAX_PATH), 0u);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  CloseHandle(process);
}

TEST_F(ProcessesTest, MadeUpProcessEndsForGood) {
  Start(R"({"running": ["C:\\a.exe", "C:\\b.exe"]})");
  const DWORD id = IdOf(u"b.exe");
  EXPECT_EQ(ImageOf(id), u"C:\\b.exe");
  EXPECT_TRUE(End(id));
  EXPECT_EQ(IdOf(u"b.exe"), 0u);
  EXPECT_NE(IdOf(u"a.exe"), 0u);
}

struct Refusal {
  DWORD id;
  DWORD error;
};

TEST_F(ProcessesTest, NobodysIdAndTheSystemsOwnAreRefused) {
  Start();
  for (const auto [id, error] : {Refusal{0, ERROR_INVALID_PARAMETER}, Refusal{4, ERROR_ACCESS_DENIED},
                                 Refusal{0x7FFFFFF0, ERROR_INVALID_PARAMETER}}) {
    EXPECT_EQ(OpenProcess(kReadImage, FALSE, id), nullptr);
    EXPECT_EQ(GetLastError(), error) << id;
  }
}

TEST_F(ProcessesTest, PlannedFaultGuardsOneImage) {
  Start(R"({"running": ["C:\\a.exe", "C:\\b.exe"],
            "faults": [{"operation": "OpenProcess", "subject": "b.exe", "nth": 0, "error": 5}]})");
  EXPECT_EQ(ImageOf(IdOf(u"a.exe")), u"C:\\a.exe");
  EXPECT_EQ(ImageOf(IdOf(u"b.exe")), u"");
}

TEST_F(ProcessesTest, LimitedQueryCameWithVista) {
  Start(R"({"version": {"major": 5, "minor": 1, "build": 2600}, "windows_bits": 32, "running": ["C:\\a.exe"]})");
  EXPECT_EQ(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, winhost::kFirstMadeUpId), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(GetProcAddress(GetModuleHandleW(TEXT("Kernel32.dll")), "QueryFullProcessImageNameW"), nullptr);
}

TEST_F(ProcessesTest, LimitedQueryReadsTheImageName) {
  Start(R"({"running": ["C:\\a.exe"]})");
  const auto query = reinterpret_cast<QueryImageName>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(TEXT("Kernel32.dll")), "QueryFullProcessImageNameW")));
  ASSERT_NE(query, nullptr);
  const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, winhost::kFirstMadeUpId);
  WCHAR path[9] = {};
  DWORD chars = 8;
  EXPECT_FALSE(query(process, 0, path, &chars));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
  chars = 9;
  EXPECT_TRUE(query(process, 0, path, &chars));
  EXPECT_EQ(chars, 8u);
  EXPECT_EQ(std::u16string(path), u"C:\\a.exe");
  CloseHandle(process);
}

TEST_F(ProcessesTest, SnapshotEntryNeedsItsSize) {
  Start();
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry = {};
  EXPECT_FALSE(Process32FirstW(snapshot, &entry));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_LENGTH});
  CloseHandle(snapshot);
}

class LaunchTest : public ProcessesTest {};

TEST_F(LaunchTest, WhatCannotBeStartedIsJournalledWithItsError) {
  Start();
  Put("C:\\App\\text.exe", "just text");
  EXPECT_EQ(Launch(TEXT("C:\\App\\text.exe")), DWORD{ERROR_BAD_EXE_FORMAT});
  EXPECT_EQ(Launch(TEXT("C:\\App\\missing.exe")), DWORD{ERROR_FILE_NOT_FOUND});
  EXPECT_EQ(Launch(TEXT("C:\\No\\Such\\x.exe")), DWORD{ERROR_PATH_NOT_FOUND});
  const auto lines = Journal("launches");
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0]["result"], ERROR_BAD_EXE_FORMAT);
  EXPECT_EQ(lines[0]["by"], "test");
  EXPECT_FALSE(lines[0].contains("child"));
}

TEST_F(LaunchTest, ParametersReachAPlainLinuxProgramAsWords) {
  Start();
  PutProgram("C:\\App\\touch.exe", "/usr/bin/touch");
  const std::u16string target = winhost::Wide((folder_ / "a b").string());
  ASSERT_EQ(Launch(TEXT("C:\\App\\touch.exe"), (u"\"" + target + u"\"").c_str()), 0u);
  for (int i = 0; i < 1000 && IdOf(u"touch.exe"); ++i) usleep(1000);
  EXPECT_TRUE(std::filesystem::exists(folder_ / "a b"));
}

TEST_F(LaunchTest, NobodyWaitsForAProgramThatNeverSaysItIsUp) {
  Start();
  PutProgram("C:\\App\\sleep.exe", "/bin/sleep");
  const auto before = std::chrono::steady_clock::now();
  ASSERT_EQ(Launch(TEXT("C:\\App\\sleep.exe"), TEXT("1000")), 0u);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(5));
  EXPECT_TRUE(End(IdOf(u"sleep.exe")));
}

TEST_F(LaunchTest, NoChildOfThisProcessIsLeft) {
  Start();
  PutProgram("C:\\App\\true.exe", "/bin/true");
  ASSERT_EQ(Launch(TEXT("C:\\App\\true.exe")), 0u);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

struct ShellCase {
  const WCHAR* verb;
  const WCHAR* file;
  INT_PTR result;
};

TEST_F(LaunchTest, ShellAnswersInItsOwnNumbers) {
  Start(R"({"faults": [{"operation": "ShellExecuteW", "subject": "denied", "error": 5}]})");
  Put("C:\\App\\page.html", "");
  Put("C:\\App\\denied.exe", "");
  Put("C:\\App\\broken.exe", "MZ");
  const ShellCase cases[] = {{nullptr, TEXT("https://example.invalid/a"), 42},
                             {nullptr, TEXT("C:\\App"), 42},
                             {TEXT("open"), TEXT("C:\\App\\page.html"), SE_ERR_NOASSOC},
                             {TEXT("print"), TEXT("C:\\App\\broken.exe"), SE_ERR_NOASSOC},
                             {nullptr, TEXT("C:\\App\\denied.exe"), SE_ERR_ACCESSDENIED},
                             {nullptr, TEXT("\"C:\\App\\broken.exe\""), ERROR_BAD_FORMAT},
                             {nullptr, TEXT("C:\\App\\gone.exe"), SE_ERR_FNF},
                             {nullptr, TEXT("gone"), SE_ERR_FNF},
                             {nullptr, TEXT("C:\\Gone\\Too\\a.exe"), SE_ERR_PNF}};
  for (const auto& [verb, file, result] : cases) {
    const auto answer = reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, verb, file, nullptr, nullptr, SW_HIDE));
    EXPECT_EQ(answer, result) << winhost::Narrow(file);
  }
  EXPECT_EQ(Journal("launches").size(), std::size(cases));
}

TEST_F(LaunchTest, ElevationIsTheMachinesOrAskedFor) {
  Start(R"({"elevated": false})");
  ShellExecuteW(nullptr, nullptr, TEXT("https://a.invalid"), nullptr, nullptr, SW_SHOWNORMAL);
  ShellExecuteW(nullptr, TEXT("runas"), TEXT("https://a.invalid"), nullptr, nullptr, SW_SHOWNORMAL);
  EXPECT_EQ(Journal("launches").at(0)["elevated"], false);
  EXPECT_EQ(Journal("launches").at(1)["elevated"], true);
}

// regsvr32.exe and the sample library are built beside the tests; the program is a real one of the machine.
class RegistrationTest : public LaunchTest {
 protected:
  int Run(const std::string& parameters) {
    const std::u16string wide = winhost::Wide(parameters);
    const auto exits = Journal("exits").size();
    ShellExecuteW(nullptr, nullptr, TEXT("C:\\Windows\\system32\\regsvr32.exe"), wide.c_str(), nullptr, SW_HIDE);
    for (int i = 0; i < 10'000 && Journal("exits").size() == exits; ++i) usleep(1000);
    const auto lines = Journal("exits");
    return lines.size() > exits ? lines.back()["code"].get<int>() : -1;
  }

  void PutSample(const char* windows_path) {
    const auto tests = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::filesystem::create_directories(Disk(windows_path).parent_path());
    std::filesystem::copy_file(tests / "sample_library.so", Disk(windows_path));
  }
};

TEST_F(RegistrationTest, LibraryIsLoadedAndItsEntryPointCalled) {
  Start();
  ASSERT_TRUE(winhost::HostProgramsFolder());
  PutSample("C:\\My App\\Ext.dll");
  Put("C:\\My App\\text.dll", "no library");
  EXPECT_EQ(Run("/s \"C:\\My App\\Ext.dll\""), 0);
  EXPECT_EQ(Run("/u /s \"C:\\My App\\Ext.dll\""), 5);  // the sample refuses to be unregistered
  EXPECT_EQ(Run("/s \"C:\\My App\\missing.dll\""), 3);
  EXPECT_EQ(Run("/s \"C:\\My App\\text.dll\""), 3);
  EXPECT_EQ(Run("/s"), 1);
  EXPECT_EQ(Journal("debugger").at(0)["text"], "regsvr32: registered C:\\My App\\Ext.dll");
}

TEST_F(RegistrationTest, OneAfterTheOtherWhereLaunchesWait) {
  Start(R"({"launches_wait": true})");
  PutProgram("C:\\App\\sleep.exe", "/bin/sleep");
  ASSERT_EQ(Launch(TEXT("C:\\App\\sleep.exe"), TEXT("0.1")), 0u);
  EXPECT_EQ(IdOf(u"sleep.exe"), 0u);
  for (std::size_t ended = 1; ended <= 3; ++ended) {
    ShellExecuteW(nullptr, nullptr, TEXT("C:\\Windows\\system32\\regsvr32.exe"), TEXT("/s"), nullptr, SW_HIDE);
    EXPECT_EQ(Journal("exits").size(), ended);
  }
}

TEST_F(RegistrationTest, FilesOfARunningProgramAreNotDeletedButRenamed) {
  Start();
  PutSample("C:\\App\\Ext.dll");
  Put("C:\\wait", "");
  ShellExecuteW(nullptr, nullptr, TEXT("C:\\Windows\\system32\\regsvr32.exe"), TEXT("/s C:\\App\\Ext.dll"), nullptr,
                SW_HIDE);
  EXPECT_FALSE(DeleteFileW(TEXT("C:\\Windows\\system32\\regsvr32.exe")));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  // The program is up; it has the library a moment later.
  for (int i = 0; i < 10'000 && !Exists("C:\\waiting"); ++i) usleep(1000);
  EXPECT_FALSE(DeleteFileW(TEXT("C:\\App\\Ext.dll")));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_TRUE(MoveFileExW(TEXT("C:\\App\\Ext.dll"), TEXT("C:\\App\\Ext.dll.1"), MOVEFILE_REPLACE_EXISTING));
  std::filesystem::remove(Disk("C:\\waiting"));
  for (int i = 0; i < 10'000 && IdOf(u"regsvr32.exe"); ++i) usleep(1000);
  EXPECT_TRUE(DeleteFileW(TEXT("C:\\App\\Ext.dll.1")));
}

}  // namespace
