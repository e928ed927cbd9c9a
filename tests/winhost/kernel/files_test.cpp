#include "tests/winhost/kernel/file_fixture.h"

#include <io.h>

#include <cerrno>

#include "winhost/kernel/devices.h"
#include "winhost/kernel/file_facts.h"
#include "winhost/kernel/files.h"
#include "winhost/kernel/paths.h"

namespace {

using namespace testing_support;
using String = std::u16string;

TEST_F(FilesTest, DispositionDecidesWhatBecomesOfAFile) {
  struct Row {
    DWORD disposition, on_existing, last_error, on_missing;
    const char* left;
  } rows[] = {
      {CREATE_NEW, ERROR_FILE_EXISTS, 0, 0, "old"},
      {CREATE_ALWAYS, 0, ERROR_ALREADY_EXISTS, 0, ""},
      {OPEN_EXISTING, 0, 0xDEAD, ERROR_FILE_NOT_FOUND, "old"},
      {OPEN_ALWAYS, 0, ERROR_ALREADY_EXISTS, 0, "old"},
      {TRUNCATE_EXISTING, 0, 0xDEAD, ERROR_FILE_NOT_FOUND, ""},
      {9, ERROR_INVALID_PARAMETER, 0, ERROR_INVALID_PARAMETER, "old"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.disposition);
    Put("C:\\a.txt", "old");
    std::filesystem::remove(Disk("C:\\b.txt"));
    EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, row.disposition), row.on_existing);
    if (row.on_existing == 0) {
      EXPECT_EQ(GetLastError(), row.last_error);
    }
    EXPECT_EQ(Contents("C:\\a.txt"), row.left);
    EXPECT_EQ(OpenError(u"C:\\b.txt", GENERIC_WRITE, 0, row.disposition), row.on_missing);
    EXPECT_EQ(Exists("C:\\b.txt"), row.on_missing == 0);
  }
}

TEST_F(FilesTest, PathsThatCannotBeOpenedSayWhy) {
  Put("C:\\dir\\a.txt", "a");
  struct Row {
    String path;
    DWORD error;
  } rows[] = {
      {u"", ERROR_PATH_NOT_FOUND},
      {u"C:\\dir\\none.txt", ERROR_FILE_NOT_FOUND},
      {u"C:\\none\\a.txt", ERROR_PATH_NOT_FOUND},
      {u"C:\\dir\\a.txt\\b", ERROR_PATH_NOT_FOUND},
      {u"Q:\\a.txt", ERROR_PATH_NOT_FOUND},
      {u"C:\\dir", ERROR_ACCESS_DENIED},
      {u"C:\\dir\\", ERROR_PATH_NOT_FOUND},
      {u"C:\\", ERROR_ACCESS_DENIED},
      {u"C:\\dir\\a.txt\\", ERROR_INVALID_NAME},
      {u"C:\\dir\\a.txt:stream", ERROR_INVALID_NAME},
      {u"C:\\dir\\a*.txt", ERROR_INVALID_NAME},
      {u"C:\\dir\\a\x1F.txt", ERROR_INVALID_NAME},
      {u"C:\\dir\\" + String(255, u'x'), ERROR_PATH_NOT_FOUND},
      {u"\\\\?\\C:\\dir\\" + String(256, u'x'), ERROR_INVALID_NAME},
      {u"\\\\?\\C:\\dir/a.txt", ERROR_INVALID_NAME},
      {u"\\\\server\\share\\a.txt", ERROR_BAD_NETPATH},
      {u"\\\\.\\NoSuchDevice", ERROR_FILE_NOT_FOUND},
      {u"C:\\dir\\COM7.txt", ERROR_FILE_NOT_FOUND},
  };
  for (const Row& row : rows)
    EXPECT_EQ(OpenError(row.path, GENERIC_READ, kAll, OPEN_EXISTING), row.error) << winhost::Narrow(row.path);
}

