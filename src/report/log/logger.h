// The process's log. It is off unless "xLogConfig.ini" beside the executable switches it on:
//
//   [setup.exe]              the executable's file name as started
//   log=2                    1: debugger output, 2: file, 3: both
//   filter=TagOneTagTwo      only tags that occur in this text
//   LogDirName=Folder        default: the executable's file name
//   [*]
//   log=2                    for every program that shares the file; wins over the program's own
//
// The file is <roaming application data>\<LogDirName>\Logs\<executable's file name>.log, UTF-16LE without a byte-order
// mark, appended to. Any thread may write; lines never interleave. Nothing here ever fails towards the caller.
#pragma once

#include "base/format.h"
#include "base/lock.h"
#include "base/unique.h"

namespace vanta {

class CxLogger {
 public:
  // The one logger, made and configured on first use; none when it could not be allocated.
  static CxLogger* Instance();

  CxLogger();
  virtual ~CxLogger();
  CxLogger(const CxLogger&) = delete;
  CxLogger& operator=(const CxLogger&) = delete;

  // Writes the message as it stands. `tag` names the module that speaks; null counts as none.
  void Write(const WCHAR* tag, StringView message);

  // Writes Format(format, …); nothing is formatted when the line goes nowhere.
  template <class First, class... Rest>
  void Write(const WCHAR* tag, FormatText<std::type_identity_t<First>, std::type_identity_t<Rest>...> format,
             const First& first, const Rest&... rest) {
    if (!IsOn()) return;
    const Guard guard(lock_);
    if (Passes(tag)) Output(tag, Format<First, Rest...>(format, first, rest...));
  }

 private:
  bool IsOn() const { return debugger_output_ || file_output_; }
  bool Passes(const WCHAR* tag) const;
  void Output(const WCHAR* tag, StringView message);
  void OpenFile(const String& program, const String& folder_name);

  DWORD file_output_ = 0;
  DWORD debugger_output_ = 0;
  UniqueFile file_;
  String filter_;
  CriticalSection lock_;
};

// CxLogger::Instance()->Write(…) where there is a logger.
template <class... Args>
void Log(const WCHAR* tag, FormatText<std::type_identity_t<Args>...> format, const Args&... args) {
  CxLogger* const logger = CxLogger::Instance();
  if (!logger) return;
  if constexpr (sizeof...(Args) == 0) {
    logger->Write(tag, format.Get());
  } else {
    logger->Write<Args...>(tag, format, args...);
  }
}

// Who speaks for the setup driver and the installer thread.
inline constexpr const WCHAR* kSetupLogTag = TEXT("App - SetupHelper");

}  // namespace vanta
