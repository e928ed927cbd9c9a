#include "winhost/dialogs/folder_places.h"

#include <fstream>

#include "tests/support/machine_fixture.h"

namespace {

using winhost::FindFolder;
using winhost::FolderSearch;

class FolderPlacesTest : public testing_support::OnMachine {
 protected:
  void Begin(const std::string& version = "10") {
    Start(R"({"version": ")" + version +
          R"(", "drives": {"D": {}, "E": {"kind": "removable"}, "F": {"kind": "cdrom"}}})");
    Put("D:\\b folder\\x", "");
    Put("D:\\A folder\\x", "");
    Put("D:\\hidden\\x", "");
    Put("D:\\file", "");
    SetFileAttributesW(u"D:\\hidden", FILE_ATTRIBUTE_HIDDEN);
    std::filesystem::create_directories(folder_ / "UNC/server/share/deep");
  }
  static std::u16string Names(const std::u16string& folder) {
    std::u16string names;
    for (const auto& place : winhost::PlacesIn(folder)) names += place.name + u'|';
    return names;
  }
};

TEST_F(FolderPlacesTest, DrivesComeFirstThenTheFoldersThatAreToBeSeen) {
  Begin();
  const auto drives = winhost::PlacesIn(u"");
  ASSERT_GE(drives.size(), 4u);
  EXPECT_EQ(drives[0].path, u"C:\\");
  EXPECT_EQ(drives[1].name, u"本地磁盘 (D:)");
  EXPECT_EQ(drives[2].name, u"可移动磁盘 (E:)");
  EXPECT_EQ(drives[3].glyph, winhost::Glyph::Disc);
  EXPECT_EQ(Names(u"D:\\"), u"A folder|b folder|");
  EXPECT_EQ(Names(u"D:\\A folder"), u"");
  EXPECT_EQ(Names(u"D:\\nowhere"), u"");
  EXPECT_NE(Names(u"C:\\").find(u"Windows|"), std::u16string::npos);  // also on a machine that nobody has used yet
  EXPECT_EQ(Names(u"\\\\server\\share"), u"deep|");
}

TEST_F(FolderPlacesTest, TheComputerHasTheNameOfItsVersion) {
  const std::pair<const char*, std::u16string> rows[] = {
      {"xp", u"我的电脑"}, {"vista", u"计算机"}, {"7", u"计算机"}, {"8.1", u"这台电脑"}, {"10", u"此电脑"}};
  for (const auto& [version, name] : rows) {
    const auto folder = folder_ / version;
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "machine.json") << R"({"version": ")" << version << R"("})";
    const winhost::MachineScope scope(folder);
    EXPECT_EQ(winhost::PlaceOf(u"").name, name) << version;
  }
}

TEST_F(FolderPlacesTest, UpLeadsToTheDrivesAndStopsThere) {
  Begin();
  const std::pair<std::u16string, std::u16string> rows[] = {{u"D:\\a\\b", u"D:\\a"},
                                                            {u"D:\\a", u"D:\\"},
                                                            {u"D:\\", u""},
                                                            {u"", u""},
                                                            {u"\\\\server\\share\\deep", u"\\\\server\\share"},
                                                            {u"\\\\server\\share", u""}};
  for (const auto& [folder, above] : rows) EXPECT_EQ(winhost::PlaceAbove(folder), above);
}

TEST_F(FolderPlacesTest, WhatIsTypedIsFoundAsItIsMeant) {
  Begin();
  const struct {
    std::u16string typed, current;
    FolderSearch search;
    std::u16string found;
  } rows[] = {
      {u"d:\\a FOLDER", u"", FolderSearch::Found, u"D:\\A folder"},
      {u"  \"D:\\b folder\\\" ", u"", FolderSearch::Found, u"D:\\b folder"},
      {u"D:/b folder/../A folder", u"", FolderSearch::Found, u"D:\\A folder"},
      {u"d:", u"C:\\Windows", FolderSearch::Found, u"D:\\"},
      {u"b folder", u"D:\\", FolderSearch::Found, u"D:\\b folder"},
      {u"..", u"D:\\b folder", FolderSearch::Found, u"D:\\"},
      {u"\\A folder", u"D:\\b folder", FolderSearch::Found, u"D:\\A folder"},
      {u"b folder", u"", FolderSearch::Missing, u""},
      {u"D:\\hidden", u"", FolderSearch::Found, u"D:\\hidden"},
      {u"\\\\server\\share\\DEEP", u"", FolderSearch::Found, u"\\\\server\\share\\deep"},
      {u"\\\\server\\share", u"", FolderSearch::Found, u"\\\\server\\share"},
      {u"\\\\server", u"", FolderSearch::Missing, u""},
      {u"\\\\nobody\\share", u"", FolderSearch::Missing, u""},
      {u"D:\\file", u"", FolderSearch::NoFolder, u""},
      {u"D:\\nope", u"", FolderSearch::Missing, u""},
      {u"Q:\\", u"", FolderSearch::Missing, u""},
      {u"D:\\a|b", u"", FolderSearch::Missing, u""},
      {u"nul", u"D:\\", FolderSearch::Missing, u""},
      {u"", u"", FolderSearch::Missing, u""},
      {u"D:\\" + std::u16string(300, u'x'), u"", FolderSearch::Missing, u""},
  };
  for (const auto& row : rows) {
    std::u16string found;
    EXPECT_EQ(FindFolder(row.typed, row.current, &found), row.search) << winhost::Narrow(row.typed);
    EXPECT_EQ(found, row.found);
  }
}

}  // namespace
