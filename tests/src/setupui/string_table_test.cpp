#include "setupui/string_table.h"

#include "setupui/skin_package.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::String;

class StringTableTest : public testing_support::OnMachine {
 protected:
  // The table as "[key=value]…".
  static std::string Parse(std::string_view utf8, size_t limit = std::string_view::npos) {
    std::string text;
    for (const auto& [key, value] : vanta::ParseStringTable(utf8, limit)) {
      text += "[" + vanta::ToUtf8(key) + "=" + vanta::ToUtf8(value) + "]";
    }
    return text;
  }
};

TEST_F(StringTableTest, LinesOfTheRightShapeCount) {
  const struct {
    std::string_view text;
    const char* table;
  } rows[] = {
      {"", ""},
      {"key=value", "[key=value]"},
      {"\t key \t=\t value \r\nb=2\n", "[b=2][key=value]"},
      {"a=1\na=2\n", "[a=2]"},
      {"a=b=c\n", ""},
      {"a=b=\n", ""},
      {"a=\n", ""},
      {"a=\r\n", ""},
      {"=b\n", ""},
      {"no equals\n\n", ""},
      {"a= \n", "[a=]"},
      {" =b\n", "[=b]"},
      {"; a=b\n", ""},
      {"a;=b\n", ""},
      {"a=b;c\n", "[a=b;c]"},
      {"\xEF\xBB\xBF; comment\na=b", "[a=b]"},
      {"a=\xE5\x8D\xB8\xE8\xBD\xBD\n", "[a=\xE5\x8D\xB8\xE8\xBD\xBD]"},
      {"a=\x1d\x1e"
       "b\x1d\n",
       "[a=\x1e"
       "b]"},
      {"a\xff=\xfe"
       "b",
       "[a\xEF\xBF\xBD=\xEF\xBF\xBD"
       "b]"},
  };
  for (const auto& row : rows) EXPECT_EQ(Parse(row.text), row.table) << row.text;
}

TEST_F(StringTableTest, LinesBeyondTheLimitCountAsSeveral) {
  EXPECT_EQ(Parse("abc=def\nx=1\n", 6), "[abc=de][x=1]");
  EXPECT_EQ(Parse("abcd=fg=h\n", 6), "[abcd=f][g=h]");
}

TEST_F(StringTableTest, EscapesAreExpanded) {
  EXPECT_EQ(vanta::ExpandEscapes(TEXT("a\\nb\\r\\t\\\\n")), String(TEXT("a\nb\r\\t\\\n")));
}

TEST_F(StringTableTest, WithoutAPackageTheDiskIsRead) {
  Start();
  Put("C:\\skin\\lang\\gdstrings.ini", "KEY=one\\ntwo\n" + std::string(4090, 'k') + "=12345\nLAST=3\n");
  vanta::LoadStringTable(TEXT("C:\\skin\\lang\\"));
  EXPECT_EQ(vanta::GetString(TEXT("KEY")), String(TEXT("one\ntwo")));
  EXPECT_EQ(vanta::GetStringShared(TEXT("LAST")), String(TEXT("3")));
  EXPECT_EQ(vanta::GetString(String(4090, 'k')), String(TEXT("1234")));
  EXPECT_EQ(vanta::GetStringShared(TEXT("MISSING")), String());
  vanta::LoadStringTable(TEXT("C:\\nowhere\\"));
  EXPECT_EQ(vanta::GetString(TEXT("KEY")), String());
}

TEST_F(StringTableTest, SkinThatIsNotThereLeavesAWorkingProcess) {
  Start();
  EXPECT_EQ(vanta::LoadSkinResource(9999, TEXT("SKIN"), ""), vanta::SkinResourceFailure);
  EXPECT_EQ(vanta::InitSkin(TEXT("r\\"), nullptr, TEXT("l"), true), vanta::SkinMissingArgument);
  EXPECT_EQ(vanta::InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true), vanta::SkinOk);
  EXPECT_EQ(vanta::SkinThemeFolder(), String(TEXT("resources\\themes\\default\\")));
  DWORD size = 1;
  EXPECT_FALSE(vanta::ReadSkinFile(TEXT("global.xml"), &size));
  EXPECT_EQ(size, 0u);
  EXPECT_FALSE(vanta::SkinFileExists(TEXT("global.xml")));
  EXPECT_EQ(vanta::ShutdownSkin(), vanta::SkinOk);
}

}  // namespace
