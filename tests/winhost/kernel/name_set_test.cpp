#include "winhost/kernel/name_set.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using winhost::NameSet;

TEST(NameSetTest, EmptySetHoldsNothing) {
  NameSet names;
  EXPECT_FALSE(names.MayHold(7));
  names.Remove(7);
  EXPECT_EQ(names.bytes(), 0u);
}

TEST(NameSetTest, AgreesWithAMapThroughAddingAndRemoving) {
  NameSet names;
  std::map<std::uint64_t, int> counted;
  std::mt19937 random(5);  // NOLINT: the same run each time
  for (int step = 0; step < 20000; ++step) {
    // Few values that all begin their search close together, so that chains form and are cut.
    const std::uint64_t hash = random() % 64 * (random() % 2 ? 1 : 1024);
    if (random() % 2) {
      names.Add(hash);
      ++counted[hash ? hash : 1];
    } else if (int& count = counted[hash ? hash : 1]; count > 0) {
      names.Remove(hash);
      --count;
    }
    if (step % 100 == 0) {
      for (const auto& [value, count] : counted) ASSERT_EQ(names.MayHold(value), count > 0) << step << " " << value;
    }
  }
}

TEST(NameSetTest, SixtyThousandNamesTakeHalfAMegabyte) {
  NameSet names;
  for (std::uint64_t i = 0; i < 60'000; ++i) names.Add(i * 0x9E3779B97F4A7C15ull);
  EXPECT_LE(names.bytes(), 512u * 1024);
  names.Clear();
  EXPECT_EQ(names.bytes(), 0u);
  EXPECT_FALSE(names.MayHold(0x9E3779B97F4A7C15ull));
}

}  // namespace
