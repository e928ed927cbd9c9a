// The option grammar: any text as a command line, with and without POSIXLY_CORRECT.

#include <algorithm>
#include <string_view>

#include "app/command_line.h"
#include "tests/fuzz/fuzz.h"

namespace {

void Read(std::span<const vanta::String> words, bool posixly_correct) {
  const vanta::ParsedWords parsed = vanta::ParseWords(words, vanta::kOptionTable, posixly_correct);
  for (const auto& [name, value] : parsed.store.all()) {
    FUZZ_EXPECT(std::find(vanta::kOptionTable.begin(), vanta::kOptionTable.end(), name) != vanta::kOptionTable.end());
    FUZZ_EXPECT(parsed.store.Has(name));
    FUZZ_EXPECT(parsed.store.Get(name) == value);
  }
  FUZZ_EXPECT(parsed.diagnostics.size() <= words.size());
  for (const vanta::String& line : parsed.diagnostics) FUZZ_EXPECT(line.ends_with(TEXT('\n')));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vanta::String line = vanta::FromUtf8({reinterpret_cast<const char*>(data), size});
  const std::vector<vanta::String> words = vanta::SplitCommandLine(line.c_str());
  for (const bool posixly_correct : {false, true}) Read(words, posixly_correct);
  return 0;
}
