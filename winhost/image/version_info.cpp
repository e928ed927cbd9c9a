#include "winhost/image/version_info.h"

#include <algorithm>
#include <charconv>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::uint16_t kUnicodePage = 1200;
constexpr std::u16string_view kFixedKey = u"VS_VERSION_INFO";

std::u16string TableName(std::uint16_t language) {
  constexpr char16_t digits[] = u"0123456789ABCDEF";
  std::u16string name;
  for (int shift = 28; shift >= 0; shift -= 4) {
    name += digits[(((static_cast<std::uint32_t>(language) << 16) | kUnicodePage) >> shift) & 15];
  }
  return name;
}

// Writes one node; its length word is filled in when the writer ends, after the children have been written.
class NodeWriter {
 public:
  NodeWriter(std::vector<std::byte>& out, std::u16string_view key, std::uint16_t value_length, bool text) : out_(out) {
    Align(out_);
    start_ = out_.size();
    AppendField<std::uint16_t>(out_, 0);
    AppendField<std::uint16_t>(out_, value_length);
    AppendField<std::uint16_t>(out_, text ? 1 : 0);
    AppendText(key);
    Align(out_);
  }
  ~NodeWriter() { PutField<std::uint16_t>(out_, start_, static_cast<std::uint16_t>(out_.size() - start_)); }
  NodeWriter(const NodeWriter&) = delete;
  NodeWriter& operator=(const NodeWriter&) = delete;

  void AppendText(std::u16string_view text) {
    for (const char16_t unit : text) AppendField<std::uint16_t>(out_, unit);
    AppendField<std::uint16_t>(out_, 0);
  }
  static void Align(std::vector<std::byte>& out) { out.resize(AlignUp(out.size(), 4)); }

 private:
  std::vector<std::byte>& out_;
  std::size_t start_ = 0;
};

void AppendFixed(std::vector<std::byte>& out, const VersionInfo& info) {
  const auto pair = [](std::uint16_t high, std::uint16_t low) {
    return (static_cast<std::uint32_t>(high) << 16) | low;
  };
  const auto& file = info.file.parts;
  const auto& product = info.product.parts;
  const std::uint32_t words[] = {0xFEEF04BD,
                                 0x00010000,
                                 pair(file[0], file[1]),
                                 pair(file[2], file[3]),
                                 pair(product[0], product[1]),
                                 pair(product[2], product[3]),
                                 0x3F,
                                 0,
                                 0x00040004,
                                 info.dll ? 2u : 1u,
                                 0,
                                 0,
                                 0};
  for (const std::uint32_t word : words) AppendField(out, word);
}

struct Node {
  Bytes bytes;  // the whole node, its length word already held against what there is
  std::u16string key;
  bool text;
  Bytes value;
  Bytes children;
};

std::optional<Node> ReadNode(Bytes from) {
  const auto length = ReadField<std::uint16_t>(from, 0);
  if (!length || *length < 8) return std::nullopt;
  Node node;
  node.bytes = from.first(std::min<std::size_t>(*length, from.size()));
  node.text = FieldOr0<std::uint16_t>(node.bytes, 4) == 1;
  std::size_t at = 6;
  for (;; at += 2) {
    const auto unit = ReadField<std::uint16_t>(node.bytes, at);
    if (!unit) return std::nullopt;
    if (*unit == 0) break;
    node.key += static_cast<char16_t>(*unit);
  }
  // A node begins at a multiple of 4 of the block, so its inner alignment is the block's.
  at = std::min<std::size_t>(AlignUp(at + 2, 4), node.bytes.size());
  const std::size_t claimed = FieldOr0<std::uint16_t>(node.bytes, 2) * (node.text ? 2u : 1u);
  node.value = node.bytes.subspan(at, std::min(claimed, node.bytes.size() - at));
  at = std::min<std::size_t>(AlignUp(at + node.value.size(), 4), node.bytes.size());
  node.children = node.bytes.subspan(at);
  return node;
}

template <class Visit>
void Children(const Node& parent, Visit visit) {
  for (Bytes rest = parent.children; !rest.empty();) {
    const auto child = ReadNode(rest);
    if (!child || visit(*child)) return;
    rest = rest.subspan(std::min<std::size_t>(AlignUp(child->bytes.size(), 4), rest.size()));
  }
}

std::optional<Node> Child(const Node& parent, std::u16string_view key) {
  std::optional<Node> found;
  Children(parent, [&](const Node& child) {
    if (EqualNoCase(child.key, key)) found = child;
    return found.has_value();
  });
  return found;
}

std::u16string TextOf(Bytes value) {
  std::u16string text(value.size() / 2, u'\0');
  std::memcpy(text.data(), value.data(), text.size() * 2);
  return text.substr(0, text.find(u'\0'));
}

}  // namespace

std::optional<VersionNumber> VersionNumber::Parse(std::string_view text) {
  VersionNumber number;
  for (std::size_t i = 0; i < 4; ++i) {
    if (i && (text.empty() || text[0] != '.')) return std::nullopt;
    if (i) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number.parts[i]);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
  return text.empty() ? std::optional(number) : std::nullopt;
}

std::string VersionNumber::Text() const {
  std::string text;
  for (const std::uint16_t part : parts) text += (text.empty() ? "" : ".") + std::to_string(part);
  return text;
}

std::vector<std::byte> BuildVersionResource(const VersionInfo& info) {
  std::vector<std::byte> out;
  NodeWriter root(out, kFixedKey, 52, false);
  AppendFixed(out, info);
  {
    NodeWriter strings(out, u"StringFileInfo", 0, true);
    NodeWriter table(out, TableName(info.language), 0, true);
    for (const auto& [name, value] : info.strings) {
      NodeWriter row(out, name, static_cast<std::uint16_t>(value.size() + 1), true);
      row.AppendText(value);
    }
  }
  {
    NodeWriter variables(out, u"VarFileInfo", 0, true);
    NodeWriter translation(out, u"Translation", 4, false);
    AppendField<std::uint16_t>(out, info.language);
    AppendField<std::uint16_t>(out, kUnicodePage);
  }
  PutField<std::uint16_t>(out, 0, static_cast<std::uint16_t>(out.size()));
  return out;
}

std::optional<VersionValue> FindVersionValue(Bytes block, std::u16string_view path) {
  auto node = ReadNode(block);
  while (node && !path.empty()) {
    const std::size_t slash = path.find(u'\\');
    const std::u16string_view part = path.substr(0, slash);
    path.remove_prefix(slash == path.npos ? path.size() : slash + 1);
    if (!part.empty()) node = Child(*node, part);
  }
  if (!node) return std::nullopt;
  const std::size_t units = node->text ? node->value.size() / 2 : node->value.size();
  return VersionValue{node->value, static_cast<std::uint32_t>(units), node->text};
}

std::vector<std::pair<std::u16string, std::u16string>> VersionStrings(Bytes block) {
  std::vector<std::pair<std::u16string, std::u16string>> strings;
  const auto root = ReadNode(block);
  const auto info = root ? Child(*root, u"StringFileInfo") : std::nullopt;
  if (!info) return strings;
  Children(*info, [&](const Node& table) {
    Children(table, [&](const Node& row) {
      strings.emplace_back(row.key, TextOf(row.value));
      return false;
    });
    return true;  // the first table only
  });
  return strings;
}

}  // namespace winhost
