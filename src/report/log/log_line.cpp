#include "report/log/log_line.h"

#include "base/format.h"

namespace vanta {

String LogLine(StringView time, StringView tag, StringView message) {
  return Format(TEXT("%s [%s] %s\r\n"), time, tag, message.substr(0, kLogMessageLimit));
}

String LogTime(const SYSTEMTIME& local) {
  if (local.wMonth < 1 || local.wMonth > 12 || local.wDay < 1 || local.wDay > 31) return {};
  return Format(TEXT("%04u-%02u-%02u %02u:%02u:%02u"), local.wYear, local.wMonth, local.wDay, local.wHour,
                local.wMinute, local.wSecond);
}

bool LogFilterPasses(StringView filter, const WCHAR* tag) {
  return filter.empty() || (tag && filter.find(tag) != StringView::npos);
}

}  // namespace vanta
