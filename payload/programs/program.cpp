// A stand-in for one of the product's programs: it notes down how it was started and ends. Each start is a line of
// UTF-8 in "VantaPictor\starts.log" of the user's roaming application data: path, command line and "elevated" or
// "plain", parted by tabs. The line is one append, so programs that start together do not mix their lines.
#include <windows.h>
// The shell's headers want the ones above.
#include <shlobj.h>

namespace {

// Command lines have at most 32,767 characters, and so have paths.
constexpr int kLongest = 32768;
struct Line {
  WCHAR text[2 * kLongest + 16];
  char utf8[3 * (2 * kLongest + 16)];
};

bool IsElevated() {
  SID_IDENTIFIER_AUTHORITY authority = {SECURITY_NT_AUTHORITY};
  PSID administrators = nullptr;
  if (!AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0,
                                &administrators)) {
    return false;
  }
  BOOL member = FALSE;
  const bool known = CheckTokenMembership(nullptr, administrators, &member) != FALSE;
  FreeSid(administrators);
  return known && member;
}

// An empty name when there is no such folder.
void FindLog(WCHAR (&path)[MAX_PATH]) {
  constexpr WCHAR folder[] = TEXT("\\VantaPictor");
  constexpr WCHAR file[] = TEXT("\\starts.log");
  const bool found = SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, path) == S_OK;
  if (!found || lstrlenW(path) + sizeof folder / sizeof(WCHAR) + sizeof file / sizeof(WCHAR) > MAX_PATH) {
    path[0] = 0;
    return;
  }
  lstrcatW(path, folder);
  CreateDirectoryW(path, nullptr);
  lstrcatW(path, file);
}

void Compose(Line& line) {
  if (!GetModuleFileNameW(nullptr, line.text, kLongest)) line.text[0] = 0;
  lstrcatW(line.text, TEXT("\t"));
  lstrcatW(line.text, GetCommandLineW());
  lstrcatW(line.text, IsElevated() ? TEXT("\televated\r\n") : TEXT("\tplain\r\n"));
}

bool Append(const WCHAR* path, Line& line) {
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, line.text, lstrlenW(line.text), line.utf8, sizeof line.utf8, nullptr, nullptr);
  const HANDLE file = CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool good = WriteFile(file, line.utf8, static_cast<DWORD>(bytes), &written, nullptr) != FALSE;
  CloseHandle(file);
  return good;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  WCHAR log[MAX_PATH] = {};
  FindLog(log);
  auto* line = static_cast<Line*>(LocalAlloc(LMEM_FIXED, sizeof(Line)));
  if (!line) return 1;
  Compose(*line);
  const bool noted = log[0] && Append(log, *line);
  LocalFree(line);
  return noted ? 0 : 1;
}
