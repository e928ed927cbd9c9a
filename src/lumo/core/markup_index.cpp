#include "lumo/core/markup_index.h"

#include "lumo/core/markup_tokenizer.h"

#include <map>

namespace lumo {
namespace {

class Indexer {
 public:
  Indexer(StringView text, MarkupIndex& index, MarkupLog& log)
      : text_(text), records_(index.elements), attributes_(index.attributes), log_(log) {}

  bool Run() {
    records_.clear();
    attributes_.clear();
    records_.reserve(text_.size() / 64 + 8);
    attributes_.reserve(text_.size() / 24 + 8);
    records_.emplace_back();
    records_[0].total_length = static_cast<LONG>(text_.size());
    if (text_.empty()) return false;
    MarkupTokenizer tokenizer(text_, 0, &attributes_);
    MarkupToken token;
    const WCHAR* mistake = nullptr;
    for (size_t attributes = 0; tokenizer.NextMarkup(&token, &mistake); attributes = attributes_.size()) {
      if (token.type == MarkupNode::None) {
        log_.Add(mistake, {{TEXT("offset"), Size(token.offset)}});
      } else {
        Take(token, attributes);
      }
    }
    while (open_) CloseUnended(static_cast<LONG>(text_.size()));
    return Verdict();
  }

 private:
  static size_t Size(LONG units) { return static_cast<size_t>(units); }

  void Take(const MarkupToken& token, size_t attributes) {
    if (!token.is_finished) {
      attributes_.resize(attributes);
      LogUnterminated(token);
    } else if (token.type == MarkupNode::Element) {
      Open(token, attributes);
    } else if (token.type == MarkupNode::EndTag) {
      End(token);
    }
  }

  void Open(const MarkupToken& token, size_t attributes) {
    const auto index = static_cast<LONG>(records_.size());
    ElementRecord element;
    element.start = token.offset;
    element.name_length = token.name_length;
    element.attributes = static_cast<LONG>(attributes);
    element.tag_length = element.total_length = token.length;
    if (token.is_empty) element.flags = ElementEmpty;
    element.parent = open_;
    element.previous = LinkAfterSibling(index);
    records_.push_back(element);
    if (token.is_empty) {
      last_closed_ = index;
      return;
    }
    open_ = index;
    if (counting_) ++open_names_[NameOf(text_, element)];
  }

  // Answers the sibling before the new element. What was closed last is a child of the open element as soon as that
  // has one.
  LONG LinkAfterSibling(LONG index) {
    ElementRecord& parent = records_[Size(open_)];
    if (!parent.first_child) {
      parent.first_child = index;
      return 0;
    }
    records_[Size(last_closed_)].next = index;
    return last_closed_;
  }

  void End(const MarkupToken& token) {
    const StringView name = NodeName(text_, token);
    if (!open_ || !IsNamed(records_[Size(open_)], name)) {
      if (!IsOpen(name)) {
        log_.Add(TEXT("lone_end_tag"), {{TEXT("tagname"), name}, {TEXT("offset"), Size(token.offset)}});
        records_[0].flags |= ElementIllFormed;
        return;
      }
      while (!IsNamed(records_[Size(open_)], name)) CloseUnended(token.offset);
    }
    Close(token.offset + token.length);
  }

  bool IsNamed(const ElementRecord& element, StringView name) const { return NameOf(text_, element) == name; }

  // Whether an element of that name is open anywhere. Names are counted from the first question on.
  bool IsOpen(StringView name) {
    if (!counting_) {
      counting_ = true;
      for (LONG i = open_; i; i = records_[Size(i)].parent) ++open_names_[NameOf(text_, records_[Size(i)])];
    }
    return open_names_.find(name) != open_names_.end();
  }

  void Close(LONG end) {
    ElementRecord& element = records_[Size(open_)];
    element.total_length = end - element.start;
    if (counting_) Uncount(NameOf(text_, element));
    last_closed_ = open_;
    open_ = element.parent;
  }

  void CloseUnended(LONG end) {
    ElementRecord& element = records_[Size(open_)];
    log_.Add(TEXT("unended_start_tag"), {{TEXT("tagname"), NameOf(text_, element)},
                                         {TEXT("offset"), Size(element.start)},
                                         {TEXT("offset2"), Size(end)}});
    element.flags |= ElementIllFormed;
    records_[0].flags |= ElementIllFormed;
    Close(end);
  }

  void Uncount(StringView name) {
    const auto found = open_names_.find(name);
    if (found != open_names_.end() && --found->second == 0) open_names_.erase(found);
  }

  void LogUnterminated(const MarkupToken& token) {
    log_.Add(TEXT("unterminated_tag_syntax"),
             {{TEXT("type"), KindOf(token.type)}, {TEXT("offset"), Size(token.offset)}});
    records_[0].flags |= ElementIllFormed;
  }

  static StringView KindOf(MarkupNode type) {
    switch (type) {
      case MarkupNode::EndTag:
        return TEXT("end_tag");
      case MarkupNode::CData:
        return TEXT("cdata_section");
      case MarkupNode::Instruction:
        return TEXT("processing_instruction");
      case MarkupNode::Comment:
        return TEXT("comment");
      case MarkupNode::DocType:
        return TEXT("document_type");
      default:
        return TEXT("start_tag");
    }
  }

  bool Verdict() {
    const LONG root = records_[0].first_child;
    const LONG second = root ? records_[Size(root)].next : 0;
    if (!root) log_.Add(TEXT("no_root_element"));
    if (second) log_.Add(TEXT("root_has_sibling"), {{TEXT("offset"), Size(records_[Size(second)].start)}});
    return root && !second && !(records_[0].flags & ElementIllFormed);
  }

  const StringView text_;
  MarkupRecords& records_;
  AttributeRecords& attributes_;
  MarkupLog& log_;
  LONG open_ = 0;         // the innermost open element
  LONG last_closed_ = 0;  // the element that ended last
  bool counting_ = false;
  std::map<StringView, LONG> open_names_;
};

}  // namespace

bool IndexMarkup(StringView text, MarkupIndex* index, MarkupLog* log) { return Indexer(text, *index, *log).Run(); }

}  // namespace lumo
