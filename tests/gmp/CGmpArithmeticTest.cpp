// tests/gmp/CGmpArithmeticTest.cpp: add, minu, mul, Compare, Round and the
// moves of the point, at both limit sets, with the exact forms they leave.
#include <gtest/gtest.h>

#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"

using vkt::test::Fields;
using vkt::test::Raw;
using vkt::test::LimitMode;
using vkt::test::Text;

namespace {

struct BinaryCase {
  const char16_t* a;
  const char16_t* b;
  const char16_t* fields;  // the result as Fields() shows it
};

std::u16string Repeat(char16_t c, int n) { return std::u16string(static_cast<std::size_t>(n), c); }

void RunTable(const BinaryCase* cases, std::size_t count, void (CGmp::*op)(CGmp*), const char* name) {
  for (std::size_t i = 0; i < count; ++i) {
    const BinaryCase& c = cases[i];
    CGmp x(c.a);
    CGmp y(c.b);
    (x.*op)(&y);
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.a) << " " << name << " "
                                   << testing::PrintToString(c.b);
  }
}

constexpr BinaryCase kAdd[] = {
    {u"0.1", u"0.2", u"+|0|3"},
    {u"200.05", u"-200", u"+||05"},  // the integer part borrows down to nothing
    {u"-1", u"1", u"+|0|"},          // equal magnitudes: zero, not null, no sign
    {u"-5", u"5", u"+|0|"},
    {u"-0.5", u"0.25", u"-||25"},
    {u"99999999999999999999", u"1", u"+|100000000000000000000|"},
    {u"9.99", u"0.01", u"+|10|"},  // the carry crosses the point
    {u"0.5", u"0.5", u"+|1|"},
    {u"-0.001", u"-0.999", u"-|1|"},
    {u"7", u"", u"+|7|"},  // a null operand changes nothing
    {u"", u"7", u"+|7|"},
    {u"", u"", u"+||"},
    {u"", u"0", u"+||"},  // nor does a zero one: null stays null
    {u"3", u"-5", u"-|2|"},
    {u"-3", u"5", u"+|2|"},
    {u"12.34", u"-12.3", u"+||04"},
};

constexpr BinaryCase kMinu[] = {
    {u"1", u"0.001", u"+||999"},
    {u"-5", u"-5", u"+|0|"},
    {u"3", u"5", u"-|2|"},
    {u"0.3", u"0.1", u"+||2"},  // the integer parts cancel to nothing
    {u"100.01", u"100", u"+||01"},
    {u"10", u"0.5", u"+|9|5"},
    {u"-1", u"1", u"-|2|"},
    {u"", u"5", u"-|5|"},
    {u"5", u"", u"+|5|"},
    {u"0", u"5", u"-|5|"},
    {u"1000", u"0.001", u"+|999|999"},
};

TEST(CGmpAdd, Table) { RunTable(kAdd, std::size(kAdd), &CGmp::add, "+"); }

TEST(CGmpMinu, Table) { RunTable(kMinu, std::size(kMinu), &CGmp::minu, "-"); }

TEST(CGmpAdd, ExactBeyondTheLimits) {
  const std::u16string big = Repeat(u'9', 60);
  const std::u16string small = u"0." + Repeat(u'1', 40);
  CGmp x(big.c_str());
  CGmp y(small.c_str());
  x.add(&y);
  EXPECT_EQ(Text(x), big + u"." + Repeat(u'1', 40));  // all 100 digits kept
  x.Validate();
  EXPECT_EQ(Text(x), big);
  LimitMode reduced;
  CGmp a(u"99999999999999");  // 14 digits
  CGmp b(u"0.5");
  a.add(&b);
  EXPECT_EQ(Text(a), u"99999999999999.5");
}

TEST(CGmpAdd, NullPointerAndSelf) {
  CGmp x(u"2.5");
  x.add(nullptr);
  x.minu(nullptr);
  EXPECT_EQ(Text(x), u"2.5");
  x.add(&x);
  EXPECT_EQ(Text(x), u"5");
  x.minu(&x);
  EXPECT_EQ(Fields(x), u"+|0|");
}

