#include "winhost/dialogs/edit_text.h"

#include <gtest/gtest.h>

namespace {

using winhost::EditText;

// What is typed: "<" and ">" move, "{" and "}" move and mark, "^" and "$" go to the ends, "#" erases before the caret,
// "!" after it, "*" marks all.
std::u16string Edited(std::u16string_view start, std::u16string_view keys, std::size_t* caret = nullptr) {
  EditText edit;
  edit.Set(start);
  for (const char16_t key : keys) {
    switch (key) {
      case u'<':
      case u'{':
        edit.MoveLeft(key == u'{');
        break;
      case u'>':
      case u'}':
        edit.MoveRight(key == u'}');
        break;
      case u'^':
        edit.MoveHome(false);
        break;
      case u'$':
        edit.MoveEnd(false);
        break;
      case u'#':
        edit.EraseBefore();
        break;
      case u'!':
        edit.EraseAfter();
        break;
      case u'*':
        edit.MarkAll();
        break;
      default:
        edit.Type(key);
    }
  }
  if (caret) *caret = edit.caret();
  return edit.text();
}

TEST(EditTextTest, KeysDoWhatTheyDoInEveryLine) {
  const struct {
    std::u16string start, keys, text;
    std::size_t caret;
  } rows[] = {
      {u"", u"ab", u"ab", 2},
      {u"ab", u"#", u"a", 1},
      {u"ab", u"^#", u"ab", 0},
      {u"ab", u"^!", u"b", 0},
      {u"ab", u"!", u"ab", 2},
      {u"ab", u"<x", u"axb", 2},
      {u"abcd", u"{{x", u"abx", 3},
      {u"abcd", u"{{#", u"ab", 2},
      {u"abcd", u"{{<y", u"abycd", 3},  // a mark collapses to its own end first
      {u"abcd", u"^}}>y", u"abycd", 3},
      {u"abcd", u"*z", u"z", 1},
      {u"abcd", u"*!", u"", 0},
      {u"abcd", u"^<<$>>e", u"abcde", 5},
      {u"a\r\n\t", u"\b\x7F\x1B", u"a\r\n\t", 4},        // control characters are not typed
      {u"a\xD83D\xDE00", u"#", u"a", 1},                 // a pair goes as one
      {u"\xD83D\xDE00z", u"^>x", u"\xD83D\xDE00xz", 3},  // and is stepped over as one
  };
  for (const auto& row : rows) {
    std::size_t caret = 99;
    EXPECT_EQ(Edited(row.start, row.keys, &caret), row.text);
    EXPECT_EQ(caret, row.caret);
  }
}

TEST(EditTextTest, MarksAreCutToTheTextAndNeverSplitAPair) {
  EditText edit;
  edit.Set(u"\xD83D\xDE00z");
  edit.Mark(1, 77);
  EXPECT_EQ(edit.first(), 0u);
  EXPECT_EQ(edit.last(), 3u);
}

TEST(EditTextTest, ALineTakesNoMoreThanItHasRoomFor) {
  EditText edit;
  edit.Set(std::u16string(EditText::kMost, u'x'));
  EXPECT_FALSE(edit.Type(u'y'));
  edit.MarkAll();
  EXPECT_TRUE(edit.Type(u'y'));
  EXPECT_EQ(edit.text(), u"y");
}

}  // namespace
