// A font as the text engine takes it, and its measures.
#pragma once

#include <compare>
#include <string>

namespace winhost {

struct TextFont {
  std::string family;  // as fontconfig knows it, UTF-8
  double em = 0;       // pixels
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeout = false;
  auto operator<=>(const TextFont&) const = default;
};

// In units of the em square, taken from the font file as Windows takes them.
struct FaceMetrics {
  double ascent = 0;    // of the cell: above the baseline
  double descent = 0;   // of the cell: below it, positive
  double external = 0;  // extra distance between lines
  double average_width = 0;
  double LineSpacing() const { return ascent + descent + external; }
};

// Read once a face.
const FaceMetrics& MetricsOf(const std::string& family);

}  // namespace winhost
