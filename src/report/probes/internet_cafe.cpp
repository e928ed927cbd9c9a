#include "report/probes/internet_cafe.h"

#include <windows.h>
#include <tlhelp32.h>

#include <vector>

#include "base/paths.h"
#include "base/registry.h"
#include "base/text.h"
#include "base/unique.h"

namespace vanta {
namespace {

constexpr size_t kMostSigns = 3;

enum class Keys { AnyOf, AllOf };

// The signs of one family of programs; unused places are null.
struct CafeRow {
  Keys rule;
  const WCHAR* keys[kMostSigns];
  const WCHAR* processes[kMostSigns];
  const WCHAR* service = nullptr;
  const WCHAR* folder = nullptr;
};

constexpr CafeRow kCafes[] = {
    {Keys::AnyOf, {TEXT("SOFTWARE\\Goyoo\\i8desk")}, {TEXT("I8DeskCliSvr.exe")}, TEXT("i8deskclisvr"), nullptr},
    {Keys::AnyOf,
     {TEXT("SOFTWARE\\iCafe8")},
     {TEXT("BarServerView.exe"), TEXT("BarClientView.exe"), TEXT("BarChargesView.exe")},
     nullptr,
     nullptr},
    {Keys::AnyOf,
     {TEXT("SOFTWARE\\Sicent\\wx2004Clt"), TEXT("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\wxClient")},
     {TEXT("clsmn.exe"), TEXT("wxclient.exe")},
     nullptr,
     nullptr},
    {Keys::AnyOf, {TEXT("SOFTWARE\\Hintsoft\\PubwinClient")}, {TEXT("pubwinclient.exe")}, nullptr, nullptr},
    {Keys::AllOf,
     {TEXT("SoftWare\\StntManager"), TEXT("SYSTEM\\CurrentControlSet\\Services\\STVDISKX")},
     {},
     nullptr,
     nullptr},
    {Keys::AllOf,
     {TEXT("SOFTWARE\\EYOOCLIENTSTATUS"), TEXT("SYSTEM\\CurrentControlSet\\Services\\stpdrive"),
      TEXT("SYSTEM\\CurrentControlSet\\Services\\STVDISKX")},
     {},
     nullptr,
     nullptr},
    {Keys::AnyOf, {}, {TEXT("ManagerConsole.exe"), TEXT("HintClient.exe")}, nullptr, TEXT("D:\\HintSoft\\GameMenu")},
    {Keys::AnyOf,
     {TEXT("SOFTWARE\\Rzx"), TEXT("SOFTWARE\\Rzx Network")},
     {TEXT("Rzxclient.exe"), TEXT("RzxMon.exe")},
     nullptr,
     nullptr},
    {Keys::AnyOf,
     {TEXT("SOFTWARE\\QYsoft\\YBTClient"), TEXT("SOFTWARE\\Rainsoft")},
     {TEXT("RsClient.exe"), TEXT("YBTClient.exe")},
     nullptr,
     nullptr},
    {Keys::AnyOf,
     {TEXT("SOFTWARE\\Sunlike")},
     {TEXT("entry.exe"), TEXT("iKeeper.exe"), TEXT("ssp.exe")},
     nullptr,
     nullptr},
};

std::vector<String> RunningExecutables() {
  std::vector<String> names;
  const UniqueSnapshot snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return names;
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more; more = Process32NextW(snapshot.Get(), &entry)) {
    names.emplace_back(entry.szExeFile);
  }
  return names;
}

bool Runs(const std::vector<String>& running, const WCHAR* program) {
  for (const String& name : running) {
    if (EqualAsciiNoCase(name, program)) return true;
  }
  return false;
}

bool KeysSayYes(const CafeRow& row) {
  size_t named = 0;
  size_t open = 0;
  for (const WCHAR* key : row.keys) {
    if (!key) continue;
    ++named;
    if (RegKeyExists(HKEY_LOCAL_MACHINE, key, 0)) ++open;
  }
  return row.rule == Keys::AllOf ? open == named : open > 0;
}

// The names of one batch of services; true when one of them is `service`.
bool BatchHas(const std::vector<ULONGLONG>& batch, DWORD count, const WCHAR* service) {
  const auto* entries = reinterpret_cast<const ENUM_SERVICE_STATUSW*>(batch.data());
  for (DWORD i = 0; i < count; ++i) {
    if (EqualAsciiNoCase(entries[i].lpServiceName, service)) return true;
  }
  return false;
}

bool ServiceExists(const WCHAR* service) {
  const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
  if (!manager) return false;
  // XP hands out no more than 64 KB a call, so the list comes in batches. ULONGLONG keeps the entries aligned.
  constexpr DWORD kBatchBytes = 64 * 1024;
  std::vector<ULONGLONG> batch(kBatchBytes / sizeof(ULONGLONG));
  DWORD resume = 0;
  for (;;) {
    DWORD missing = 0;
    DWORD count = 0;
    const BOOL all = EnumServicesStatusW(manager.Get(), SERVICE_WIN32, SERVICE_STATE_ALL,
                                         reinterpret_cast<ENUM_SERVICE_STATUSW*>(batch.data()), kBatchBytes, &missing,
                                         &count, &resume);
    if (!all && GetLastError() != ERROR_MORE_DATA) return false;
    if (BatchHas(batch, count, service)) return true;
    if (all || count == 0) return false;  // a batch that brings nothing would never end
  }
}

bool IsCafe(const CafeRow& row, const std::vector<String>& running) {
  if (KeysSayYes(row)) return true;
  if (row.folder && DirectoryExists(row.folder)) return true;
  for (const WCHAR* program : row.processes) {
    if (program && Runs(running, program)) return true;
  }
  return row.service && ServiceExists(row.service);
}

}  // namespace

bool IsInternetCafe() {
  const std::vector<String> running = RunningExecutables();
  for (const CafeRow& row : kCafes) {
    if (IsCafe(row, running)) return true;
  }
  return false;
}

}  // namespace vanta
