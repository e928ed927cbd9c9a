#include "winhost/gdi/text_lines.h"

#include <algorithm>
#include <cmath>

#include "winhost/gdi/text_engine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr double kSlack = 1.0 / 64;  // pixels that a line may be wider than its room: rounding

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// UTF-16 units in valid UTF-8.
std::size_t Units(std::string_view utf8) {
  std::size_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0) != 0x80;
    units += byte >= 0xF0;
  }
  return units;
}

// The byte at which so many UTF-16 units end.
std::size_t ByteAt(std::string_view utf8, std::size_t units) {
  std::size_t byte = 0;
  while (byte < utf8.size() && units > 0) {
    const auto lead = static_cast<unsigned char>(utf8[byte]);
    units -= std::min<std::size_t>(units, lead >= 0xF0 ? 2 : 1);
    do ++byte;
    while (byte < utf8.size() && (static_cast<unsigned char>(utf8[byte]) & 0xC0) == 0x80);
  }
  return byte;
}

std::string Shown(std::u16string_view text, bool tab_stops) {
  std::u16string shown(text);
  for (char16_t& c : shown) {
    if (c == u'\t' && !tab_stops) c = u' ';
    if (c < 0x20 && c != u'\t') c = u'\u200B';  // takes no room
  }
  return Narrow(shown);
}

// How much more room each glyph takes when its strokes are thickened, since the font has no bold cut.
double BoldExtra(const TextRequest& request) {
  if (!request.font.bold) return 0;
  return request.places == GlyphPlaces::WholePixels ? 1 : request.font.em / 24;
}

// Windows sets neither kerning pairs nor ligatures from a font's layout tables, nor hyphens where it breaks a word.
PangoAttrList* Attributes(const TextRequest& request, std::string_view text, std::size_t offset) {
  PangoAttrList* list = pango_attr_list_new();
  pango_attr_list_insert(list, pango_attr_font_features_new("kern=0,liga=0,clig=0,dlig=0,calt=0"));
  pango_attr_list_insert(list, pango_attr_insert_hyphens_new(FALSE));
  if (const double wider = BoldExtra(request); wider > 0) {
    pango_attr_list_insert(list, pango_attr_letter_spacing_new(static_cast<int>(wider * PANGO_SCALE)));
  }
  const auto units = Units(text);
  const auto place = static_cast<std::size_t>(request.underlined);
  if (request.underlined >= 0 && place >= offset && place - offset < units) {
    PangoAttribute* underline = pango_attr_underline_new(PANGO_UNDERLINE_SINGLE);
    underline->start_index = static_cast<guint>(ByteAt(text, place - offset));
    underline->end_index = static_cast<guint>(ByteAt(text, place - offset + 1));
    pango_attr_list_insert(list, underline);
  }
  return list;
}

std::shared_ptr<PangoLayout> MakeLayout(const TextRequest& request, const std::string& text, std::size_t offset) {
  std::shared_ptr<PangoLayout> layout(pango_layout_new(TextContext(request.places)), GObjectReleased());
  PangoFontDescription* font = DescribeFont(request.font);
  pango_layout_set_font_description(layout.get(), font);
  pango_font_description_free(font);
  PangoAttrList* attributes = Attributes(request, text, offset);
  pango_layout_set_attributes(layout.get(), attributes);
  pango_attr_list_unref(attributes);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  pango_layout_set_auto_dir(layout.get(), FALSE);
  if (request.tab_stops) {
    const int stop = static_cast<int>(8 * std::round(MetricsOf(request.font.family).average_width * request.font.em));
    PangoTabArray* tabs = pango_tab_array_new_with_positions(1, TRUE, PANGO_TAB_LEFT, std::max(1, stop));
    pango_layout_set_tabs(layout.get(), tabs);
    pango_tab_array_free(tabs);
  }
  pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
  return layout;
}

double ToPixels(int pango) { return static_cast<double>(pango) / PANGO_SCALE; }

// Pango puts extra room between glyphs only; `after` is that of the last one.
TextLine MeasureLine(std::shared_ptr<PangoLayout> layout, int index, double after) {
  TextLine line;
  line.layout = std::move(layout);
  line.line = pango_layout_get_line_readonly(line.layout.get(), index);
  const char* text = pango_layout_get_text(line.layout.get());
  int end = line.line->start_index + line.line->length;
  PangoRectangle logical;
  pango_layout_line_get_extents(line.line, nullptr, &logical);
  line.whole_width = logical.width > 0 ? ToPixels(logical.width) + after : 0;
  while (end > line.line->start_index && IsBlank(text[end - 1])) --end;
  int x = logical.width;
  if (end < line.line->start_index + line.line->length) pango_layout_line_index_to_x(line.line, end, FALSE, &x);
  line.width = end > line.line->start_index ? ToPixels(x) + after : 0;
  return line;
}

double WidthOf(const TextRequest& request, const std::string& text) {
  return MeasureLine(MakeLayout(request, text, 0), 0, BoldExtra(request)).whole_width;
}

