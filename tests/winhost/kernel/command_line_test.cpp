#include "winhost/kernel/command_line.h"

#include <gtest/gtest.h>
#include <shellapi.h>
#include <windows.h>

#include "tests/support/machine_fixture.h"

namespace {

using Words = std::vector<std::u16string>;

struct Split {
  std::u16string text;
  Words words;
};

class SplitsAsTheSystem : public testing::TestWithParam<Split> {};

TEST_P(SplitsAsTheSystem, Words) { EXPECT_EQ(winhost::SplitCommandLine(GetParam().text), GetParam().words); }

INSTANTIATE_TEST_SUITE_P(ProgramName, SplitsAsTheSystem,
                         testing::Values(Split{u"a.exe", {u"a.exe"}}, Split{u"a.exe  ", {u"a.exe"}},
                                         Split{u"\"c d\\e\" f", {u"c d\\e", u"f"}},
                                         Split{u"\"a\"b c", {u"a", u"b", u"c"}},
                                         Split{u"a\\\"b c\" d", {u"a\\\"b", u"c d"}},
                                         Split{u"\"never closed x", {u"never closed x"}}, Split{u" x", {u"", u"x"}},
                                         Split{u"\"\" x", {u"", u"x"}}));

INSTANTIATE_TEST_SUITE_P(Arguments, SplitsAsTheSystem,
                         testing::Values(Split{u"p a\tb", {u"p", u"a", u"b"}}, Split{u"p \"\" x", {u"p", u"", u"x"}},
                                         Split{u"p a\\\\b", {u"p", u"a\\\\b"}}, Split{u"p \"a b\"c", {u"p", u"a bc"}},
                                         Split{u"p \"a b", {u"p", u"a b"}}, Split{u"p a\nb", {u"p", u"a\nb"}}));

INSTANTIATE_TEST_SUITE_P(BackslashesBeforeMarks, SplitsAsTheSystem,
                         testing::Values(Split{u"p a\\\"b", {u"p", u"a\"b"}},
                                         Split{u"p \"a\\\\\" b", {u"p", u"a\\", u"b"}},
                                         Split{u"p \"a\\\\\\\" b\"", {u"p", u"a\\\" b"}},
                                         Split{u"p a\\\\\\\\\"b c\"", {u"p", u"a\\\\b c"}}));

INSTANTIATE_TEST_SUITE_P(
    RunsOfMarks, SplitsAsTheSystem,
    testing::Values(Split{u"p \"\"\" x", {u"p", u"\"", u"x"}}, Split{u"p \"a\"\"b c", {u"p", u"a\"b", u"c"}},
                    Split{u"p \"\"\"\" x", {u"p", u"\" x"}}, Split{u"p a\"\"b c", {u"p", u"ab", u"c"}},
                    Split{u"p \"\\\"\" x", {u"p", u"\"", u"x"}}, Split{u"p \"\\\"\"\" x", {u"p", u"\"\"", u"x"}}));

TEST(CommandLineTest, JoinedWordsComeBackWhateverTheyHold) {
  const Words cases[] = {{u"p", u"a", u"b c"},
                         {u"C:\\Program Files\\p.exe", u""},
                         {u"p", u"a\"b", u"\\\"", u"\\"},
                         {u"p", u"c d\\", u"e\\\\ f\\\\"},
                         {u"", u"x"},
                         {u"p", u"\"\"\"", u"\t"}};
  for (const Words& words : cases) EXPECT_EQ(winhost::SplitCommandLine(winhost::JoinCommandLine(words)), words);
}

TEST(CommandLineTest, MainGetsWhatFollowsTheProgramName) {
  EXPECT_EQ(winhost::AfterProgramName(u"\"a b\"  --x \"y z\" "), u"--x \"y z\" ");
  EXPECT_EQ(winhost::AfterProgramName(u"a"), u"");
}

class CommandLineToArgvTest : public testing_support::OnMachine {};

TEST_F(CommandLineToArgvTest, WordsAreOneBlockThatEndsInNull) {
  Start();
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(TEXT("p \"a b\""), &count);
  ASSERT_EQ(count, 2);
  EXPECT_EQ(std::u16string(words[1]), u"a b");
  EXPECT_EQ(words[2], nullptr);
  EXPECT_EQ(LocalFree(words), nullptr);
}

TEST_F(CommandLineToArgvTest, EmptyTextGivesTheProgramsPath) {
  Start();
  WCHAR path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(TEXT(""), &count);
  ASSERT_EQ(count, 1);
  EXPECT_EQ(std::u16string(words[0]), std::u16string(path));
  LocalFree(words);
}

TEST_F(CommandLineToArgvTest, PlannedFaultGivesNull) {
  Start(R"({"faults": [{"operation": "CommandLineToArgvW", "error": 8}]})");
  int count = 7;
  EXPECT_EQ(CommandLineToArgvW(TEXT("p"), &count), nullptr);
  EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
  EXPECT_EQ(count, 7);
}

TEST_F(CommandLineToArgvTest, ThisProgramsOwnLineNamesItFirst) {
  Start();
  const auto words = winhost::SplitCommandLine(GetCommandLineW());
  EXPECT_NE(words.at(0).find(u"tests"), std::u16string::npos);
  EXPECT_EQ(GetCommandLineW(), GetCommandLineW());
}

}  // namespace
