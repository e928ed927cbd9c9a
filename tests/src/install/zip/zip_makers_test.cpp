// Archives as other programs make them: what they store must come out, whoever stored it.

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "tests/src/install/zip/zip_fixture.h"

namespace vanta {
namespace {

namespace fs = std::filesystem;
using zip_testing::SampleText;

class ZipMakersTest : public zip_testing::ZipTest {
 protected:
  // The folder "in" beside the machine's drives, packed by a shell command that runs in it and makes ../a.zip.
  void Pack(const std::string& command) {
    const fs::path in = folder_ / "in";
    for (const auto& [name, content] : contents_) {
      fs::create_directories((in / name).parent_path());
      std::ofstream(in / name, std::ios::binary) << content;
    }
    ASSERT_EQ(system(("cd '" + in.string() + "' && TZ=UTC touch -d '2021-03-04 05:06:08' $(find . -type f) && TZ=UTC " +
                      command + " >/dev/null 2>../errors")
                         .c_str()),
              0)
        << command;
  }
  std::string Archive() {
    std::ifstream file(folder_ / "a.zip", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }
  // Extracts everything and compares it with what was packed.
  void ExpectAll() {
    std::map<std::string, std::string> found;
    for (LONG index = 0; index < Info(-1).index; ++index) {
      const ZipEntryInfo info = Info(index);
      const std::string name = ToUtf8(info.name);
      EXPECT_EQ(Extract(index, name), ZipOk) << name;
      if (info.attributes & FILE_ATTRIBUTE_DIRECTORY) continue;
      found[name] = Extracted(name);
      SYSTEMTIME time;
      FileTimeToSystemTime(&info.modification_time, &time);
      EXPECT_EQ(time.wYear * 10000 + time.wMonth * 100 + time.wDay, 20210304) << name;
      EXPECT_EQ(time.wHour * 10000 + time.wMinute * 100 + time.wSecond, 50608) << name;
    }
    EXPECT_EQ(found, contents_);
  }

  const std::map<std::string, std::string> contents_ = {
      {"a.txt", "short"},
      {"empty", ""},
      {"deep/er/b.bin", SampleText(70000)},
      {"deep/zeros", std::string(300000, '\0')},
      {"\xE4\xB8\xAD\xE6\x96\x87.txt", "name in UTF-8"},
  };
};

TEST_F(ZipMakersTest, WhatTheyPackComesOut) {
  const char* const commands[] = {
      "zip -r ../a.zip .",                  // Info-ZIP
      "zip -0 -r ../a.zip .",               // stored
      "zip -X -D -r ../a.zip .",            // no extra fields, no directories
      "sh -c 'zip -fd -r - . > ../a.zip'",  // streamed: sizes follow the data
      "7z a -tzip -mcu=on ../a.zip .",      // 7-Zip
      "sh -c 'bsdtar -a -cf ../a.zip *'",   // libarchive
      "python3 -m zipfile -c ../a.zip a.txt empty deep \xE4\xB8\xAD\xE6\x96\x87.txt",
  };
  for (const char* command : commands) {
    SCOPED_TRACE(command);
    fs::remove(folder_ / "a.zip");
    Pack(command);
    if (HasFatalFailure()) return;
    ASSERT_TRUE(Open(Archive()));
    ExpectAll();
    ASSERT_TRUE(Open("MZ stands in front of it" + Archive()));
    EXPECT_EQ(Extract(0, "again"), Extract(0, "again"));
  }
}

TEST_F(ZipMakersTest, EncryptedOnesNeedTheirPassword) {
  Pack("zip -P secret -r ../a.zip .");
  if (HasFatalFailure()) return;
  ASSERT_TRUE(Open(Archive(), "secret"));
  ExpectAll();
  ASSERT_TRUE(Open(Archive(), "wrong"));
  // One byte is all that tells a wrong password, so one entry in 256 gets past it, and ends at its data.
  LONG refused = 0, files = 0;
  for (LONG index = 0; index < Info(-1).index; ++index) {
    if (Info(index).uncompressed_size == 0) continue;
    const ZipError error = Extract(index, "f");
    EXPECT_TRUE(error == ZipPassword || error == ZipFlate) << error;
    refused += error == ZipPassword;
    ++files;
  }
  EXPECT_EQ(files, 4);
  EXPECT_GE(refused, files - 1);
}

TEST_F(ZipMakersTest, EncryptedEntriesContinueInMemory) {
  Pack("zip -P secret -r ../a.zip .");
  if (HasFatalFailure()) return;
  ASSERT_TRUE(Open(Archive(), "secret"));
  const LONG index = Find(TEXT("deep/er/b.bin"), false);
  std::string all;
  ZipError error = ZipMore;
  while (error == ZipMore) all += Memory(index, &error, 10000);
  EXPECT_EQ(error, ZipOk);
  EXPECT_EQ(all, contents_.at("deep/er/b.bin"));
}

}  // namespace
}  // namespace vanta