TEST_F(FilesTest, OneFileHasManySpellings) {
  Put("C:\\Dir One\\File.txt", "here");
  ASSERT_TRUE(SetCurrentDirectoryW(u"C:\\dir one"));
  const String spellings[] = {u"c:\\DIR ONE\\FILE.TXT",
                              u"C:/Dir One/file.txt",
                              u"C:\\\\dir one\\\\File.txt",
                              u"C:\\Dir One\\.\\File.txt",
                              u"C:\\x\\..\\Dir One\\File.txt",
                              u"C:\\Dir One\\File.txt. .",
                              u"C:\\Dir One.\\File.txt",
                              u"File.txt",
                              u".\\File.txt",
                              u"..\\Dir One\\File.txt",
                              u"\\Dir One\\File.txt",
                              u"C:File.txt",
                              u"\\\\?\\C:\\Dir One\\File.txt"};
  for (const String& path : spellings) {
    EXPECT_EQ(OpenError(path, GENERIC_READ, kAll, OPEN_EXISTING), 0u) << winhost::Narrow(path);
    EXPECT_EQ(Attributes(path), DWORD{FILE_ATTRIBUTE_ARCHIVE}) << winhost::Narrow(path);
  }
}

TEST_F(FilesTest, LongestPathHas259Characters) {
  CreateDirectoryW(u"C:\\dir", nullptr);
  const String longest = u"C:\\dir\\" + String(200, u'a') + String(52, u'b');
  EXPECT_EQ(OpenError(longest, GENERIC_WRITE, 0, CREATE_NEW), 0u);
  EXPECT_EQ(OpenError(longest + u"c", GENERIC_WRITE, 0, CREATE_NEW), DWORD{ERROR_PATH_NOT_FOUND});
  EXPECT_EQ(ErrorOf(CreateDirectoryW((u"C:\\" + String(245, u'd')).c_str(), nullptr)),
            DWORD{ERROR_FILENAME_EXCED_RANGE});
  EXPECT_EQ(ErrorOf(CreateDirectoryW((u"C:\\" + String(244, u'd')).c_str(), nullptr)), 0u);
}

TEST_F(FilesTest, NamesChangedBehindItsBackAreSeen) {
  Put("C:\\dir\\One.txt", "1");
  EXPECT_EQ(OpenError(u"C:\\dir\\two.txt", GENERIC_READ, kAll, OPEN_EXISTING), DWORD{ERROR_FILE_NOT_FOUND});
  Put("C:\\dir\\two.txt", "2");
  EXPECT_EQ(OpenError(u"C:\\dir\\two.txt", GENERIC_READ, kAll, OPEN_EXISTING), 0u);
  std::filesystem::rename(Disk("C:\\dir\\One.txt"), Disk("C:\\dir\\Three.txt"));
  EXPECT_EQ(Attributes(u"C:\\dir\\one.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(Attributes(u"C:\\dir\\three.TXT"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
  std::filesystem::remove_all(Disk("C:\\dir"));
  EXPECT_EQ(Attributes(u"C:\\dir"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(OpenError(u"C:\\dir\\new.txt", GENERIC_WRITE, 0, CREATE_ALWAYS), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(FilesTest, ReadOnlyHiddenAndSystemFilesAreProtected) {
  Put("C:\\a.txt", "old");
  SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Attributes(u"C:\\a.txt"), DWORD{FILE_ATTRIBUTE_READONLY});
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, OPEN_EXISTING), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_READ, 0, CREATE_ALWAYS), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(ErrorOf(DeleteFileW(u"C:\\a.txt")), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_READ, 0, OPEN_EXISTING), 0u);
  for (const DWORD guard : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
    SetFileAttributesW(u"C:\\a.txt", guard | FILE_ATTRIBUTE_ARCHIVE);
    EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_ALWAYS), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, OPEN_EXISTING), 0u);
    EXPECT_EQ(OpenError(u"C:\\a.txt", GENERIC_WRITE, 0, CREATE_ALWAYS, guard), 0u);
    EXPECT_EQ(Attributes(u"C:\\a.txt"), guard | FILE_ATTRIBUTE_ARCHIVE);
  }
}