TEST(CGmpAdd, DecimalsEqualUpToTheLimitCancel) {
  const std::u16string common = u"0." + Repeat(u'7', 39);
  CGmp x((common + u"1").c_str());
  CGmp y((common + u"2").c_str());
  EXPECT_EQ(x.Compare(&y, 0), 0);
  x.minu(&y);
  EXPECT_EQ(Fields(x), u"+|0|");  // not one unit of the 40th place
  LimitMode reduced;
  CGmp a(u"0.123456789011");
  CGmp b(u"0.123456789012");
  EXPECT_EQ(a.Compare(&b, 0), 0);
  CGmp c(u"0.12345678901");
  CGmp d(u"0.12345678902");
  EXPECT_EQ(c.Compare(&d, 0), -1);
}

constexpr BinaryCase kMul[] = {
    {u"5", u"0", u"+||"},  // by zero: the null value
    {u"0", u"5", u"+|0|"},  // but zero times a number stays zero
    {u"", u"5", u"+||"},
    {u"5", u"", u"+||"},  // a null value is a zero too
    {u"1.5", u"1.5", u"+|2|25"},
    {u"0.1", u"0.1", u"+||01"},
    {u"-2", u"3", u"-|6|"},
    {u"-2", u"-3", u"+|6|"},
    {u"0.2", u"3", u"+|0|6"},     // the integer part the last partial product left
    {u"0.2", u"3.1", u"+||62"},
    {u"0.5", u"0.5", u"+||25"},
    {u"0.05", u"10", u"+|0|5"},
    {u"0.005", u"100", u"+||5"},
    {u"12345678901234567890", u"98765432109876543210", u"+|1219326311370217952237463801111263526900|"},
    {u"-0.5", u"2", u"-|1|"},
    {u"2.5", u"-0.4", u"-|1|"},
};

TEST(CGmpMul, Table) { RunTable(kMul, std::size(kMul), &CGmp::mul, "*"); }

TEST(CGmpMul, PartialProductsAreCutBeforeTheDigit) {
  // 17 units of the 40th place times 0.5: the copy is cut from 1.7 units to
  // 1 before the 5 multiplies it.
  CGmp x((u"0." + Repeat(u'0', 38) + u"17").c_str());
  CGmp half(u"0.5");
  x.mul(&half);
  EXPECT_EQ(Text(x), u"0." + Repeat(u'0', 39) + u"5");
  CGmp tens(u"1e40");
  CGmp other(u"1e40");
  tens.mul(&other);
  EXPECT_EQ(Text(tens), u"1" + Repeat(u'0', 80));
}

TEST(CGmpMul, LimitMode) {
  LimitMode reduced;
  CGmp x(u"0.000001");
  CGmp y(u"0.000001");
  x.mul(&y);
  EXPECT_EQ(Text(x), u"0.000000000001");
  CGmp a(u"0.0000001");
  a.mul(&y);
  EXPECT_EQ(Fields(a), u"+||");  // every partial product cut away
  CGmp b(u"1234567.1234567");
  CGmp c(u"10");
  b.mul(&c);
  EXPECT_EQ(Text(b), u"12345671.234567");  // 14 digits
}

struct CompareCase {
  const char16_t* a;
  const char16_t* b;
  int flag0;
  int flag1;
};

constexpr CompareCase kCompare[] = {
    {u"", u"", 0, 0},       {u"", u"0", 0, -1},    {u"0", u"", 0, 1},   {u"", u"5", -1, -1},
    {u"", u"-5", 1, 1},     {u"-5", u"", -1, -1},  {u"5", u"", 1, 1},   {u"-1", u"1", -1, -1},
    {u"-1", u"-2", 1, 1},   {u"1.5", u"1.25", 1, 1}, {u"2", u"10", -1, -1}, {u"0.1", u"0.10", 0, 0},
    {u"0", u"0.0", 0, 0},
};

TEST(CGmpCompare, Table) {
  for (const CompareCase& c : kCompare) {
    CGmp x(c.a);
    CGmp y(c.b);
    EXPECT_EQ(x.Compare(&y, 0), c.flag0) << testing::PrintToString(c.a) << " vs " << testing::PrintToString(c.b);
    EXPECT_EQ(x.Compare(&y, 1), c.flag1) << testing::PrintToString(c.a) << " vs " << testing::PrintToString(c.b);
  }
  CGmp x(u"-3");
  EXPECT_EQ(x.Compare(nullptr, 1), -1);  // a null pointer is a null value
}

