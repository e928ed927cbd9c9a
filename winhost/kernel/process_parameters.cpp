#include <shellapi.h>
#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "winhost/kernel/command_line.h"
#include "winhost/kernel/program.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

std::u16string CommandLine() {
  if (const char* given = std::getenv("VANTA_COMMAND_LINE")) return Wide(given);
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  std::vector<std::u16string> words;
  for (std::string word; std::getline(file, word, '\0');) words.push_back(Wide(word));
  return JoinCommandLine(words);
}

// Pointers first, then the characters, in the one block that callers free.
LPWSTR* PackWords(const std::vector<std::u16string>& words) {
  std::size_t bytes = (words.size() + 1) * sizeof(LPWSTR);
  for (const std::u16string& word : words) bytes += (word.size() + 1) * sizeof(WCHAR);
  auto* const pointers = static_cast<LPWSTR*>(LocalAlloc(LMEM_FIXED, bytes));
  if (!pointers) return nullptr;
  auto* text = reinterpret_cast<WCHAR*>(pointers + words.size() + 1);
  LPWSTR* pointer = pointers;
  for (const std::u16string& word : words) {
    *pointer++ = text;
    std::memcpy(text, word.c_str(), (word.size() + 1) * sizeof(WCHAR));
    text += word.size() + 1;
  }
  *pointer = nullptr;
  return pointers;
}

}  // namespace
}  // namespace winhost

using namespace winhost;

LPWSTR GetCommandLineW() {
  static auto* text = new std::u16string(CommandLine());
  return text->data();
}

LPWSTR* CommandLineToArgvW(LPCWSTR command_line, int* count) {
  DWORD error = command_line && count ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
  if (!error) error = PlannedFault("CommandLineToArgvW", command_line).value_or(ERROR_SUCCESS);
  if (error) {
    SetLastError(error);
    return nullptr;
  }
  const auto words = *command_line ? SplitCommandLine(command_line) : std::vector{ProgramPath()};
  *count = static_cast<int>(words.size());
  return PackWords(words);
}