TEST_F(FilesTest, AttributesAtCreationAreKept) {
  struct Row {
    DWORD given, kept;
  } rows[] = {{0, FILE_ATTRIBUTE_ARCHIVE},
              {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_ARCHIVE},
              {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE},
              {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE},
              {FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY,
               FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE},
              {FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_ARCHIVE}};
  int number = 0;
  for (const Row& row : rows) {
    const String path = String(u"C:\\") + static_cast<char16_t>(u'a' + number++);
    const HANDLE file = Open(path, GENERIC_WRITE, 0, CREATE_NEW, row.given);
    EXPECT_EQ(Write(file, "a read-only file can be written by its maker"), 0u);
    CloseHandle(file);
    EXPECT_EQ(Attributes(path), row.kept);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Attributes(path), DWORD{FILE_ATTRIBUTE_NORMAL});
  }
}

TEST_F(FilesTest, HandlesDoWhatTheyWereOpenedFor) {
  Put("C:\\a.txt", "0123456789");
  const HANDLE reader = Open(u"C:\\a.txt", GENERIC_READ);
  EXPECT_EQ(Write(reader, "x"), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(SetFilePointer(reader, -3, nullptr, FILE_END), 7u);
  EXPECT_EQ(Read(reader), "789");
  EXPECT_EQ(Read(reader), "");
  EXPECT_EQ(SetFilePointer(reader, -1, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NEGATIVE_SEEK});
  EXPECT_EQ(GetFileSize(reader, nullptr), 10u);
  CloseHandle(reader);
  EXPECT_EQ(Read(reader), "<error>");
  EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});

  const HANDLE appender = Open(u"C:\\a.txt", FILE_APPEND_DATA);
  EXPECT_EQ(Write(appender, "AB"), 0u);
  CloseHandle(appender);
  const HANDLE writer = Open(u"C:\\a.txt", GENERIC_WRITE);
  EXPECT_EQ(Read(writer), "<error>");
  SetFilePointer(writer, 4, nullptr, FILE_BEGIN);
  EXPECT_TRUE(SetEndOfFile(writer));
  CloseHandle(writer);
  EXPECT_EQ(Contents("C:\\a.txt"), "0123");
}

