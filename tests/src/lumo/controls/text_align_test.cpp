#include "lumo/controls/text_align.h"

#include "lumo/controls/control_text.h"
#include "tests/src/lumo/controls/tree.h"

namespace {

using namespace lumo_tests;
using lumo::ApplyAlignWords;
using lumo::kLabelStyle;

TEST(TextAlignTest, WordsChangeTheStyleInTheirFixedOrder) {
  struct Row {
    const WCHAR* words;
    UINT from;
    UINT style;
  };
  constexpr UINT kAll = DT_CENTER | DT_RIGHT | DT_VCENTER | DT_BOTTOM | DT_SINGLELINE;
  constexpr Row kRows[] = {
      {TEXT(""), kLabelStyle, 0x8120},
      {TEXT("hcenter,vcenter"), kLabelStyle, 0x8120 | DT_CENTER | DT_VCENTER},
      {TEXT("left"), kAll, DT_BOTTOM},
      {TEXT("left"), kLabelStyle, kLabelStyle & ~UINT{DT_SINGLELINE}},
      {TEXT("right"), kAll, DT_RIGHT | DT_BOTTOM},
      {TEXT("hcenter"), DT_RIGHT, DT_CENTER},
      {TEXT("top"), kAll, DT_CENTER | DT_RIGHT | DT_SINGLELINE},
      {TEXT("vcenter"), DT_BOTTOM, DT_VCENTER | DT_SINGLELINE},
      {TEXT("bottom"), DT_VCENTER, DT_BOTTOM | DT_SINGLELINE},
      {TEXT("vcenter|right"), 0, DT_RIGHT | DT_VCENTER | DT_SINGLELINE},
      {TEXT("bottomleft"), DT_RIGHT, DT_BOTTOM | DT_SINGLELINE},
      {TEXT("Right Center"), kLabelStyle, kLabelStyle},
  };
  for (const Row& row : kRows) EXPECT_EQ(ApplyAlignWords(row.from, row.words), row.style) << vanta::ToUtf8(row.words);
}

TEST_F(ControlsTest, SingleLineDecidesWhateverTheAlignmentSays) {
  lumo::Label label;
  Set(&label, TEXT("align"), TEXT("left"));
  EXPECT_TRUE(label.TextPart()->UsedStyle() & DT_SINGLELINE);
  Set(&label, TEXT("singleline"), TEXT("0"));
  Set(&label, TEXT("align"), TEXT("vcenter"));
  EXPECT_TRUE(label.TextPart()->Style() & DT_SINGLELINE);
  EXPECT_FALSE(label.TextPart()->UsedStyle() & DT_SINGLELINE);
  Set(&label, TEXT("endellipsis"), TEXT("0"));
  EXPECT_FALSE(label.TextPart()->Style() & DT_END_ELLIPSIS);
}

TEST_F(ControlsTest, AProgressTextIsCentred) { EXPECT_EQ(lumo::Progress().TextPart()->Style(), 0x21u); }

TEST_F(ControlsTest, TextsComeInBothEncodings) {
  lumo::Label label;
  label.SetUtf8Text("\xE4\xB8\x80");
  EXPECT_EQ(label.GetText(), String(1, 0x4E00));
  EXPECT_EQ(label.GetUtf8Text(), "\xE4\xB8\x80");
}

}  // namespace
