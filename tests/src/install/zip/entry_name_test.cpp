#include "install/zip/entry_name.h"

#include <gtest/gtest.h>

namespace vanta {
namespace {

TEST(SanitiseNameTest, NamesCannotLeaveTheirFolder) {
  const struct {
    const WCHAR* stored;
    const WCHAR* reported;
  } rows[] = {
      {TEXT("config/config.xml"), TEXT("config/config.xml")},
      {TEXT("C:\\tmp\\x.txt"), TEXT("tmp\\x.txt")},
      {TEXT("C:D:E:x"), TEXT("x")},
      {TEXT("../../evil.dll"), TEXT("evil.dll")},
      {TEXT("..\\evil.dll"), TEXT("evil.dll")},
      {TEXT("a/b/../c.txt"), TEXT("c.txt")},
      {TEXT("a\\..\\b/../c\\../d/..\\e"), TEXT("e")},
      {TEXT("a/../../../x"), TEXT("x")},
      {TEXT("\\\\server\\share\\f"), TEXT("server\\share\\f")},
      {TEXT("//a"), TEXT("a")},
      {TEXT("/:x"), TEXT("x")},
      {TEXT("a/../C:/../\\x"), TEXT("x")},
      {TEXT("..."), TEXT("...")},
      {TEXT("a../b"), TEXT("a../b")},
      {TEXT("a/..b"), TEXT("a/..b")},
      {TEXT("a/..."), TEXT("a/...")},
      {TEXT(".."), TEXT("")},
      {TEXT("a/.."), TEXT("a/")},
      {TEXT("C:/../.."), TEXT("")},
      {TEXT("C:"), TEXT("")},
      {TEXT(""), TEXT("")},
  };
  for (const auto& row : rows) EXPECT_EQ(String(SanitiseName(row.stored)), row.reported) << ToUtf8(row.stored);
}

TEST(IsExtractableNameTest, RefusesWhatWindowsWouldTakeForSomethingElse) {
  const WCHAR* const refused[] = {
      TEXT("a:b"),     TEXT("a/b.txt:stream"), TEXT("a\tb"), TEXT("\x7F"),      TEXT("CON"),       TEXT("nul.txt"),
      TEXT("a/Aux/b"), TEXT("com1.tar.gz"),    TEXT("LPT9"), TEXT("COM\u00B9"), TEXT("lpt\u00B3"), TEXT("prn .x"),
      TEXT("CONIN$"),  TEXT("conout$"),        TEXT("a."),   TEXT("a /b"),      TEXT("a/..."),     TEXT("a\\ \\b"),
  };
  for (const WCHAR* name : refused) EXPECT_FALSE(IsExtractableName(name)) << ToUtf8(name);
  EXPECT_FALSE(IsExtractableName(StringView(TEXT("a\0b"), 3)));
}

TEST(IsExtractableNameTest, AllowsOrdinaryAndOddButHarmlessNames) {
  const WCHAR* const allowed[] = {
      TEXT("a.txt"), TEXT("./a"), TEXT("a/./b//c/"), TEXT(""),   TEXT("CONFIG"), TEXT("com0"),
      TEXT("com10"), TEXT("COM"), TEXT(".a"),        TEXT(" a"), TEXT("xcon"),   TEXT("\u4E2D\u6587.txt"),
  };
  for (const WCHAR* name : allowed) EXPECT_TRUE(IsExtractableName(name)) << ToUtf8(name);
}

}  // namespace
}  // namespace vanta
