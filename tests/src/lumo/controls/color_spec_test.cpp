#include "lumo/controls/color_spec.h"

#include <gtest/gtest.h>

#include "lumo/controls/control_state.h"

namespace {

using lumo::ColorSpec;
using lumo::String;

ColorSpec Parse(const WCHAR* text) {
  ColorSpec spec;
  spec.Assign(text);
  return spec;
}

TEST(ColorSpecTest, ANameIsTheColour) {
  const ColorSpec spec = Parse(TEXT("green"));
  EXPECT_EQ(spec.color, String(TEXT("green")));
  EXPECT_FALSE(spec.IsGradient());
  EXPECT_FALSE(spec.HasDest());
}

TEST(ColorSpecTest, TwoEndsAreAGradientWhoseTextIsTheName) {
  const ColorSpec spec = Parse(TEXT("color1='a' color2='b' mode='1' dest='1,2,3,4'"));
  EXPECT_TRUE(spec.IsGradient());
  EXPECT_EQ(spec.color1, String(TEXT("a")));
  EXPECT_EQ(spec.color2, String(TEXT("b")));
  EXPECT_EQ(spec.mode, 1);
  EXPECT_TRUE(spec.HasDest());
  EXPECT_EQ(spec.dest.bottom, 4);
  EXPECT_EQ(spec.color, spec.text);
  EXPECT_FALSE(Parse(TEXT("color1='a' color2=''")).IsGradient());
}

TEST(ColorSpecTest, ReadingStopsAtAMalformedPairAndANewTextForgetsTheOld) {
  ColorSpec spec = Parse(TEXT("color='red' dest='1,1,9,9' mode=2 color1='a'"));
  EXPECT_EQ(spec.color, String(TEXT("red")));
  EXPECT_EQ(spec.dest.right, 9);
  EXPECT_EQ(spec.mode, 0);
  EXPECT_TRUE(spec.color1.empty());
  spec.Assign(TEXT("blue"));
  EXPECT_EQ(spec.color, String(TEXT("blue")));
  EXPECT_FALSE(spec.HasDest());
}

TEST(ControlStateTest, MissingStatesFallBack) {
  struct Row {
    int has[4];    // which states have a value
    int shown[4];  // by state; -1 nothing
  };
  constexpr Row kRows[] = {
      {{1, 0, 0, 0}, {0, 0, 0, 0}},   {{1, 1, 0, 0}, {0, 1, 1, 0}},     {{1, 1, 1, 1}, {0, 1, 2, 3}},
      {{0, 1, 0, 0}, {-1, 1, 1, -1}}, {{0, 0, 1, 0}, {-1, -1, 2, -1}},  {{0, 0, 0, 1}, {-1, -1, -1, 3}},
      {{1, 0, 1, 0}, {0, 0, 2, 0}},   {{0, 0, 0, 0}, {-1, -1, -1, -1}},
  };
  for (const Row& row : kRows) {
    for (int state = 0; state < 4; ++state) {
      EXPECT_EQ(lumo::ShownState(state, [&](int s) { return row.has[s] != 0; }), row.shown[state]) << state;
    }
  }
  EXPECT_EQ(lumo::ShownState(7, [](int) { return true; }), -1);
  EXPECT_EQ(lumo::ShownState(-1, [](int) { return true; }), -1);
}

TEST(ControlStateTest, AnEmptyTextIsNoValue) {
  lumo::StateValues<String> values;
  values.At(lumo::StatePushed) = String();
  values.At(lumo::StateHot) = TEXT("hot");
  ASSERT_NE(values.Shown(lumo::StatePushed), nullptr);
  EXPECT_EQ(*values.Shown(lumo::StatePushed), String(TEXT("hot")));
  EXPECT_EQ(values.Shown(lumo::StateNormal), nullptr);
}

}  // namespace
