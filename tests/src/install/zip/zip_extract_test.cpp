#include "tests/src/install/zip/zip_fixture.h"

#include "base/unique.h"

namespace vanta {
namespace {

using zip_testing::SampleText;

class ZipExtractTest : public zip_testing::ZipTest {
 protected:
  DWORD Attributes(const WCHAR* path) { return GetFileAttributesW(path); }
};

TEST_F(ZipExtractTest, FilesComeOutByteForByte) {
  const size_t sizes[] = {0, 1, 16383, 16384, 16385, 100000};
  for (const size_t size : sizes) {
    zip_.AddStored("s" + std::to_string(size), SampleText(size));
    zip_.AddDeflated("d" + std::to_string(size), SampleText(size, 7));
  }
  ASSERT_TRUE(Open());
  LONG index = 0;
  for (const size_t size : sizes) {
    EXPECT_EQ(Extract(index++, "s"), ZipOk) << size;
    EXPECT_EQ(Extracted("s"), SampleText(size));
    EXPECT_EQ(Extract(index++, "d"), ZipOk) << size;
    EXPECT_EQ(Extracted("d"), SampleText(size, 7));
  }
}

TEST_F(ZipExtractTest, FileHasTheEntrysAttributesAndTimes) {
  zip_testing::Entry& entry = zip_.AddStored("a", "data");
  entry.external = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
  entry.local_extra = zip_testing::UnixTimes(7, {1700000001, 1700000002, 1700000003});
  ASSERT_TRUE(Open());
  ASSERT_EQ(Extract(0), ZipOk);
  const DWORD attributes = Attributes(TEXT("C:\\out\\f"));
  EXPECT_EQ(attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM),
            DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN});
  const ZipEntryInfo info = Info(0);
  UniqueFile file(CreateFileW(TEXT("C:\\out\\f"), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  FILETIME creation, access, modification;
  ASSERT_TRUE(GetFileTime(file.Get(), &creation, &access, &modification));
  EXPECT_EQ(CompareFileTime(&creation, &info.creation_time), 0);
  EXPECT_EQ(CompareFileTime(&access, &info.access_time), 0);
  EXPECT_EQ(CompareFileTime(&modification, &info.modification_time), 0);
  EXPECT_LT(CompareFileTime(&modification, &access), 0);
  EXPECT_LT(CompareFileTime(&access, &creation), 0);
}

TEST_F(ZipExtractTest, ExistingFileIsReplaced) {
  Put("C:\\out\\f", "a longer text that was there before");
  zip_.AddStored("a", "new");
  ASSERT_TRUE(Open());
  EXPECT_EQ(Extract(0), ZipOk);
  EXPECT_EQ(Extracted(), "new");
}

TEST_F(ZipExtractTest, ProtectedFilesAreReplacedUnlessSomebodyHoldsThem) {
  constexpr DWORD kProtected = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  zip_.AddStored("a", "new");
  ASSERT_TRUE(Open());
  for (const DWORD attributes : {DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{FILE_ATTRIBUTE_HIDDEN}, kProtected}) {
    Put("C:\\out\\f", "old");
    SetFileAttributesW(TEXT("C:\\out\\f"), attributes);
    {
      const UniqueFile held(CreateFileW(TEXT("C:\\out\\f"), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
      EXPECT_EQ(Extract(0), ZipNoFile);
    }
    EXPECT_EQ(Extracted(), "old");
    EXPECT_EQ(Attributes(TEXT("C:\\out\\f")) & kProtected, attributes);
    EXPECT_EQ(Extract(0), ZipOk);
    EXPECT_EQ(Extracted(), "new");
    EXPECT_EQ(Attributes(TEXT("C:\\out\\f")) & kProtected, 0u);
  }
}

TEST_F(ZipExtractTest, MissingFoldersAreMade) {
  zip_.AddStored("a", "x");
  ASSERT_TRUE(Open());
  for (const char* target : {"one", "d/e\\f/g", "d/e/h", "again\\/x"}) {
    EXPECT_EQ(Extract(0, target), ZipOk) << target;
    EXPECT_EQ(Extracted(target), "x") << target;
  }
}

TEST_F(ZipExtractTest, FolderThatVanishedMeanwhileIsMadeAgain) {
  zip_.AddStored("a", "x");
  ASSERT_TRUE(Open());
  EXPECT_EQ(Extract(0, "d/one"), ZipOk);
  std::filesystem::remove_all(Disk("C:\\out"));
  EXPECT_EQ(Extract(0, "d/two"), ZipOk);
  EXPECT_EQ(Extracted("d/two"), "x");
}

TEST_F(ZipExtractTest, RelativePathsLieBelowTheDirectoryOfOpening) {
  Put("C:\\base\\marker", "");
  Put("C:\\elsewhere\\marker", "");
  ASSERT_TRUE(SetCurrentDirectoryW(TEXT("C:\\base")));
  zip_.AddStored("a", "x");
  zip_.AddStored("dir", "").external = FILE_ATTRIBUTE_DIRECTORY;
  ASSERT_TRUE(Open());
  ASSERT_TRUE(SetCurrentDirectoryW(TEXT("C:\\elsewhere")));
  EXPECT_EQ(ExtractToFile(reader_, 0, TEXT("plain")), ZipOk);
  EXPECT_EQ(ExtractToFile(reader_, 0, TEXT("sub/deep")), ZipOk);
  EXPECT_EQ(ExtractToFile(reader_, 1, TEXT("made\\here")), ZipOk);
  EXPECT_TRUE(Exists("C:\\base\\plain"));
  EXPECT_TRUE(Exists("C:\\base\\sub\\deep"));
  EXPECT_TRUE(std::filesystem::is_directory(Disk("C:\\base\\made\\here")));
  EXPECT_EQ(ExtractToFile(reader_, 0, TEXT("\\rooted")), ZipOk);
  EXPECT_TRUE(Exists("C:\\rooted"));
}

TEST_F(ZipExtractTest, ParentReferenceAheadOfNulIsNone) {
  zip_.AddStored(std::string("d/..\0x", 7), "x").external = FILE_ATTRIBUTE_DIRECTORY;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Name(0), TEXT("d/"));
  EXPECT_EQ(Extract(0), ZipNoFile);
  EXPECT_TRUE(NothingWritten());
}

TEST_F(ZipExtractTest, DirectoryEntriesBecomeFolders) {
  zip_.AddStored("d/", "").external = FILE_ATTRIBUTE_DIRECTORY;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Extract(0, "x/y/"), ZipOk);
  EXPECT_TRUE(std::filesystem::is_directory(Disk("C:\\out\\x\\y")));
  Put("C:\\out\\file", "");
  EXPECT_EQ(Extract(0, "file"), ZipNoFile);
}

TEST_F(ZipExtractTest, NamesThatWindowsTakesForSomethingElseWriteNothing) {
  const std::string names[] = {
      "a:b", "nul.txt", "d/COM1", "x.", "y /z", "", "C:", "../..", "a\tb", std::string("a\0b", 3), "d/..", "a/."};
  for (const std::string& name : names) zip_.AddStored(name, "x");
  zip_.AddStored("con", "").external = FILE_ATTRIBUTE_DIRECTORY;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Name(0), TEXT("b"));  // a drive prefix is dropped; what is behind it is a name like any other
  EXPECT_EQ(Name(9), TEXT("a"));  // reported as far as a terminated text goes
  for (LONG index = 1; index < Info(-1).index; ++index) {
    if (Name(index) == TEXT("d/") || Name(index) == TEXT("a/.")) continue;
    EXPECT_EQ(Extract(index), ZipNoFile) << ToUtf8(Name(index));
  }
  EXPECT_TRUE(NothingWritten());
  EXPECT_EQ(Extract(10, "d/"), ZipNoFile);  // names a folder, but is a file's entry
  EXPECT_EQ(Extract(11, "a/."), ZipNoFile);
}

// Damage, and how much of the content may have been written.
TEST_F(ZipExtractTest, DamagedDataFailsAndNeverExceedsTheDeclaredSize) {
  const std::string text = SampleText(40000);
  const struct {
    const char* name;
    int method;
    void (*damage)(zip_testing::Entry&);
  } rows[] = {
      {"CRC", 0, [](auto& e) { e.crc ^= 1; }},
      {"CRC deflated", 8, [](auto& e) { e.crc ^= 1; }},
      {"one more declared", 0, [](auto& e) { ++e.uncompressed; }},
      {"one more declared deflated", 8, [](auto& e) { ++e.uncompressed; }},
      {"one fewer declared", 0, [](auto& e) { --e.uncompressed; }},
      {"one fewer declared deflated", 8, [](auto& e) { --e.uncompressed; }},
      {"nothing declared deflated", 8, [](auto& e) { e.uncompressed = 0; }},
      {"stored size short", 0, [](auto& e) { --e.compressed; }},
      {"stored size short deflated", 8, [](auto& e) { --e.compressed; }},
      {"no stored bytes deflated", 8, [](auto& e) { e.compressed = 0; }},
      {"bytes behind the stream", 8, [](auto& e) { e.data += "x", ++e.compressed; }},
      {"past the archive's end", 8, [](auto& e) { e.compressed = 0xFFFFFFFF; }},
      {"huge size declared", 8, [](auto& e) { e.uncompressed = 0xFFFFFFFF; }},
      {"no deflate stream", 8, [](auto& e) { e.data.assign(e.data.size(), '\xFF'); }},
      {"damaged in the middle", 8, [](auto& e) { e.data[e.data.size() / 2] ^= 0x55; }},
      {"encrypted without a header", 0, [](auto& e) { e.flags = 1, e.compressed = 11; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    zip_testing::ZipBuilder zip;
    zip_testing::Entry& entry = row.method ? zip.AddDeflated("a", text) : zip.AddStored("a", text);
    row.damage(entry);
    ASSERT_TRUE(Open(zip.Build()));
    EXPECT_EQ(Extract(0), ZipFlate);
    EXPECT_LE(Extracted().size(), entry.uncompressed);
    EXPECT_LE(Extracted().size(), text.size() + 1);
    ZipError error;
    EXPECT_EQ(Memory(0, &error), "");
    EXPECT_EQ(error, ZipFlate);
  }
}

TEST_F(ZipExtractTest, DataThatEndsEarlyIsKeptAsFarAsItWent) {
  zip_testing::Entry& entry = zip_.AddStored("a", SampleText(50000));
  entry.compressed = 60000;
  entry.uncompressed = 60000;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Extract(0), ZipFlate);
  EXPECT_EQ(Extracted().substr(0, 50000), SampleText(50000));
}

TEST_F(ZipExtractTest, FileThatCannotBeCreated) {
  zip_.AddStored("a", "x");
  ASSERT_TRUE(Open());
  Put("C:\\out\\f", "before");
  UniqueFile held(CreateFileW(TEXT("C:\\out\\f"), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(held);
  EXPECT_EQ(Extract(0), ZipNoFile);
  held.Reset();
  EXPECT_EQ(Extracted(), "before");
  EXPECT_EQ(Extract(0, std::string(300, 'l')), ZipNoFile);
  EXPECT_EQ(ExtractToFile(reader_, 0, nullptr), ZipArgs);
  EXPECT_EQ(ExtractToFile(reader_, 0, TEXT("")), ZipArgs);
  EXPECT_EQ(ExtractToFile(reader_, 1, TEXT("C:\\x")), ZipArgs);
  EXPECT_EQ(ExtractToFile(reader_, -1, TEXT("C:\\x")), ZipArgs);
}

TEST_F(ZipExtractTest, FailedWriteStopsThere) {
  Start(R"({"faults": [{"operation": "WriteFile", "nth": 2, "error": 112}]})");
  zip_.AddDeflated("a", SampleText(50000));
  ASSERT_TRUE(Open());
  EXPECT_EQ(Extract(0), ZipWrite);
  EXPECT_EQ(Extracted(), SampleText(50000).substr(0, 16384));
}

TEST_F(ZipExtractTest, MemoryIsFilledInAsManyCallsAsItTakes) {
  const std::string text = SampleText(50000);
  zip_.AddDeflated("a", text);
  zip_.AddStored("b", text);
  ASSERT_TRUE(Open());
  for (const LONG index : {0, 1}) {
    std::string all;
    ZipError error = ZipMore;
    while (error == ZipMore) all += Memory(index, &error, 16400);
    EXPECT_EQ(error, ZipOk);
    EXPECT_EQ(all, text);
    EXPECT_EQ(Memory(index, &error), text);  // from the start again
  }
}

TEST_F(ZipExtractTest, ExactlyFullBufferIsTheEnd) {
  zip_.AddDeflated("a", "12345678");
  zip_.AddStored("empty", "");
  ASSERT_TRUE(Open());
  ZipError error;
  EXPECT_EQ(Memory(0, &error, 8), "12345678");
  EXPECT_EQ(error, ZipOk);
  EXPECT_EQ(Memory(0, &error, 0), "");
  EXPECT_EQ(error, ZipMore);
  EXPECT_EQ(Memory(1, &error, 0), "");
  EXPECT_EQ(error, ZipOk);
}

TEST_F(ZipExtractTest, AnotherIndexStartsAnotherEntry) {
  zip_.AddStored("a", "abcdef");
  zip_.AddDeflated("b", "uvwxyz");
  ASSERT_TRUE(Open());
  ZipError error;
  EXPECT_EQ(Memory(0, &error, 4), "abcd");
  Info(1);  // looking does not disturb
  EXPECT_EQ(Memory(0, &error, 1), "e");
  EXPECT_EQ(Memory(1, &error, 4), "uvwx");
  EXPECT_EQ(Memory(0, &error, 4), "abcd");
  EXPECT_EQ(Extract(1), ZipOk);
  EXPECT_EQ(Memory(0, &error, 4), "abcd");
  EXPECT_EQ(Memory(7, &error, 4), "");
  EXPECT_EQ(error, ZipArgs);
  EXPECT_EQ(ExtractToMemory(reader_, 0, nullptr, 4), ZipArgs);
}

}  // namespace
}  // namespace vanta
