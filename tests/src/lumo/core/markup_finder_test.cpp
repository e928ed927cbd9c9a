#include "lumo/core/markup_finder.h"

#include <gtest/gtest.h>

#include <random>

#include "lumo/core/markup_marks_plain.h"

namespace lumo {
namespace {

// Texts of a few units that matter among others, some with a low byte that looks like one of them.
String RandomText(std::minstd_rand& rolls, size_t length) {
  constexpr WCHAR kUnits[] = {' ', '\t', '\r', '\n',   '/',    '>',    '=', '"', '\'',
                              '&', '<',  0,    0x0122, 0x3C3C, 0xFF3E, 1,   0xFF};
  String text(length, 'a');
  for (WCHAR& unit : text) {
    if (rolls() % 6 == 0) unit = kUnits[rolls() % std::size(kUnits)];
  }
  return text;
}

template <UnitClass wanted>
size_t FirstOf(const String& text, size_t from) {
  while (from < text.size() && (text[from] == 0 || !IsOfClass(text[from], wanted))) ++from;
  return from;
}

template <UnitClass wanted>
void ExpectAllFound(const String& text) {
  UnitFinder finder(text.data(), text.data() + text.size());
  for (size_t from = 0; from <= text.size(); ++from) {
    ASSERT_EQ(static_cast<size_t>(finder.Find<wanted>(text.data() + from) - text.data()), FirstOf<wanted>(text, from))
        << "from " << from << " of " << text.size();
  }
  // What has been passed is found again.
  EXPECT_EQ(finder.Find<wanted>(text.data()), text.data() + FirstOf<wanted>(text, 0));
}

TEST(MarkupFinderTest, FindsWhatLookingAtEveryUnitFinds) {
  std::minstd_rand rolls(7);
  for (const size_t length : {0, 1, 5, 63, 64, 65, 100, 127, 128, 129, 191, 192, 300, 1000}) {
    for (int turn = 0; turn < 8; ++turn) {
      const String text = RandomText(rolls, length);
      ExpectAllFound<UnitNameEnd>(text);
      ExpectAllFound<UnitWordEnd>(text);
      ExpectAllFound<UnitTagOpen>(text);
      ExpectAllFound<UnitDouble>(text);
      ExpectAllFound<UnitSingle>(text);
    }
  }
}

TEST(MarkupFinderTest, LeapsOverBlocks) {
  String text(1000, 'a');
  text[3] = text[900] = '<';
  UnitFinder finder(text.data(), text.data() + text.size());
  EXPECT_EQ(finder.Find<UnitTagOpen>(text.data() + 4), text.data() + 900);
  EXPECT_EQ(finder.Find<UnitTagOpen>(text.data() + 901), text.data() + 1000);
  EXPECT_EQ(finder.Find<UnitTagOpen>(text.data()), text.data() + 3);
}

// No unit that matters goes without its mark, whichever way the block is looked at, and letters have none.
TEST(MarkupFinderTest, BothWaysOfLookingMarkWhatMatters) {
  for (DWORD first = 0; first < 0x10000; first += kMarkedUnits) {
    WCHAR units[kMarkedUnits];
    for (size_t i = 0; i < kMarkedUnits; ++i) units[i] = static_cast<WCHAR>(first + i);
    const UnitMarks ways[] = {MarkUnits(units), MarkUnitsPlainly(units)};
    for (size_t i = 0; i < kMarkedUnits; ++i) {
      const WCHAR c = units[i];
      const bool word = c && (IsOfClass(c, UnitNameEnd) || IsOfClass(c, UnitWordEnd));
      const bool value = c && (IsOfClass(c, UnitDouble) || IsOfClass(c, UnitTagOpen));
      const bool letter = c < 0x80 && (BeginsMarkupName(c) || (c >= '0' && c <= '9'));
      for (const UnitMarks& marks : ways) {
        const bool word_marked = marks.words >> i & 1, value_marked = marks.values >> i & 1;
        ASSERT_TRUE(word_marked || !word) << DWORD{c};
        ASSERT_TRUE(value_marked || !value) << DWORD{c};
        ASSERT_FALSE((word_marked || value_marked) && letter) << DWORD{c};
      }
    }
  }
}

}  // namespace
}  // namespace lumo
