#include "lumo/render/scale_file.h"

#include <gtest/gtest.h>

#include <set>

namespace lumo {
namespace {

TEST(ScaleFileTest, TheFolderOfTheScaleThen200ThenThePlainFile) {
  const struct {
    const WCHAR* path;
    int scale;
    std::set<std::string> existing;
    const char* chosen;
  } rows[] = {
      {TEXT("icon/logo.png"), 100, {"icon/100/logo.png", "icon/200/logo.png"}, "icon/logo.png"},
      {TEXT("icon/logo.png"), 75, {"icon/75/logo.png", "icon/200/logo.png"}, "icon/logo.png"},
      {TEXT("icon/logo.png"), 150, {"icon/150/logo.png", "icon/200/logo.png"}, "icon/150/logo.png"},
      {TEXT("icon/logo.png"), 150, {"icon/200/logo.png"}, "icon/200/logo.png"},
      {TEXT("icon/logo.png"), 150, {}, "icon/logo.png"},
      {TEXT("icon/logo.png"), 200, {"icon/200/logo.png"}, "icon/200/logo.png"},
      {TEXT("logo.png"), 125, {"125/logo.png"}, "125/logo.png"},
      {TEXT("a\\b\\logo.png"), 150, {"a\\b\\150\\logo.png"}, "a\\b\\150\\logo.png"},
  };
  for (const auto& row : rows) {
    const auto exists = [&](const String& path) { return row.existing.count(vanta::ToUtf8(path)) != 0; };
    EXPECT_EQ(vanta::ToUtf8(ChooseScaleFile(row.path, row.scale, exists)), row.chosen) << row.scale;
  }
}

TEST(ScaleFileTest, NoFileIsAskedForTwice) {
  int asked = 0;
  ChooseScaleFile(TEXT("a.png"), 200, [&](const String&) { return ++asked, false; });
  EXPECT_EQ(asked, 1);
  ChooseScaleFile(TEXT("a.png"), 100, [&](const String&) { return ++asked, false; });
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace lumo
