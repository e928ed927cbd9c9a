#include "app/command_line.h"

#include "tests/support/machine_fixture.h"

namespace {

using vanta::String;

class CommandLineTest : public testing_support::OnMachine {
 protected:
  // The store as "name=value name=value", after the words of one command line.
  std::string Parse(const std::string& arguments, bool posixly_correct = false) {
    const auto words = vanta::SplitCommandLine(vanta::FromUtf8("setup.exe " + arguments).c_str());
    const vanta::ParsedWords parsed = vanta::ParseWords(words, vanta::kOptionTable, posixly_correct);
    diagnostics_.clear();
    for (const String& line : parsed.diagnostics) diagnostics_ += vanta::ToUtf8(line);
    std::string text;
    for (const auto& [name, value] : parsed.store.all()) {
      text += (text.empty() ? "" : " ") + vanta::ToUtf8(name) + "=" + vanta::ToUtf8(value);
    }
    return text;
  }
  std::string diagnostics_;
};

TEST_F(CommandLineTest, WordsBecomeOptions) {
  const struct {
    const char* arguments;
    const char* store;
  } rows[] = {
      {"", ""},
      {"--silent", "silent="},
      {"-silent", "silent="},
      {"/silent", ""},
      {"silent", ""},
      {"---silent", ""},
      {"--sil", "silent="},
      {"--sh", "show="},
      {"--s", ""},
      {"-f=x", "from=x"},
      {"--Silent", ""},
      {"--silently", ""},
      {"--from=ABC --from=xyz", "from=xyz"},
      {"--from=ABC --from", "from="},
      {"--from abc", "from="},
      {"--from= ", "from="},
      {"--from==a=b", "from==a=b"},
      {"--silent=yes", "silent=yes"},
      {"plain --auto more", "auto="},
      {"--auto -- --silent", "auto="},
      {"- --auto", "auto="},
      {"--=x -=x", ""},
      {"\"--from=a b\"", "from=a b"},
      {"--instse --notifyhwnd=1 --assoc --src=UPGRADE", "assoc= instse= notifyhwnd=1 src=UPGRADE"},
  };
  for (const auto& row : rows) EXPECT_EQ(Parse(row.arguments), row.store) << row.arguments;
}

TEST_F(CommandLineTest, PosixlyCorrectStopsAtTheFirstPlainWord) {
  EXPECT_EQ(Parse("--auto plain --silent", true), "auto=");
  EXPECT_EQ(Parse("- --silent", true), "");
}

TEST_F(CommandLineTest, ExactNameWinsOverPrefixes) {
  const vanta::StringView table[] = {TEXT("logfile"), TEXT("log")};
  const String words[] = {TEXT("p"), TEXT("--log=1")};
  EXPECT_EQ(vanta::ParseWords(words, table, false).store.Get(TEXT("log")), String(TEXT("1")));
}

TEST_F(CommandLineTest, DiagnosticsNameTheWord) {
  Parse("--nothing=1 --s");
  EXPECT_EQ(diagnostics_,
            "setup.exe: unrecognized option '--nothing=1'\n"
            "setup.exe: option '--s' is ambiguous; possibilities: '--silent' '--show' '--src'\n");
}

TEST_F(CommandLineTest, UnknownOptionsDoNotMakeItFail) {
  vanta::OptionStore store;
  EXPECT_TRUE(vanta::ParseCommandLine(TEXT("setup.exe --what --auto"), vanta::kOptionTable, store));
  EXPECT_TRUE(store.Has(TEXT("auto")));
}

TEST_F(CommandLineTest, MissingOrUnsplittableCommandLineFails) {
  Start(R"({"faults": [{"operation": "CommandLineToArgvW"}]})");
  vanta::OptionStore store;
  EXPECT_FALSE(vanta::ParseCommandLine(nullptr, vanta::kOptionTable, store));
  EXPECT_FALSE(vanta::ParseCommandLine(TEXT("setup.exe --auto"), vanta::kOptionTable, store));
  EXPECT_TRUE(store.all().empty());
}

TEST_F(CommandLineTest, PresenceAndValuesAreAskedFor) {
  vanta::OptionStore store;
  store.Set(TEXT("src"), TEXT("UpGrade"));
  store.Set(TEXT("src"), TEXT("other"));
  EXPECT_TRUE(store.Has(TEXT("src"), TEXT("upgrade")));
  EXPECT_FALSE(store.Has(TEXT("src"), TEXT("upgrade2")));
  EXPECT_TRUE(store.Has(TEXT("src"), String()));
  EXPECT_FALSE(store.Has(TEXT("SRC")));
  store.Remove(TEXT("src"));
  store.Remove(TEXT("src"));
  EXPECT_EQ(store.Get(TEXT("src")), String());
}

}  // namespace
