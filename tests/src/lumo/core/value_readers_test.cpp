#include "lumo/core/value_readers.h"

#include <gtest/gtest.h>

#include <limits.h>

#include "lumo/core/name_hash.h"
#include "lumo/core/pair_list.h"
#include "lumo/core/scaling.h"

namespace lumo {
namespace {

TEST(ValueReadersTest, Integers) {
  const std::pair<const WCHAR*, int> rows[] = {
      {TEXT("12"), 12},
      {TEXT("-3x"), -3},
      {TEXT(" \t+7px"), 7},
      {TEXT(""), 0},
      {TEXT("true"), 0},
      {TEXT("x1"), 0},
      {TEXT("007"), 7},
      {TEXT("0x10"), 0},
      {TEXT("- 1"), 0},
      {TEXT("1,1,0,1"), 1},
      {TEXT("--2"), 0},
      {TEXT("2147483647"), INT_MAX},
      {TEXT("2147483648"), INT_MAX},
      {TEXT("-2147483648"), INT_MIN},
      {TEXT("-99999999999999999999999"), INT_MIN},
      {TEXT("99999999999999999999999"), INT_MAX},
  };
  for (const auto& [text, number] : rows) EXPECT_EQ(ReadInteger(text), number) << vanta::ToUtf8(text);
  EXPECT_EQ(ReadInteger(TextOf(nullptr)), 0);
  EXPECT_FALSE(ReadBoolean(TEXT("true")));
  EXPECT_TRUE(ReadBoolean(TEXT("2")));
  EXPECT_EQ(ReadInteger(StringView(TEXT("123"), 2)), 12) << "not past the end of the value";
}

TEST(ValueReadersTest, Sizes) {
  EXPECT_EQ(ReadSize(TEXT("stretch")), SizeStretch);
  EXPECT_EQ(ReadSize(TEXT("auto")), SizeAuto);
  EXPECT_EQ(ReadSize(TEXT("Auto")), 0);
  EXPECT_EQ(ReadSize(TEXT("24")), 24);
}

TEST(ValueReadersTest, RectanglesTakeExactlyOneSeparator) {
  struct Row {
    const WCHAR* text;
    RECT rect;
  };
  const Row rows[] = {
      {TEXT("1,2,3,4"), {1, 2, 3, 4}},    {TEXT("1;2 3x4"), {1, 2, 3, 4}},
      {TEXT("1, 2, 3, 4"), {1, 2, 3, 4}}, {TEXT("1,2"), {1, 2, 0, 0}},
      {TEXT(""), {0, 0, 0, 0}},           {TEXT("1,,3,4"), {1, 0, 3, 4}},
      {TEXT("1,x,3,4"), {1, 0, 0, 3}},    {TEXT("-1,-2,-3,-4"), {-1, -2, -3, -4}},
      {TEXT("1,2,3,4,5"), {1, 2, 3, 4}},
  };
  for (const Row& row : rows) {
    const RECT rect = ReadRect(row.text);
    EXPECT_TRUE(EqualRect(&rect, &row.rect))
        << vanta::ToUtf8(row.text) << ": " << rect.left << "," << rect.top << "," << rect.right << "," << rect.bottom;
  }
  EXPECT_EQ(ReadPoint(TEXT("600,400")).y, 400);
  EXPECT_EQ(ReadPoint(TEXT("600")).y, 0);
}

TEST(ValueReadersTest, HexadecimalNumbers) {
  EXPECT_EQ(ReadHexadecimal(TEXT("ff00bb96")), 0xFF00BB96u);
  EXPECT_EQ(ReadHexadecimal(TEXT("F0000")), 0xF0000u);
  EXPECT_EQ(ReadHexadecimal(TEXT("7fg")), 0x7Fu);
  EXPECT_EQ(ReadHexadecimal(TEXT("0x1f")), 0x1Fu);
  EXPECT_EQ(ReadHexadecimal(TEXT("0x")), 0u);
  EXPECT_EQ(ReadHexadecimal(TEXT("1ffffffff")), 0xFFFFFFFFu);
  EXPECT_EQ(ReadHexadecimal(TEXT("")), 0u);
}

TEST(ScalingTest, LengthsAndRectangles) {
  EXPECT_EQ(ScaleLength(340, 150), 510);
  EXPECT_EQ(ScaleLength(1, 150), 2);
  EXPECT_EQ(ScaleLength(1, 125), 1);
  EXPECT_EQ(ScaleLength(0, 200), 0);
  EXPECT_EQ(ScaleLength(SizeStretch, 200), SizeStretch);
  EXPECT_EQ(ScaleLength(SizeAuto, 200), SizeAuto);
  EXPECT_EQ(ScaleLength(-10, 200), -10);
  EXPECT_EQ(ScaleLimit(INT_MAX, 200), INT_MAX);
  EXPECT_EQ(ScaleLimit(100, 150), 150);
  EXPECT_EQ(ScaleLimit(INT_MIN, 150), INT_MIN);
  const RECT scaled = ScaleRect({0, 0, 0, 280}, 150);
  EXPECT_EQ(scaled.bottom, 420);
  const RECT mixed = ScaleRect({10, 4, 4, 4}, 150);
  EXPECT_EQ(mixed.left, 15);
  EXPECT_EQ(mixed.right, 15 - 6) << "a distance of less than nothing is not scaled";
  EXPECT_EQ(mixed.bottom, 6);
}

TEST(NameHashTest, KnownValues) {
  EXPECT_EQ(HashName(TEXT("")), 0x811C9DC5u);
  // FNV-1a of the bytes 61 00.
  EXPECT_EQ(HashName(TEXT("a")), ((0x811C9DC5u ^ 0x61u) * 16777619u) * 16777619u);
  // FNV-1a of the bytes 2D 4E.
  EXPECT_EQ(HashName(TEXT("\u4E2D")), ((0x811C9DC5u ^ 0x2Du) * 16777619u ^ 0x4Eu) * 16777619u);
  EXPECT_EQ(HashName(TEXT("bc"), HashName(TEXT("a"))), HashName(TEXT("abc")));
}

std::string PairsOf(StringView text) {
  std::string pairs;
  StringView key, value;
  for (PairReader reader(text); reader.Next(&key, &value);) {
    pairs += vanta::ToUtf8(key) + ":" + vanta::ToUtf8(value) + ";";
  }
  return pairs;
}

TEST(PairReaderTest, ReadsUpToTheFirstMalformedPair) {
  const std::pair<const WCHAR*, const char*> rows[] = {
      {TEXT("file='../a b.svg' color='svg_01'"), "file:../a b.svg;color:svg_01;"},
      {TEXT(" \t\na='1'\r\n\x01 b='2' "), "a:1;b:2;"},
      {TEXT("a='' b='2'"), "b:2;"},
      {TEXT("a='1' b ='2'"), "a:1;"},
      {TEXT("a='1' b= '2'"), "a:1;"},
      {TEXT("a='1'b='2'"), "a:1;"},
      {TEXT("a='1' b='2"), "a:1;"},
      {TEXT("a='1' ='2' c='3'"), "a:1;"},
      {TEXT("a=\"1\""), ""},
      {TEXT("a.png"), ""},
      {TEXT("a='=' b='x=y'"), "a:=;b:x=y;"},
      {TEXT(""), ""},
      {TEXT("a"), ""},
      {TEXT("a="), ""},
      {TEXT("a='"), ""},
  };
  for (const auto& [text, pairs] : rows) EXPECT_EQ(PairsOf(text), pairs) << vanta::ToUtf8(text);
}

}  // namespace
}  // namespace lumo