TEST_F(FilesTest, FoldersOpenOnlyForBackup) {
  CreateDirectoryW(u"C:\\dir", nullptr);
  const HANDLE folder = Open(u"C:\\dir\\", GENERIC_READ, kAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION information;
  ASSERT_TRUE(GetFileInformationByHandle(folder, &information));
  EXPECT_EQ(information.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
  EXPECT_EQ(winhost::PathOfFile(folder), u"C:\\dir");
  WCHAR path[MAX_PATH];
  EXPECT_EQ(GetFinalPathNameByHandleW(folder, path, MAX_PATH, 0), 10u);
  EXPECT_EQ(String(path), u"\\\\?\\C:\\dir");
  CloseHandle(folder);
}

TEST_F(FilesTest, NulSwallowsEverything) {
  const HANDLE nul = Open(u"C:\\Windows\\nul.txt", GENERIC_READ | GENERIC_WRITE, kAll, CREATE_ALWAYS);
  EXPECT_EQ(Write(nul, "gone"), 0u);
  EXPECT_EQ(Read(nul), "");
  CloseHandle(nul);
}

TEST_F(FilesTest, AFullDriveRefusesWhatDoesNotFit) {
  Start(R"({"drives": {"D": {"free_bytes": 100}}})");
  const HANDLE file = Open(u"D:\\a.bin", GENERIC_WRITE, 0, CREATE_ALWAYS);
  EXPECT_EQ(Write(file, std::string(60, 'x')), 0u);
  EXPECT_EQ(Write(file, std::string(41, 'x')), DWORD{ERROR_DISK_FULL});
  EXPECT_EQ(Write(file, std::string(40, 'x')), 0u);
  SetFilePointer(file, 0, nullptr, FILE_BEGIN);
  EXPECT_EQ(Write(file, "over what is there"), 0u);
  CloseHandle(file);
  ULARGE_INTEGER free;
  EXPECT_TRUE(GetDiskFreeSpaceExW(u"D:", &free, nullptr, nullptr));
  EXPECT_EQ(free.QuadPart, 0u);
  EXPECT_TRUE(DeleteFileW(u"D:\\a.bin"));
  EXPECT_TRUE(GetDiskFreeSpaceExW(u"D:\\", &free, nullptr, nullptr));
  EXPECT_EQ(free.QuadPart, 100u);
}

TEST_F(FilesTest, DeniedFoldersAndReadOnlyDrivesCanOnlyBeRead) {
  Start(R"({"denied": ["C:\\Locked"], "drives": {"R": {"read_only": true}}})");
  struct Row {
    const char* folder;
    DWORD error;
  } rows[] = {{"C:\\locked", ERROR_ACCESS_DENIED}, {"R:\\sub", ERROR_WRITE_PROTECT}};
  Put("C:\\Lockedout.txt", "a neighbour's name");
  EXPECT_EQ(OpenError(u"C:\\Lockedout.txt", GENERIC_WRITE, 0, OPEN_EXISTING), 0u);
  for (const Row& row : rows) {
    const std::string folder = row.folder == std::string("C:\\locked") ? "C:\\Locked" : row.folder;
    Put(folder + "\\deep\\a.txt", "a");
    const String base = winhost::Wide(row.folder);
    const String file = base + u"\\deep\\a.txt";
    EXPECT_EQ(OpenError(file, GENERIC_READ, kAll, OPEN_EXISTING), 0u);
    EXPECT_EQ(OpenError(file, GENERIC_WRITE, kAll, OPEN_EXISTING), row.error);
    EXPECT_EQ(OpenError(base + u"\\new.txt", GENERIC_WRITE, 0, CREATE_NEW), row.error);
    EXPECT_EQ(ErrorOf(DeleteFileW(file.c_str())), row.error);
    EXPECT_EQ(ErrorOf(MoveFileExW(file.c_str(), u"C:\\b.txt", MOVEFILE_COPY_ALLOWED)), row.error);
    EXPECT_EQ(ErrorOf(CreateDirectoryW((base + u"\\new").c_str(), nullptr)), row.error);
    EXPECT_EQ(ErrorOf(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN)), row.error);
  }
}

TEST_F(FilesTest, PlannedFaultsHitTheNthCallBelowAFolder) {
  Start(R"({"faults": [{"operation": "WriteFile", "subject": "C:\\dir", "nth": 2, "error": 112},
                       {"operation": "CreateFileW", "subject": "taboo", "nth": 0, "error": 32}]})");
  CreateDirectoryW(u"C:\\Dir", nullptr);
  EXPECT_EQ(OpenError(u"C:\\TABOO.txt", GENERIC_WRITE, 0, CREATE_ALWAYS), DWORD{ERROR_SHARING_VIOLATION});
  const HANDLE file = Open(u"C:\\Dir\\a.txt", GENERIC_WRITE, 0, CREATE_ALWAYS);
  EXPECT_EQ(Write(file, "1"), 0u);
  EXPECT_EQ(Write(file, "2"), DWORD{ERROR_DISK_FULL});
  EXPECT_EQ(Write(file, "3"), 0u);
  CloseHandle(file);
  EXPECT_EQ(Contents("C:\\Dir\\a.txt"), "13");
}

