#include "base/paths.h"

#include "tests/support/machine_fixture.h"

namespace {

using vanta::JoinPath;
using vanta::String;

class PathsTest : public testing_support::OnMachine {};

TEST_F(PathsTest, JoiningTakesDotsOut) {
  EXPECT_EQ(JoinPath(TEXT("C:\\a\\b"), TEXT("..\\c.dll")), String(TEXT("C:\\a\\c.dll")));
  EXPECT_EQ(JoinPath(TEXT("C:\\"), TEXT("x")), String(TEXT("C:\\x")));
}

TEST_F(PathsTest, WhatDoesNotFitGivesNothing) {
  const String folder = TEXT("C:\\") + String(250, 'a');
  EXPECT_EQ(JoinPath(folder, TEXT("12345")).size(), 259u);
  EXPECT_EQ(JoinPath(folder, TEXT("123456")), String());
  EXPECT_EQ(JoinPath(String(5000, 'a'), TEXT("b")), String());
  EXPECT_EQ(vanta::ParentPath(String(5000, 'a')), String());
}

TEST_F(PathsTest, FilesAndFoldersAreToldApart) {
  Put("C:\\folder\\file.txt", "x");
  EXPECT_TRUE(vanta::FileExists(TEXT("C:\\folder\\file.txt")));
  EXPECT_FALSE(vanta::FileExists(TEXT("C:\\folder")));
  EXPECT_TRUE(vanta::DirectoryExists(TEXT("C:\\folder")));
  EXPECT_TRUE(vanta::PathExists(TEXT("C:\\folder")));
  EXPECT_FALSE(vanta::PathExists(TEXT("")));
}

TEST_F(PathsTest, FolderChainsAreMade) {
  EXPECT_TRUE(vanta::MakeDirectories(TEXT("C:\\a\\b\\c")));
  EXPECT_TRUE(vanta::MakeDirectories(TEXT("C:\\a\\b\\c")));
  Put("C:\\a\\file", "x");
  EXPECT_FALSE(vanta::MakeDirectories(TEXT("C:\\a\\file")));
  EXPECT_FALSE(vanta::MakeDirectories(TEXT("")));
}

}  // namespace
