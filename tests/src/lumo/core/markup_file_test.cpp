#include "lumo/core/markup_document.h"
#include "lumo/core/markup_encoding.h"
#include "tests/support/machine_fixture.h"

namespace lumo {
namespace {

class MarkupFileTest : public testing_support::OnMachine {
 protected:
  // Whether the file is well-formed; what its root's first attribute says, and the log.
  bool Load(std::string_view bytes) {
    Put("C:\\l.xml", bytes);
    const bool loaded = document_.LoadFile(TEXT("C:\\l.xml"));
    String name;
    value_.clear();
    document_.Rewind();
    if (document_.NextElement()) document_.AttributeAt(0, &name, &value_);
    return loaded;
  }
  bool Logged(const WCHAR* entry) const { return document_.ParseLog().find(entry) != String::npos; }
  static std::string Wide(std::u16string_view text, bool swapped) {
    std::string bytes;
    for (const char16_t unit : text) {
      const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
      bytes += swapped ? high : low;
      bytes += swapped ? low : high;
    }
    return bytes;
  }

  MarkupDocument document_;
  String value_;
};

TEST_F(MarkupFileTest, MarksDecide) {
  EXPECT_TRUE(Load("\xEF\xBB\xBF<a b='\xC3\xA9'/>"));
  EXPECT_EQ(value_, u"\u00E9");
  EXPECT_EQ(document_.Encoding(), u"UTF-8");
  EXPECT_TRUE(Logged(TEXT("<converted_to encoding=\"UTF-16\" length=\"10\"/>")));

  EXPECT_TRUE(Load("\xFF\xFE" + Wide(u"<a b='\u4E2D'/>", false)));
  EXPECT_EQ(value_, u"\u4E2D");
  EXPECT_EQ(document_.Encoding(), u"UTF-16LE");
  EXPECT_EQ(document_.ParseLog(), u"");

  EXPECT_TRUE(Load("\xFE\xFF" + Wide(u"<a b='\u4E2D'/>", true)));
  EXPECT_EQ(value_, u"\u4E2D");
  EXPECT_EQ(document_.Encoding(), u"UTF-16BE");
  EXPECT_TRUE(Logged(TEXT("<endian_swap/>")));

  EXPECT_TRUE(Load("\xFF\xFE" + Wide(std::u16string_view(u"<a b\0='1'/\0>", 12), false) + "x"));
  EXPECT_EQ(value_, u"1");
  EXPECT_TRUE(Logged(TEXT("<nulls_removed length=\"2\"/>")));
  EXPECT_TRUE(Logged(TEXT("truncation_error"))) << "half a unit at the end";
}

TEST_F(MarkupFileTest, Utf8NeedsNoMark) {
  EXPECT_TRUE(Load("<a b='\xE4\xB8\xAD'/>"));
  EXPECT_EQ(value_, u"\u4E2D");
  EXPECT_EQ(document_.Encoding(), u"UTF-8");
  EXPECT_FALSE(Logged(TEXT("utf8_detection")));
}

TEST_F(MarkupFileTest, OtherBytesTurnToTheDeclaredEncoding) {
  EXPECT_TRUE(Load("<?xml version='1.0' encoding='Windows-1252'?><a b='\xE9'/>"));
  EXPECT_EQ(value_, u"\u00E9");
  EXPECT_EQ(document_.Encoding(), u"Windows-1252");
  EXPECT_TRUE(Logged(TEXT("utf8_detection")));
  EXPECT_FALSE(Logged(TEXT("conversion_loss")));

  EXPECT_TRUE(Load("<a b='\xE9'/>"));
  EXPECT_EQ(document_.Encoding(), u"ANSI");
}

TEST_F(MarkupFileTest, LossIsLogged) {
  EXPECT_TRUE(Load("\xEF\xBB\xBF<a b='\xFF'/>"));
  EXPECT_EQ(value_, u"\uFFFD");
  EXPECT_TRUE(Logged(TEXT("conversion_loss")));
}

TEST_F(MarkupFileTest, MissingFilesLeaveAnEmptyDocument) {
  document_.LoadText(TEXT("<a/>"));
  EXPECT_FALSE(document_.LoadFile(TEXT("C:\\none.xml")));
  EXPECT_TRUE(Logged(TEXT("<file_error")));
  EXPECT_FALSE(document_.NextElement());
}

TEST_F(MarkupFileTest, UnreadableFilesAreErrors) {
  Start(R"({"faults": [{"operation": "ReadFile", "subject": "l.xml", "nth": 1, "error": 23}]})");
  EXPECT_FALSE(Load("<a/>"));
  EXPECT_TRUE(Logged(TEXT("<file_error")));
}

TEST_F(MarkupFileTest, WhileTheFileIsOpenNothingMoves) {
  Put("C:\\l.xml", "<a><b/></a>");
  ASSERT_TRUE(document_.OpenFile(TEXT("C:\\l.xml")));
  EXPECT_FALSE(document_.LoadText(TEXT("<c/>")));
  EXPECT_FALSE(document_.OpenFile(TEXT("C:\\l.xml")));
  EXPECT_FALSE(document_.NextElement());
  EXPECT_FALSE(document_.NextChild());
  EXPECT_TRUE(document_.ReadFileWhole());
  EXPECT_TRUE(document_.NextChild(TEXT("b")));
  EXPECT_FALSE(document_.ReadFileWhole()) << "no longer open";
}

TEST(DeclaredEncodingTest, OfDeclarationsAndMetaElements) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {
      {u"<?xml version=\"1.0\" encoding=\"gb2312\"?><a/>", u"gb2312"},
      {u" \n<?xml encoding='x'?>", u"x"},
      {u"<a/><?xml encoding='x'?>", u""},
      {u"<?other encoding='x'?>", u""},
      {u"<?xml encoding='x", u""},
      {u"<html><head><meta charset=\"utf-8\"></head></html>", u"utf-8"},
      {u"<HTML><HEAD><META NAME=a><META HTTP-EQUIV='content-type' CONTENT='text/html; Charset=Big5'>", u"Big5"},
      {u"<html><head><meta http-equiv='refresh' content='charset=no'><meta charset=yes></head>", u"yes"},
      {u"<meta charset='outside'/>", u""},
      {u"<html><head><meta http-equiv='Content-Type' content='text/html'></head></html>", u""},
      {u"", u""},
  };
  for (const auto& [text, encoding] : rows) EXPECT_EQ(DeclaredEncoding(text), encoding) << vanta::ToUtf8(text);
  EXPECT_EQ(CodePageOf(TEXT("GB2312")), 936u);
  EXPECT_EQ(CodePageOf(TEXT("utf-8")), UINT{CP_UTF8});
  EXPECT_EQ(CodePageOf(TEXT("nothing")), UINT{CP_ACP});
}

TEST(DecodeMarkupTest, WhatIsNoUtf8) {
  for (const char* bytes :
       {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"}) {
    MarkupLog log;
    EXPECT_EQ(DecodeMarkup(bytes, &log).encoding, u"ANSI");
  }
  for (const char* bytes : {"", "a", "\xC2\x80", "\xE0\xA0\x80", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
    MarkupLog log;
    EXPECT_EQ(DecodeMarkup(bytes, &log).encoding, u"UTF-8");
  }
}

}  // namespace
}  // namespace lumo
