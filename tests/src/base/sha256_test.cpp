#include "base/sha256.h"

#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <vector>

namespace vanta {
namespace {

// Every length around the block's edges, against another implementation.
TEST(Sha256Test, EqualsOpenSslForEveryLengthUpToFourBlocks) {
  std::vector<BYTE> bytes;
  for (unsigned length = 0; length <= 256; ++length) {
    Sha256Hash expected;
    SHA256(bytes.data(), bytes.size(), expected.data());
    EXPECT_EQ(Sha256(bytes.data(), bytes.size()), expected) << length;
    bytes.push_back(static_cast<BYTE>(length * 37 + 11));
  }
}

}  // namespace
}  // namespace vanta