// The byte up to which a line's text lies within `x`, never inside what is written as one character.
std::size_t FitBytes(const TextLine& line, double x) {
  const std::string_view text = pango_layout_get_text(line.layout.get());
  if (x <= 0) return 0;
  if (x >= line.whole_width) return text.size();
  int index = 0, trailing = 0;
  pango_layout_line_x_to_index(line.line, static_cast<int>(x * PANGO_SCALE), &index, &trailing);
  return static_cast<std::size_t>(index);
}

std::string_view WithoutLast(std::string_view text) {
  while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.remove_suffix(1);
  if (!text.empty()) text.remove_suffix(1);
  return text;
}

std::string_view WithoutFirst(std::string_view text) {
  if (!text.empty()) text.remove_prefix(1);
  while (!text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0) == 0x80) text.remove_prefix(1);
  return text;
}

TextLine CutMiddle(const TextRequest& request, const TextLine& whole, const std::string& text, std::size_t offset,
                   const std::string& dots) {
  const double room = std::max(0.0, request.width - WidthOf(request, dots));
  const std::string head = text.substr(0, FitBytes(whole, room / 2));
  std::string_view tail = std::string_view(text).substr(head.size());
  tail.remove_prefix(std::min(tail.size(), FitBytes(whole, whole.whole_width - room / 2) - head.size()));
  TextLine line;
  for (;; tail = WithoutFirst(tail)) {
    line = MeasureLine(MakeLayout(request, head + dots + std::string(tail), offset), 0, BoldExtra(request));
    if (tail.empty() || line.width <= request.width + kSlack) break;
  }
  line.end = offset + Units(text);
  return line;
}

// One line of `text` that fits the request's width, its end given up for the ellipsis where it asks for one. `forced`:
// cut even if it fits, since text follows that is not shown.
TextLine CutLine(const TextRequest& request, const std::string& text, std::size_t offset, bool forced) {
  TextLine whole = MeasureLine(MakeLayout(request, text, offset), 0, BoldExtra(request));
  whole.end = offset + Units(text);
  if (request.width < 0 || (!forced && whole.width <= request.width + kSlack)) return whole;
  const std::string dots = request.trim == Trim::Characters ? "" : request.three_dots ? "..." : "\u2026";
  if (request.trim == Trim::MiddleEllipsis) return CutMiddle(request, whole, text, offset, dots);
  const double room = request.width + kSlack - (dots.empty() ? 0 : WidthOf(request, dots));
  std::string_view head = std::string_view(text).substr(0, FitBytes(whole, room));
  TextLine line;
  for (;; head = WithoutLast(head)) {
    line = MeasureLine(MakeLayout(request, std::string(head) + dots, offset), 0, BoldExtra(request));
    if (head.empty() || line.width <= request.width + kSlack) break;
  }
  line.end = offset + Units(head);
  return line;
}

std::vector<TextLine> WrapLines(const TextRequest& request, const std::string& text, std::size_t offset) {
  const auto layout = MakeLayout(request, text, offset);
  pango_layout_set_wrap(layout.get(), request.wrap == Wrap::Words ? PANGO_WRAP_WORD : PANGO_WRAP_WORD_CHAR);
  constexpr double kWidest = 1 << 20;  // pixels; Pango counts in 1/1024 of them
  pango_layout_set_width(layout.get(), static_cast<int>(std::min(request.width + kSlack, kWidest) * PANGO_SCALE));
  std::vector<TextLine> lines;
  for (int i = 0; i < pango_layout_get_line_count(layout.get()); ++i) {
    TextLine line = MeasureLine(layout, i, BoldExtra(request));
    const int end = line.line->start_index + line.line->length;
    line.end = offset + Units(std::string_view(text).substr(0, static_cast<std::size_t>(end)));
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace

std::vector<TextLine> BreakParagraph(const TextRequest& request, std::u16string_view text, std::size_t offset, int most,
                                     bool more) {
  const std::string shown = Shown(text, request.tab_stops);
  const bool ellipsis = request.trim == Trim::Ellipsis || request.trim == Trim::MiddleEllipsis;
  if (request.wrap == Wrap::None || request.width < 0) {
    const bool last = most == 1 && more;
    if (request.trim != Trim::None || last) {
      std::vector<TextLine> lines;
      lines.push_back(CutLine(request, shown, offset, last && ellipsis));
      return lines;
    }
    std::vector<TextLine> lines;
    lines.push_back(MeasureLine(MakeLayout(request, shown, offset), 0, BoldExtra(request)));
    lines.back().end = offset + Units(shown);
    return lines;
  }
  std::vector<TextLine> lines = WrapLines(request, shown, offset);
  const bool left_over = most > 0 && (lines.size() > static_cast<std::size_t>(most) ||
                                      (more && lines.size() == static_cast<std::size_t>(most)));
  if (!left_over) return lines;
  lines.resize(static_cast<std::size_t>(most));
  if (!ellipsis) return lines;
  const auto start = static_cast<std::size_t>(lines.back().line->start_index);
  lines.back() = CutLine(request, shown.substr(start), offset + Units(shown.substr(0, start)), true);
  return lines;
}

}  // namespace winhost
