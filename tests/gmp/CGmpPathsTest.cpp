// tests/gmp/CGmpPathsTest.cpp: the fast roads of multiplication and
// division against the digit-by-digit algorithms that define them, field
// for field, over seeded random operands at both limit sets.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "CGmp.h"
#include "gmp/Digits.h"
#include "gmp/GmpOps.h"
#include "tests/support/GmpText.h"

using namespace vkt::digits;
using vkt::test::Fields;
using vkt::test::LimitMode;

namespace {

class Operands {
 public:
  explicit Operands(unsigned seed) : m_random(seed) {}

  // A canonical value with up to maxInt integer and maxDec decimal digits;
  // integer parts of "" and "0" both occur, and so do trailing zeros.
  CGmp Next(int maxInt, int maxDec) {
    CGmp x;
    const int in = Pick(maxInt);
    const int dec = Pick(maxDec);
    std::u16string s;
    if (in > 0) {
      s += Digit(1);
      for (int i = 1; i < in; ++i) s += Sparse();
    } else if (m_random() % 2) {
      s = u"0";
    }
    x.m_strInt = CString(s);
    s.clear();
    for (int i = 0; i < dec; ++i) s += Sparse();
    while (!s.empty() && s.back() == u'0') s.pop_back();
    x.m_strDec = CString(s);
    return x;
  }

 private:
  int Pick(int max) { return static_cast<int>(m_random() % static_cast<unsigned>(max + 1)); }
  char16_t Digit(int low) { return static_cast<char16_t>(u'0' + low + static_cast<int>(m_random() % (10 - low))); }
  // Zeros are frequent, so that powers of ten and short products occur.
  char16_t Sparse() { return m_random() % 3 == 0 ? u'0' : Digit(0); }

  std::mt19937 m_random;
};

void CheckMultiplication(int seed, int rounds, int maxInt, int maxDec) {
  Operands operands(static_cast<unsigned>(seed));
  int fast = 0;
  for (int round = 0; round < rounds; ++round) {
    const CGmp a = operands.Next(maxInt, maxDec);
    const CGmp b = operands.Next(maxInt, maxDec);
    if (b.IsZero()) continue;
    CGmp quick(a);
    if (!vkt::gmp::MultiplyFast(quick, b)) continue;
    ++fast;
    CGmp slow(a);
    vkt::gmp::MultiplyStepwise(slow, b);
    ASSERT_EQ(Fields(quick), Fields(slow)) << "a=" << testing::PrintToString(Fields(a))
                                           << " b=" << testing::PrintToString(Fields(b));
    if (a.IsZero()) continue;
    // The rows give the same digits with or without cuts.
    CGmp rows(a);
    vkt::gmp::MultiplyByRows(rows, b);
    ASSERT_EQ(Fields(rows), Fields(slow)) << "rows, a=" << testing::PrintToString(Fields(a))
                                          << " b=" << testing::PrintToString(Fields(b));
  }
  EXPECT_GT(fast, rounds / 2);  // the comparison must have had work to do
}

TEST(CGmpPaths, FastMultiplicationMatchesStepwise) { CheckMultiplication(1, 20000, 35, 30); }

TEST(CGmpPaths, FastMultiplicationMatchesStepwiseAtLimitMode) {
  LimitMode reduced;
  CheckMultiplication(2, 20000, 9, 8);
}

// Steps 5 to 8 of the division as the digit strings take them: the whole
// quotient by the 64-bit shortcut, then one digit at a time, each placed
// with Div_10exp and summed, until the limit or an exact end.
void DivideDigitByDigit(CGmp& x, const CGmp& divisor) {
  CGmp y(divisor);
  vkt::gmp::div_Prepare(x, y);
  if (y.m_strInt == u"1") return;
  CString a(x.m_strInt);
  const CString d(y.m_strInt);
  x.m_strInt.Empty();
  x.m_strDec.Empty();
  const long long q = Digits_DivFast(a, d);
  AppendUnsigned(x.m_strInt, static_cast<unsigned long long>(q));
  if (!Digits_IsZero(a)) {
    int k = 0;
    for (;;) {
      while (Digits_CompareInt(d, a) > 0) {
        ++k;
        a += u'0';
      }
      CGmp t;
      Digits_Div(t.m_strInt, a, d);
      t.Div_10exp(k);
      if (t.IsZero()) break;
      vkt::gmp::AddMagnitude(x, t);
      if (x.m_strDec.GetLength() >= CGmp::GetMaxDecLength()) break;
      if (Digits_IsZero(a)) break;
    }
  }
  x.Validate();
}

void CheckDivision(int seed, int rounds, int maxInt, int maxDec) {
  Operands operands(static_cast<unsigned>(seed));
  for (int round = 0; round < rounds; ++round) {
    const CGmp a = operands.Next(maxInt, maxDec);
    const CGmp b = operands.Next(maxInt, maxDec);
    if (b.IsZero() || b.IsOne()) continue;
    CGmp quick(a);
    ASSERT_EQ(quick.div(const_cast<CGmp*>(&b)), 1);
    CGmp slow(a);
    DivideDigitByDigit(slow, b);
    ASSERT_EQ(Fields(quick), Fields(slow)) << "a=" << testing::PrintToString(Fields(a))
                                           << " b=" << testing::PrintToString(Fields(b));
  }
}

TEST(CGmpPaths, DivisionMatchesDigitByDigit) { CheckDivision(3, 4000, 40, 30); }

TEST(CGmpPaths, DivisionMatchesDigitByDigitAtLimitMode) {
  LimitMode reduced;
  CheckDivision(4, 4000, 12, 10);
}

// Units that are no digits (a host may write the fields) give some value,
// but never a crash, a hang or undefined behaviour.
TEST(CGmpPaths, StrayUnitsAreSurvived) {
  std::mt19937 random(5);
  const char16_t units[] = u"0123456789x-.: \xffff";
  auto junk = [&]() {
    std::u16string s;
    const int n = static_cast<int>(random() % 25);
    for (int i = 0; i < n; ++i) s += units[random() % (sizeof(units) / sizeof(units[0]) - 1)];
    return CString(s);
  };
  for (int round = 0; round < 3000; ++round) {
    CGmp a;
    a.m_strInt = junk();
    a.m_strDec = junk();
    a.m_bNeg = static_cast<int>(random() % 3);
    CGmp b;
    b.m_strInt = junk();
    b.m_strDec = junk();
    CGmp r(a);
    r.add(&b);
    r = a;
    r.minu(&b);
    r = a;
    r.mul(&b);
    r = a;
    r.div(&b);
    r = a;
    r.mod(b);
    r = a;
    r.Compare(&b, 1);
    r.Round(static_cast<int>(random() % 5));
    CString out;
    r.GetString(out, static_cast<int>(random() % 6) - 1, 1);
    r = a;
    r.Validate();
    if (round % 10 == 0) {
      r = a;
      r.sqrt();
    }
  }
}

}  // namespace
