#include <gtest/gtest.h>

#include "install/zip/entry_attributes.h"
#include "install/zip/entry_times.h"
#include "tests/src/install/zip/zip_builder.h"

namespace vanta {
namespace {

using zip_testing::UnixTimes;

TEST(EntryAttributesTest, FollowTheHost) {
  const struct {
    BYTE host;
    DWORD external, attributes;
  } rows[] = {
      {0, 0x27, 0x27},
      {0, 0x10, 0x10},
      {0, 0xFFFFFFFF, 0x37},  // volume label and unknown bits are dropped
      {0, 0x81A40000, 0},     // Unix bits mean nothing here
      {7, 0x01, 0x01},        // hosts with DOS attributes
      {11, 0x06, 0x06},
      {14, 0x20, 0x20},
      {3, 0100644u << 16, 0x20},  // regular, owner may write
      {3, 0100444u << 16, 0x21},
      {3, (040755u << 16) | 0x10, 0x30},  // directory
      {3, 0, 0x21},
      {19, 0100644u << 16 | 0x07, 0x20},  // DOS byte of a Unix-like host is not looked at
  };
  for (const auto& row : rows) EXPECT_EQ(AttributesFromHost(row.host, row.external), row.attributes) << row.external;
}

LONGLONG Ticks(const FILETIME& time) {
  return static_cast<LONGLONG>(static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

LONGLONG FromUnix(LONGLONG seconds) { return seconds * 10000000 + 116444736000000000; }

EntryTimes Times(int date, int time, LONG bias, std::string_view extra) {
  return TimesFrom(static_cast<WORD>(date), static_cast<WORD>(time), bias,
                   {reinterpret_cast<const BYTE*>(extra.data()), extra.size()});
}

void ExpectTimes(const EntryTimes& times, LONGLONG modification, LONGLONG access, LONGLONG creation) {
  EXPECT_EQ(Ticks(times.modification), modification);
  EXPECT_EQ(Ticks(times.access), access);
  EXPECT_EQ(Ticks(times.creation), creation);
}

constexpr int kDate = 44 << 9 | 2 << 5 | 29;        // 29 February 2024
constexpr int kTime = 23 << 11 | 59 << 5 | 58 / 2;  // 23:59:58
constexpr LONGLONG kUnixOfIt = 1709251198;

TEST(EntryTimesTest, DosTimesAreLocal) {
  for (const LONG bias : {0, -480, 300, -345}) {
    const LONGLONG utc = FromUnix(kUnixOfIt + bias * 60);
    ExpectTimes(Times(kDate, kTime, bias, ""), utc, utc, utc);
  }
}

TEST(EntryTimesTest, ImpossibleDatesGiveNoTime) {
  const struct {
    int date, time;
  } rows[] = {{0, 0},     {43 << 9 | 2 << 5 | 29, 0}, {44 << 9 | 13 << 5 | 1, 0}, {kDate, 24 << 11}, {kDate, 60 << 5},
              {kDate, 30}};
  for (const auto& row : rows) ExpectTimes(Times(row.date, row.time, -480, ""), 0, 0, 0);
}

TEST(EntryTimesTest, UnixTimesReplaceWhatTheirFlagsName) {
  const LONGLONG dos = FromUnix(kUnixOfIt);
  const std::string other = std::string("up\x03\x00", 4) + "abc";
  const struct {
    const char* name;
    std::string extra;
    LONGLONG modification, access, creation;
  } rows[] = {
      {"modification only", UnixTimes(1, {1000}), FromUnix(1000), dos, dos},
      {"all", UnixTimes(7, {1, 2, 3}), FromUnix(1), FromUnix(2), FromUnix(3)},
      {"creation alone comes first", UnixTimes(4, {9}), dos, dos, FromUnix(9)},
      {"before 1970", UnixTimes(1, {-1}), FromUnix(-1), dos, dos},
      {"behind another block", other + UnixTimes(2, {5}), dos, FromUnix(5), dos},
      {"first of two", UnixTimes(1, {1}) + UnixTimes(1, {2}), FromUnix(1), dos, dos},
      {"fewer than promised", UnixTimes(7, {1, 2}), FromUnix(1), FromUnix(2), dos},
      {"half a time", UnixTimes(3, {1, 2}).substr(0, 11), FromUnix(1), dos, dos},
      {"declared size ends before the second", UnixTimes(3, {1, 2}, 5), FromUnix(1), dos, dos},
      {"declared size past the extra field", UnixTimes(3, {1}, 500), FromUnix(1), dos, dos},
      {"no flags", UnixTimes(0, {}, 0), dos, dos, dos},
      {"other block past the extra field", std::string("up\xFF\xFF", 4) + UnixTimes(1, {1}), dos, dos, dos},
      {"a tag and no more", "UT\x05", dos, dos, dos},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectTimes(Times(kDate, kTime, 0, row.extra), row.modification, row.access, row.creation);
  }
}

}  // namespace
}  // namespace vanta
