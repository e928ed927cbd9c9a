#include <shlwapi.h>
#include <windows.h>

#include <gtest/gtest.h>

#include "winhost/machine/text.h"

namespace {

using String = std::u16string;
struct Row {
  const WCHAR* in;
  const WCHAR* out;
};

TEST(Paths, CanonicalizeRemovesDotsAndKeepsTheRest) {
  const Row rows[] = {{u"", u"\\"},
                      {u".", u"\\"},
                      {u"..", u"\\"},
                      {u"C:", u"C:\\"},
                      {u"C:\\a\\.\\b\\..\\c", u"C:\\a\\c"},
                      {u"C:\\a\\..\\..\\..\\b", u"C:\\b"},
                      {u"C:\\a\\..", u"C:\\"},
                      {u"C:\\a\\b\\..\\", u"C:\\a\\"},
                      {u"C:\\a\\.", u"C:\\a"},
                      {u"a\\..\\b", u"\\b"},
                      {u"..\\a", u"\\a"},
                      {u".\\a", u"a"},
                      {u"\\a\\..", u"\\"},
                      {u"C:\\a/../b", u"C:\\a/../b"},
                      {u"C:\\a\\\\b", u"C:\\a\\\\b"},
                      {u"C:\\a\\...\\b", u"C:\\a\\...\\b"},
                      {u"C:\\a.\\b ", u"C:\\a.\\b "},
                      {u"\\\\server\\share\\a\\..\\..\\..", u"\\\\server\\share"},
                      {u"\\\\server\\share\\..\\b", u"\\\\server\\share\\b"},
                      {u"\\\\server\\share\\", u"\\\\server\\share\\"},
                      {u"C:\\x\\Installer\\setup.exe\\..\\..\\..", u"C:\\"}};
  for (const Row& row : rows) {
    WCHAR result[MAX_PATH];
    EXPECT_TRUE(PathCanonicalizeW(result, row.in));
    EXPECT_EQ(String(result), row.out) << winhost::Narrow(row.in);
  }
}

TEST(Paths, CombineJoinsRelativeNamesAndTakesFullOnesAsTheyAre) {
  const struct {
    const WCHAR *folder, *file, *out;
  } rows[] = {{u"C:\\a", u"b", u"C:\\a\\b"},
              {u"C:\\a\\", u"b", u"C:\\a\\b"},
              {u"C:\\a", u"config/config.xml", u"C:\\a\\config/config.xml"},
              {u"C:\\a", u"..\\b", u"C:\\b"},
              {u"C:\\a", u"D:\\b", u"D:\\b"},
              {u"C:\\a", u"D:b", u"D:b"},
              {u"C:\\a\\b", u"\\c", u"C:\\c"},
              {u"\\\\s\\h\\x", u"\\c", u"\\\\s\\h\\c"},
              {u"C:\\a", u"\\\\s\\h\\c", u"\\\\s\\h\\c"},
              {u"C:\\a", u"", u"C:\\a"},
              {u"C:\\a", nullptr, u"C:\\a"},
              {u"", u"b", u"b"},
              {nullptr, u"b", u"b"},
              {u"D:", u"b", u"D:\\b"},
              {u"rel\\x", u"\\c", u"c"},
              {u"D:\\", u"VantaPictor", u"D:\\VantaPictor"}};
  for (const auto& row : rows) {
    WCHAR result[MAX_PATH];
    EXPECT_EQ(PathCombineW(result, row.folder, row.file), result);
    EXPECT_EQ(String(result), row.out);
  }
  WCHAR result[MAX_PATH] = u"x";
  EXPECT_FALSE(PathCombineW(result, nullptr, nullptr));
  EXPECT_EQ(String(result), u"");
}

TEST(Paths, WhatDoesNotFitFailsAndLeavesNothing) {
  const String folder = u"C:\\" + String(200, u'a');
  WCHAR result[MAX_PATH];
  EXPECT_TRUE(PathCombineW(result, folder.c_str(), String(55, u'b').c_str()));
  EXPECT_EQ(String(result).size(), 259u);
  EXPECT_FALSE(PathCombineW(result, folder.c_str(), String(56, u'b').c_str()));
  EXPECT_EQ(String(result), u"");
  SetLastError(0);
  EXPECT_FALSE(PathCanonicalizeW(result, String(260, u'c').c_str()));
  EXPECT_EQ(GetLastError(), DWORD{ERROR_FILENAME_EXCED_RANGE});
  EXPECT_FALSE(PathCanonicalizeW(nullptr, u"a"));
}

TEST(Paths, AppendWorksInPlaceAndDropsLeadingSeparators) {
  WCHAR path[MAX_PATH] = u"C:\\a";
  EXPECT_TRUE(PathAppendW(path, u"\\\\b") && PathAppendW(path, u"\\c"));
  EXPECT_EQ(String(path), u"\\\\b\\c") << "a network path replaces";
  WCHAR plain[MAX_PATH] = u"";
  EXPECT_TRUE(PathAppendW(plain, u"VantaPictor"));
  EXPECT_EQ(String(plain), u"VantaPictor");
}

TEST(Paths, RemoveFileSpecStopsAtRootsAndKnowsNoSlash) {
  const struct {
    const WCHAR *in, *out;
    BOOL removed;
  } rows[] = {{u"C:\\a\\b", u"C:\\a", TRUE},
              {u"C:\\a\\", u"C:\\a", TRUE},
              {u"C:\\a", u"C:\\", TRUE},
              {u"C:\\", u"C:\\", FALSE},
              {u"C:a", u"C:", TRUE},
              {u"C:", u"C:", FALSE},
              {u"a", u"", TRUE},
              {u"", u"", FALSE},
              {u"\\a", u"\\", TRUE},
              {u"\\", u"\\", FALSE},
              {u"\\a\\b", u"\\a", TRUE},
              {u"C:\\a\\b/c", u"C:\\a", TRUE},
              {u"\\\\s\\h\\f", u"\\\\s\\h", TRUE}};
  for (const auto& row : rows) {
    String path = row.in;
    EXPECT_EQ(PathRemoveFileSpecW(path.data()), row.removed) << winhost::Narrow(row.in);
    EXPECT_EQ(String(path.c_str()), row.out);
  }
}

TEST(Paths, PrefixesAreWholeComponentsWithoutTrailingSeparator) {
  const struct {
    const WCHAR *prefix, *path;
    BOOL is;
  } rows[] = {{u"C:\\a", u"C:\\a\\b", TRUE},
              {u"c:\\A", u"C:\\a\\b.exe", TRUE},
              {u"C:\\a", u"C:\\ab", FALSE},
              {u"C:\\a\\", u"C:\\a\\b", FALSE},
              {u"C:\\", u"C:\\a", TRUE},
              {u"C:\\a", u"C:\\a", TRUE},
              {u"C:\\a\\b", u"C:\\a", FALSE},
              {u"C:\\a", u"D:\\a\\b", FALSE},
              {u"\\\\s\\h", u"\\\\S\\H\\x", TRUE},
              {u"\\\\s", u"s", FALSE},
              {nullptr, u"a", FALSE}};
  for (const auto& row : rows) {
    EXPECT_EQ(PathIsPrefixW(row.prefix, row.path), row.is) << winhost::Narrow(row.prefix ? row.prefix : u"none");
  }
  WCHAR common[MAX_PATH];
  EXPECT_EQ(PathCommonPrefixW(u"C:\\one", u"c:\\two", common), 3);
  EXPECT_EQ(String(common), u"C:\\");
}

TEST(Paths, RootsAndKindsAreTold) {
  const struct {
    const WCHAR* path;
    BOOL root, relative, unc, file;
  } rows[] = {{u"C:\\", 1, 0, 0, 0},         {u"C:", 0, 0, 0, 0},         {u"\\", 1, 0, 0, 0},
              {u"\\\\s\\h", 1, 0, 1, 0},     {u"\\\\s\\h\\", 0, 0, 1, 0}, {u"a", 0, 1, 0, 1},
              {u"a/b", 0, 1, 0, 1},          {u"", 0, 1, 0, 1},           {u"\\\\?\\C:\\", 0, 0, 0, 0},
              {u"\\\\?\\UNC\\s", 0, 0, 1, 0}};
  for (const auto& row : rows) {
    const std::string name = winhost::Narrow(row.path);
    EXPECT_EQ(PathIsRootW(row.path), row.root) << name;
    EXPECT_EQ(PathIsRelativeW(row.path), row.relative) << name;
    EXPECT_EQ(PathIsUNCW(row.path), row.unc) << name;
    EXPECT_EQ(PathIsFileSpecW(row.path), row.file) << name;
  }
  EXPECT_EQ(PathGetDriveNumberW(u"d:x"), 3);
  EXPECT_EQ(PathGetDriveNumberW(u"\\x"), -1);
  EXPECT_EQ(String(PathSkipRootW(u"\\\\s\\h\\x")), u"x");
  EXPECT_FALSE(PathSkipRootW(u"C:x"));
}

TEST(Paths, NamesAndExtensionsAreFound) {
  const struct {
    const WCHAR *path, *name, *extension;
  } rows[] = {{u"C:\\a\\b.exe", u"b.exe", u".exe"},
              {u"C:\\a\\", u"a\\", u""},
              {u"a/b.c", u"b.c", u".c"},
              {u"C:x.y", u"x.y", u".y"},
              {u"a.b\\c", u"c", u""},
              {u"a.b c", u"a.b c", u""},
              {u"x.tar.gz", u"x.tar.gz", u".gz"},
              {u"", u"", u""}};
  for (const auto& row : rows) {
    EXPECT_EQ(String(PathFindFileNameW(row.path)), row.name);
    EXPECT_EQ(String(PathFindExtensionW(row.path)), row.extension);
  }
}

TEST(Paths, SeparatorsQuotesAndExtensionsAreAddedAndRemoved) {
  WCHAR path[MAX_PATH] = u"C:\\my file";
  EXPECT_EQ(PathAddBackslashW(path), path + 11);
  EXPECT_EQ(PathAddBackslashW(path), path + 11);
  EXPECT_EQ(PathRemoveBackslashW(path), path + 10);
  EXPECT_TRUE(PathAddExtensionW(path, nullptr));
  EXPECT_FALSE(PathAddExtensionW(path, u".txt"));
  EXPECT_TRUE(PathRenameExtensionW(path, u".lnk"));
  PathQuoteSpacesW(path);
  EXPECT_EQ(String(path), u"\"C:\\my file.lnk\"");
  PathUnquoteSpacesW(path);
  PathRemoveExtensionW(path);
  PathStripPathW(path);
  EXPECT_EQ(String(path), u"my file");
  WCHAR root[] = u"C:\\", quote[] = u"\"";
  PathRemoveBackslashW(root);
  PathUnquoteSpacesW(quote);
  EXPECT_EQ(String(root) + quote, u"C:\\\"");
}

TEST(ShellStrings, SearchAndCompare) {
  const WCHAR* text = u"Hello Wörld hello";
  EXPECT_EQ(StrStrW(text, u"hello"), text + 12);
  EXPECT_EQ(StrStrIW(text, u"WÖR"), text + 6);
  EXPECT_FALSE(StrStrIW(text, u""));
  EXPECT_EQ(StrChrW(text, u'o'), text + 4);
  EXPECT_EQ(StrRChrW(text, text + 10, u'o'), text + 4);
  EXPECT_EQ(StrCmpIW(u"UPGRADE", u"upgrade"), 0);
  EXPECT_LT(StrCmpW(u"a", u"ab"), 0);
  EXPECT_EQ(StrCmpNIW(u"abX", u"ABy", 2), 0);
  EXPECT_EQ(StrToIntW(u"-12x"), -12);
  WCHAR trimmed[] = u"--a-b--";
  EXPECT_TRUE(StrTrimW(trimmed, u"-"));
  EXPECT_EQ(String(trimmed), u"a-b");
  WCHAR cut[3];
  EXPECT_EQ(String(StrCpyNW(cut, u"abcdef", 3)), u"ab");
}

}  // namespace
