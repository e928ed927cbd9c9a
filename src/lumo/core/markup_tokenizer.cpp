#include "lumo/core/markup_tokenizer.h"

#include "lumo/core/markup_units.h"

namespace lumo {
namespace {

constexpr StringView kDocType = TEXT("<!DOCTYPE");

// The name at the front of `text`, after blanks.
StringView LeadingName(StringView text) {
  size_t from = 0;
  while (from < text.size() && IsMarkupBlank(text[from])) ++from;
  size_t to = from;
  while (to < text.size() && !EndsMarkupName(text[to]) && text[to] != '?' && text[to] != '[') ++to;
  return text.substr(from, to - from);
}

}  // namespace

bool MarkupTokenizer::Next(MarkupToken* token) {
  const WCHAR* const from = at_;
  const WCHAR* mistake = nullptr;
  while ((at_ = finder_.Find<UnitTagOpen>(at_)) != end_ && Classify(&mistake) == MarkupNode::None) ++at_;
  if (at_ == from) return NextMarkup(token, &mistake);
  *token = {};
  token->offset = OffsetOf(from);
  FinishText(token);
  return true;
}

bool MarkupTokenizer::NextMarkup(MarkupToken* token, const WCHAR** mistake) {
  at_ = finder_.Find<UnitTagOpen>(at_);
  if (at_ == end_) return false;
  token->offset = OffsetOf(at_);
  if (BeginsMarkupName(at_[1])) {
    token->type = MarkupNode::Element;
    TakeTag(token, at_ + 1, attributes_);
    token->is_empty = token->is_finished && at_[-2] == '/';
  } else if (at_[1] == '/') {
    token->type = MarkupNode::EndTag;
    TakeTag(token, at_ + 2, nullptr);
    token->is_empty = false;
  } else {
    token->type = Classify(mistake);
    TakeOther(token);
  }
  return true;
}

// The text ends in a NUL, which no mark has.
MarkupNode MarkupTokenizer::Classify(const WCHAR** mistake) const {
  if (BeginsMarkupName(at_[1])) return MarkupNode::Element;
  if (at_[1] == '/') return MarkupNode::EndTag;
  const StringView rest(at_, static_cast<size_t>(end_ - at_));
  const auto unit = [&](size_t i) { return i < rest.size() ? rest[i] : WCHAR{}; };
  const auto wrong = [&](const WCHAR* what) {
    *mistake = what;
    return MarkupNode::None;
  };
  if (unit(1) == '?') return MarkupNode::Instruction;
  if (unit(1) != '!') return wrong(TEXT("first_tag_syntax"));
  switch (unit(2)) {
    case '-':
      return unit(3) == '-' ? MarkupNode::Comment : wrong(TEXT("comment_tag_syntax"));
    case '[':
      return unit(3) == 'C' ? MarkupNode::CData : wrong(TEXT("cdata_section_syntax"));
    case 'D':
      return rest.starts_with(kDocType) ? MarkupNode::DocType : wrong(TEXT("doctype_tag_syntax"));
    default:
      return wrong(TEXT("exclamation_tag_syntax"));
  }
}

void MarkupTokenizer::FinishText(MarkupToken* token) const {
  token->length = OffsetOf(at_) - token->offset;
  const WCHAR* blank = begin_ + token->offset;
  while (blank != at_ && IsMarkupBlank(*blank)) ++blank;
  token->type = blank == at_ ? MarkupNode::Whitespace : MarkupNode::Text;
}

void MarkupTokenizer::TakeOther(MarkupToken* token) {
  const WCHAR* after = at_ + 1;
  if (token->type == MarkupNode::Instruction) after = After(at_ + 2, TEXT("?>"));
  if (token->type == MarkupNode::Comment) after = After(at_ + 4, TEXT("-->"));
  if (token->type == MarkupNode::CData) after = After(at_ + 4, TEXT("]]>"));
  if (token->type == MarkupNode::DocType) after = EndOfDocType(at_ + kDocType.size());
  at_ = after ? after : end_;
  token->is_finished = after != nullptr;
  token->is_empty = false;
  token->name_length = 0;
  token->length = OffsetOf(at_) - token->offset;
}

inline void MarkupTokenizer::TakeTag(MarkupToken* token, const WCHAR* name, AttributeRecords* attributes) {
  const WCHAR* const name_end = finder_.Find<UnitNameEnd>(name);
  token->name_length = static_cast<LONG>(name_end - name);
  at_ = *name_end == '>' ? name_end : ReadAttributes(begin_, name_end, finder_, attributes);
  token->is_finished = at_ != end_;
  if (token->is_finished) ++at_;
  token->length = OffsetOf(at_) - token->offset;
}

const WCHAR* MarkupTokenizer::EndOfDocType(const WCHAR* at) const {
  for (LONG depth = 1; at != end_; ++at) {
    if (*at == '<') ++depth;
    if (*at == '>' && --depth == 0) return at + 1;
  }
  return nullptr;
}

const WCHAR* MarkupTokenizer::After(const WCHAR* from, StringView mark) const {
  const StringView rest(from, static_cast<size_t>(end_ - from));
  const size_t at = rest.find(mark);
  return at == StringView::npos ? nullptr : from + at + mark.size();
}

StringView NodeName(StringView text, const MarkupToken& token) {
  const StringView node = text.substr(static_cast<size_t>(token.offset), static_cast<size_t>(token.length));
  switch (token.type) {
    case MarkupNode::Element:
      return node.substr(1, static_cast<size_t>(token.name_length));
    case MarkupNode::EndTag:
      return node.substr(2, static_cast<size_t>(token.name_length));
    case MarkupNode::Text:
    case MarkupNode::Whitespace:
      return TEXT("#text");
    case MarkupNode::CData:
      return TEXT("#cdata-section");
    case MarkupNode::Comment:
      return TEXT("#comment");
    case MarkupNode::Instruction:
      return LeadingName(node.substr(2));
    case MarkupNode::DocType:
      return LeadingName(node.substr(kDocType.size()));
    default:
      return {};
  }
}

}  // namespace lumo
