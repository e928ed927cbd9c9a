#include "lumo/core/markup_document.h"

#include "lumo/core/markup_references.h"

#include <limits.h>

namespace lumo {

bool MarkupDocument::LoadText(String text) {
  if (InFileMode()) return false;
  log_.Clear();
  encoding_.clear();
  return Index(std::move(text));
}

bool MarkupDocument::Index(String text) {
  text_ = std::move(text);
  Rewind();
  if (text_.size() > INT_MAX / 2) text_.clear();  // offsets and doubled lengths are 32 bits wide
  return IndexMarkup(text_, &index_, &log_);
}

void MarkupDocument::Rewind() {
  if (!InFileMode()) MoveTo(0, 0, 0);
}

bool MarkupDocument::NextElement(StringView name) {
  if (InFileMode() || index_.elements.empty()) return false;
  const LONG next = main_ ? At(main_).next : At(parent_).first_child;
  const LONG found = FindFrom(next, name);
  if (found) MoveTo(parent_, found, 0);
  return found != 0;
}

bool MarkupDocument::NextChild(StringView name) {
  if (InFileMode() || index_.elements.empty()) return false;
  if (!main_ && !NextElement()) return false;
  const LONG next = child_ ? At(child_).next : At(main_).first_child;
  const LONG found = FindFrom(next, name);
  if (found) MoveTo(parent_, main_, found);
  return found != 0;
}

void MarkupDocument::EnterChild() {
  if (!InFileMode() && main_) MoveTo(main_, child_, 0);
}

void MarkupDocument::LeaveElement() {
  if (!InFileMode() && !index_.elements.empty()) MoveTo(At(parent_).parent, parent_, main_);
}

// Elements and other nodes alternate: which element comes next is known from the index, the rest is read again.
MarkupNode MarkupDocument::NextNode() {
  if (InFileMode() || index_.elements.empty()) return MarkupNode::None;
  const ElementRecord& parent = At(parent_);
  const LONG content = parent.start + parent.tag_length;
  const LONG after_element = main_ ? At(main_).start + At(main_).total_length : content;
  const LONG from = node_.type == MarkupNode::None ? after_element : node_.offset + node_.length;
  const LONG until = parent.start + parent.total_length;
  MarkupTokenizer tokenizer(text_, from);
  MarkupToken token;
  while (tokenizer.Next(&token) && token.offset < until && token.is_finished) {
    if (token.type == MarkupNode::EndTag) continue;
    if (token.type == MarkupNode::Element) return NextElement() ? MarkupNode::Element : MarkupNode::None;
    node_ = token;
    return token.type;
  }
  return MarkupNode::None;
}

StringView MarkupDocument::TagName() const {
  if (node_.type != MarkupNode::None) return NodeName(text_, node_);
  return main_ ? NameOf(text_, At(main_)) : StringView();
}

bool MarkupDocument::AttributeAt(size_t n, StringView* name, StringView* value) {
  if (InFileMode() || !main_) return false;
  const bool last = static_cast<size_t>(main_) + 1 == index_.elements.size();
  const size_t end = last ? index_.attributes.size() : static_cast<size_t>(At(main_ + 1).attributes);
  const auto first = static_cast<size_t>(At(main_).attributes);
  if (n >= end - first) return false;
  const AttributeRecord& found = index_.attributes[first + n];
  *name = {text_.data() + found.name, static_cast<size_t>(found.name_length)};
  *value = {text_.data() + found.value, found.ValueLength()};
  if (!found.HasReference()) return true;
  DecodeReferences(*value, &decoded_);
  *value = decoded_;
  return true;
}

bool MarkupDocument::AttributeAt(size_t n, String* name, String* value) {
  StringView found_name, found_value;
  if (!AttributeAt(n, &found_name, &found_value)) return false;
  *name = found_name;
  *value = found_value;
  return true;
}

LONG MarkupDocument::FindFrom(LONG element, StringView name) const {
  while (element && !name.empty() && NameOf(text_, At(element)) != name) element = At(element).next;
  return element;
}

void MarkupDocument::MoveTo(LONG parent, LONG main, LONG child) {
  parent_ = parent;
  main_ = main;
  child_ = child;
  node_ = {};
}

}  // namespace lumo
