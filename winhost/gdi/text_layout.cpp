#include "winhost/gdi/text_layout.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "winhost/gdi/text_engine.h"
#include "winhost/gdi/text_lines.h"

namespace winhost {
namespace {

// The next paragraph's end and where the one after it begins.
struct Paragraph {
  std::size_t end;
  std::size_t next;
};

Paragraph NextParagraph(std::u16string_view text, std::size_t start, bool one_line) {
  const std::size_t end = one_line ? text.npos : text.find_first_of(u"\r\n", start);
  if (end == text.npos) return {text.size(), text.size()};
  const bool pair = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
  return {end, end + (pair ? 2 : 1)};
}

std::u16string OneLine(std::u16string text) {
  std::ranges::replace_if(
      text, [](char16_t c) { return c == u'\r' || c == u'\n'; }, u' ');
  return text;
}

void Measure(TextBlock& block, GlyphPlaces places) {
  const FaceMetrics& metrics = MetricsOf(block.font.family);
  block.ascent = metrics.ascent * block.font.em;
  block.spacing = metrics.LineSpacing() * block.font.em;
  if (places == GlyphPlaces::WholePixels) {
    block.ascent = std::round(block.ascent);
    block.spacing = block.ascent + std::round(metrics.descent * block.font.em);
  }
  for (const TextLine& line : block.lines) {
    block.width = std::max(block.width, line.width);
    block.whole_width = std::max(block.whole_width, line.whole_width);
  }
}

std::shared_ptr<const TextBlock> LayOut(const TextRequest& request) {
  auto block = std::make_shared<TextBlock>();
  block->font = request.font;
  const std::u16string text = request.one_line ? OneLine(request.text) : request.text;
  for (std::size_t start = 0; start < text.size();) {
    const auto left = request.most_lines - static_cast<int>(block->lines.size());
    if (request.most_lines != 0 && left <= 0) break;
    const Paragraph paragraph = NextParagraph(text, start, request.one_line);
    const bool more = paragraph.next < text.size();
    auto lines = BreakParagraph(request, std::u16string_view(text).substr(start, paragraph.end - start), start,
                                request.most_lines > 0 ? left : 0, more);
    std::ranges::move(lines, std::back_inserter(block->lines));
    start = paragraph.next;
  }
  Measure(*block, request.places);
  return block;
}

// Two generations: what was not asked for while the younger one filled up is forgotten.
class LayoutCache {
 public:
  std::shared_ptr<const TextBlock> Get(const TextRequest& request) {
    if (const auto found = young_.find(request); found != young_.end()) return found->second;
    if (young_.size() >= kGeneration) {
      old_ = std::move(young_);
      young_.clear();
    }
    const auto aged = old_.find(request);
    return young_.emplace(request, aged != old_.end() ? aged->second : LayOut(request)).first->second;
  }

 private:
  static constexpr std::size_t kGeneration = 256;
  std::map<TextRequest, std::shared_ptr<const TextBlock>> young_, old_;
};

}  // namespace

std::shared_ptr<const TextBlock> LayOutText(const TextRequest& request) {
  TextContext(request.places);  // made before the cache, so that it outlives what the cache holds
  thread_local LayoutCache cache;
  constexpr std::size_t kMostKept = 4096;  // characters
  return request.text.size() > kMostKept ? LayOut(request) : cache.Get(request);
}

}  // namespace winhost
