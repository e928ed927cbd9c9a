#include "lumo/core/window_attributes.h"

#include <gtest/gtest.h>

namespace lumo {
namespace {

TEST(WindowAttributesTest, ReadsEachOfItsNames) {
  WindowAttributes a;
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("size"), TEXT("600,400")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("caption"), TEXT("0,0,0,280")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("sizebox"), TEXT("4,5;6 7")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("roundcorner"), TEXT("6x6")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("shadowattached"), TEXT("2")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("shadowcorner"), TEXT("1,2,3,4")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("shadowround"), TEXT("8,8,8,8")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("shadowimage"), TEXT("file='a.png' corner='1,1,1,1'")));
  EXPECT_TRUE(SetWindowAttribute(a, TEXT("textid"), TEXT("KEY")));
  EXPECT_EQ(a.size.cx, 600);
  EXPECT_EQ(a.size.cy, 400);
  EXPECT_EQ(a.caption.bottom, 280);
  EXPECT_EQ(a.sizebox.bottom, 7);
  EXPECT_EQ(a.roundcorner.cy, 6);
  EXPECT_TRUE(a.shadowattached);
  EXPECT_EQ(a.shadowcorner.right, 3);
  EXPECT_EQ(a.shadowround.top, 8);
  EXPECT_EQ(a.shadowimage, String(TEXT("file='a.png' corner='1,1,1,1'")));
  EXPECT_EQ(a.textid, String(TEXT("KEY")));
}

TEST(WindowAttributesTest, LimitsWithANegativeNumberAreIgnoredWhole) {
  WindowAttributes a;
  SetWindowAttribute(a, TEXT("mininfo"), TEXT("300,200"));
  SetWindowAttribute(a, TEXT("mininfo"), TEXT("100,-1"));
  SetWindowAttribute(a, TEXT("maxinfo"), TEXT("-1,900"));
  EXPECT_EQ(a.mininfo.cx, 300);
  EXPECT_EQ(a.mininfo.cy, 200);
  EXPECT_EQ(a.maxinfo.cy, 0);
}

TEST(WindowAttributesTest, NamesOfOtherSpellingAreNobodys) {
  WindowAttributes a;
  EXPECT_FALSE(SetWindowAttribute(a, TEXT("Size"), TEXT("1,2")));
  EXPECT_FALSE(SetWindowAttribute(a, TEXT("bkcolor"), TEXT("red")));
  EXPECT_EQ(a.size.cx, 0);
}

}  // namespace
}  // namespace lumo
