// A line of text being edited: its characters, the caret, what is marked. Nothing of windows. Places are counted in
// UTF-16 units, and never lie inside a surrogate pair.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace winhost {

class EditText {
 public:
  static constexpr std::size_t kMost = 30'000;  // characters that are taken by hand

  const std::u16string& text() const { return text_; }
  std::size_t caret() const { return caret_; }
  // What is marked, half-open; empty at the caret when nothing is.
  std::size_t first() const { return caret_ < anchor_ ? caret_ : anchor_; }
  std::size_t last() const { return caret_ < anchor_ ? anchor_ : caret_; }

  // Replaces all of it; the caret goes to the end.
  void Set(std::u16string_view text);
  // Marks from `anchor` to `caret`, both cut to the text.
  void Mark(std::size_t anchor, std::size_t caret);
  void MarkAll() { Mark(0, text_.size()); }

  // The three that change the text say whether they did. Control characters are not typed.
  bool Type(char16_t unit);
  bool EraseBefore();  // what is marked, else the character before the caret
  bool EraseAfter();   // what is marked, else the character after it

  // One character to the side, or to an end; without `extend` the mark goes, and a mark's own end is the first step.
  void MoveLeft(bool extend);
  void MoveRight(bool extend);
  void MoveHome(bool extend) { Mark(extend ? anchor_ : 0, 0); }
  void MoveEnd(bool extend) { Mark(extend ? anchor_ : text_.size(), text_.size()); }

 private:
  bool Inside(std::size_t place) const;
  std::size_t Before(std::size_t place) const;
  std::size_t After(std::size_t place) const;
  bool Erase(std::size_t from, std::size_t to);

  std::u16string text_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0;
};

}  // namespace winhost
