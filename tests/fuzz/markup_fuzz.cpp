// The markup reader: any bytes as UTF-8 text, as UTF-16 units and as a file; then a walk over what it found.

#include <string_view>

#include "lumo/core/markup_document.h"
#include "lumo/core/markup_encoding.h"
#include "tests/fuzz/fuzz.h"

namespace {

using lumo::String;

void ReadAttributes(lumo::MarkupDocument& document) {
  String name, value;
  size_t n = 0;
  for (; document.AttributeAt(n, &name, &value); ++n) FUZZ_EXPECT(value.size() <= document.Text().size());
  FUZZ_EXPECT(n <= document.Text().size());
}

// Every element once, parents before their children.
size_t Walk(lumo::MarkupDocument& document) {
  document.Rewind();
  if (!document.NextElement()) return 0;
  size_t seen = 0;
  do {
    size_t depth = 0;
    for (bool arrived = true;;) {
      if (arrived) {
        ++seen;
        FUZZ_EXPECT(!document.TagName().empty());
        ReadAttributes(document);
      }
      arrived = document.NextChild();
      if (arrived) {
        document.EnterChild();
        ++depth;
      } else if (depth > 0) {
        document.LeaveElement();
        --depth;
      } else {
        break;
      }
    }
  } while (document.NextElement());
  return seen;
}

// The nodes below the document, or below its first element.
void ReadNodes(lumo::MarkupDocument& document, bool inside) {
  document.Rewind();
  if (inside) {
    document.NextElement();
    document.EnterChild();
  }
  size_t nodes = 0;
  while (document.NextNode() != lumo::MarkupNode::None) ++nodes;
  FUZZ_EXPECT(nodes <= document.Text().size());
}

void Read(const String& text) {
  lumo::MarkupDocument document;
  const bool well_formed = document.LoadText(text);
  const size_t elements = Walk(document);
  FUZZ_EXPECT(!well_formed || elements > 0);
  FUZZ_EXPECT(elements <= text.size() / 3);
  for (const bool inside : {false, true}) ReadNodes(document, inside);
  lumo::MarkupDocument log;
  log.LoadText(document.ParseLog());
  FUZZ_EXPECT(log.ParseLog().find(TEXT("unterminated")) == String::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Read(vanta::FromUtf8(bytes));
  lumo::MarkupLog log;
  const lumo::DecodedMarkup decoded = lumo::DecodeMarkup(bytes, &log);
  FUZZ_EXPECT(!decoded.encoding.empty());
  Read(decoded.text);
  return 0;
}
