// Tests of the secure random bytes: all bytes are written, two draws differ,
// and the edge arguments are refused or accepted as documented.
#include "platform/RandomBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace {

TEST(RandomBytes, FillsTheWholeBuffer) {
  // 80 bytes, as the random built-ins ask. A byte position that stays at its
  // fill value in all of 8 draws would have odds of 2^-64.
  std::array<bool, 80> changed{};
  for (int draw = 0; draw < 8; ++draw) {
    std::array<unsigned char, 80> buffer;
    buffer.fill(0xA5);
    ASSERT_TRUE(vkt::platform::FillRandomBytes(buffer.data(), buffer.size()));
    for (std::size_t i = 0; i < buffer.size(); ++i) changed[i] = changed[i] || buffer[i] != 0xA5;
  }
  for (std::size_t i = 0; i < changed.size(); ++i) EXPECT_TRUE(changed[i]) << "byte " << i;
}

TEST(RandomBytes, TwoDrawsDiffer) {
  unsigned char a[32], b[32];
  ASSERT_TRUE(vkt::platform::FillRandomBytes(a, sizeof a));
  ASSERT_TRUE(vkt::platform::FillRandomBytes(b, sizeof b));
  EXPECT_NE(std::memcmp(a, b, sizeof a), 0);
}

TEST(RandomBytes, EdgeArguments) {
  EXPECT_TRUE(vkt::platform::FillRandomBytes(nullptr, 0));
  EXPECT_FALSE(vkt::platform::FillRandomBytes(nullptr, 1));
  std::vector<unsigned char> big((1 << 25) + 16);  // past what one getrandom call gives
  EXPECT_TRUE(vkt::platform::FillRandomBytes(big.data(), big.size()));
}

}  // namespace
