// Cuts a text into tags, comments and what lies between them, in one pass.
#pragma once

#include "lumo/core/markup_attributes.h"
#include "lumo/core/types.h"

namespace lumo {

enum class MarkupNode { None, Element, EndTag, Text, Whitespace, CData, Instruction, Comment, DocType };

struct MarkupToken {
  MarkupNode type = MarkupNode::None;
  LONG offset = 0;  // units from the start of the text
  LONG length = 0;
  LONG name_length = 0;     // of tags
  bool is_empty = false;    // a start tag that ends with "/>"
  bool is_finished = true;  // false: the text ended inside
};

class MarkupTokenizer {
 public:
  // A NUL must stand behind the text, which must outlive the tokenizer. Reading starts at `offset`. The attributes of
  // start tags are added to `attributes`, where given.
  explicit MarkupTokenizer(StringView text, LONG offset = 0, AttributeRecords* attributes = nullptr)
      : begin_(text.data()),
        at_(text.data() + offset),
        end_(text.data() + text.size()),
        finder_(at_, end_),
        attributes_(attributes) {}

  // The next token; false at the end of the text. A "<" that begins nothing belongs to the text around it.
  bool Next(MarkupToken* token);

  // The next token that is no text. On the way it stops at every "<" that begins nothing: type None, one unit long, and
  // `mistake` says what is wrong with it.
  bool NextMarkup(MarkupToken* token, const WCHAR** mistake);

 private:
  MarkupNode Classify(const WCHAR** mistake) const;
  void FinishText(MarkupToken* token) const;
  void TakeOther(MarkupToken* token);
  void TakeTag(MarkupToken* token, const WCHAR* name, AttributeRecords* attributes);
  const WCHAR* EndOfDocType(const WCHAR* from) const;
  const WCHAR* After(const WCHAR* from, StringView mark) const;
  LONG OffsetOf(const WCHAR* at) const { return static_cast<LONG>(at - begin_); }

  const WCHAR* begin_;
  const WCHAR* at_;
  const WCHAR* end_;
  UnitFinder finder_;
  AttributeRecords* attributes_;
};

// What a token is called: a tag's name, "#text" for text and whitespace, "#cdata-section", "#comment", an
// instruction's target, the name that a document type declares. The view is a literal or points into `text`.
StringView NodeName(StringView text, const MarkupToken& token);

}  // namespace lumo
