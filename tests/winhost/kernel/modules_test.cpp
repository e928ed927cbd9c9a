#include <windows.h>

#include "tests/support/machine_fixture.h"

namespace {

using Number = int (*)();
using SetDirectories = BOOL(WINAPI*)(DWORD);

constexpr const char* kXp = R"({"version": {"major": 5, "minor": 1, "build": 2600}, "windows_bits": 32})";

template <class Function>
Function Get(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

class ModulesTest : public testing_support::OnMachine {
 protected:
  void PutSample(const char* windows_path) {
    const auto tests = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::filesystem::create_directories(Disk(windows_path).parent_path());
    std::filesystem::copy_file(tests / "sample_library.so", Disk(windows_path));
  }
};

TEST_F(ModulesTest, SystemLibrariesAreThereByNameInAnySpelling) {
  Start();
  const HMODULE kernel = GetModuleHandleW(TEXT("KERNEL32"));
  EXPECT_NE(kernel, nullptr);
  EXPECT_EQ(GetModuleHandleW(TEXT("kernel32.DLL")), kernel);
  EXPECT_EQ(LoadLibraryW(TEXT("C:\\Windows\\System32\\kernel32.dll")), kernel);
  EXPECT_EQ(GetModuleHandleW(TEXT("kernel32.")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST_F(ModulesTest, LibraryThatTheProgramDoesNotImportIsThereAfterLoading) {
  Start();
  EXPECT_EQ(GetModuleHandleW(TEXT("Shcore.dll")), nullptr);
  const HMODULE loaded = LoadLibraryW(TEXT("Shcore.dll"));
  EXPECT_NE(loaded, nullptr);
  EXPECT_EQ(GetModuleHandleW(TEXT("Shcore.dll")), loaded);
}

TEST_F(ModulesTest, OlderWindowsLacksLaterLibrariesExportsAndFlags) {
  Start(kXp);
  EXPECT_EQ(LoadLibraryW(TEXT("Shcore.dll")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
  EXPECT_EQ(GetProcAddress(GetModuleHandleW(TEXT("kernel32")), "AddDllDirectory"), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
  EXPECT_EQ(LoadLibraryExW(TEXT("version.dll"), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

TEST_F(ModulesTest, FactsTakeAnExportAway) {
  Start(R"({"missing_exports": ["Kernel32.dll!AddDllDirectory"]})");
  const HMODULE kernel = GetModuleHandleW(TEXT("kernel32"));
  EXPECT_EQ(GetProcAddress(kernel, "AddDllDirectory"), nullptr);
  EXPECT_NE(GetProcAddress(kernel, "SetDefaultDllDirectories"), nullptr);
}

TEST_F(ModulesTest, LibraryInAFileIsRealAndCounted) {
  Start();
  PutSample("C:\\App\\Sample.dll");
  const HMODULE module = LoadLibraryW(TEXT("C:\\app\\SAMPLE"));
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(LoadLibraryW(TEXT("Sample.dll")), module);
  EXPECT_EQ(Get<Number>(module, "AttachCount")(), 1);
  EXPECT_EQ(GetProcAddress(module, "attachcount"), nullptr);
  EXPECT_EQ(GetProcAddress(module, "malloc"), nullptr);  // of what it depends on, not its own
  EXPECT_TRUE(FreeLibrary(module));
  EXPECT_EQ(GetModuleHandleW(TEXT("sample.dll")), module);
  EXPECT_TRUE(FreeLibrary(module));
  EXPECT_EQ(GetModuleHandleW(TEXT("sample.dll")), nullptr);
  EXPECT_FALSE(FreeLibrary(module));
}

TEST_F(ModulesTest, LoadedFileCannotBeDeletedButRenamed) {
  Start();
  PutSample("C:\\App\\Sample.dll");
  const HMODULE module = LoadLibraryW(TEXT("C:\\App\\Sample.dll"));
  ASSERT_NE(module, nullptr);
  EXPECT_FALSE(DeleteFileW(TEXT("C:\\App\\Sample.dll")));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_TRUE(MoveFileExW(TEXT("C:\\App\\Sample.dll"), TEXT("C:\\App\\Sample.dll.1"), MOVEFILE_REPLACE_EXISTING));
  EXPECT_FALSE(DeleteFileW(TEXT("C:\\App\\Sample.dll.1")));
  FreeLibrary(module);
  EXPECT_TRUE(DeleteFileW(TEXT("C:\\App\\Sample.dll.1")));
}

TEST_F(ModulesTest, DllMainMayRefuse) {
  Start();
  PutSample("C:\\App\\Sample.dll");
  Put("C:\\refuse", "");
  EXPECT_EQ(LoadLibraryW(TEXT("C:\\App\\Sample.dll")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_DLL_INIT_FAILED});
  EXPECT_TRUE(DeleteFileW(TEXT("C:\\App\\Sample.dll")));
}

TEST_F(ModulesTest, WhatIsNoLibraryIsRefusedWithItsReason) {
  Start();
  Put("C:\\App\\text.dll", "text");
  EXPECT_EQ(LoadLibraryW(TEXT("C:\\App\\text.dll")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
  EXPECT_EQ(LoadLibraryW(TEXT("C:\\App\\none.dll")), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
  EXPECT_EQ(LoadLibraryW(TEXT("")), nullptr);
  EXPECT_NE(LoadLibraryExW(TEXT("C:\\App\\text.dll"), nullptr, LOAD_LIBRARY_AS_DATAFILE), nullptr);
}

TEST_F(ModulesTest, LibraryPlantedBesideTheProgramLosesToTheSystemFolderOnceThatIsTheDefault) {
  setenv("VANTA_IMAGE", "C:\\Downloads\\setup.exe", 1);
  Start();
  Put("C:\\Downloads\\winmm.dll", "planted");
  EXPECT_EQ(LoadLibraryW(TEXT("winmm.dll")), nullptr);  // the planted one was found
  EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
  EXPECT_NE(LoadLibraryExW(TEXT("winmm.dll"), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), nullptr);
  const HMODULE kernel = GetModuleHandleW(TEXT("kernel32"));
  Put("C:\\Downloads\\wininet.dll", "planted");
  EXPECT_TRUE(Get<SetDirectories>(kernel, "SetDefaultDllDirectories")(LOAD_LIBRARY_SEARCH_SYSTEM32));
  EXPECT_NE(LoadLibraryW(TEXT("wininet.dll")), nullptr);
  unsetenv("VANTA_IMAGE");
}

struct PathCase {
  const char* facts;
  DWORD chars;
  DWORD result;
  DWORD error;
  WCHAR last;  // the character at the buffer's end
};

class ModulePathTest : public ModulesTest, public testing::WithParamInterface<PathCase> {};

TEST_P(ModulePathTest, TruncatesAsItsWindows) {
  setenv("VANTA_IMAGE", "C:\\a.exe", 1);
  Start(GetParam().facts);
  WCHAR path[10];
  std::fill(std::begin(path), std::end(path), TEXT('#'));
  EXPECT_EQ(GetModuleFileNameW(nullptr, path, GetParam().chars), GetParam().result);
  EXPECT_EQ(GetLastError(), GetParam().error);
  EXPECT_EQ(path[GetParam().chars ? GetParam().chars - 1 : 0], GetParam().last);
  unsetenv("VANTA_IMAGE");
}

INSTANTIATE_TEST_SUITE_P(Lengths, ModulePathTest,
                         testing::Values(PathCase{"{}", 9, 8, 0, 0}, PathCase{"{}", 8, 8, ERROR_INSUFFICIENT_BUFFER, 0},
                                         PathCase{kXp, 8, 8, 0, TEXT('e')},
                                         PathCase{"{}", 0, 0, ERROR_INSUFFICIENT_BUFFER, TEXT('#')}));

}  // namespace
