#include "lumo/core/global_resources.h"

#include <limits.h>

#include "lumo/core/markup_document.h"
#include "lumo/core/name_hash.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/result.h"
#include "tests/support/machine_fixture.h"

namespace lumo {
namespace {

class GlobalResourcesTest : public testing_support::OnMachine {
 protected:
  std::vector<int> Add(const char* elements) {
    MarkupDocument document;
    EXPECT_TRUE(document.LoadText(vanta::FromUtf8(std::string("<Global>") + elements + "</Global>")));
    return tables_.AddDocument(document);
  }
  LOGFONTW FontOf(const WCHAR* id, int scale) {
    LOGFONTW font = {};
    const HFONT handle = tables_.GetFont(id, scale);
    EXPECT_TRUE(handle) << vanta::ToUtf8(id);
    if (handle) GetObjectW(handle, sizeof font, &font);
    return font;
  }

  GlobalResources tables_{6};
};

TEST_F(GlobalResourcesTest, ElementsAnswerTheirCodesInOrder) {
  EXPECT_EQ(Add("<Font id='f' name='Arial'/><Other id='f'/><Font id='f' name='Arial'/><Font id='' name='a'/>"
                "<Font id='g'/><Color name='c' value='#1'/><Color name='c' value='#2'/><Color name='d'/>"
                "<Color value='#3'/><Theme name='t' a='1'/><Theme name='t' a='2'/><Theme a='3'/>"),
            (std::vector<int>{LumoOk, GlobalResources::kPassedOver, LumoDuplicate, LumoMissingArgument,
                              LumoMissingArgument, LumoOk, LumoDuplicate, LumoMissingArgument, LumoMissingArgument,
                              LumoOk, LumoDuplicate, LumoMissingArgument}));
  EXPECT_EQ(tables_.GetColor(TEXT("c")), 1u);
  EXPECT_EQ(tables_.GetThemeAttributes(TEXT("t")), u"a=\"1\"");
}

TEST_F(GlobalResourcesTest, ColorsSkipTheFirstCharacterWhateverItIs) {
  Add("<Color name='green' value='#ff00bb96'/><Color name='half' value='#7f000000'/>"
      "<Color name='bare' value='ff0000'/><Color name='none' value=''/>");
  EXPECT_EQ(tables_.GetColor(TEXT("green")), 0xFF00BB96u);
  EXPECT_EQ(tables_.GetColor(TEXT("half")), 0x7F000000u);
  EXPECT_EQ(tables_.GetColor(TEXT("bare")), 0xF0000u);
  EXPECT_EQ(tables_.GetColor(TEXT("none")), 0u);
  EXPECT_EQ(tables_.GetColor(TEXT("#ff00bb96")), 0u) << "a value is no name";
  EXPECT_EQ(tables_.GetColor(TEXT("Green")), 0u);
}

TEST_F(GlobalResourcesTest, ThemesKeepTheirAttributesInOrder) {
  Add("<Theme normaltextcolor='a' name='t' hottextcolor='b &lt; c'/><Theme name='bare'/>");
  EXPECT_EQ(tables_.GetThemeAttributes(TEXT("t")), u"normaltextcolor=\"a\" hottextcolor=\"b < c\"");
  EXPECT_EQ(tables_.GetThemeAttributes(TEXT("bare")), u"");
  EXPECT_EQ(tables_.GetThemeAttributes(TEXT("missing")), u"");
}

TEST_F(GlobalResourcesTest, FontsAreMadeOnceAScale) {
  Add("<Font id='system_12' name='System' size='12' default='1'/>"
      "<Font id='b' name='Arial' size='13' bold='1' italic='1' underline='1' strikeout='1'/>");
  const LOGFONTW font = FontOf(TEXT("system_12"), 150);
  EXPECT_EQ(String(font.lfFaceName), u"\u5FAE\u8F6F\u96C5\u9ED1");
  EXPECT_EQ(font.lfHeight, -18);
  EXPECT_EQ(font.lfCharSet, DEFAULT_CHARSET);
  EXPECT_EQ(font.lfWeight, 400);
  EXPECT_FALSE(font.lfItalic || font.lfUnderline || font.lfStrikeOut);
  EXPECT_EQ(tables_.GetFont(TEXT("system_12"), 150), tables_.GetFont(TEXT("system_12"), 150));
  EXPECT_NE(tables_.GetFont(TEXT("system_12"), 150), tables_.GetFont(TEXT("system_12"), 100));
  EXPECT_EQ(tables_.GetFont(TEXT(""), 100), tables_.GetFont(TEXT("system_12"), 100)) << "the default";
  const LOGFONTW bold = FontOf(TEXT("b"), 100);
  EXPECT_EQ(bold.lfWeight, 1100);
  EXPECT_EQ(bold.lfHeight, -13);
  EXPECT_TRUE(bold.lfItalic && bold.lfUnderline && bold.lfStrikeOut);
  EXPECT_EQ(FontOf(TEXT("b"), 125).lfHeight, -16);
  EXPECT_FALSE(tables_.GetFont(TEXT("missing"), 100));
  EXPECT_EQ(HashName(FontCacheKey(TEXT("b"), -5)), HashName(TEXT("b_factor_-5")));
}

TEST_F(GlobalResourcesTest, OlderSystemsHaveAnotherSystemFace) {
  GlobalResources older(5);
  older.AddFont(TEXT("f"), TEXT("SYSTEM"), 12, false, false, false, false, false);
  LOGFONTW font;
  ASSERT_TRUE(older.DescribeFont(TEXT("f"), 100, &font));
  EXPECT_EQ(String(font.lfFaceName), u"\u65B0\u5B8B\u4F53");
}

TEST_F(GlobalResourcesTest, TheFirstDefinitionKeepsTheDefaultOfADuplicateAway) {
  Add("<Font id='a' name='Arial' size='1'/><Font id='a' name='Tahoma' size='2' default='1'/>");
  EXPECT_EQ(tables_.DefaultFontId(), u"");
  EXPECT_FALSE(tables_.GetFont(TEXT(""), 100));
  Add("<Font id='b' name='Arial' default='1'/><Font id='c' name='Arial' default='2'/>");
  EXPECT_EQ(tables_.DefaultFontId(), u"c") << "the last one";
}

TEST_F(GlobalResourcesTest, HostileFontsAreHarmless) {
  const String long_face(1000, 'x');
  tables_.AddFont(TEXT("f"), long_face.c_str(), INT_MIN, false, false, false, false, false);
  LOGFONTW font;
  ASSERT_TRUE(tables_.DescribeFont(TEXT("f"), 100, &font));
  EXPECT_EQ(String(font.lfFaceName).size(), size_t{LF_FACESIZE - 1});
  EXPECT_EQ(font.lfHeight, INT_MAX);
  EXPECT_TRUE(tables_.DescribeFont(TEXT("f"), INT_MAX, &font));
}

TEST_F(GlobalResourcesTest, ReleasingFontsKeepsColorsAndThemes) {
  Add("<Font id='a' name='Arial' default='1'/><Color name='c' value='#5'/>");
  tables_.GetFont(TEXT("a"), 100);
  tables_.ReleaseFonts();
  EXPECT_FALSE(tables_.GetFont(TEXT("a"), 100));
  EXPECT_EQ(tables_.DefaultFontId(), u"");
  EXPECT_EQ(tables_.GetColor(TEXT("c")), 5u);
}

class ThemesTest : public GlobalResourcesTest {
 protected:
  // What a control's setter receives, as "name=value;".
  std::string Apply(const WCHAR* names) {
    std::string applied;
    const AttributeSetter set = [&](const WCHAR* name, const WCHAR* value) {
      if (StringView(name) == TEXT("theme")) {
        tables_.ApplyThemes(value, set);
      } else {
        applied += vanta::ToUtf8(name) + "=" + vanta::ToUtf8(value) + ";";
      }
    };
    tables_.ApplyThemes(names, set);
    return applied;
  }
};

TEST_F(ThemesTest, SeveralInOrder) {
  Add("<Theme name='a' x='1' y='2'/><Theme name='b' x='3'/><Theme name='n' theme='b a' z='4'/>");
  EXPECT_EQ(Apply(TEXT("b a")), "x=3;x=1;y=2;");
  EXPECT_EQ(Apply(TEXT(" a  missing b ")), "x=1;y=2;x=3;");
  EXPECT_EQ(Apply(TEXT("n")), "x=3;x=1;y=2;z=4;");
  EXPECT_EQ(Apply(TEXT("")), "");
}

TEST_F(ThemesTest, ThatNameThemselvesOrMultiplyComeToAnEnd) {
  Add("<Theme name='self' x='1' theme='self'/><Theme name='p' theme='q' x='2'/><Theme name='q' theme='p' x='3'/>");
  EXPECT_EQ(Apply(TEXT("self")), "x=1;");
  EXPECT_EQ(Apply(TEXT("p")), "x=3;x=2;");
  std::string bombs = "<Theme name='t0' x='1'/>";
  for (int i = 1; i < 64; ++i) {
    const std::string below = "t" + std::to_string(i - 1);
    bombs += "<Theme name='t" + std::to_string(i) + "' theme='" + below + " " + below + "'/>";
  }
  Add(bombs.c_str());
  EXPECT_LE(Apply(TEXT("t63")).size(), 1024 * 4u);
  EXPECT_EQ(Apply(TEXT("t0")), "x=1;") << "the next one starts anew";
}

TEST(AttributeListTest, EndsAtTheFirstDeviation) {
  const std::pair<const WCHAR*, const char*> rows[] = {
      {TEXT("a=\"1\" b=\"2\""), "a=1;b=2;"},
      {TEXT("a=\"1\"  b=\"2\""), "a=1;"},
      {TEXT("a=\"1\",b=\"2\""), "a=1;"},
      {TEXT("a=\"1\"b=\"2\""), "a=1;"},
      {TEXT("a=\"1\" "), "a=1;"},
      {TEXT("a=\"1\"\tb=\"2\""), "a=1;"},
      {TEXT("a=\"1\" b='2' c=\"3\""), "a=1;"},
      {TEXT("a=\"1\" b=\"2"), "a=1;"},
      {TEXT("a=\"1\" b"), "a=1;"},
      {TEXT("a=\"\" b c=\"file='x y'\""), "a=;b c=file='x y';"},
      {TEXT("a= \"1\""), ""},
      {TEXT("a="), ""},
      {TEXT(""), ""},
  };
  for (const auto& [list, pairs] : rows) {
    std::string applied;
    ApplyAttributeList(list, [&](const WCHAR* name, const WCHAR* value) {
      applied += vanta::ToUtf8(name) + "=" + vanta::ToUtf8(value) + ";";
    });
    EXPECT_EQ(applied, pairs) << vanta::ToUtf8(list);
  }
}

}  // namespace
}  // namespace lumo
