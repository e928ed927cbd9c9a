// vantakit check --skin: what the library would pass over in silence is named, with its line.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <fstream>

#include "tests/src/lumo/render/png.h"
#include "tools/vantakit/check.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr char kTheme[] = "resources/themes/default/";
constexpr char kDrawing[] =
    "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'><rect width='4' height='4'/></svg>";

// A small skin without faults, in a folder of its own.
class SkinCheckTest : public testing::Test {
 protected:
  SkinCheckTest() {
    std::string pattern = (fs::temp_directory_path() / "vanta-skincheck-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::string table = "HELLO = hello\n";
    for (const char* const key : NeededStrings()) table += std::string(key) + " = text\n";
    Write("resources/lang/zh-CN/gdstrings.ini", table);
    WriteGlobals("");
    WriteTheme("MessageWnd/MessageWnd.xml", "<Window><VBox/></Window>");
    WriteTheme("SetupWnd/a.svg", kDrawing);
    WriteTheme("public/b.svg", kDrawing);
    WritePicture("SetupWnd/p.png");
    WriteLayout("<VBox/>");
  }
  ~SkinCheckTest() override { fs::remove_all(folder_); }

  void Write(const std::string& name, std::string_view text) {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  void WriteTheme(const std::string& name, std::string_view text) { Write(kTheme + name, text); }
  void WritePicture(const std::string& name) {
    WriteTheme(name, lumo::MakePng(4, 4, [](int, int) { return 0xFF336699; }));
  }
  // Fonts f and colours c, d are there; `more` begins in line 5.
  void WriteGlobals(const std::string& more) {
    WriteTheme("global.xml",
               "<Global>\n<Font id='f' name='system' size='12' default='1'/>\n<Color name='c' "
               "value='#ff000000'/>\n<Color name='d' value='#ffffffff'/>\n" +
                   more + "</Global>");
  }
  // The body begins in line 2.
  void WriteLayout(const std::string& body) {
    WriteTheme("SetupWnd/SetupWnd.xml", "<Window size='600,400'>\n" + body + "\n</Window>");
  }

  // Findings about the setup window's layout without its name, others whole.
  Texts Check(bool unused = false) {
    Texts lines;
    const std::string layout = std::string(kTheme) + "SetupWnd/SetupWnd.xml:";
    for (const Finding& finding : CheckSkin(folder_, unused)) {
      const std::string line = LineOf(finding);
      lines.push_back(line.starts_with(layout) ? line.substr(layout.size()) : line);
    }
    return lines;
  }
  Texts CheckLayout(const std::string& body) {
    WriteLayout(body);
    return Check();
  }
  Texts CheckGlobals(const std::string& more) {
    WriteGlobals(more);
    Texts lines;
    for (const std::string& line : Check()) lines.push_back(line.substr(line.find("xml:") + 4));
    return lines;
  }

  fs::path folder_;
};

struct Row {
  const char* text;
  Texts findings;
};

TEST_F(SkinCheckTest, ASoundSkinHasNoFindings) {
  WriteGlobals("<Theme name='t' font='f' bkcolor='c' normalimage=\"file='a.svg' color='c' scale='1.6'\"/>\n");
  EXPECT_EQ(
      CheckLayout("<VBox bkcolor=\"color1='c' color2='d' mode='1'\" padding='1,2,3,4' width='stretch'>\n"
                  "<Button name='b' theme='t' textid='HELLO' align='hcenter,vcenter' halign='center'/>\n"
                  "<Control bkimage='../public/b.svg' height='auto' maxwidth='stretch'/><Control bkimage='p.png'/>\n"
                  "<TabBox selectedid='1'><Label/><Label text='&lt;'/></TabBox>\n"
                  "<Event type='mouseenter setfocus' receiver='b' attribute='text=\"1\" width=\"2\"'/></VBox>"),
      Texts());
}

TEST_F(SkinCheckTest, TagsAndAttributesThatNobodyTakes) {
  const Row rows[] = {
      {"<VBox>\n<vbox/>\n<Blink/></VBox>",
       {"3: unknown tag <vbox>; it is passed over with all that is in it; \"VBox\"?",
        "4: unknown tag <Blink>; it is passed over with all that is in it"}},
      {"<VBox><Label widht='4'/>\n<Label\n  fontt='f'/></VBox>",
       {"2: <Label> has no attribute \"widht\"; \"width\"?", "4: <Label> has no attribute \"fontt\"; \"font\"?"}},
      {"<VBox padding='1,1,1,1'><Control text='a'/><Label padding='1,1,1,1'/><Button selected='1'/>\n"
       "<CheckBox selected='1' group='g'/><Option group='g'/><Label max='4'/><Progress max='4'/><Box columns='2'/>\n"
       "<TileBox columns='2'/><VBox selectedid='0'/><CircleProgress circlewidth='3'/></VBox>",
       {"2: <Control> has no attribute \"text\"", "2: <Label> has no attribute \"padding\"",
        "2: <Button> has no attribute \"selected\"", "3: <CheckBox> has no attribute \"group\"",
        "3: <Label> has no attribute \"max\"", "3: <Box> has no attribute \"columns\"",
        "4: <VBox> has no attribute \"selectedid\""}},
      {"<VBox><Label><Control/></Label></VBox>", {"2: <Label> holds no children, so this <Control> is dropped"}},
      {"<VBox><Label text='1' text='2'/></VBox>", {"2: \"text\" is given twice"}},
      {"<VBox><Label name='a'/>\n<Label name='a'/></VBox>",
       {"3: \"a\" is the name of the control in line 2 too; only the last is found by it"}},
      {"<VBox/>\n<HBox/>", {"1: holds more than one control; only the last is kept"}},
      {"", {"1: holds no control, so nothing is made of it"}},
      {"<TabBox selectedid='2'><Label/><Label/></TabBox>", {"2: selectedid=\"2\": the pages are 0 to 1"}},
  };
  for (const Row& row : rows) EXPECT_EQ(CheckLayout(row.text), row.findings) << row.text;
}

TEST_F(SkinCheckTest, TheWindowElementHasAttributesOfItsOwn) {
  WriteTheme("SetupWnd/SetupWnd.xml",
             "<Window size='600' captoin='0,0,0,9' textid='GONE' shadowimage='x.png'\n"
             " sizebox='1,2,3' mininfo='-1,0' width='2'>\n<VBox/></Window>");
  EXPECT_EQ(Check(),
            (Texts{"1: size=\"600\": not the two numbers width,height",
                   "1: <Window> has no attribute \"captoin\"; \"caption\"?",
                   "1: textid=\"GONE\": no \"GONE\" in the string table",
                   "1: shadowimage=\"x.png\": no picture \"x.png\" in the skin",
                   "2: sizebox=\"1,2,3\": not the four numbers left,top,right,bottom",
                   "2: mininfo=\"-1,0\": a number below 0 is passed over", "2: <Window> has no attribute \"width\""}));
  WriteTheme("SetupWnd/SetupWnd.xml", "<Windows size='1,2'><VBox/></Windows>");
  EXPECT_EQ(Check(), Texts{"1: the root is <Windows>, so its attributes are passed over; <Window>?"});
}

TEST_F(SkinCheckTest, ValuesThatAreNotWhatTheyShouldBe) {
  const Row rows[] = {
      {"width='12px'", {"neither \"stretch\" nor \"auto\" nor a number; it reads as 12"}},
      {"width='Auto'", {"neither \"stretch\" nor \"auto\" nor a number; it reads as 0"}},
      {"width='-7'", {"a size below 0 is passed over"}},
      {"minwidth='-7'", {"a number below 0 is passed over"}},
      {"visible='true'", {"neither 0 nor 1; it reads as 0"}},
      {"alpha=''", {"no whole number; it reads as 0"}},
      {"margin='1,2,3'", {"not the four numbers left,top,right,bottom"}},
      {"margin='1, 2, 3, 4'", {}},
      {"textpadding='1,2,3,4,5'", {"not the four numbers left,top,right,bottom"}},
      {"renderoffset='1'", {"not the two numbers x,y"}},
      {"halign='Center'", {"\"Center\" is none of the words left, center, right"}},
      {"valign='middle'", {"\"middle\" is none of the words top, center, bottom"}},
      {"cursortype='wait'", {"\"wait\" is none of the words arrow, hand, ibeam"}},
      {"align='center,vcenter'", {"\"center\" is none of the words left, hcenter, right, top, vcenter, bottom"}},
      {"nofocus='0'", {"counts whatever its value is"}},
      {"font='g'", {"no \"g\" among the fonts"}},
      {"theme='t'", {"no \"t\" among the themes"}},
      {"tooltiptextid='GONE'", {"no \"GONE\" in the string table"}},
      {"bkcolor='#ff000000'", {"no \"#ff000000\" among the colours"}},
      {"normaltextcolor='e'", {"no \"e\" among the colours"}},
      {"hotcolor=\"color1='c' colour2='d'\"",
       {"unknown key \"colour2\"", "a gradient has both color1 and color2", "names no colour"}},
      {"hotcolor=\"color='c' dest='1,2'\"", {"not the four numbers left,top,right,bottom"}},
      {"hotcolor=\"color='c'mode='1'\"", {"not read from \"mode='1'\" on"}},
      {"bkimage='gone.svg'", {"no picture \"gone.svg\" in the skin"}},
      {"bkimage='A.SVG'", {}},
      {"bkimage=\"file='gone.svg' scale='x' fade='y' corner='1'\"",
       {"no decimal number above 0", "no whole number; it reads as 0", "not the four numbers left,top,right,bottom",
        "no picture \"gone.svg\" in the skin"}},
      {"bkimage=\"color='c'\"", {"names no file"}},
      {"bkimage=\"file='a.svg' color='e'\"", {"no \"e\" among the colours"}},
  };
  for (const Row& row : rows) {
    Texts findings;
    for (const std::string& line : CheckLayout(std::string("<VBox><Label ") + row.text + "/></VBox>")) {
      EXPECT_TRUE(line.starts_with("2: ")) << line;
      findings.push_back(line.substr(line.rfind("\": ") == line.npos ? 0 : line.find("\": ") + 3));
    }
    EXPECT_EQ(findings, row.findings) << row.text;
  }
  EXPECT_EQ(CheckLayout("<VBox bordersize='1,1,0,1'/>"),
            Texts{"2: warning: bordersize=\"1,1,0,1\": only the first number counts"});
}

TEST_F(SkinCheckTest, MarkupThatIsNoMarkup) {
  const Row rows[] = {
      {"<VBox>\n<HBox>\n</VBox>", {"3: <HBox> has no end tag; it is cut off in line 4"}},
      {"<VBox>\n</HBox></VBox>", {"3: </HBox> ends nothing"}},
      {"<VBox>\n< b</VBox>", {"3: a \"<\" that begins no tag is read as text"}},
      {"<VBox>\nwords</VBox>", {"3: text between tags is not read"}},
      {"<VBox/><!-- a\nb", {"2: this comment does not end", "1: <Window> has no end tag; it is cut off in line 4"}},
  };
  for (const Row& row : rows) {
    Texts findings = row.findings, found = CheckLayout(row.text);
    std::sort(findings.begin(), findings.end());
    EXPECT_EQ(found, findings) << row.text;
  }
  WriteTheme("SetupWnd/SetupWnd.xml", "");
  EXPECT_EQ(Check(), Texts{" is empty"});
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<VBox>";
  EXPECT_FALSE(CheckLayout(deep).empty()) << "no crash";
}

TEST_F(SkinCheckTest, BindingsNameEventsReceiversAndTheirAttributes) {
  EXPECT_EQ(
      CheckLayout("<VBox><Label name='a'><BubbledEvent type='select' receiver='a'/></Label>\n"
                  "<Event type='click' receiver='b'/>\n"
                  "<Event type='select' receiver='a' attribute='text=\"1\"  font=\"f\"' to='a'/>\n"
                  "<Event type='select' receiver='a' attribute='font=\"g\" selected=\"1\"'/></VBox>"),
      (Texts{"2: <BubbledEvent> belongs into a container", "3: no event is called \"click\", so this never happens",
             "3: no control is named \"b\"", "4: <Event> has no attribute \"to\"",
             "4: the list of attributes is not read to its end: name=\"value\", one space between two",
             "5: font=\"g\": no \"g\" among the fonts", "5: <Label> has no attribute \"selected\""}));
}

TEST_F(SkinCheckTest, GlobalDefinitions) {
  const Row rows[] = {
      {"<Font id='g' size='12'/>", {"5: <Font> needs \"id\" and \"name\""}},
      {"<Font id='g' name='x' size='big' weight='1'/>",
       {"5: size=\"big\": no whole number; it reads as 0", "5: <Font> has no attribute \"weight\""}},
      {"<Font id='f' name='x' size='1'/>", {"5: \"f\" is defined in line 2 already, which counts"}},
      {"<Color name='e' value='ff0000'/>", {"5: value=\"ff0000\": not \"#\" and eight hexadecimal digits"}},
      {"<Color name='c' value='#ff000000'/>", {"5: \"c\" is defined in line 3 already, which counts"}},
      {"<Colour name='e'/>", {"5: <Colour> is none of Font, Color and Theme, so it is passed over"}},
      {"<Theme\nname='t'\nbkcolour='c'\nfont='g'/>",
       {"7: no control has an attribute \"bkcolour\"; \"bkcolor\"?", "8: font=\"g\": no \"g\" among the fonts"}},
      {"<Theme name='t' text='a\"b'/>", {"5: text=\"a\"b\": a theme's value ends at a double quote"}},
  };
  for (const Row& row : rows) EXPECT_EQ(CheckGlobals(row.text), row.findings) << row.text;
}

TEST_F(SkinCheckTest, ThemesAreHeldAgainstTheControlsAndWindowsThatUseThem) {
  WriteGlobals("<Theme name='t' max='4'\nbkimage='a.svg'/>");
  WriteTheme("MessageWnd/MessageWnd.xml", "<Window>\n<Label theme='t'/></Window>");
  EXPECT_EQ(CheckLayout("<Progress theme='t'/>"),
            (Texts{std::string(kTheme) +
                       "MessageWnd/MessageWnd.xml:2: warning: <Label> does not take \"max\" of the theme \"t\"",
                   std::string(kTheme) + "global.xml:6: bkimage=\"a.svg\" for " + kTheme +
                       "MessageWnd/MessageWnd.xml: no picture \"a.svg\" in the skin"}));
}

TEST_F(SkinCheckTest, PicturesForOtherScales) {
  WritePicture("SetupWnd/150/p.png");
  WriteTheme("SetupWnd/200/q.png", "no picture");
  WritePicture("SetupWnd/q.png");
  WritePicture("public/125/other.png");
  WriteTheme("SetupWnd/r.svg", "<svg/>");
  EXPECT_EQ(CheckLayout("<VBox bkimage='p.png'>\n<Label bkimage='q.png'/>\n<Label bkimage='r.svg'/></VBox>"),
            (Texts{"2: warning: bkimage=\"p.png\": no \"p.png\" in the folder 125 beside it",
                   "2: warning: bkimage=\"p.png\": no \"p.png\" in the folder 200 beside it",
                   "3: warning: bkimage=\"q.png\": no \"q.png\" in the folder 125 beside it",
                   "3: warning: bkimage=\"q.png\": no \"q.png\" in the folder 150 beside it",
                   std::string("3: bkimage=\"q.png\": ") + kTheme + "SetupWnd/q.png cannot be drawn at 200 percent",
                   std::string("4: bkimage=\"r.svg\": ") + kTheme + "SetupWnd/r.svg cannot be drawn"}));
}

TEST_F(SkinCheckTest, LayoutsInLayoutsArePartsOfTheWindow) {
  WriteTheme("parts/part.xml", "<Part>\n<Label name='a' bkimage='a.svg' font='g'/></Part>");
  WriteTheme("parts/loop.xml", "<Part><ChildBox file='parts/loop.xml'/></Part>");
  EXPECT_EQ(CheckLayout("<VBox><Label name='a'/>\n<ChildBox file='parts/part.xml'/><ChildBox file='gone.xml'/>\n"
                        "<ChildBox file='parts/loop.xml'/></VBox>"),
            (Texts{"3: file=\"gone.xml\": no layout \"gone.xml\" in the theme",
                   std::string(kTheme) +
                       "parts/loop.xml:1: file=\"parts/loop.xml\": a layout that pulls itself in is refused",
                   std::string(kTheme) + "parts/part.xml:2: \"a\" is the name of the control in " + kTheme +
                       "SetupWnd/SetupWnd.xml:2 too; only the last is found by it",
                   std::string(kTheme) + "parts/part.xml:2: font=\"g\": no \"g\" among the fonts"}));
}

TEST_F(SkinCheckTest, WhatNoLayoutUsesIsAWarningOnRequest) {
  EXPECT_EQ(CheckLayout("<VBox bkcolor='c' bkimage='p.png'/>"), Texts());
  const std::string globals = std::string(kTheme) + "global.xml";
  const Texts unused = Check(true);
  for (const std::string& line :
       {globals + ":2: warning: font \"f\" is not used", globals + ":4: warning: colour \"d\" is not used",
        std::string(kTheme) + "public/b.svg: warning: is in no layout",
        std::string("resources/lang/zh-CN/gdstrings.ini: warning: HELLO is not used")}) {
    EXPECT_NE(std::find(unused.begin(), unused.end(), line), unused.end()) << line;
  }
  EXPECT_EQ(unused.size(), 5u) << "the fifth: a.svg";
  EXPECT_FALSE(HasErrors(CheckSkin(folder_, true)));
}

}  // namespace
}  // namespace vantakit
