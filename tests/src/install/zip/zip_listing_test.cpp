#include "install/zip/zip_index.h"
#include "tests/src/install/zip/zip_fixture.h"

namespace vanta {
namespace {

using zip_testing::Le;

class ZipListingTest : public zip_testing::ZipTest {};

TEST_F(ZipListingTest, CountQueryHasTheCountAndNothingElse) {
  for (int i = 0; i < 44; ++i) zip_.AddStored("f" + std::to_string(i), "x");
  ASSERT_TRUE(Open());
  const ZipEntryInfo info = Info(-1);
  EXPECT_EQ(info.index, 44);
  EXPECT_EQ(String(info.name), TEXT(""));
  EXPECT_EQ(info.attributes | info.compressed_size | info.uncompressed_size | info.modification_time.dwLowDateTime, 0u);
}

TEST_F(ZipListingTest, EntriesAreReportedInDirectoryOrder) {
  zip_.AddStored("C:\\tmp\\x.txt", "12345");
  zip_.AddDeflated("a/b/../c.txt", std::string(1000, 'x')).external = 0x03;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Name(0), TEXT("tmp\\x.txt"));
  const ZipEntryInfo info = Info(1);
  EXPECT_EQ(info.index, 1);
  EXPECT_EQ(String(info.name), TEXT("c.txt"));
  EXPECT_EQ(info.attributes, DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN});
  EXPECT_EQ(info.uncompressed_size, 1000u);
  EXPECT_LT(info.compressed_size, 100u);
  EXPECT_EQ(Name(0), TEXT("tmp\\x.txt"));  // backwards
}

TEST_F(ZipListingTest, IndicesOutOfRangeAreBadArguments) {
  zip_.AddStored("a", "");
  ASSERT_TRUE(Open());
  ZipEntryInfo info;
  for (const LONG index : {1, 2, -2, 0x7FFFFFFF}) EXPECT_EQ(GetEntry(reader_, index, &info), ZipArgs) << index;
  EXPECT_EQ(GetEntry(reader_, 0, nullptr), ZipArgs);
  EXPECT_EQ(LastZipError(), ZipArgs);
}

TEST_F(ZipListingTest, SameIndexAgainDoesNotReadTheArchive) {
  zip_.AddStored("name", "data");
  const std::string archive = zip_.Build();
  ASSERT_TRUE(Open(archive));
  EXPECT_EQ(Name(0), TEXT("name"));
  std::fill_n(memory_.get(), archive.size(), 'x');
  EXPECT_EQ(Name(0), TEXT("name"));
}

TEST_F(ZipListingTest, NamesAreUtf8WhateverTheFlagsSay) {
  zip_.AddStored("\xE4\xB8\xAD\xF0\x9F\x98\x80.txt", "");
  zip_.AddStored("a\xFF.txt", "");
  ASSERT_TRUE(Open());
  EXPECT_EQ(Name(0), TEXT("\u4E2D\U0001F600.txt"));
  EXPECT_EQ(Name(1), TEXT("a\uFFFD.txt"));
}

TEST_F(ZipListingTest, NamesLongerThanTheBufferAreRefusedAndPassedOver) {
  zip_.AddStored(std::string(260, 'n'), "");
  zip_.AddStored(std::string(259, 'n'), "");
  zip_.AddStored("last", "");
  ASSERT_TRUE(Open());
  ZipEntryInfo info;
  EXPECT_EQ(GetEntry(reader_, 0, &info), ZipNoFile);
  EXPECT_EQ(Name(1).size(), 259u);
  EXPECT_EQ(Find(String(260, TEXT('n')).c_str(), false), -1);
  EXPECT_EQ(Find(String(259, TEXT('n')).c_str(), false), 1);
  EXPECT_EQ(Find(TEXT("last"), false), 2);
}

TEST_F(ZipListingTest, FindComparesStoredNames) {
  for (const char* name : {"x/../a.txt", "Dir/B.TXT", "dir/b.txt", "\xC3\x84"}) zip_.AddStored(name, "");
  ASSERT_TRUE(Open());
  EXPECT_EQ(Find(TEXT("x/../a.txt"), false), 0);
  EXPECT_EQ(Find(TEXT("a.txt"), false), -1);
  EXPECT_EQ(Find(TEXT("dir/b.txt"), false), 2);
  EXPECT_EQ(Find(TEXT("DIR/b.TXT"), false), -1);
  EXPECT_EQ(Find(TEXT("DIR/b.TXT"), true), 1);
  EXPECT_EQ(Find(TEXT("\u00C4"), true), 3);
  EXPECT_EQ(Find(TEXT("\u00E4"), true), -1);  // ASCII letters only
  EXPECT_EQ(FindEntry(reader_, TEXT("dir/b.txt"), false, nullptr, nullptr), ZipOk);
  EXPECT_EQ(FindEntry(reader_, nullptr, false, nullptr, nullptr), ZipArgs);
}

