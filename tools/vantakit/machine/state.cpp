#include "tools/vantakit/machine/state.h"

#include <openssl/evp.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "winhost/kernel/file_facts.h"
#include "winhost/kernel/paths.h"
#include "winhost/kernel/process_table.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"
#include "winhost/registry/dump.h"
#include "winhost/shell/link_file.h"
#include "winhost/tasks/task_store.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;
using winhost::FileFact;
using winhost::Machine;
using winhost::Narrow;

std::string Bytes(const std::u16string& windows_path) {
  const auto path = winhost::LinuxPath(windows_path);
  std::ifstream file(path.value_or(""), std::ios::binary | std::ios::ate);
  std::string bytes(file ? static_cast<size_t>(file.tellg()) : 0, '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

std::string Sha256(const std::string& bytes) {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned length = 0;
  EVP_Digest(bytes.data(), bytes.size(), digest, &length, EVP_sha256(), nullptr);
  std::string hex;
  for (unsigned i = 0; i < length; ++i) {
    constexpr char kDigits[] = "0123456789abcdef";
    hex += kDigits[digest[i] >> 4];
    hex += kDigits[digest[i] & 15];
  }
  return hex;
}

// "2024-03-05T14:07:09.1230000Z"
std::string TimeText(std::uint64_t time_100ns) {
  const auto seconds = static_cast<time_t>(static_cast<std::int64_t>(time_100ns / 10'000'000) - 11'644'473'600);
  tm broken{};
  gmtime_r(&seconds, &broken);
  char text[64];
  const size_t length = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &broken);
  std::snprintf(text + length, sizeof text - length, ".%07uZ", static_cast<unsigned>(time_100ns % 10'000'000));
  return text;
}

Json AttributeNames(std::uint32_t attributes) {
  constexpr std::pair<std::uint32_t, const char*> kNames[] = {
      {0x1, "readonly"}, {0x2, "hidden"}, {0x4, "system"}, {0x10, "directory"}, {0x20, "archive"}};
  Json names = Json::array();
  for (const auto& [bit, name] : kNames) {
    if (attributes & bit) names.push_back(name);
  }
  return names;
}

bool EndsWith(const std::u16string& path, std::u16string_view end) {
  return path.size() >= end.size() &&
         winhost::EqualNoCase(std::u16string_view(path).substr(path.size() - end.size()), end);
}

// What every machine has from its making: the system's own programs.
bool IsSystemsOwn(const FileFact& file) {
  return EndsWith(file.path, u"\\Windows\\System32\\regsvr32.exe") ||
         EndsWith(file.path, u"\\Windows\\SysWOW64\\regsvr32.exe");
}

std::vector<FileFact> AllFiles() {
  std::vector<FileFact> all;
  for (const std::u16string& drive : winhost::ListDrives()) {
    for (FileFact& file : winhost::ListFiles(drive)) {
      if (!IsSystemsOwn(file)) all.push_back(std::move(file));
    }
  }
  return all;
}

Json FilesState(const std::vector<FileFact>& all) {
  Json files = Json::array();
  for (const FileFact& file : all) {
    if (file.directory) continue;
    files.push_back({{"path", Narrow(file.path)},
                     {"size", file.size},
                     {"sha256", Sha256(Bytes(file.path))},
                     {"attributes", AttributeNames(file.attributes)},
                     {"created", TimeText(file.creation)},
                     {"modified", TimeText(file.modification)}});
  }
  return files;
}

Json ShortcutsState(const std::vector<FileFact>& all) {
  Json shortcuts = Json::array();
  for (const FileFact& file : all) {
    if (file.directory || !EndsWith(file.path, u".lnk")) continue;
    Json shortcut = {{"path", Narrow(file.path)}};
    if (const auto link = winhost::ReadLink(Bytes(file.path))) {
      shortcut["target"] = Narrow(link->target);
      shortcut["arguments"] = Narrow(link->arguments);
      shortcut["directory"] = Narrow(link->working_directory);
      shortcut["icon"] = Narrow(link->icon);
      shortcut["icon_index"] = link->icon_index;
      shortcut["description"] = Narrow(link->description);
    } else {
      shortcut["error"] = "no shell link";
    }
    shortcuts.push_back(std::move(shortcut));
  }
  return shortcuts;
}

Json RegistryState() {
  Json values = Json::array();
  const Json keys = winhost::RegistryAsJson(Machine::Current());
  for (const auto& [key, named] : keys.items()) {
    for (const auto& [name, value] : named.items()) {
      Json entry = value;  // type, bytes, value
      entry["key"] = key;
      entry["name"] = name;
      values.push_back(std::move(entry));
    }
  }
  return values;
}

Json TasksState() {
  Json tasks = Json::array();
  for (const winhost::StoredTask& task : winhost::ListTasks(Machine::Current())) {
    tasks.push_back({{"name", Narrow(task.name)},
                     {"scheduler", task.version},
                     {"readable", task.readable},
                     {"program", Narrow(task.program)},
                     {"arguments", Narrow(task.arguments)},
                     {"directory", Narrow(task.working_directory)},
                     {"description", Narrow(task.description)},
                     {"author", Narrow(task.author)},
                     {"principal", Narrow(task.principal)},
                     {"run_level", Narrow(task.run_level)},
                     {"logon_type", Narrow(task.logon_type)},
                     {"start_when_available", task.start_when_available},
                     {"flags", task.flags},
                     {"triggers", task.triggers},
                     {"trigger", Narrow(task.trigger_type)},
                     {"start", Narrow(task.start_boundary)},
                     {"interval", Narrow(task.interval)},
                     {"duration", Narrow(task.duration)},
                     {"days_interval", task.days_interval}});
  }
  return tasks;
}

Json Journal(const std::string& name) {
  Json entries = Json::array();
  std::ifstream file(Machine::Current().folder() / (name + ".jsonl"));
  for (std::string line; std::getline(file, line);) {
    Json entry = Json::parse(line, nullptr, false);
    if (entry.is_discarded()) continue;
    entry.erase("pid");
    entries.push_back(std::move(entry));
  }
  return entries;
}

Json Lines(const std::string& utf16le) {
  std::u16string text(utf16le.size() / 2, u'\0');
  for (size_t i = 0; i < text.size(); ++i) {
    text[i] = static_cast<char16_t>(static_cast<unsigned char>(utf16le[2 * i]) |
                                    (static_cast<unsigned char>(utf16le[2 * i + 1]) << 8));
  }
  Json lines = Json::array();
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find(u"\r\n", at), text.size());
    lines.push_back(Narrow(std::u16string_view(text).substr(at, end - at)));
    at = end + 2;
  }
  return lines;
}

