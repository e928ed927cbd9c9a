#include "tools/vantakit/skincheck/markup_source.h"

#include <algorithm>
#include <functional>

namespace vantakit {

MarkupSource::MarkupSource(std::string name, std::string_view bytes) : name_(std::move(name)) {
  well_formed_ = document_.LoadText(vanta::FromUtf8(bytes.substr(0, bytes.find('\0'))));
  const lumo::String& text = document_.Text();
  line_starts_.push_back(0);
  for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) line_starts_.push_back(at + 1);
}

int MarkupSource::LineAt(std::size_t offset) const {
  return static_cast<int>(std::ranges::upper_bound(line_starts_, offset) - line_starts_.begin());
}

int MarkupSource::LineOf(lumo::StringView name) const {
  const lumo::String& text = document_.Text();
  const std::less<const WCHAR*> before;
  if (before(name.data(), text.data()) || before(text.data() + text.size(), name.data())) return 0;
  return LineAt(static_cast<std::size_t>(name.data() - text.data()));
}

}  // namespace vantakit
