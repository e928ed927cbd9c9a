#include "tools/vantakit/view/install_views.h"

#include "base/registry.h"
#include "base/unique.h"
#include "install/first_start.h"
#include "install/task_scheduler_1.h"
#include "install/version.h"
#include "report/log/log_line.h"
#include "tools/vantakit/view/json_text.h"

#include <array>
#include <stdexcept>

namespace vantakit {
namespace {

using Json = nlohmann::json;

SYSTEMTIME TimeOf(const Json& list) {
  const auto fields = list.get<std::array<WORD, 7>>();
  SYSTEMTIME time = {};
  time.wYear = fields[0];
  time.wMonth = fields[1];
  time.wDay = fields[2];
  time.wHour = fields[3];
  time.wMinute = fields[4];
  time.wSecond = fields[5];
  time.wMilliseconds = fields[6];
  return time;
}

std::vector<BYTE> StoredBytes(const vanta::String& key, const vanta::String& name) {
  vanta::UniqueKey opened;
  DWORD size = 0;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, opened.Put());
  if (RegQueryValueExW(opened.Get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    throw std::runtime_error("the value was not stored");
  }
  std::vector<BYTE> bytes(size);
  if (size) RegQueryValueExW(opened.Get(), name.c_str(), nullptr, nullptr, bytes.data(), &size);
  return bytes;
}

}  // namespace

Json VersionCompareView(const Json& input) {
  return {{"value", vanta::CompareVersions(TextOf(input, "a"), TextOf(input, "b"))}};
}

Json TaskFirstStartView(const Json& input) {
  const auto start = vanta::FirstStart(TimeOf(input.at("local")), input.at("r").get<int>());
  if (!start) throw std::runtime_error("\"local\" is no time");
  const TASK_TRIGGER daily = vanta::DailyTrigger(*start);
  return {{"startBoundary", vanta::ToUtf8(vanta::StartBoundary(*start))},
          {"v1",
           {{"beginYear", daily.wBeginYear},
            {"beginMonth", daily.wBeginMonth},
            {"beginDay", daily.wBeginDay},
            {"startHour", daily.wStartHour},
            {"startMinute", daily.wStartMinute}}}};
}

Json LogLineView(const Json& input) {
  const vanta::String line = vanta::LogLine(TextOf(input, "time"), TextOf(input, "tag"), TextOf(input, "message"));
  return {{"text", vanta::ToUtf8(line)}, {"utf16le", HexOf(line.data(), line.size() * sizeof(WCHAR))}};
}

Json RegistryStringView(const Json& input) {
  const vanta::String key = TEXT("Software\\VantaPictor\\View");
  const vanta::String name = TEXT("text");
  vanta::RegWriteString(HKEY_LOCAL_MACHINE, key, name, TextOf(input, "text"));
  const std::vector<BYTE> bytes = StoredBytes(key, name);
  return {{"size", bytes.size()}, {"data", HexOf(bytes.data(), bytes.size())}};
}

}  // namespace vantakit
