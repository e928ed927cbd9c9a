// vantakit check: each thing that will not work is named with its place.
#include "tools/vantakit/check.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>

#include "winhost/image/pe_writer.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Lines(const Findings& findings) {
  std::vector<std::string> lines;
  for (const Finding& finding : findings) lines.push_back(LineOf(finding));
  return lines;
}
using Texts = std::vector<std::string>;

class CheckTest : public testing::Test {
 protected:
  CheckTest() {
    std::string pattern = (fs::temp_directory_path() / "vanta-check-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~CheckTest() override { fs::remove_all(folder_); }
  void Write(const std::string& name, std::string_view text) {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  void WriteImage(const std::string& name, bool dll) {
    const auto image = winhost::PlanResourceImage({}, {.is64 = false, .dll = dll})->ToBytes();
    Write(name, {reinterpret_cast<const char*>(image.data()), image.size()});
  }
  void WriteProduct() {
    for (const char* name : {"VantaPictor.exe", "VantaGlimpse.exe", "VantaPictorUpdate.exe", "uninst.exe"})
      WriteImage(name, false);
    for (const char* name : {"ShellExt.dll", "ShellExt64.dll"}) WriteImage(name, true);
  }
  fs::path folder_;
};

TEST_F(CheckTest, AWholeProductHasNoFindings) {
  WriteProduct();
  Write("config/config.xml", "<config/>");
  EXPECT_EQ(Lines(CheckPayload(folder_)), Texts());
}

TEST_F(CheckTest, ProgramsOfTheWrongKindAndMissingOnesAreNamed) {
  WriteProduct();
  WriteImage("uninst.exe", true);
  WriteImage("ShellExt.dll", false);
  Write("VantaGlimpse.exe", "text");
  fs::remove(folder_ / "VantaPictorUpdate.exe");
  EXPECT_EQ(Lines(CheckPayload(folder_)),
            (Texts{"VantaGlimpse.exe: no Windows image", "VantaPictorUpdate.exe: missing; the setup refers to it",
                   "uninst.exe: a library, not a program", "ShellExt.dll: a program, not a library"}));
}

TEST_F(CheckTest, PathsTooLongForTheDefaultFolderAreNamed) {
  WriteProduct();
  Write(std::string(110, 'a') + "/" + std::string(120, 'b'), "x");
  ASSERT_EQ(CheckPayload(folder_).size(), 1u);
  EXPECT_NE(CheckPayload(folder_)[0].message.find("would exceed 259 characters"), std::string::npos);
}

// The findings about single lines; those about missing keys are left out.
Texts LineFindings(const std::string& table) {
  Findings findings = CheckStringTable("t.ini", table);
  std::erase_if(findings, [](const Finding& finding) { return finding.line == 0; });
  return Lines(findings);
}

TEST(CheckStringTable, IgnoredLinesAreNamedWithTheReason) {
  const struct {
    const char* table;
    Texts findings;
  } rows[] = {
      {"; a comment = with more = signs\n\n  \r\nA = b\r\n", {}},
      {"\xEF\xBB\xBF; first line\nA = b", {}},
      {"A = b\nwords\n", {"t.ini:2: ignored: no \"=\""}},
      {"A = b = c\n", {"t.ini:1: ignored: a second \"=\""}},
      {"A =\n", {"t.ini:1: ignored: nothing on one side of the \"=\""}},
      {"A; = b\n", {"t.ini:1: ignored: a \";\" in the key makes it a comment"}},
      {"A = 1\nB = 2\nA = 3\n", {"t.ini:3: A replaces line 1"}},
  };
  for (const auto& row : rows) EXPECT_EQ(LineFindings(row.table), row.findings) << row.table;
}

TEST(CheckStringTable, KeysThatTheSetupLooksUpMustBeThere) {
  const Findings findings = CheckStringTable("t.ini", "STRID_PICTOR_NAME = VantaView\n");
  EXPECT_EQ(findings.size(), 20u);
  EXPECT_EQ(LineOf(findings[0]), "t.ini: STRID_PICTOR_SURE_EXIT is missing; the setup looks it up");
}

TEST_F(CheckTest, WhatASkinLacksIsNamed) {
  Write("resources/readme.txt", "x");
  EXPECT_EQ(Lines(CheckSkin(folder_)),
            (Texts{"resources/lang/zh-CN/gdstrings.ini: missing; the setup has no texts",
                   "resources/themes/default/SetupWnd/SetupWnd.xml: missing; the setup opens it",
                   "resources/themes/default/MessageWnd/MessageWnd.xml: missing; the setup opens it",
                   "resources/themes/default/global.xml: missing; there are no fonts, colours and themes"}));
}

}  // namespace
}  // namespace vantakit
