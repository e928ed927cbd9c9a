#include "app/command_line.h"

#include "base/format.h"

#include <shellapi.h>

namespace vanta {
namespace {

constexpr StringView kOptions[] = {TEXT("silent"), TEXT("show"), TEXT("from"),   TEXT("assoc"),
                                   TEXT("src"),    TEXT("auto"), TEXT("instse"), TEXT("notifyhwnd")};

// A word taken apart: dashes, name, and the value behind the first "=".
struct OptionWord {
  StringView dashes;
  StringView name;
  StringView value;
};

bool IsOption(StringView word) { return word.size() > 1 && word.front() == TEXT('-'); }

OptionWord TakeApart(StringView word) {
  OptionWord parts;
  parts.dashes = word.substr(0, word.starts_with(TEXT("--")) ? 2 : 1);
  const StringView rest = word.substr(parts.dashes.size());
  const size_t equals = rest.find(TEXT('='));
  parts.name = rest.substr(0, equals);
  if (equals != StringView::npos) parts.value = rest.substr(equals + 1);
  return parts;
}

// The table entries that a name may mean: the one it equals, else all it begins.
std::vector<StringView> Candidates(StringView name, std::span<const StringView> table) {
  std::vector<StringView> candidates;
  for (const StringView entry : table) {
    if (entry == name) return {entry};
    if (entry.starts_with(name)) candidates.push_back(entry);
  }
  return candidates;
}

String Ambiguous(StringView program, StringView word, StringView dashes, std::span<const StringView> candidates) {
  String line = Format(TEXT("%s: option '%s' is ambiguous; possibilities:"), program, word);
  for (const StringView candidate : candidates) line += Format(TEXT(" '%s%s'"), dashes, candidate);
  return line + TEXT('\n');
}

void ReadOption(StringView program, StringView word, std::span<const StringView> table, ParsedWords& parsed) {
  const OptionWord parts = TakeApart(word);
  const std::vector<StringView> candidates = Candidates(parts.name, table);
  if (candidates.size() == 1) {
    parsed.store.Replace(candidates.front(), String(parts.value));
  } else if (candidates.empty()) {
    parsed.diagnostics.push_back(Format(TEXT("%s: unrecognized option '%s'\n"), program, word));
  } else {
    parsed.diagnostics.push_back(Ambiguous(program, word, parts.dashes, candidates));
  }
}

void WriteDiagnostics(const std::vector<String>& lines) {
  const HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
  if (!output || output == INVALID_HANDLE_VALUE) return;
  for (const String& line : lines) {
    const std::string utf8 = ToUtf8(line);
    DWORD written = 0;
    WriteFile(output, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
  }
}

bool IsPosixlyCorrect() { return GetEnvironmentVariableW(TEXT("POSIXLY_CORRECT"), nullptr, 0) != 0; }

}  // namespace

constinit const std::span<const StringView> kOptionTable = kOptions;

std::vector<String> SplitCommandLine(const WCHAR* command_line) {
  if (!command_line) return {};
  int count = 0;
  WCHAR** const words = CommandLineToArgvW(command_line, &count);
  if (!words) return {};
  std::vector<String> list(words, words + count);
  LocalFree(words);
  return list;
}

ParsedWords ParseWords(std::span<const String> words, std::span<const StringView> table, bool posixly_correct) {
  ParsedWords parsed;
  for (size_t i = 1; i < words.size(); ++i) {
    const StringView word = words[i];
    if (word == TEXT("--")) break;
    if (IsOption(word)) {
      ReadOption(words[0], word, table, parsed);
    } else if (posixly_correct) {
      break;
    }
  }
  return parsed;
}

bool ParseCommandLine(const WCHAR* command_line, std::span<const StringView> table, OptionStore& store) {
  const std::vector<String> words = SplitCommandLine(command_line);
  if (words.empty()) return false;
  const ParsedWords parsed = ParseWords(words, table, IsPosixlyCorrect());
  for (const auto& [name, value] : parsed.store.all()) store.Replace(name, value);
  WriteDiagnostics(parsed.diagnostics);
  return true;
}

}  // namespace vanta
