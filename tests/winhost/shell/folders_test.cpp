#include <shlobj.h>
#include <windows.h>

#include "tests/support/machine_fixture.h"
#include "winhost/shell/folder_layout.h"

namespace {

using String = std::u16string;

class FoldersTest : public testing_support::OnMachine {
 protected:
  String Folder(int csidl) {
    WCHAR path[MAX_PATH] = u"?";
    result_ = SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path);
    return path;
  }
  HRESULT result_ = S_OK;
};

TEST_F(FoldersTest, NewerWindowsKeepsUsersInUsers) {
  Start(R"({"user": "anna"})");
  const std::pair<int, const WCHAR*> rows[] = {
      {CSIDL_DESKTOP, u"C:\\Users\\anna\\Desktop"},
      {CSIDL_PROGRAMS, u"C:\\Users\\anna\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs"},
      {CSIDL_APPDATA, u"C:\\Users\\anna\\AppData\\Roaming"},
      {CSIDL_COMMON_APPDATA, u"C:\\ProgramData"},
      {CSIDL_PROGRAM_FILES, u"C:\\Program Files (x86)"},
      {CSIDL_SYSTEM, u"C:\\Windows\\system32"},
      {CSIDL_SYSTEMX86, u"C:\\Windows\\SysWOW64"}};
  for (const auto& [csidl, path] : rows) {
    EXPECT_EQ(Folder(csidl), path);
    EXPECT_EQ(result_, S_OK);
    EXPECT_TRUE(PathIsDirectoryW(path)) << winhost::Narrow(path);
  }
  EXPECT_TRUE(Exists("C:\\Users\\anna\\Downloads"));
}

TEST_F(FoldersTest, XpKeepsThemInDocumentsAndSettings) {
  Start(R"({"version": {"major": 5, "minor": 1, "build": 2600}, "windows_bits": 32})");
  EXPECT_EQ(Folder(CSIDL_PROGRAMS), u"C:\\Documents and Settings\\user\\Start Menu\\Programs");
  EXPECT_EQ(Folder(CSIDL_APPDATA), u"C:\\Documents and Settings\\user\\Application Data");
  EXPECT_EQ(Folder(CSIDL_PROGRAM_FILES), u"C:\\Program Files");
  EXPECT_EQ(Folder(CSIDL_SYSTEM), u"C:\\WINDOWS\\system32");
  EXPECT_FALSE(Exists("C:\\WINDOWS") && Exists("C:\\Windows")) << "one folder, whatever its spelling";
}

TEST_F(FoldersTest, A64BitProcessHasItsOwnProgramFiles) {
  Start(R"({"process_bits": 64})");
  EXPECT_EQ(Folder(CSIDL_PROGRAM_FILES), u"C:\\Program Files");
  EXPECT_EQ(Folder(CSIDL_PROGRAM_FILESX86), u"C:\\Program Files (x86)");
}

TEST_F(FoldersTest, FactsMoveAndHideFolders) {
  Start(R"({"folders": {"CSIDL_DESKTOP": "C:\\Elsewhere\\Desk", "CSIDL_PROGRAMS": ""},
            "faults": [{"operation": "SHGetFolderPathW", "subject": "CSIDL_APPDATA", "error": 2147500037}]})");
  EXPECT_EQ(Folder(CSIDL_DESKTOP), u"C:\\Elsewhere\\Desk");
  for (const int csidl : {CSIDL_PROGRAMS, CSIDL_PROGRAMS | CSIDL_FLAG_CREATE, CSIDL_APPDATA}) {
    EXPECT_EQ(Folder(csidl), u"");
    EXPECT_EQ(result_, E_FAIL);
  }
  EXPECT_EQ(Folder(CSIDL_BITBUCKET), u"");
  EXPECT_EQ(result_, E_INVALIDARG);
}

TEST_F(FoldersTest, ARemovedFolderComesBackOnlyWhenAsked) {
  Start();
  Folder(CSIDL_RECENT);
  std::filesystem::remove(Disk("C:\\Users\\user\\Desktop"));
  EXPECT_EQ(Folder(CSIDL_DESKTOP), u"");
  EXPECT_EQ(result_, E_FAIL);
  EXPECT_EQ(Folder(CSIDL_DESKTOP | CSIDL_FLAG_DONT_VERIFY), u"C:\\Users\\user\\Desktop");
  EXPECT_EQ(Folder(CSIDL_DESKTOP | CSIDL_FLAG_CREATE), u"C:\\Users\\user\\Desktop");
  EXPECT_TRUE(Exists("C:\\Users\\user\\Desktop"));
}

TEST_F(FoldersTest, DirectoryChainsAreMadeFromFullPathsOnly) {
  Start(R"({"faults": [{"operation": "SHCreateDirectory", "subject": "Full", "error": 112}]})");
  Put("C:\\file", "");
  const String longest = u"C:\\" + String(120, u'a') + u"\\" + String(123, u'b');
  ASSERT_EQ(longest.size(), 247u);
  const std::pair<String, int> rows[] = {{u"C:\\one\\two\\three", ERROR_SUCCESS},
                                         {u"C:\\one\\two\\three", ERROR_ALREADY_EXISTS},
                                         {u"C:\\one\\four\\", ERROR_SUCCESS},
                                         {u"C:\\file", ERROR_ALREADY_EXISTS},
                                         {u"C:\\file\\inner", ERROR_PATH_NOT_FOUND},
                                         {u"relative\\folder", ERROR_BAD_PATHNAME},
                                         {u"", ERROR_BAD_PATHNAME},
                                         {u"Q:\\none\\such", ERROR_PATH_NOT_FOUND},
                                         {u"C:\\deep\\er/slash", ERROR_PATH_NOT_FOUND},
                                         {longest, ERROR_SUCCESS},
                                         {longest + u"b", ERROR_FILENAME_EXCED_RANGE},
                                         {u"C:\\Full\\x", ERROR_DISK_FULL}};
  for (const auto& [path, error] : rows) {
    EXPECT_EQ(SHCreateDirectory(nullptr, path.c_str()), error) << winhost::Narrow(path);
  }
  EXPECT_TRUE(Exists("C:\\one\\two\\three") && Exists("C:\\one\\four"));
}

TEST_F(FoldersTest, ExistenceIsAskedOfTheFileSystem) {
  Start(R"({"faults": [{"operation": "PathFileExistsW", "subject": "hidden", "nth": 0, "error": 5}]})");
  Put("C:\\d\\f.txt", "x");
  Put("C:\\d\\hidden.txt", "x");
  EXPECT_TRUE(PathFileExistsW(u"C:\\D\\F.TXT") && PathFileExistsW(u"C:\\d") && !PathFileExistsW(u"C:\\d\\g"));
  EXPECT_EQ(PathIsDirectoryW(u"C:\\d"), BOOL{FILE_ATTRIBUTE_DIRECTORY});
  EXPECT_FALSE(PathIsDirectoryW(u"C:\\d\\f.txt") || PathIsDirectoryW(u"") || PathIsDirectoryW(nullptr));
  EXPECT_FALSE(PathFileExistsW(u"C:\\d\\hidden.txt"));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
}

}  // namespace
