#include "report/identity/mid1_rules.h"

#include <gtest/gtest.h>

#include "report/identity/machine_hash.h"
#include "tests/src/report/identity/identity_fixture.h"

namespace vanta {
namespace {

std::string Stored(const std::string& identifier) { return identifier + MachineHash(identifier); }

TEST(Mid1RulesTest, StoredValueThatHoldsIsReturnedWithoutAskingTheHardware) {
  const std::string identifier = "0123456789ABCDEFabcdefghijklmno!";
  std::string check = MachineHash(identifier);
  for (char& c : check) c = static_cast<char>(c >= 'a' ? c - 32 : c);
  for (const std::string& stored : {Stored(identifier), identifier + check}) {
    FakeMid1 machine;
    machine.stored = stored;
    EXPECT_EQ(Identifier1(machine), identifier);
    EXPECT_EQ(machine.asked, 0);
    EXPECT_EQ(machine.writes, Writes());
  }
}

TEST(Mid1RulesTest, StoredValueThatDoesNotHoldIsReplacedAndKept) {
  const std::string fresh = Identifier1Of("hardware");
  const std::string good = Stored(std::string(32, 'a'));
  std::string spoilt = good;
  spoilt[40] = spoilt[40] == '0' ? '1' : '0';
  for (const std::string& stored : {good.substr(1), good + "0", spoilt, std::string("x"), std::string(255, 'x'),
                                    std::string("\xC3\xA4\xFF garbage")}) {
    FakeMid1 machine;
    machine.stored = stored;
    EXPECT_EQ(Identifier1(machine), fresh);
    EXPECT_EQ(machine.writes, (Writes{{"mid_old", stored}, {"mid", Stored(fresh)}}));
  }
}

TEST(Mid1RulesTest, NothingIsKeptOfWhatIsEmptyTooLongOrTheIdentifierItself) {
  const std::string fresh = Identifier1Of("hardware");
  for (const std::string& stored : {std::string(), std::string(256, 'x'), std::string(2000, 'x'), fresh}) {
    FakeMid1 machine;
    machine.stored = stored;
    EXPECT_EQ(Identifier1(machine), fresh);
    EXPECT_EQ(machine.writes, (Writes{{"mid", Stored(fresh)}})) << stored.size();
  }
}

TEST(Mid1RulesTest, HardwareCountsWithItsFirst259Bytes) {
  const std::string longest(259, 'x');
  EXPECT_EQ(Identifier1Of(longest + "y"), Identifier1Of(longest));
  EXPECT_NE(Identifier1Of(longest.substr(1)), Identifier1Of(longest));
  EXPECT_EQ(Identifier1Of(""), Identifier1Of("Mid2Failed"));
}

}  // namespace
}  // namespace vanta
