#include "lumo/core/markup_document.h"

#include <gtest/gtest.h>

#include <string>

namespace lumo {
namespace {

// The names of the log's entries, each followed by a blank.
std::string LogOf(const MarkupDocument& document) {
  MarkupDocument log;
  log.LoadText(document.ParseLog());
  std::string names;
  while (log.NextElement()) names += vanta::ToUtf8(log.TagName()) + " ";
  return names;
}

// The tree below the main position: "tag(a=value,b=value)[children]".
std::string Print(MarkupDocument& document) {
  std::string text = vanta::ToUtf8(document.TagName());
  String name, value;
  for (size_t n = 0; document.AttributeAt(n, &name, &value); ++n) {
    text += (n ? "," : "(") + vanta::ToUtf8(name) + "=" + vanta::ToUtf8(value);
  }
  if (document.AttributeAt(0, &name, &value)) text += ")";
  std::string children;
  while (document.NextChild()) {
    document.EnterChild();
    children += (children.empty() ? "" : " ") + Print(document);
    document.LeaveElement();
  }
  return children.empty() ? text : text + "[" + children + "]";
}

std::string TreeOf(MarkupDocument& document) {
  std::string tree;
  document.Rewind();
  while (document.NextElement()) tree += (tree.empty() ? "" : " ") + Print(document);
  return tree;
}

struct Row {
  const char* text;
  bool well_formed;
  const char* tree;
  const char* log = "";
};

TEST(MarkupDocumentTest, TextsAndWhatBecomesOfThem) {
  const Row rows[] = {
      {"<a/>", true, "a"},
      {"<a></a>", true, "a"},
      {"<Window size=\"600,400\"><VBox><HBox/></VBox></Window>", true, "Window(size=600,400)[VBox[HBox]]"},
      {"<a><b/><c><d/></c><b/></a>", true, "a[b c[d] b]"},
      // What stands between the tags.
      {"\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<!-- <x> --><!DOCTYPE a [<!ENTITY b \"<c>\">]><a>text</a>", true, "a"},
      {"<a><![CDATA[<b></c>]]>]]&gt;<!----><!-- - -- > --><?p <q>?></a>", true, "a"},
      {"text <a/> text", true, "a"},
      // Quotes hide what would end the tag, in end tags too.
      {"<a b='x>y'/>", true, "a(b=x>y)"},
      {"<a b=\"/>\" c='\"'></a>", true, "a(b=/>,c=\")"},
      {"<a b = \n'1'\tc=\"2\"/>", true, "a(b=1,c=2)"},
      {"<a></a b='>'>", true, "a"},
      {"<a it's>x</a>", true, "a(it's=)"},
      {"<a b='1'c=\"2\"d=3/>", true, "a(b=1,c=2,d=3)"},
      {"<a b=x/y c=/>", true, "a(b=x/y,c=)"},
      {"<a b/>", true, "a(b=)"},
      {"<a disabled b='1'></a>", true, "a(disabled=,b=1)"},
      {"<a b=''/>", true, "a(b=)"},
      {"<a / b='1'/>", true, "a(b=1)"},
      {"<a/ ></a>", true, "a"},
      // Names.
      {"<_a:b.c-1/>", true, "_a:b.c-1"},
      {"<\xE7\xAA\x97\xE5\x8F\xA3 \xE5\x90\x8D='\xE5\x80\xBC'/>", true,
       "\xE7\xAA\x97\xE5\x8F\xA3(\xE5\x90\x8D=\xE5\x80\xBC)"},
      {"<{x/>", true, "{x"},
      {"<a><A/></a>", true, "a[A]"},
      // A "<" that begins nothing is logged and leaves the verdict alone.
      {"<a>1 < 2 <3</a>", true, "a", "first_tag_syntax first_tag_syntax "},
      {"<a><!x><!-x><![x]]><!DATA></a>", true, "a",
       "exclamation_tag_syntax comment_tag_syntax cdata_section_syntax doctype_tag_syntax "},
      {"<a/><", true, "a", "first_tag_syntax "},
      // Elements that do not match.
      {"<Window><VBox></Window>", false, "Window[VBox]", "unended_start_tag "},
      {"<a><b><c></a>", false, "a[b[c]]", "unended_start_tag unended_start_tag "},
      {"<a></HBox></a>", false, "a", "lone_end_tag "},
      {"<a><b></B></b></a>", false, "a[b]", "lone_end_tag "},
      {"<a></ a></a>", false, "a", "lone_end_tag "},
      {"</a>", false, "", "lone_end_tag no_root_element "},
      {"<a><b/>", false, "a[b]", "unended_start_tag "},
      {"<a><b></a></b>", false, "a[b]", "unended_start_tag lone_end_tag "},
      {"<ab><a></ab></a>", false, "ab[a]", "unended_start_tag lone_end_tag "},
      // One root.
      {"<a/><b/>", false, "a b", "root_has_sibling "},
      {"<a/><b/><c/>", false, "a b c", "root_has_sibling "},
      {"text", false, "", "no_root_element "},
      {" \n", false, "", "no_root_element "},
      {"", false, "", ""},
      // Open at the end.
      {"<a", false, "", "unterminated_tag_syntax no_root_element "},
      {"<a b='>", false, "", "unterminated_tag_syntax no_root_element "},
      {"<a><b c=\"1\" d='</a>", false, "a", "unterminated_tag_syntax unended_start_tag "},
      {"<a/><!-- >", false, "a", "unterminated_tag_syntax "},
      {"<a/><!-->", false, "a", "unterminated_tag_syntax "},
      {"<a/><?x >", false, "a", "unterminated_tag_syntax "},
      {"<a/><?>", false, "a", "unterminated_tag_syntax "},
      {"<a/><![CDATA[ ]]", false, "a", "unterminated_tag_syntax "},
      {"<!DOCTYPE a [<!b>", false, "", "unterminated_tag_syntax no_root_element "},
      {"<a></a", false, "a", "unterminated_tag_syntax unended_start_tag "},
  };
  for (const Row& row : rows) {
    MarkupDocument document;
    EXPECT_EQ(document.LoadText(vanta::FromUtf8(row.text)), row.well_formed) << row.text;
    EXPECT_EQ(TreeOf(document), row.tree) << row.text;
    EXPECT_EQ(LogOf(document), row.log) << row.text;
  }
}

TEST(MarkupDocumentTest, ReferencesAreDecodedOnceAndOnlyInValues) {
  const std::pair<const char*, std::u16string> rows[] = {
      {"a&amp;b&#x41;&nbsp;", u"a&bA\u00A0"},
      {"&lt;&gt;&quot;&apos;&amp;lt;", u"<>\"'&lt;"},
      {"&isin;&thetasym;&Alpha;&alpha;&yuml;", u"\u2208\u03D1\u0391\u03B1\u00FF"},
      {"&#65;&#0065;&#x1F600;&#1114111;", u"AA\xD83D\xDE00\xDBFF\xDFFF"},
      {"&#0;&#x0;&#1114112;&#x99999999999;", u"&#0;&#x0;&#1114112;&#x99999999999;"},
      {"&;&#;&#x;&#xG;&#4A;&#X41;", u"&;&#;&#x;&#xG;&#4A;&#X41;"},
      {"&unknown;&Amp;&nbsp&amp", u"&unknown;&Amp;&nbsp&amp"},
      {"&&amp;&", u"&&&"},
      {"&thetasymx;&a b;", u"&thetasymx;&a b;"},
  };
  for (const auto& [written, read] : rows) {
    MarkupDocument document;
    ASSERT_TRUE(document.LoadText(vanta::FromUtf8(std::string("<a&amp; b&lt;='") + written + "'/>"))) << written;
    document.NextElement();
    String name, value;
    ASSERT_TRUE(document.AttributeAt(0, &name, &value));
    EXPECT_EQ(value, read) << written;
    EXPECT_EQ(name, u"b&lt;");
    EXPECT_EQ(document.TagName(), String(u"a&amp;"));
  }
}

class Navigation : public testing::Test {
 protected:
  Navigation() { document_.LoadText(TEXT("<!-- c --><r><a i='1'/><b><c/><a i='2'/></b><a i='3'/></r>")); }

