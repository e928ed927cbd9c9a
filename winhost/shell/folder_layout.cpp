#include "winhost/shell/folder_layout.h"

#include <fcntl.h>
#include <shlobj.h>
#include <sys/file.h>
#include <unistd.h>
#include <windows.h>

#include <mutex>

#include "winhost/kernel/paths.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

// In the paths: %U the user's profile, %A what all users share, %W Windows, %P Program Files of this process's bitness,
// %X the 32-bit one. An empty second path: as the first.
struct Row {
  int csidl;
  const char* name;
  const char16_t* before_vista;
  const char16_t* since_vista;
};

constexpr Row kRows[] = {
    {CSIDL_DESKTOP, "CSIDL_DESKTOP", u"%U\\Desktop", u""},
    {CSIDL_PROGRAMS, "CSIDL_PROGRAMS", u"%U\\Start Menu\\Programs",
     u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs"},
    {CSIDL_PERSONAL, "CSIDL_PERSONAL", u"%U\\My Documents", u"%U\\Documents"},
    {CSIDL_FAVORITES, "CSIDL_FAVORITES", u"%U\\Favorites", u""},
    {CSIDL_STARTUP, "CSIDL_STARTUP", u"%U\\Start Menu\\Programs\\Startup",
     u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {CSIDL_RECENT, "CSIDL_RECENT", u"%U\\Recent", u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Recent"},
    {CSIDL_SENDTO, "CSIDL_SENDTO", u"%U\\SendTo", u"%U\\AppData\\Roaming\\Microsoft\\Windows\\SendTo"},
    {CSIDL_STARTMENU, "CSIDL_STARTMENU", u"%U\\Start Menu", u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu"},
    {CSIDL_MYMUSIC, "CSIDL_MYMUSIC", u"%U\\My Documents\\My Music", u"%U\\Music"},
    {CSIDL_MYVIDEO, "CSIDL_MYVIDEO", u"%U\\My Documents\\My Videos", u"%U\\Videos"},
    {CSIDL_DESKTOPDIRECTORY, "CSIDL_DESKTOPDIRECTORY", u"%U\\Desktop", u""},
    {CSIDL_FONTS, "CSIDL_FONTS", u"%W\\Fonts", u""},
    {CSIDL_TEMPLATES, "CSIDL_TEMPLATES", u"%U\\Templates", u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Templates"},
    {CSIDL_COMMON_STARTMENU, "CSIDL_COMMON_STARTMENU", u"%A\\Start Menu", u"%A\\Microsoft\\Windows\\Start Menu"},
    {CSIDL_COMMON_PROGRAMS, "CSIDL_COMMON_PROGRAMS", u"%A\\Start Menu\\Programs",
     u"%A\\Microsoft\\Windows\\Start Menu\\Programs"},
    {CSIDL_COMMON_STARTUP, "CSIDL_COMMON_STARTUP", u"%A\\Start Menu\\Programs\\Startup",
     u"%A\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {CSIDL_COMMON_DESKTOPDIRECTORY, "CSIDL_COMMON_DESKTOPDIRECTORY", u"%A\\Desktop", u"C:\\Users\\Public\\Desktop"},
    {CSIDL_APPDATA, "CSIDL_APPDATA", u"%U\\Application Data", u"%U\\AppData\\Roaming"},
    {CSIDL_LOCAL_APPDATA, "CSIDL_LOCAL_APPDATA", u"%U\\Local Settings\\Application Data", u"%U\\AppData\\Local"},
    {CSIDL_INTERNET_CACHE, "CSIDL_INTERNET_CACHE", u"%U\\Local Settings\\Temporary Internet Files",
     u"%U\\AppData\\Local\\Microsoft\\Windows\\Temporary Internet Files"},
    {CSIDL_COOKIES, "CSIDL_COOKIES", u"%U\\Cookies", u"%U\\AppData\\Roaming\\Microsoft\\Windows\\Cookies"},
    {CSIDL_HISTORY, "CSIDL_HISTORY", u"%U\\Local Settings\\History",
     u"%U\\AppData\\Local\\Microsoft\\Windows\\History"},
    {CSIDL_COMMON_APPDATA, "CSIDL_COMMON_APPDATA", u"%A\\Application Data", u"%A"},
    {CSIDL_WINDOWS, "CSIDL_WINDOWS", u"%W", u""},
    {CSIDL_SYSTEM, "CSIDL_SYSTEM", u"%W\\system32", u""},
    {CSIDL_PROGRAM_FILES, "CSIDL_PROGRAM_FILES", u"%P", u""},
    {CSIDL_MYPICTURES, "CSIDL_MYPICTURES", u"%U\\My Documents\\My Pictures", u"%U\\Pictures"},
    {CSIDL_PROFILE, "CSIDL_PROFILE", u"%U", u""},
    {CSIDL_SYSTEMX86, "CSIDL_SYSTEMX86", u"%S", u""},
    {CSIDL_PROGRAM_FILESX86, "CSIDL_PROGRAM_FILESX86", u"%X", u""},
    {CSIDL_PROGRAM_FILES_COMMON, "CSIDL_PROGRAM_FILES_COMMON", u"%P\\Common Files", u""},
    {CSIDL_PROGRAM_FILES_COMMONX86, "CSIDL_PROGRAM_FILES_COMMONX86", u"%X\\Common Files", u""},
    {CSIDL_COMMON_DOCUMENTS, "CSIDL_COMMON_DOCUMENTS", u"%A\\Documents", u"C:\\Users\\Public\\Documents"},
};

const Row* FindRow(int csidl) {
  for (const Row& row : kRows) {
    if (row.csidl == csidl) return &row;
  }
  return nullptr;
}

bool SinceVista(const Facts& facts) { return facts.AtLeast(6, 0); }

std::u16string Base(const Facts& facts, char16_t letter) {
  const bool wow = facts.windows_bits == 64;
  const std::u16string program_files = u"C:\\Program Files", program_files_x86 = program_files + u" (x86)";
  switch (letter) {
    case u'U':
      return ProfileFolder(facts);
    case u'A':
      return SinceVista(facts) ? u"C:\\ProgramData" : u"C:\\Documents and Settings\\All Users";
    case u'W':
      return WindowsFolder(facts);
    case u'S':
      return WindowsFolder(facts) + (wow ? u"\\SysWOW64" : u"\\system32");
    case u'P':
      return wow && facts.process_bits == 32 ? program_files_x86 : program_files;
    default:
      return wow ? program_files_x86 : program_files;
  }
}

struct StandardFolders {
  explicit StandardFolders(Machine&) {}
  std::once_flag made;  // apart from the machine's own lock, which the file system takes while they are made
};

void MakeFolder(const std::u16string& path) {
  std::error_code ignored;
  // From the drive down, so that each part is found in whatever case it is there already.
  for (std::size_t slash = path.find(u'\\'); slash != path.npos;) {
    slash = path.find(u'\\', slash + 1);
    if (const auto folder = LinuxPath(path.substr(0, slash))) std::filesystem::create_directory(*folder, ignored);
  }
}

void MakeAll(const Facts& facts) {
  // The same spelling on disk for every version, as programs of the Linux side look there too.
  for (const char16_t* folder : {u"C:\\Windows\\System32", u"C:\\Windows\\Temp", u"C:\\Program Files"})
    MakeFolder(folder);
  if (facts.windows_bits == 64) {
    MakeFolder(u"C:\\Windows\\SysWOW64");
    MakeFolder(u"C:\\Program Files (x86)");
  }
  for (const Row& row : kRows) {
    const auto path = FolderPath(facts, row.csidl);
    if (path && !path->empty()) MakeFolder(*path);
  }
  const std::u16string user = ProfileFolder(facts);
  MakeFolder(user + u"\\Downloads");
  MakeFolder(user + (SinceVista(facts) ? u"\\AppData\\Local\\Temp" : u"\\Local Settings\\Temp"));
}

}  // namespace

const char* FolderName(int csidl) {
  const Row* row = FindRow(csidl);
  return row ? row->name : nullptr;
}

std::u16string WindowsFolder(const Facts& facts) { return SinceVista(facts) ? u"C:\\Windows" : u"C:\\WINDOWS"; }
std::u16string SystemFolder(const Facts& facts) { return WindowsFolder(facts) + u"\\system32"; }
std::u16string ProfileFolder(const Facts& facts) {
  return (SinceVista(facts) ? u"C:\\Users\\" : u"C:\\Documents and Settings\\") + Wide(facts.user);
}

std::optional<std::u16string> FolderPath(const Facts& facts, int csidl) {
  const Row* row = FindRow(csidl);
  if (!row) return std::nullopt;
  if (const auto fact = facts.folders.find(row->name); fact != facts.folders.end()) return Wide(fact->second);
  const std::u16string_view pattern = SinceVista(facts) && *row->since_vista ? row->since_vista : row->before_vista;
  if (!pattern.starts_with(u'%')) return std::u16string(pattern);
  return Base(facts, pattern[1]).append(pattern.substr(2));
}

void MakeStandardFolders(Machine& machine) {
  const int marker = open((machine.folder() / ".folders").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (marker < 0) return;
  flock(marker, LOCK_EX);  // given up with the descriptor
  char made = 0;
  if (read(marker, &made, 1) == 0) {
    MakeAll(machine.facts());
    [[maybe_unused]] const ssize_t written = write(marker, "1", 1);
  }
  close(marker);
}

void EnsureStandardFolders() {
  Machine& machine = Machine::Current();
  std::call_once(machine.Get<StandardFolders>().made, MakeStandardFolders, std::ref(machine));
}

}  // namespace winhost
