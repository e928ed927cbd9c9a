#include "report/log/logger.h"

#include "base/paths.h"
#include "report/log/log_line.h"

#include <shlobj.h>

#include <new>

namespace vanta {
namespace {

enum LogLevel : DWORD { kToDebugger = 1, kToFile = 2 };

constinit Once once;
constinit CxLogger* instance = nullptr;

String ReadSetting(const String& file, const String& section, const WCHAR* key, const WCHAR* fallback) {
  WCHAR value[MAX_PATH] = {};
  GetPrivateProfileStringW(section.c_str(), key, fallback, value, MAX_PATH, file.c_str());
  return value;
}

DWORD ReadLevel(const String& file, const String& program) {
  const UINT own = GetPrivateProfileIntW(program.c_str(), TEXT("log"), 0, file.c_str());
  return GetPrivateProfileIntW(TEXT("*"), TEXT("log"), static_cast<INT>(own), file.c_str());
}

}  // namespace

CxLogger* CxLogger::Instance() {
  once.Run([] { instance = new (std::nothrow) CxLogger; });
  return instance;
}

CxLogger::CxLogger() {
  const String module = ModulePath();
  const String program = FileNameOf(module);
  const String settings = JoinPath(module, TEXT("..\\xLogConfig.ini"));
  if (settings.empty()) return;
  const DWORD level = ReadLevel(settings, program);
  filter_ = ReadSetting(settings, program, TEXT("filter"), TEXT(""));
  debugger_output_ = level & kToDebugger;
  file_output_ = level & kToFile;
  if (file_output_) OpenFile(program, ReadSetting(settings, program, TEXT("LogDirName"), program.c_str()));
}

CxLogger::~CxLogger() = default;

void CxLogger::OpenFile(const String& program, const String& folder_name) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const String app_data = GetSpecialFolder(CSIDL_APPDATA, false);
  // Without the application-data folder the paths would be relative to wherever the setup was started from.
  if (!app_data.empty()) {
    const String folder = JoinPath(JoinPath(app_data, folder_name), TEXT("Logs"));
    MakeDirectories(folder);
    const String path = JoinPath(folder, program + TEXT(".log"));
    file_.Reset(
        CreateFileW(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  }
  if (!file_) {
    file_output_ = 0;
    return;
  }
  SetFilePointer(file_.Get(), 0, nullptr, FILE_END);
}

bool CxLogger::Passes(const WCHAR* tag) const { return LogFilterPasses(filter_, tag); }

void CxLogger::Write(const WCHAR* tag, StringView message) {
  if (!IsOn()) return;
  const Guard guard(lock_);
  if (Passes(tag)) Output(tag, message);
}

void CxLogger::Output(const WCHAR* tag, StringView message) {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  const String line = LogLine(LogTime(now), tag ? StringView(tag) : StringView(), message);
  if (debugger_output_) OutputDebugStringW(line.c_str());
  if (!file_output_) return;
  // Another program may have appended through its own handle meanwhile.
  SetFilePointer(file_.Get(), 0, nullptr, FILE_END);
  DWORD written = 0;
  WriteFile(file_.Get(), line.data(), static_cast<DWORD>(line.size() * sizeof(WCHAR)), &written, nullptr);
}

}  // namespace vanta
