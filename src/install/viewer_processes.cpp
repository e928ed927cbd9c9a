// The name of psapi.dll itself: version 2's names live in a library that Windows XP lacks.
#define PSAPI_VERSION 1

#include "install/viewer_processes.h"

#include "base/paths.h"
#include "base/unique.h"
#include "install/directories.h"
#include "install/product.h"
#include "base/late_function.h"

#include <psapi.h>
#include <shlwapi.h>
#include <tlhelp32.h>

#include <vector>

namespace vanta {
namespace {

constinit LateFunction<BOOL(WINAPI*)(HANDLE, DWORD, LPWSTR, PDWORD)> query_image_name(TEXT("Kernel32.dll"),
                                                                                      "QueryFullProcessImageNameW");

UniqueHandle OpenForPath(DWORD id) {
  UniqueHandle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id));
  if (!process) process.Reset(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
  return process;
}

String ImagePath(DWORD id) {
  const UniqueHandle process = OpenForPath(id);
  if (!process) return {};
  WCHAR path[MAX_PATH] = {};
  if (GetModuleFileNameExW(process.Get(), nullptr, path, MAX_PATH)) return String(path);
  const auto query = query_image_name.Get();
  DWORD length = MAX_PATH;
  return query && query(process.Get(), 0, path, &length) ? String(path) : String();
}

String Canonical(const String& path) {
  WCHAR canonical[MAX_PATH] = {};
  if (path.size() >= MAX_PATH || !PathCanonicalizeW(canonical, path.c_str())) return {};
  return canonical;
}

std::vector<DWORD> ProcessesInside(const String& folder) {
  std::vector<DWORD> ids;
  const UniqueSnapshot snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return ids;
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more; more = Process32NextW(snapshot.Get(), &entry)) {
    const DWORD id = entry.th32ProcessID;
    if (id != GetCurrentProcessId() && LiesInFolder(Canonical(ImagePath(id)), folder)) ids.push_back(id);
  }
  return ids;
}

void End(DWORD id) {
  const UniqueHandle process(OpenProcess(PROCESS_TERMINATE, FALSE, id));
  if (process) TerminateProcess(process.Get(), 0);
}

}  // namespace

bool LiesInFolder(const String& path, const String& folder) {
  if (path.empty() || folder.empty() || !PathIsPrefixW(folder.c_str(), path.c_str())) return false;
  // A name that only begins like the folder's is none of its files.
  return folder.ends_with(TEXT('\\')) || (path.size() > folder.size() && path[folder.size()] == TEXT('\\'));
}

void TerminateViewerProcesses() {
  const String directory = ReplaceAll(GetInstallDirectory(), TEXT("/"), TEXT("\\"));
  const String viewer = JoinPath(directory, kViewerProgram);
  if (!FileExists(viewer)) return;
  for (const DWORD id : ProcessesInside(ParentPath(Canonical(viewer)))) End(id);
}

}  // namespace vanta
