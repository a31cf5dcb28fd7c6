// Tests of the secure random bytes: every byte is written, two draws differ, edge arguments as documented.
#include "platform/RandomBytes.h"
#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <vector>
TEST(RandomBytes, FillsEveryByteAndRefusesANullBuffer) {
  // 80 bytes, as the random built-ins ask; a byte that keeps its fill value in 8 draws has odds of 2^-64.
  std::array<unsigned char, 80> first{}, buffer{};
  std::array<bool, 80> changed{};
  for (int draw = 0; draw < 8; ++draw) {
    buffer.fill(0xA5);
    ASSERT_TRUE(vkt::platform::FillRandomBytes(buffer.data(), buffer.size()));
    for (std::size_t i = 0; i < buffer.size(); ++i) changed[i] = changed[i] || buffer[i] != 0xA5;
    if (draw == 0) first = buffer;
  }
  EXPECT_EQ(std::count(changed.begin(), changed.end(), true), 80);
  EXPECT_NE(first, buffer);
  std::vector<unsigned char> big((1 << 25) + 16);  // past what one getrandom call gives
  EXPECT_TRUE(vkt::platform::FillRandomBytes(big.data(), big.size()));
  EXPECT_TRUE(vkt::platform::FillRandomBytes(nullptr, 0) && !vkt::platform::FillRandomBytes(nullptr, 1));
}
