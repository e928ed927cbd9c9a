// The skin's string table: any bytes as its file, whole and in short lines.

#include <string_view>

#include "setupui/string_table.h"
#include "tests/fuzz/fuzz.h"

namespace {

bool IsTrimmed(const vanta::String& text) {
  const auto loose = [](WCHAR c) { return c == TEXT(' ') || c <= 29; };
  return text.empty() || (!loose(text.front()) && !loose(text.back()));
}

void Check(const vanta::StringTable& table) {
  for (const auto& [key, value] : table) {
    FUZZ_EXPECT(IsTrimmed(key) && IsTrimmed(value));
    FUZZ_EXPECT(key.find(TEXT(';')) == vanta::String::npos);
    FUZZ_EXPECT((key + value).find_first_of(TEXT("=\n")) == vanta::String::npos);
    FUZZ_EXPECT(vanta::ExpandEscapes(value).size() <= value.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Check(vanta::ParseStringTable(bytes));
  Check(vanta::ParseStringTable(bytes, 7));
  return 0;
}