Json LogState(const std::vector<FileFact>& all) {
  Json log = {{"files", Json::object()}, {"debugger", Json::array()}};
  for (const FileFact& file : all) {
    if (file.directory || !EndsWith(file.path, u".log") || file.path.find(u"\\Logs\\") == std::u16string::npos)
      continue;
    log["files"][Narrow(file.path)] = Lines(Bytes(file.path));
  }
  for (const Json& line : Journal("debugger")) log["debugger"].push_back(line.value("text", ""));
  return log;
}

}  // namespace

bool WaitForPrograms(int real_ms) {
  auto& table = Machine::Current().Get<winhost::ProcessTable>();
  for (int waited = 0;; waited += 20) {
    const auto running = table.Running();
    const bool others = std::any_of(running.begin(), running.end(), [](const winhost::ProcessEntry& process) {
      return !process.made_up && !process.image.empty() && process.id != static_cast<std::uint32_t>(getpid());
    });
    if (!others || waited >= real_ms) return !others;
    usleep(20'000);
  }
}

Json MachineState() {
  const std::vector<FileFact> all = AllFiles();
  return {{"files", FilesState(all)},         {"registry", RegistryState()},
          {"shortcuts", ShortcutsState(all)}, {"tasks", TasksState()},
          {"launches", Journal("launches")},  {"deferred", Journal("deferred")},
          {"messages", Journal("messages")},  {"log", LogState(all)},
          {"exits", Journal("exits")}};
}

}  // namespace vantakit