TEST_F(ZipListingTest, EntriesWithBadHeadersHaveNoInfo) {
  zip_.AddStored("signature", "x").local_signature = 0x04034b51;
  zip_.AddStored("methods differ", "x").local_method = 8;
  zip_.AddStored("unknown method", "x").method = 12;
  zip_.AddStored("far away", "x").local_offset = 0xFFFFFFFF;
  zip_.AddStored("good", "x");
  zip_.AddStored("no central signature", "x").central_signature = 0;
  zip_.AddStored("behind it", "x");
  ASSERT_TRUE(Open());
  for (LONG index = 0; index < 7; ++index) {
    ZipEntryInfo info;
    EXPECT_EQ(GetEntry(reader_, index, &info), index == 4 ? ZipOk : ZipNoFile) << index;
    if (index != 4) {
      EXPECT_EQ(Extract(index), ZipNoFile) << index;
    }
  }
  EXPECT_EQ(Find(TEXT("behind it"), false), -1);
  EXPECT_TRUE(NothingWritten());
}

TEST_F(ZipListingTest, TimesAreConvertedFromTheMachinesZone) {
  Start(R"({"zone_bias_minutes": -480})");
  zip_.AddStored("a", "").local_extra = zip_testing::UnixTimes(1, {0});
  ASSERT_TRUE(Open());
  const ZipEntryInfo info = Info(0);
  SYSTEMTIME utc;
  FileTimeToSystemTime(&info.creation_time, &utc);
  EXPECT_EQ(utc.wHour, 4);  // stored as 12:00
  FileTimeToSystemTime(&info.modification_time, &utc);
  EXPECT_EQ(utc.wYear, 1970);
}

// What is built into or around the end record, and whether the archive opens.
TEST_F(ZipListingTest, EndRecordDecidesWhetherItOpens) {
  const std::string record = Le(0x06054b50, 4);
  const auto with = [](auto change) {
    zip_testing::ZipBuilder zip;
    zip.AddStored("a", "content");
    change(zip.end);
    return zip.Build();
  };
  const std::string plain = with([](auto&) {});
  const struct {
    const char* name;
    std::string archive;
    bool opens;
  } rows[] = {
      {"plain", plain, true},
      {"nothing", "", false},
      {"text", "This is no archive at all, but it is longer than a record.", false},
      {"only the end record", zip_testing::ZipBuilder().Build(), true},
      {"cut by one byte", plain.substr(0, plain.size() - 1), false},
      {"bytes in front", "prefix" + plain, true},
      {"bytes behind", plain + "junk", true},
      {"another disk", with([](auto& end) { end.disk = 1; }), false},
      {"directory on another disk", with([](auto& end) { end.directory_disk = 1; }), false},
      {"counts differ", with([](auto& end) { end.entries_on_disk = 2; }), false},
      {"directory behind the record", with([](auto& end) { end.directory_offset = 0x10000; }), false},
      {"sizes whose sum wraps at 32 bits", with([](auto& end) { end.directory_offset = 0xFFFFFFF0; }), false},
      {"comment", with([](auto& end) { end.comment = "a comment"; }), true},
      {"comment with the signature", with([&](auto& end) { end.comment = "x" + record + std::string(40, 'z'); }), true},
      {"comment ends in the signature", with([&](auto& end) { end.comment = "x" + record; }), true},
      {"longest comment reached", with([](auto& end) { end.comment.assign(65513, 'c'); }), true},
      {"comment out of reach", with([](auto& end) { end.comment.assign(65514, 'c'); }), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Open(row.archive), row.opens) << row.name;
    EXPECT_EQ(LastZipError(), row.opens ? ZipOk : ZipNoFile) << row.name;
    if (!row.opens || Info(-1).index == 0) continue;
    ZipError error;
    EXPECT_EQ(Memory(0, &error), "content") << row.name;
  }
}

