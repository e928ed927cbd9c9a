// The markup reader beside pugixml, on the same text in one process, in turns.
//
//   markup_bench FILE    milliseconds of loading and of walking all names and attributes, for both; medians
//
// Loading goes from a text in memory, which both take over without a copy, to a document that can be walked; ours is
// UTF-16, the peer's UTF-8. A walk visits every element and adds up the lengths of its name and of its attributes'
// names and values; both sums must be the same.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

#include "lumo/core/markup_document.h"
#include "tests/bench/measure.h"

namespace {

using bench::Now;

// Adds up the element at the main position.
size_t SumOf(lumo::MarkupDocument& document) {
  lumo::StringView name, value;
  size_t total = document.TagName().size();
  for (size_t n = 0; document.AttributeAt(n, &name, &value); ++n) total += name.size() + value.size();
  return total;
}

size_t Walk(lumo::MarkupDocument& document) {
  document.Rewind();
  if (!document.NextElement()) return 0;
  size_t total = SumOf(document);
  for (size_t depth = 0;;) {
    if (document.NextChild()) {
      document.EnterChild();
      ++depth;
      total += SumOf(document);
    } else if (depth-- > 0) {
      document.LeaveElement();
    } else {
      return total;
    }
  }
}

size_t Walk(const pugi::xml_node& above) {
  size_t total = 0;
  for (const pugi::xml_node node : above.children()) {
    if (node.type() != pugi::node_element) continue;
    total += std::strlen(node.name());
    for (const pugi::xml_attribute attribute : node.attributes()) {
      total += std::strlen(attribute.name()) + std::strlen(attribute.value());
    }
    total += Walk(node);
  }
  return total;
}

double Median(std::vector<double>& values) {
  std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

struct Figures {
  std::vector<double> load, peer_load, walk, peer_walk;  // seconds
};

// The sums of a turn must agree, and everything must load.
size_t MeasureOurs(lumo::String text, Figures* figures) {
  const double start = Now();
  lumo::MarkupDocument document;
  const bool good = document.LoadText(std::move(text));
  const double loaded = Now();
  const size_t sum = Walk(document);
  figures->walk.push_back(Now() - loaded);
  figures->load.push_back(loaded - start);
  return good ? sum : 0;
}

size_t MeasurePeer(std::string text, Figures* figures) {
  const double start = Now();
  pugi::xml_document document;
  const bool good = document.load_buffer_inplace(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  const double loaded = Now();
  const size_t sum = Walk(document);
  figures->peer_walk.push_back(Now() - loaded);
  figures->peer_load.push_back(loaded - start);
  return good ? sum : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "markup_bench FILE\n");
    return 2;
  }
  const bench::MappedFile file(argv[1]);
  const std::string_view utf8(reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size());
  const lumo::String text = vanta::FromUtf8(utf8);
  const size_t turns = std::clamp<size_t>(200'000'000 / utf8.size(), 15, 4000);
  Figures figures;
  for (size_t turn = 0; turn < turns; ++turn) {
    if (MeasureOurs(text, &figures) == MeasurePeer(std::string(utf8), &figures)) continue;
    std::fprintf(stderr, "markup_bench: the two readers disagree on %s\n", argv[1]);
    return 1;
  }
  const double load = Median(figures.load), peer_load = Median(figures.peer_load);
  const double walk = Median(figures.walk), peer_walk = Median(figures.peer_walk);
  std::printf("{\"load_ms\": %.4f, \"peer_load_ms\": %.4f, \"walk_ms\": %.4f, \"peer_walk_ms\": %.4f}\n", load * 1e3,
              peer_load * 1e3, walk * 1e3, peer_walk * 1e3);
  return 0;
}
