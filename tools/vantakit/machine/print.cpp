#include "tools/vantakit/machine/print.h"

#include <unistd.h>

#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

namespace vantakit {
namespace {

using Json = nlohmann::json;

// Columns that a text takes on a terminal: CJK characters take two.
int Columns(const std::string& utf8) {
  int columns = 0;
  for (size_t i = 0; i < utf8.size(); ++i) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if ((lead & 0xC0) == 0x80) continue;
    columns += lead >= 0xE3 && lead < 0xF0 ? 2 : 1;
  }
  return columns;
}

class Printer {
 public:
  explicit Printer(Colour colour)
      : colour_(colour == Colour::Always || (colour == Colour::Auto && isatty(STDOUT_FILENO) == 1)) {}

  void Section(const char* title, size_t count, const char* unit) const {
    std::printf("\n%s%s%s", On("1;36"), title, Off());
    std::printf("%s  %zu %s%s%s\n", On("2"), count, unit,
                count == 1                               ? ""
                : std::string_view(unit).ends_with("ch") ? "es"
                                                         : "s",
                Off());
  }
  void Row(const std::vector<std::pair<std::string, int>>& cells, const char* first_style = "") const {
    std::fputs("  ", stdout);
    for (size_t i = 0; i < cells.size(); ++i) {
      const auto& [text, width] = cells[i];
      std::printf("%s%s%s", On(i == 0 ? first_style : ""), text.c_str(), i == 0 ? Off() : "");
      if (i + 1 < cells.size()) {
        for (int gap = Columns(text); gap < width; ++gap) std::fputc(' ', stdout);
        std::fputs("  ", stdout);
      }
    }
    std::fputc('\n', stdout);
  }
  void Nothing() const { std::printf("  %snone%s\n", On("2"), Off()); }
  const char* On(const char* style) const {
    if (!colour_ || !*style) return "";
    escape_ = std::string("\033[") + style + "m";
    return escape_.c_str();
  }
  const char* Off() const { return colour_ ? "\033[0m" : ""; }

 private:
  bool colour_;
  mutable std::string escape_;
};

std::string Text(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || found->is_null()) return "";
  return found->is_string() ? found->get<std::string>() : found->dump();
}

std::string SizeText(std::uint64_t bytes) {
  char text[32];
  if (bytes < 10'000) {
    std::snprintf(text, sizeof text, "%llu B", static_cast<unsigned long long>(bytes));
  } else if (bytes < 10'000'000) {
    std::snprintf(text, sizeof text, "%.1f KiB", static_cast<double>(bytes) / 1024);
  } else {
    std::snprintf(text, sizeof text, "%.1f MiB", static_cast<double>(bytes) / (1024 * 1024));
  }
  return text;
}

std::pair<std::string, std::string> SplitPath(const std::string& path) {
  const size_t slash = path.rfind('\\');
  return slash == std::string::npos ? std::pair{std::string(), path}
                                    : std::pair{path.substr(0, slash), path.substr(slash + 1)};
}

void PrintFiles(const Printer& out, const Json& files) {
  out.Section("Files", files.size(), "file");
  std::map<std::string, std::vector<const Json*>> folders;
  for (const Json& file : files) folders[SplitPath(Text(file, "path")).first].push_back(&file);
  for (const auto& [folder, contents] : folders) {
    std::printf("  %s%s%s\n", out.On("33"), folder.c_str(), out.Off());
    for (const Json* file : contents) {
      out.Row({{"  " + SplitPath(Text(*file, "path")).second, 34},
               {SizeText(file->value("size", 0ull)), 10},
               {Text(*file, "sha256").substr(0, 12), 12},
               {Text(*file, "modified").substr(0, 19), 19}});
    }
  }
}

void PrintRegistry(const Printer& out, const Json& values) {
  out.Section("Registry", values.size(), "value");
  std::string key;
  for (const Json& value : values) {
    if (Text(value, "key") != key) {
      key = Text(value, "key");
      std::printf("  %s%s%s\n", out.On("33"), key.c_str(), out.Off());
    }
    const std::string name = Text(value, "name");
    out.Row({{"  " + (name.empty() ? "(default)" : name), 18},
             {Text(value, "type"), 10},
             {Text(value, "bytes") + " bytes", 10},
             {Text(value, "value"), 0}});
  }
}

struct Column {
  const char* key;
  int width;
};

void PrintTable(const Printer& out, const char* title, const char* unit, const Json& rows,
                std::vector<Column> columns) {
  out.Section(title, rows.size(), unit);
  for (const Json& row : rows) {
    std::vector<std::pair<std::string, int>> cells;
    for (const Column& column : columns) cells.emplace_back(Text(row, column.key), column.width);
    out.Row(cells, "32");
  }
  if (rows.empty()) out.Nothing();
}

void PrintTasks(const Printer& out, const Json& tasks) {
  out.Section("Scheduled tasks", tasks.size(), "task");
  for (const Json& task : tasks) {
    out.Row({{Text(task, "name"), 0}}, "32");
    for (const auto& [key, value] : task.items()) {
      if (key != "name" && !value.is_null() && value != "") out.Row({{"  " + key, 20}, {Text(task, key.c_str()), 0}});
    }
  }
  if (tasks.empty()) out.Nothing();
}

void PrintLog(const Printer& out, const Json& log) {
  size_t lines = log["debugger"].size();
  for (const auto& [path, text] : log["files"].items()) lines += text.size();
  out.Section("Log", lines, "line");
  for (const auto& [path, text] : log["files"].items()) {
    std::printf("  %s%s%s\n", out.On("33"), path.c_str(), out.Off());
    for (const Json& line : text) out.Row({{"  " + line.get<std::string>(), 0}});
  }
  for (const Json& line : log["debugger"]) out.Row({{"debugger: " + line.get<std::string>(), 0}});
  if (lines == 0) out.Nothing();
}

}  // namespace

void PrintState(const Json& state, Colour colour) {
  const Printer out(colour);
  PrintFiles(out, state["files"]);
  PrintRegistry(out, state["registry"]);
  PrintTable(out, "Shortcuts", "shortcut", state["shortcuts"], {{"path", 66}, {"target", 44}, {"arguments", 0}});
  PrintTasks(out, state["tasks"]);
  PrintTable(out, "Launches", "launch", state["launches"],
             {{"file", 44}, {"parameters", 56}, {"by", 14}, {"result", 0}});
  PrintTable(out, "Left for the restart", "file", state["deferred"], {{"from", 60}, {"to", 0}});
  PrintTable(out, "Messages to windows", "message", state["messages"],
             {{"class", 28}, {"message", 8}, {"wparam", 8}, {"lparam", 0}});
  PrintLog(out, state["log"]);
  PrintTable(out, "Programs that ended", "exit", state["exits"], {{"image", 60}, {"code", 0}});
}

void PrintDifference(const Json& difference, Colour colour) {
  const Printer out(colour);
  for (const auto& [section, changes] : difference.items()) {
    out.Section(section.c_str(), changes.size(), "difference");
    for (const Json& change : changes) {
      const std::string what = Text(change, "change");
      const char* style = what == "added" ? "32" : what == "removed" ? "31" : "33";
      out.Row({{what, 8}, {Text(change, "entry"), 0}}, style);
      if (change.contains("was")) {
        out.Row({{"", 8}, {"was " + change["was"].dump(), 0}});
        out.Row({{"", 8}, {"is  " + change["is"].dump(), 0}});
      }
    }
  }
  if (difference.empty()) std::puts("no differences");
}

}  // namespace vantakit