struct RoundCase {
  const char16_t* value;
  int n;
  const char16_t* fields;
};

constexpr RoundCase kRound[] = {
    {u"1.25", 1, u"+|1|3"},   {u"-1.25", 1, u"-|1|3"}, {u"1.24999", 1, u"+|1|2"},
    {u"9.99", 1, u"+|10|"},   {u"0.5", 0, u"+|1|"},    {u"-0.5", 0, u"-|1|"},
    {u"-0.4", 0, u"+|0|"},    {u"1.5", 5, u"+|1|5"},   {u"2.5", 0, u"+|3|"},
    {u"1.5", -1, u"+|1|5"},   {u"0.05", 1, u"+||1"},   {u"0.994", 2, u"+|0|99"},
    {u"0.995", 2, u"+|1|"},
};

TEST(CGmpRound, Table) {
  for (const RoundCase& c : kRound) {
    CGmp x(c.value);
    x.Round(c.n);
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.value) << " at " << c.n;
  }
}

struct ShiftCase {
  const char16_t* value;
  int n;
  bool left;  // Div_10exp
  const char16_t* fields;
};

constexpr ShiftCase kShift[] = {
    {u"1.5", 1, false, u"+|15|"},      {u"0.05", 1, false, u"+|0|5"},  {u"0.005", 2, false, u"+||5"},
    {u"12", 3, false, u"+|12000|"},    {u"0", 5, false, u"+|0|"},      {u"12", 0, false, u"+|12|"},
    {u"1.5", 1, true, u"+||15"},       {u"123", 2, true, u"+|1|23"},   {u"1", 40, true, u"+||0000000000000000000000000000000000000001"},
    {u"-1", 41, true, u"+||"},         {u"-12", 2147483647, true, u"+||"},
};

TEST(CGmpShift, Table) {
  for (const ShiftCase& c : kShift) {
    CGmp x(c.value);
    if (c.left) {
      x.Div_10exp(c.n);
    } else {
      x.Mul_10exp(c.n);
    }
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.value) << (c.left ? " / 10^" : " * 10^") << c.n;
  }
}

TEST(CGmpShift, LimitModeCutAtTwelveDecimals) {
  LimitMode reduced;
  CGmp x(u"1");
  x.Div_10exp(12);
  EXPECT_EQ(Text(x), u"0.000000000001");
  CGmp y(u"1");
  y.Div_10exp(13);
  EXPECT_TRUE(y.IsNull());
}

TEST(CGmpStates, NullZeroAndOne) {
  CGmp made;
  EXPECT_TRUE(made.IsNull());
  EXPECT_TRUE(made.IsZero());
  CGmp zero(0);
  EXPECT_FALSE(zero.IsNull());
  EXPECT_TRUE(zero.IsZero());
  EXPECT_TRUE(CGmp::IsZero(static_cast<const CGmp*>(nullptr)));
  EXPECT_TRUE(CGmp::IsZero(u"abc"));
  EXPECT_FALSE(CGmp::IsZero(u"0.01"));
  EXPECT_TRUE(CGmp(u"-1").IsOne());
  EXPECT_FALSE(CGmp(u"1.5").IsOne());
  EXPECT_EQ(CGmp(u"13.2").IsOddInt(), 1);
  EXPECT_EQ(CGmp(u".7").IsOddInt(), 0);
  CGmp n(u"5");
  n.Neg();
  EXPECT_EQ(Text(n), u"-5");
  zero.Neg();
  EXPECT_EQ(Fields(zero), u"+|0|");
  CGmp negZero = Raw(u"0", u"", 1);
  negZero.Neg();
  EXPECT_EQ(negZero.m_bNeg, 0);
}

TEST(CGmpStates, SetMachineIntegers) {
  CGmp x;
  x.Set(-2147483647 - 1);
  EXPECT_EQ(Fields(x), u"-|2147483648|");
  x.Set(static_cast<long long>(-9223372036854775807LL - 1));
  EXPECT_EQ(Fields(x), u"-|9223372036854775808|");
  x.Set(0);
  EXPECT_EQ(Fields(x), u"+|0|");
  x.Set(static_cast<const CGmp*>(nullptr));
  EXPECT_TRUE(x.IsNull());
}

}  // namespace
