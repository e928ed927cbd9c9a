#include <map>

#include "lumo/core/markup_tokenizer.h"
#include "lumo/core/value_readers.h"
#include "tools/vantakit/skincheck/markup_source.h"

namespace vantakit {
namespace {

using Details = std::map<lumo::String, lumo::String>;

std::string Said(const Details& details, const WCHAR* name) {
  const auto found = details.find(name);
  return found == details.end() ? std::string() : vanta::ToUtf8(found->second);
}

int LineOfDetail(const MarkupSource& source, const Details& details, const WCHAR* name) {
  const auto found = details.find(name);
  return found == details.end() ? 1 : source.LineAt(static_cast<std::size_t>(lumo::ReadInteger(found->second)));
}

std::string Words(std::string kind) {
  for (char& c : kind) {
    if (c == '_') c = ' ';
  }
  return kind;
}

struct Row {
  lumo::StringView problem;
  const char* message;
};
constexpr Row kRows[] = {
    {TEXT("no_root_element"), "holds no element"},
    {TEXT("root_has_sibling"), "a second element at top level; a layout has one"},
    {TEXT("first_tag_syntax"), "a \"<\" that begins no tag is read as text"},
    {TEXT("exclamation_tag_syntax"), "a \"<!\" that begins nothing is read as text"},
    {TEXT("comment_tag_syntax"), "\"<!-\" begins no comment (\"<!--\" does) and is read as text"},
    {TEXT("cdata_section_syntax"), "\"<![\" begins no CDATA section and is read as text"},
    {TEXT("doctype_tag_syntax"), "\"<!D\" begins no document type and is read as text"},
};

std::string MessageOf(const MarkupSource& source, lumo::StringView problem, const Details& details) {
  for (const Row& row : kRows) {
    if (row.problem == problem) return row.message;
  }
  const std::string tag = Said(details, TEXT("tagname"));
  if (problem == TEXT("lone_end_tag")) return "</" + tag + "> ends nothing";
  if (problem == TEXT("unterminated_tag_syntax")) return "this " + Words(Said(details, TEXT("type"))) + " does not end";
  if (problem == TEXT("unended_start_tag")) {
    const int end = LineOfDetail(source, details, TEXT("offset2"));
    return "<" + tag + "> has no end tag; it is cut off in line " + std::to_string(end);
  }
  return vanta::ToUtf8(problem);
}

// The log is markup itself, of elements without a root.
void FindLogged(const MarkupSource& source, Findings* findings) {
  lumo::MarkupDocument log;
  log.LoadText(source.Document().ParseLog());
  while (log.NextElement()) {
    Details details;
    lumo::String name, value;
    for (std::size_t n = 0; log.AttributeAt(n, &name, &value); ++n) details[name] = value;
    findings->push_back(
        source.At(LineOfDetail(source, details, TEXT("offset")), MessageOf(source, log.TagName(), details)));
  }
}

// A lone "<" has been named already.
void FindText(const MarkupSource& source, Findings* findings) {
  constexpr WCHAR kByteOrderMark = 0xFEFF;
  const lumo::StringView text = source.Document().Text();
  lumo::MarkupTokenizer tokenizer(text);
  for (lumo::MarkupToken token; tokenizer.Next(&token);) {
    if (token.type != lumo::MarkupNode::Text) continue;
    const auto from = static_cast<std::size_t>(token.offset);
    const lumo::StringView words = text.substr(from, static_cast<std::size_t>(token.length));
    const std::size_t first = words.find_first_not_of(TEXT(" \t\r\n"));
    if (words.find('<') != words.npos || (from == 0 && words.front() == kByteOrderMark)) continue;
    findings->push_back(source.At(source.LineAt(from + first), "text between tags is not read"));
  }
}

}  // namespace

void FindMarkupFaults(const MarkupSource& source, Findings* findings) {
  if (source.Document().Text().empty()) return findings->push_back(source.At(0, "is empty"));
  FindLogged(source, findings);
  FindText(source, findings);
}

}  // namespace vantakit
