#include "app/library_search.h"

#include "tests/support/machine_fixture.h"

namespace {

class LibrarySearchTest : public testing_support::OnMachine {};

TEST_F(LibrarySearchTest, OldWindowsHasTheLateLibrariesBeforeAnybodyCanPlantThem) {
  Start(R"({"version": "xp", "windows_bits": 32})");
  ASSERT_EQ(GetModuleHandleW(TEXT("wininet.dll")), nullptr);
  vanta::RestrictLibrarySearch();
  const HMODULE loaded = GetModuleHandleW(TEXT("wininet.dll"));
  WCHAR path[MAX_PATH] = {};
  ASSERT_NE(loaded, nullptr);
  GetModuleFileNameW(loaded, path, MAX_PATH);
  EXPECT_EQ(winhost::Upcase(path), u"C:\\WINDOWS\\SYSTEM32\\WININET.DLL");
}

TEST_F(LibrarySearchTest, NewerWindowsIsToldWhereToLook) {
  Start();
  vanta::RestrictLibrarySearch();
  EXPECT_EQ(GetModuleHandleW(TEXT("wininet.dll")), nullptr);
}

}  // namespace
