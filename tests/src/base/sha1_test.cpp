#include "base/sha1.h"

#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <algorithm>
#include <vector>

namespace vanta {
namespace {

TEST(Sha1Test, EveryLengthAroundABlockHashesAsElsewhere) {
  for (size_t size = 0; size < 200; ++size) {
    std::vector<BYTE> bytes(size);
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<BYTE>(i * 7 + size);
    BYTE expected[20];
    SHA1(bytes.data(), bytes.size(), expected);
    const Sha1Hash hash = Sha1(bytes.data(), bytes.size());
    EXPECT_TRUE(std::ranges::equal(hash, expected)) << size;
  }
}

}  // namespace
}  // namespace vanta
