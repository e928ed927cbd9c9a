#include "report/identity/machine_hash.h"

#include <gtest/gtest.h>

#include "report/identity/crc8.h"

namespace vanta {
namespace {

// Derived by make_vectors.py, around every place where padding and length meet the end of a block.
TEST(MachineHashTest, BytesOfEveryLengthAroundABlockHaveTheirHash) {
  struct Row {
    size_t length;
    const char* hash;
  };
  const Row rows[] = {
      {0, "5d2735c78b4ad61d0f6b5933aef45e4f"},   {1, "1bd71411a70f0c8f279401da65d34276"},
      {32, "848b2d6547ba91213fba9ae064e5a72d"},  {55, "bd4f90f6ae9eee80356ff50922c76bac"},
      {56, "21270d50ee311185e97d7245904fde96"},  {57, "abf28dda84c81911134974bca74b7cb8"},
      {63, "cc077dced4bdbe131223b96280907da0"},  {64, "da282966ade42a858d0bccfb28c35f00"},
      {65, "84f3d83dd8bfc0c3beafb38eb738658d"},  {119, "6f7c51a37f449bcfdf3d11bb694d023f"},
      {120, "6cb09a3f8727dd34e35ddae7b740cadd"}, {128, "8994d5d340768d98776bb1c7796b4cc7"},
      {259, "3b298abcf0a4b6794844d1bc19c6d704"},
  };
  for (const Row& row : rows) EXPECT_EQ(MachineHash(std::string(row.length, '\xAB')), row.hash) << row.length;
}

TEST(Crc8Test, KnownTextsHaveTheirRemainder) {
  EXPECT_EQ(Crc8("abc"), 0x42);
  EXPECT_EQ(Crc8("123456789"), 0xA1);
  EXPECT_EQ(Crc8(""), 0);
}

}  // namespace
}  // namespace vanta
