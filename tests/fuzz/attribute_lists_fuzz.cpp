// The two small languages of attribute values: name="value" lists and key='value' pairs.

#include <string_view>

#include "lumo/core/attribute_list.h"
#include "lumo/core/pair_list.h"
#include "lumo/core/value_readers.h"
#include "tests/fuzz/fuzz.h"

namespace {

using lumo::StringView;

// Inside the text, and behind what was read before.
template <class Reader>
void Read(StringView text, WCHAR quote) {
  const WCHAR* at = text.data();
  StringView name, value;
  for (Reader reader(text); reader.Next(&name, &value);) {
    FUZZ_EXPECT(name.data() >= at && name.data() + name.size() <= value.data());
    FUZZ_EXPECT(value.find(quote) == StringView::npos);
    FUZZ_EXPECT(name.find('=') == StringView::npos);
    at = value.data() + value.size();
    FUZZ_EXPECT(at < text.data() + text.size());
    lumo::ReadRect(value);
    lumo::ReadHexadecimal(value);
  }
  FUZZ_EXPECT(!Reader(StringView()).Next(&name, &value));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vanta::String text = vanta::FromUtf8({reinterpret_cast<const char*>(data), size});
  Read<lumo::AttributeListReader>(text, '"');
  Read<lumo::PairReader>(text, '\'');
  return 0;
}
