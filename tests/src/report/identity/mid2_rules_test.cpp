#include "report/identity/mid2_rules.h"

#include <gtest/gtest.h>

#include "report/identity/ascii.h"
#include "report/identity/crc8.h"
#include "tests/src/report/identity/identity_fixture.h"

namespace vanta {
namespace {

std::string WithCrc(std::string text) {
  const BYTE crc = Crc8(text);
  return text + LowerHex(&crc, 1);
}

String Wide(const std::string& text) { return FromUtf8(text); }

std::string Of(const Mid2Hardware& hardware, bool elevated = true) {
  return ComputeMid2({hardware.address, hardware.disk, "processor"}, std::nullopt, elevated).text;
}

const Mid2Hardware kAll{"AA", "disk", ""};
const Mid2Hardware kAddress{"AA", "", ""};
const Mid2Hardware kNone;
const std::string kValid = WithCrc(std::string(40, '7') + "2b");
const std::string kRandom = WithCrc("ffffffff" + std::string(32, '9') + "10");
const std::string kFreshRandom = WithCrc("ffffffff000102030405060708090a0b0c0d0e0f10");

struct Row {
  const char* name;
  std::string cached;
  bool elevated;
  SelfProtection protection;
  Mid2Hardware first, second;
  std::string m2;
  Writes writes;
  int waits;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

Writes Replaced(const std::string& old, const std::string& fresh) { return {{"m2_old", old}, {"m2", fresh}}; }
Writes Stored(const std::string& fresh) { return {{"m2", fresh}}; }

const auto kAbsent = SelfProtection::Absent;
const auto kNo = SelfProtection::No;
const auto kYes = SelfProtection::Yes;
const std::string kUnchecked = std::string(40, '7') + "2b00";

const Row kRows[] = {
    {"NewMachine", "", true, kAbsent, kAll, {}, Of(kAll), Stored(Of(kAll)), 0},
    {"AddressComesLate", "", true, kYes, {"", "disk", ""}, kAll, Of(kAll), Stored(Of(kAll)), 1},
    {"DiskNeverComes", "", true, kYes, kAddress, kAddress, Of(kAddress), Stored(Of(kAddress)), 1},
    {"NothingThenAll", "", true, kYes, kNone, kAll, Of(kAll), Stored(Of(kAll)), 1},
    {"NothingAtAll", "", true, kYes, kNone, kNone, kFreshRandom, Stored(kFreshRandom), 1},
    {"UnelevatedNew", "", false, kAbsent, kAll, {}, Of(kAll, false), Stored(Of(kAll, false)), 0},
    {"UnelevatedNothing", "", false, kAbsent, kNone, kNone, kFreshRandom, Stored(kFreshRandom), 1},
    {"UnelevatedCached", kValid, false, kYes, kAll, {}, kValid, {}, 0},
    {"ProtectionRefuses", kValid, true, kNo, kAll, {}, kValid, {}, 0},
    {"ProtectionRefusesButNothingIsCached", "", true, kNo, kAll, {}, Of(kAll), Stored(Of(kAll)), 0},
    {"ProtectionRefusesButTheCacheIsSpoilt",
     kUnchecked,
     true,
     kNo,
     kAll,
     {},
     Of(kAll),
     Replaced(kUnchecked, Of(kAll)),
     0},
    {"SpoiltCache", kUnchecked, true, kYes, kAll, {}, Of(kAll), Replaced(kUnchecked, Of(kAll)), 0},
    {"ShortCache", kValid.substr(1), true, kYes, kAll, {}, Of(kAll), Replaced(kValid.substr(1), Of(kAll)), 0},
    {"GarbageCache", "no hex at all", false, kYes, kAddress, kAll, Of(kAll, false),
     Replaced("no hex at all", Of(kAll, false)), 1},
    {"SameAgain", Of(kAll), true, kAbsent, kAll, {}, Of(kAll), {}, 0},
    {"SameAgainWithoutDisk", Of(kAddress), true, kAbsent, kAddress, kAll, Of(kAddress), {}, 0},
    {"NewDisk", kValid, true, kYes, kAll, {}, Of(kAll), Replaced(kValid, Of(kAll)), 0},
    {"OtherAndDiskComesLate", kValid, true, kYes, kAddress, kAll, Of(kAll), Replaced(kValid, Of(kAll)), 1},
    {"OtherAndDiskNeverComes", kValid, true, kYes, kAddress, kAddress, Of(kAddress), Replaced(kValid, Of(kAddress)), 1},
    {"CachedAfterTheWait", Of(kAll), true, kYes, kAddress, kAll, Of(kAll), Stored(Of(kAll)), 1},
    {"RandomStaysRandom", kRandom, true, kYes, kNone, kAll, kRandom, {}, 0},
    {"RandomGivesWayToHardware", kRandom, true, kYes, kAll, {}, Of(kAll), Replaced(kRandom, Of(kAll)), 0},
    {"HardwareGoneForAMoment", kValid, true, kYes, kNone, kAll, Of(kAll), Replaced(kValid, Of(kAll)), 1},
    {"HardwareGone", kValid, true, kYes, kNone, kNone, kFreshRandom, Replaced(kValid, kFreshRandom), 1},
};

class Mid2RulesTest : public testing::TestWithParam<Row> {};

TEST_P(Mid2RulesTest, ValueWritesAndWaits) {
  const Row& row = GetParam();
  FakeMid2 machine;
  machine.cached = Wide(row.cached);
  machine.elevated = row.elevated;
  machine.protection = row.protection;
  machine.first = row.first;
  machine.second = row.second;
  EXPECT_EQ(Identifier2(machine), row.m2);
  EXPECT_EQ(machine.writes, row.writes);
  EXPECT_EQ(machine.waits, row.waits);
}
INSTANTIATE_TEST_SUITE_P(Rows, Mid2RulesTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Mid2FormTest, FlagsTellTheSources) {
  const auto flags = [](const Mid2Hardware& hardware) {
    return ComputeMid2(hardware, std::nullopt, true).text.substr(40, 2);
  };
  EXPECT_EQ(flags({"a", "", ""}), "21");
  EXPECT_EQ(flags({"", "d", ""}), "22");
  EXPECT_EQ(flags({"a", "d", "p"}), "2b");
  EXPECT_EQ(flags({"", "", "p"}), "10");
}

TEST(Mid2FormTest, WithoutElevationOnlyAHashIsMarked) {
  EXPECT_EQ(Of(kAll, false).substr(0, 8), "eeeeeeee");
  EXPECT_EQ(Of(kAll, false).substr(8, 34), Of(kAll).substr(8, 34));
  EXPECT_EQ(ComputeMid2(kNone, std::nullopt, false).text, WithCrc(std::string(40, '0') + "10"));
}

TEST(Mid2FormTest, CacheHoldsByLengthAndCrcAlone) {
  EXPECT_TRUE(IsValidMid2(Wide(kValid)));
  EXPECT_TRUE(IsValidMid2(Wide(WithCrc(std::string(42, 'z')))));
  std::string capitals = kValid;
  for (char& c : capitals) c = static_cast<char>(c >= 'a' && &c >= &capitals[42] ? c - 32 : c);
  EXPECT_TRUE(IsValidMid2(Wide(capitals)));
  EXPECT_FALSE(IsValidMid2(Wide(kValid + "0")));
  EXPECT_FALSE(IsValidMid2(TEXT("")));
  for (size_t i = 0; i < kValid.size(); ++i) {
    String text = Wide(kValid);
    text[i] = static_cast<WCHAR>(text[i] + 0x4E00);
    EXPECT_FALSE(IsValidMid2(text)) << i;
    text = Wide(kValid);
    text[i] = TEXT('x');
    EXPECT_FALSE(IsValidMid2(text)) << i;
  }
}

}  // namespace
}  // namespace vanta