TEST_F(ZipListingTest, MoreEntriesPromisedThanThere) {
  zip_.AddStored("a", "");
  zip_.end.entries = zip_.end.entries_on_disk = 65535;
  ASSERT_TRUE(Open());
  EXPECT_EQ(Info(-1).index, 65535);
  ZipEntryInfo info;
  for (const LONG index : {1, 2, 65534, 1}) EXPECT_EQ(GetEntry(reader_, index, &info), ZipNoFile);
  EXPECT_EQ(Name(0), TEXT("a"));
  EXPECT_EQ(Find(TEXT("b"), true), -1);
}

TEST_F(ZipListingTest, HandlesThatAreNoReadersAreRefused) {
  zip_.AddStored("a", "");
  ASSERT_TRUE(Open());
  ZipReader* const closed = reader_;
  EXPECT_EQ(Close(reader_), ZipOk);
  reader_ = nullptr;
  int something = 0;
  for (const auto& [handle, answer] : {std::pair<ZipReader*, ZipError>{nullptr, ZipArgs},
                                       {closed, ZipMode},
                                       {reinterpret_cast<ZipReader*>(&something), ZipMode}}) {
    ZipEntryInfo info;
    LONG index;
    std::string_view name;
    ZipPlace place;
    EXPECT_EQ(GetEntry(handle, 0, &info), answer);
    EXPECT_EQ(FindEntry(handle, TEXT("a"), true, &index, &info), answer);
    EXPECT_EQ(ExtractToFile(handle, 0, TEXT("C:\\x")), answer);
    EXPECT_EQ(ExtractToMemory(handle, 0, &something, 4), answer);
    EXPECT_EQ(GetStoredName(handle, 0, &name, &place), answer);
    EXPECT_EQ(MoveTo(handle, place), answer);
    EXPECT_EQ(Close(handle), answer);
    EXPECT_EQ(LastZipError(), answer);
  }
}

TEST_F(ZipListingTest, IndexFindsTheFirstOfEqualNames) {
  for (const char* name : {"Dir/A.png", "dir/a.PNG", "\xC3\x84", "z"}) zip_.AddStored(name, name);
  zip_.AddStored(std::string(300, 'n'), "");
  zip_.AddStored("last", "end");
  ASSERT_TRUE(Open());
  ZipIndex index;
  index.Build(reader_);
  ASSERT_TRUE(index.Find(TEXT("DIR/a.png")));
  EXPECT_EQ(index.Find(TEXT("DIR/a.png"))->index, 0);
  EXPECT_EQ(index.Find(TEXT("\u00C4"))->index, 2);
  for (const WCHAR* name : {TEXT("dir\\a.png"), TEXT("\u00E4"), TEXT("")}) EXPECT_FALSE(index.Find(name));
  EXPECT_FALSE(index.Find(String(300, TEXT('n'))));
  const ZipPlace* last = index.Find(TEXT("LAST"));
  ASSERT_TRUE(last);
  EXPECT_EQ(MoveTo(reader_, *last), ZipOk);
  ZipError error;
  EXPECT_EQ(Memory(last->index, &error), "end");
  EXPECT_EQ(Name(1), TEXT("dir/a.PNG"));
}

TEST_F(ZipListingTest, IndexEndsWhereTheDirectoryBecomesUnreadable) {
  zip_.AddStored("a", "");
  zip_.AddStored("b", "").central_signature = 1;
  zip_.AddStored("c", "");
  ASSERT_TRUE(Open());
  ZipIndex index;
  index.Build(reader_);
  EXPECT_TRUE(index.Find(TEXT("a")));
  EXPECT_FALSE(index.Find(TEXT("b")));
  EXPECT_FALSE(index.Find(TEXT("c")));
}

TEST_F(ZipListingTest, IndexHoldsAsManyNamesAsAreAdded) {
  std::vector<std::string> names;
  for (int i = 0; i < 5000; ++i) names.push_back("Pages/" + std::to_string(i * 7919));
  ZipIndex index;
  EXPECT_FALSE(index.Find(TEXT("pages/0")));
  for (int round = 0; round < 2; ++round) {
    for (size_t i = 0; i < names.size(); ++i) index.Add(names[i], {static_cast<LONG>(i), i});
    for (size_t i = 0; i < names.size(); ++i) {
      const ZipPlace* const place = index.Find(TEXT("PAGES/") + FromUtf8(names[i]).substr(6));
      ASSERT_TRUE(place) << names[i];
      EXPECT_EQ(place->index, static_cast<LONG>(i));
    }
    EXPECT_FALSE(index.Find(TEXT("pages/1")));
    index.Clear();
    EXPECT_FALSE(index.Find(TEXT("pages/0")));
  }
}

}  // namespace
}  // namespace vanta
