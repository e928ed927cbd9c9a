#include "winhost/dialogs/edit_text.h"

#include <algorithm>

namespace winhost {
namespace {

bool IsHigh(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLow(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool IsControl(char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); }

}  // namespace

// Between the two halves of a pair.
bool EditText::Inside(std::size_t place) const {
  return place > 0 && place < text_.size() && IsHigh(text_[place - 1]) && IsLow(text_[place]);
}

std::size_t EditText::Before(std::size_t place) const {
  if (place == 0) return 0;
  return Inside(place - 1) ? place - 2 : place - 1;
}

std::size_t EditText::After(std::size_t place) const {
  if (place >= text_.size()) return text_.size();
  return Inside(place + 1) ? place + 2 : place + 1;
}

void EditText::Set(std::u16string_view text) {
  text_ = text;
  caret_ = anchor_ = text_.size();
}

void EditText::Mark(std::size_t anchor, std::size_t caret) {
  anchor_ = std::min(anchor, text_.size());
  caret_ = std::min(caret, text_.size());
  if (Inside(anchor_)) --anchor_;
  if (Inside(caret_)) --caret_;
}

bool EditText::Erase(std::size_t from, std::size_t to) {
  if (from == to) return false;
  text_.erase(from, to - from);
  caret_ = anchor_ = from;
  return true;
}

bool EditText::Type(char16_t unit) {
  if (IsControl(unit) || text_.size() - (last() - first()) >= kMost) return false;
  Erase(first(), last());
  text_.insert(caret_, 1, unit);
  caret_ = anchor_ = caret_ + 1;
  return true;
}

bool EditText::EraseBefore() { return first() != last() ? Erase(first(), last()) : Erase(Before(caret_), caret_); }

bool EditText::EraseAfter() { return first() != last() ? Erase(first(), last()) : Erase(caret_, After(caret_)); }

void EditText::MoveLeft(bool extend) {
  const bool collapse = !extend && first() != last();
  const std::size_t to = collapse ? first() : Before(caret_);
  Mark(extend ? anchor_ : to, to);
}

void EditText::MoveRight(bool extend) {
  const bool collapse = !extend && first() != last();
  const std::size_t to = collapse ? last() : After(caret_);
  Mark(extend ? anchor_ : to, to);
}

}  // namespace winhost
