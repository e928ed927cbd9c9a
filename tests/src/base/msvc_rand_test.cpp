#include "base/msvc_rand.h"

#include <gtest/gtest.h>

TEST(MsvcRandTest, SeedOneGivesTheKnownSequence) {
  vanta::MsvcRand sequence(1);
  for (const int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(sequence.Next(), expected);
}
