// gmp/GmpOps.h: the magnitude steps of CGmp as free functions over its
// public fields, shared by its sources and reachable by the tests. Not
// installed; nothing under include/ may include it.
//
// Signs are the callers' business: every function here works on magnitudes
// and leaves m_bNeg alone unless it says otherwise.
#pragma once

#include <array>
#include <cstdint>

#include "CGmp.h"

namespace vkt::gmp {

// 10^0 to 10^19, every power of ten that a 64-bit word holds.
inline constexpr std::array<std::uint64_t, 20> kPow10 = [] {
  std::array<std::uint64_t, 20> powers{};
  powers[0] = 1;
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

// The longest integer part that Mul_10exp builds; SetString's exponents stay
// far below it.
constexpr int kMaxShiftedDigits = 1 << 20;

// add_NoNeg: decimals first, their carry enters the integer part afterwards.
void AddMagnitude(CGmp& x, const CGmp& b);
// minu_NoNeg: x's magnitude must not be below b's. A zero integer part comes
// out as the empty string.
void SubtractMagnitude(CGmp& x, const CGmp& b);
// Compare_NotNeg: integer parts, then decimals up to the comparison limit.
int CompareMagnitude(const CGmp& x, const CGmp& b);
// mul_1To9: one carry runs through the decimals, then the integer part; the
// decimals are not stripped.
void MultiplyByDigit(CGmp& x, int k);

// mul_NoNeg. The product is defined by one partial product per non-zero
// digit of b, those of b's decimals cut to the limits before the digit
// multiplies them, summed and validated. MultiplyStepwise does exactly that;
// MultiplyFast gives the same digits faster, and answers false (x untouched)
// for operands not in the form Validate leaves (see IsCanonical) and for a
// zero b. Inside, the exact product goes on limbs when no
// partial product is cut, else MultiplyByRows sums the cut rows in columns.
void MultiplyMagnitude(CGmp& x, const CGmp& b);
void MultiplyStepwise(CGmp& x, const CGmp& b);
bool MultiplyFast(CGmp& x, const CGmp& b);
void MultiplyByRows(CGmp& x, const CGmp& b);  // x, b canonical, neither zero

// Both become whole numbers in m_strInt with the same ratio,
// without common trailing zeros, halved together while the dividend is long
// and both are even.
void div_Prepare(CGmp& x, CGmp& y);

// sqrt of a positive value in the form Validate leaves, within the limits:
// the digits of the operators' Newton iteration, computed on binary whole
// numbers. False, x untouched, for any other value.
bool SqrtFast(CGmp& x);

// True when m_strInt has no leading 0 (a lone 0 allowed), m_strDec no
// trailing 0, and both only digits: the form Validate leaves.
bool IsCanonical(const CGmp& x);

}  // namespace vkt::gmp