  String Tag() const { return String(document_.TagName()); }
  MarkupDocument document_;
};

TEST_F(Navigation, MovesByNameAndStaysWhereNothingFollows) {
  EXPECT_EQ(Tag(), u"");
  EXPECT_FALSE(document_.NextElement(TEXT("x")));
  EXPECT_TRUE(document_.NextElement(TEXT("r")));
  EXPECT_FALSE(document_.NextElement());
  EXPECT_EQ(Tag(), u"r");
  EXPECT_TRUE(document_.NextChild(TEXT("b")));
  EXPECT_FALSE(document_.NextChild(TEXT("b")));
  EXPECT_EQ(Tag(), u"r") << "only the child position moved";
  document_.EnterChild();
  EXPECT_EQ(Tag(), u"b");
  EXPECT_TRUE(document_.NextChild());
  document_.EnterChild();
  EXPECT_EQ(Tag(), u"c");
  EXPECT_TRUE(document_.NextElement());
  EXPECT_EQ(Tag(), u"a");
  EXPECT_FALSE(document_.NextElement()) << "the parent's children end here";
  document_.LeaveElement();
  EXPECT_EQ(Tag(), u"b");
  EXPECT_FALSE(document_.NextChild()) << "goes on behind the element that was left";
  document_.LeaveElement();
  EXPECT_TRUE(document_.NextChild());
  document_.EnterChild();
  EXPECT_EQ(Tag(), u"a");
}

TEST_F(Navigation, TheFirstChildBringsTheMainPositionWithIt) {
  EXPECT_TRUE(document_.NextChild());
  EXPECT_EQ(Tag(), u"r");
  document_.Rewind();
  EXPECT_EQ(Tag(), u"");
  EXPECT_FALSE(document_.NextChild(TEXT("x")));
  EXPECT_EQ(Tag(), u"r");
}

TEST_F(Navigation, AMoveOfTheMainPositionForgetsTheChild) {
  document_.NextChild();
  document_.EnterChild();  // a 1
  document_.NextElement();
  document_.NextChild();
  document_.EnterChild();
  EXPECT_EQ(Tag(), u"c");
}

TEST_F(Navigation, WithoutAChildEnteringStandsBeforeTheFirst) {
  document_.NextElement();
  document_.EnterChild();
  EXPECT_EQ(Tag(), u"");
  EXPECT_TRUE(document_.NextElement());
  EXPECT_EQ(Tag(), u"a");
  document_.LeaveElement();
  document_.LeaveElement();
  document_.LeaveElement();
  EXPECT_EQ(Tag(), u"") << "nothing lies above the document";
  document_.EnterChild();
  EXPECT_TRUE(document_.NextElement(TEXT("r")));
}

TEST_F(Navigation, AttributesByNumberInAnyOrder) {
  document_.LoadText(TEXT("<r a='1' b='&lt;' c='3'><x d='4'/></r>"));
  String name = TEXT("kept"), value = TEXT("kept");
  EXPECT_FALSE(document_.AttributeAt(0, &name, &value)) << "no element yet";
  document_.NextElement();
  for (const size_t n : {size_t{2}, size_t{0}, size_t{1}}) {
    ASSERT_TRUE(document_.AttributeAt(n, &name, &value));
    EXPECT_EQ(name, String(1, static_cast<WCHAR>('a' + n)));
  }
  EXPECT_EQ(value, u"<");
  EXPECT_FALSE(document_.AttributeAt(3, &name, &value)) << "the next element's are not this one's";
  EXPECT_FALSE(document_.AttributeAt(static_cast<size_t>(-1), &name, &value));
  EXPECT_EQ(name, u"b");
}

TEST_F(Navigation, EmptyDocumentsAnswerNothing) {
  for (const bool loaded : {false, true}) {
    MarkupDocument document;
    if (loaded) document.LoadText({});
    EXPECT_FALSE(document.NextElement());
    EXPECT_FALSE(document.NextChild());
    document.EnterChild();
    document.LeaveElement();
    document.Rewind();
    EXPECT_EQ(document.NextNode(), MarkupNode::None);
    EXPECT_EQ(document.TagName(), StringView());
  }
}

TEST(MarkupNodesTest, EveryKindInItsPlace) {
  MarkupDocument document;
  document.LoadText(TEXT("<?xml v?><!DOCTYPE skin [<!x>]><r>a < b<x/> \n<!--c--><![CDATA[<]]></lone><?go on?></r>"));
  std::string seen;
  const auto note = [&] { seen += vanta::ToUtf8(document.TagName()) + " "; };
  while (document.NextNode() != MarkupNode::None) note();
  EXPECT_EQ(seen, "xml skin r ");
  document.Rewind();
  document.NextElement();
  document.EnterChild();
  seen.clear();
  EXPECT_EQ(document.NextNode(), MarkupNode::Text);
  note();
  EXPECT_EQ(document.NextNode(), MarkupNode::Element);
  note();
  EXPECT_EQ(document.NextNode(), MarkupNode::Whitespace);
  while (document.NextNode() != MarkupNode::None) note();
  EXPECT_EQ(seen, "#text x #comment #cdata-section go ");
}

TEST(MarkupLimitsTest, DepthAndDisorderCostNoMoreThanLength) {
  constexpr int kMany = 100'000;
  String deep, crossed;
  for (int i = 0; i < kMany; ++i) deep += TEXT("<a>");
  crossed = deep;
  for (int i = 0; i < kMany; ++i) deep += TEXT("</a>");
  for (int i = 0; i < kMany; ++i) crossed += TEXT("</b>");
  MarkupDocument document;
  EXPECT_TRUE(document.LoadText(deep));
  int levels = 0;
  for (; document.NextChild(); ++levels) document.EnterChild();
  EXPECT_EQ(levels, kMany - 1);
  EXPECT_FALSE(document.LoadText(crossed));
  EXPECT_FALSE(document.LoadText(String(1'000'000, '<')));
  EXPECT_LT(document.ParseLog().size(), 1'100'000u);
  EXPECT_FALSE(document.LoadText(TEXT("<a b='") + String(1'000'000, '&')));
}

}  // namespace
}  // namespace lumo
