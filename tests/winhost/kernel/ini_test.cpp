#include "tests/winhost/kernel/file_fixture.h"

namespace {

using namespace testing_support;
using String = std::u16string;

class IniTest : public OnMachine {
 protected:
  static constexpr const char16_t* kFile = u"C:\\a.ini";
  String Get(const char16_t* section, const char16_t* key, const char16_t* fallback = u"none") {
    WCHAR buffer[100];
    result_ = GetPrivateProfileStringW(section, key, fallback, buffer, 100, kFile);
    return String(buffer, result_);
  }
  DWORD result_ = 0;
};

TEST_F(IniTest, ValuesAreFoundWithoutCaseAndTrimmed) {
  Put("C:\\a.ini",
      "; [main]\r\nstray=1\r\n[ Main ]\r\n  Key =  some text \r\nquoted=\" in \"\r\nhalf=\"x\r\nempty=\r\n;key2=no\r\n"
      "[main]\r\nkey3=second section of the name\r\n[*]\r\nlog=2");
  EXPECT_EQ(Get(u"MAIN", u"key"), u"some text");
  EXPECT_EQ(Get(u"main", u"quoted"), u" in ");
  EXPECT_EQ(Get(u"main", u"half"), u"\"x");
  EXPECT_EQ(Get(u"main", u"empty"), u"");
  EXPECT_EQ(Get(u"main", u"key2"), u"none");
  EXPECT_EQ(Get(u"main", u"key3", u"none  "), u"none");
  EXPECT_EQ(Get(u"*", u"log"), u"2");
  EXPECT_EQ(Get(u"main", nullptr), String(u"Key\0quoted\0half\0empty\0", 22));
  EXPECT_EQ(Get(nullptr, nullptr), String(u"Main\0main\0*\0", 12));
}

TEST_F(IniTest, EveryTextFormIsRead) {
  Put("C:\\a.ini", "\xEF\xBB\xBF[s]\nk=\xC3\xA9");
  EXPECT_EQ(Get(u"s", u"k"), u"\u00e9");
  Put("C:\\a.ini", "[s]\nk=\xE9");
  EXPECT_EQ(Get(u"s", u"k"), u"\u00e9");
  Put("C:\\a.ini", std::string("\xFF\xFE[\0s\0]\0\n\0k\0=\0\x2D\x4E", 16));
  EXPECT_EQ(Get(u"s", u"k"), u"\u4e2d");
}

TEST_F(IniTest, WhatDoesNotFitIsCutAndSaysSo) {
  Put("C:\\a.ini", "[s]\nkey=12345\nb=1");
  WCHAR buffer[8];
  EXPECT_EQ(GetPrivateProfileStringW(u"s", u"key", u"", buffer, 4, kFile), 3u);
  EXPECT_EQ(String(buffer), u"123");
  EXPECT_EQ(GetPrivateProfileStringW(u"s", nullptr, u"", buffer, 5, kFile), 3u);
  EXPECT_EQ(String(buffer, 5), String(u"key\0\0", 5));
  EXPECT_EQ(GetPrivateProfileStringW(u"s", u"key", u"", nullptr, 0, kFile), 0u);
}

TEST_F(IniTest, IntegersAreReadAsFarAsTheyGo) {
  Put("C:\\a.ini", "[s]\na=3\nb=-1\nc=12abc\nd=x\ne=0x1F\nf=\ng=4294967297");
  struct Row {
    const char16_t* key;
    UINT value;
  } rows[] = {{u"a", 3}, {u"b", 0xFFFFFFFF}, {u"c", 12}, {u"d", 0}, {u"e", 31}, {u"f", 7}, {u"g", 1}, {u"none", 7}};
  for (const Row& row : rows)
    EXPECT_EQ(GetPrivateProfileIntW(u"s", row.key, 7, kFile), row.value) << winhost::Narrow(row.key);
  EXPECT_EQ(GetPrivateProfileIntW(u"s", u"a", 7, u"C:\\none.ini"), 7u);
}

TEST_F(IniTest, WritingKeepsTheRest) {
  Put("C:\\a.ini", "; comment\r\n[one]\r\na=1\r\n\r\n[two]\r\nb=2\r\n");
  EXPECT_TRUE(WritePrivateProfileStringW(u"ONE", u"A", u"9", kFile));
  EXPECT_TRUE(WritePrivateProfileStringW(u"one", u"c", u"3", kFile));
  EXPECT_TRUE(WritePrivateProfileStringW(u"two", u"b", nullptr, kFile));
  EXPECT_TRUE(WritePrivateProfileStringW(u"new", u"d", u"4", kFile));
  EXPECT_EQ(Contents("C:\\a.ini"), "; comment\r\n[one]\r\nA=9\r\nc=3\r\n\r\n[two]\r\n[new]\r\nd=4\r\n");
  EXPECT_TRUE(WritePrivateProfileStringW(u"one", nullptr, nullptr, kFile));
  EXPECT_EQ(Contents("C:\\a.ini"), "; comment\r\n[two]\r\n[new]\r\nd=4\r\n");
}

TEST_F(IniTest, GarbageIsNoSection) {
  Put("C:\\a.ini", std::string("\xFF\xFE\x00", 3));
  EXPECT_EQ(Get(u"s", u"k"), u"none");
  Put("C:\\a.ini", "[\n=\n[s\nk=v\n]==");
  EXPECT_EQ(Get(u"s", u"k"), u"v");
}

}  // namespace
