#include "setupui/skin_path.h"

#include "setupui/skin_package.h"
#include "tests/support/machine_fixture.h"

namespace {

using vanta::String;

class SkinPathTest : public testing_support::OnMachine {};

TEST_F(SkinPathTest, PathsAreNormalised) {
  const struct {
    const char* path;
    const char* normal;  // null: not found
  } rows[] = {
      {"resources\\themes\\default\\SetupWnd\\./bk_bg.png", "resources/themes/default/SetupWnd/bk_bg.png"},
      {"resources\\themes\\default\\SetupWnd\\../public/icon/logo.svg",
       "resources/themes/default/public/icon/logo.svg"},
      {"a\\\\b///c", "a/b/c"},
      {"/a", "a"},
      {"\\\\a\\b", "a/b"},
      {"./a/././b", "a/b"},
      {"a/b/../../c", "c"},
      {"a/./../b", "b"},
      {"a/..b/c..", "a/..b/c.."},
      {"a/.", "a/."},
      {"a/..", "a/.."},
      {"a/../", ""},
      {"", ""},
      {"/", ""},
      {".", "."},
      {"a/", "a/"},
      {"../a", nullptr},
      {"/../a", nullptr},
      {"a/../../b", nullptr},
      {"./../a", nullptr},
      {"..", nullptr},
  };
  for (const auto& row : rows) {
    const auto normal = vanta::NormaliseSkinPath(vanta::FromUtf8(row.path));
    ASSERT_EQ(normal.has_value(), row.normal != nullptr) << row.path;
    if (normal) {
      EXPECT_EQ(vanta::ToUtf8(*normal), row.normal) << row.path;
    }
  }
}

TEST_F(SkinPathTest, FoldersEndInOneSeparator) {
  EXPECT_EQ(vanta::WithSeparator(TEXT("a")), String(TEXT("a\\")));
  EXPECT_EQ(vanta::WithSeparator(TEXT("a\\")), String(TEXT("a\\")));
  EXPECT_EQ(vanta::WithSeparator(TEXT("a/")), String(TEXT("a/")));
}

TEST_F(SkinPathTest, EntriesAreFoundWithoutRegardToCase) {
  vanta::ZipIndex entries;
  entries.Add("resources/themes/default/public/button/min.svg", {0, 0});
  entries.Add("resources/themes/default/public/button/MIN.svg", {1, 0});
  for (const WCHAR* path : {TEXT("resources\\themes\\default\\SetupWnd\\..\\public\\button\\min.svg"),
                            TEXT("resources/themes/default/public/button/MIN.SVG")}) {
    const vanta::ZipPlace* const place = vanta::FindSkinEntry(entries, path);
    ASSERT_NE(place, nullptr);
    EXPECT_EQ(place->index, 0);
  }
  EXPECT_EQ(vanta::FindSkinEntry(entries, TEXT("../resources/themes/default/public/button/min.svg")), nullptr);
}

}  // namespace
