// Global resources: any text as the inside of a global file; then themes applied and everything asked for.

#include <algorithm>
#include <string_view>

#include "lumo/core/global_resources.h"
#include "lumo/core/markup_document.h"
#include "tests/fuzz/fuzz.h"

namespace {

using lumo::String;

// Hands themes on as a control does; the number of plain attributes.
size_t Apply(lumo::GlobalResources& tables, const String& names) {
  size_t attributes = 0;
  const lumo::AttributeSetter set = [&](const WCHAR* name, const WCHAR* value) {
    if (lumo::StringView(name) == TEXT("theme")) {
      tables.ApplyThemes(value, set);
    } else {
      ++attributes;
    }
  };
  tables.ApplyThemes(names, set);
  return attributes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  String text = TEXT("<Global>") + vanta::FromUtf8({reinterpret_cast<const char*>(data), size}) + TEXT("</Global>");
  lumo::GlobalResources tables(6);
  lumo::MarkupDocument document;
  document.LoadText(text);
  const std::vector<int> codes = tables.AddDocument(document);
  FUZZ_EXPECT(std::all_of(codes.begin(), codes.end(), [](int code) { return code >= -1 && code <= 2; }));
  String name, value;
  document.Rewind();
  while (document.NextChild()) {
    document.EnterChild();
    for (size_t n = 0; document.AttributeAt(n, &name, &value); ++n) {
      LOGFONTW font;
      tables.DescribeFont(value, 150, &font);
      tables.GetColor(value);
      FUZZ_EXPECT(Apply(tables, value) <= 1024 * text.size());
    }
    document.LeaveElement();
  }
  return 0;
}
