#include "winhost/machine/machine.h"

#include <atomic>
#include <thread>

#include "tests/support/machine_fixture.h"
#include "winhost/machine/clock.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

class MachineTest : public testing_support::OnMachine {};

TEST_F(MachineTest, AStandingClockMovesOnlyBySleeping) {
  Start(R"({"clock": {"at": "2024-02-29T23:59:59.500", "stands": true}, "zone_bias_minutes": -480})");
  const std::uint64_t start = MachineTime100ns();
  EXPECT_EQ(start, 133536959995000000u);  // 15:59:59.5 UTC
  EXPECT_EQ(MachineTime100ns(), start);
  MachineSleepMs(3'600'000);
  EXPECT_EQ(MachineTime100ns() - start, 36'000'000'000u);
}

TEST_F(MachineTest, TheTicksFollowTheClock) {
  Start(R"({"clock": {"at": "2024-02-29T12:00:00", "stands": true}})");
  const std::uint64_t start = MachineTicksMs();
  MachineSleepMs(1234);
  EXPECT_EQ(MachineTicksMs() - start, 1234u);
}

TEST_F(MachineTest, AnotherOpeningOfTheMachineSeesTheClocksAdvance) {
  const char* facts = R"({"clock": {"at": "2024-02-29T12:00:00", "stands": true}})";
  Start(facts);
  MachineSleepMs(5000);
  const std::uint64_t later = MachineTime100ns();
  MachineScope again(folder_);
  EXPECT_EQ(MachineTime100ns(), later);
}

TEST_F(MachineTest, AFastClockRunsAhead) {
  Start(R"({"clock": {"at": "2024-02-29T12:00:00", "speed": 100000}})");
  const std::uint64_t start = MachineTime100ns();
  MachineSleepMs(60'000);  // 0.6 ms
  EXPECT_GE(MachineTime100ns() - start, 60'000u * 10'000);
}

TEST_F(MachineTest, PlannedFaultsCountTheirCalls) {
  Start(R"({"faults": [{"operation": "WriteFile", "subject": "vanta", "nth": 2, "times": 2, "error": 112},
                       {"operation": "DeleteFileW", "nth": 0, "error": 5},
                       {"operation": "ReadFile", "process": "no such program", "nth": 0, "error": 5}]})");
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\VantaPictor\\a"), std::nullopt);
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\other"), std::nullopt);
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\VantaPictor\\a"), 112u);
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\VANTAPICTOR\\b"), 112u);
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\VantaPictor\\a"), std::nullopt);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(PlannedFault("DeleteFileW", u"C:\\x"), 5u);
  EXPECT_EQ(PlannedFault("ReadFile", u"C:\\x"), std::nullopt);
}

TEST_F(MachineTest, HeldCallGoesOnWhenTheFileIsThere) {
  Start(R"({"faults": [{"operation": "ReadFile", "until": "C/go"},
                       {"operation": "WriteFile", "until": "C/go", "error": 112}]})");
  std::atomic<bool> through{false};
  std::thread reader([&] {
    EXPECT_EQ(PlannedFault("ReadFile", u"C:\\x"), std::nullopt);
    through = true;
  });
  while (!Exists("C:\\go.wanted")) std::this_thread::yield();
  EXPECT_FALSE(through);
  Put("C:\\go", "");
  reader.join();
  EXPECT_FALSE(Exists("C:\\go.wanted"));
  EXPECT_EQ(PlannedFault("WriteFile", u"C:\\x"), 112u);
}

TEST(MachineTextTest, IllFormedTextBecomesReplacementCharacters) {
  struct Row {
    const char* utf8;
    std::u16string wide;
  };
  for (const Row& row :
       {Row{"a\xE4\xB8\xAD", u"a\u4E2D"}, Row{"\xF0\x9F\x96\xBC", u"\U0001F5BC"}, Row{"\xC0\x80", u"\uFFFD\uFFFD"},
        Row{"\xE4\xB8", u"\uFFFD"}, Row{"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"}, Row{"\xFFz", u"\uFFFDz"}}) {
    EXPECT_EQ(Wide(row.utf8), row.wide);
  }
  EXPECT_EQ(Narrow(std::u16string{u'a', 0xD800, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(Narrow(u"\U0001F5BC"), "\xF0\x9F\x96\xBC");
}

}  // namespace
}  // namespace winhost