TEST_F(FilesTest, AccessAsksForTheReadOnlyAttributeAlone) {
  Put("C:\\dir\\a.txt", "a");
  SetFileAttributesW(u"C:\\dir\\a.txt", FILE_ATTRIBUTE_READONLY);
  SetFileAttributesW(u"C:\\dir", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(_waccess(u"C:\\dir\\a.txt", 4), 0);
  EXPECT_EQ(_waccess(u"C:\\dir\\a.txt", 6), -1);
  EXPECT_EQ(errno, EACCES);
  EXPECT_EQ(_waccess(u"C:\\dir", 2), 0);
  EXPECT_EQ(_waccess(u"C:\\none", 0), -1);
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(FilesTest, LinuxAndWindowsPathsMirrorEachOther) {
  Put("C:\\Dir\\a.txt", "a");
  std::filesystem::create_directories(folder_ / "UNC/srv/share");
  EXPECT_EQ(winhost::LinuxPath(u"c:\\DIR\\A.TXT"), Disk("C:\\Dir\\a.txt"));
  EXPECT_EQ(winhost::LinuxPath(u"C:\\dir\\New.txt"), Disk("C:\\Dir\\New.txt"));
  EXPECT_EQ(winhost::LinuxPath(u"C:\\none\\New.txt"), std::nullopt);
  EXPECT_EQ(winhost::LinuxPath(u"Z:\\usr"), std::filesystem::path("/usr"));
  EXPECT_EQ(winhost::WindowsPath(Disk("C:\\Dir\\a.txt")), u"C:\\Dir\\a.txt");
  EXPECT_EQ(winhost::WindowsPath(folder_ / "C"), u"C:\\");
  EXPECT_EQ(winhost::WindowsPath("/usr/lib/"), u"Z:\\usr\\lib");
  EXPECT_EQ(winhost::LinuxPath(u"\\\\SRV\\Share\\x"), folder_ / "UNC/srv/share/x");
  EXPECT_EQ(winhost::WindowsPath(folder_ / "UNC/srv/share/x"), u"\\\\srv\\share\\x");
}

class Adder final : public winhost::Device {
 public:
  static std::shared_ptr<Device> Open(std::u16string_view name, DWORD, DWORD* error) {
    if (name == u"Busy") *error = ERROR_ACCESS_DENIED;
    return name == u"Adder" ? std::make_shared<Adder>() : nullptr;
  }
  DWORD Control(DWORD code, std::span<const BYTE> in, std::span<BYTE> out, DWORD* returned) override {
    if (in.empty() || out.empty()) return ERROR_INSUFFICIENT_BUFFER;
    out[0] = static_cast<BYTE>(in[0] + code);
    *returned = 1;
    return 0;
  }
};

TEST_F(FilesTest, DevicesAnswerControlCodes) {
  winhost::AddDeviceOpener(&Adder::Open);
  BYTE in = 40, out = 0;
  DWORD returned = 9;
  const HANDLE device = Open(u"\\\\.\\Adder", 0);
  EXPECT_TRUE(DeviceIoControl(device, 2, &in, 1, &out, 1, &returned, nullptr));
  EXPECT_EQ(out, 42);
  EXPECT_EQ(returned, 1u);
  EXPECT_EQ(ErrorOf(DeviceIoControl(device, 2, nullptr, 0, &out, 1, &returned, nullptr)),
            DWORD{ERROR_INSUFFICIENT_BUFFER});
  CloseHandle(device);
  EXPECT_EQ(OpenError(u"\\\\.\\Busy", 0, 0, OPEN_EXISTING), DWORD{ERROR_ACCESS_DENIED});
  const HANDLE file = Open(u"C:\\a", GENERIC_WRITE, 0, CREATE_ALWAYS);
  EXPECT_EQ(ErrorOf(DeviceIoControl(file, 2, &in, 1, &out, 1, &returned, nullptr)), DWORD{ERROR_INVALID_FUNCTION});
  CloseHandle(file);
}

TEST_F(FilesTest, ViewsShowTheFile) {
  Put("C:\\a.txt", "0123456789");
  const HANDLE file = Open(u"C:\\a.txt", GENERIC_READ | GENERIC_WRITE);
  EXPECT_EQ(CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 11, nullptr), nullptr);
  const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READWRITE, 0, 0, nullptr);
  CloseHandle(file);
  auto* view = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(std::string(view, 10), "0123456789");
  view[0] = 'X';
  EXPECT_TRUE(UnmapViewOfFile(view));
  EXPECT_FALSE(UnmapViewOfFile(view));
  CloseHandle(mapping);
  EXPECT_EQ(Contents("C:\\a.txt"), "X123456789");
}

TEST_F(FilesTest, FactsListWhatWindowsWouldShow) {
  Put("C:\\b\\Two.txt", "22");
  Put("C:\\a.txt", "1");
  SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN);
  const std::vector<winhost::FileFact> facts = winhost::ListFiles(u"C:\\");
  ASSERT_EQ(facts.size(), 3u);
  EXPECT_EQ(facts[0].path, u"C:\\a.txt");
  EXPECT_EQ(facts[0].attributes, DWORD{FILE_ATTRIBUTE_HIDDEN});
  EXPECT_EQ(facts[1].path, u"C:\\b");
  EXPECT_TRUE(facts[1].directory);
  EXPECT_EQ(facts[2].path, u"C:\\b\\Two.txt");
  EXPECT_EQ(facts[2].size, 2u);
  EXPECT_EQ(winhost::ListDrives(), std::vector<String>{u"C:\\"});
}

}  // namespace
