// tests/gmp/CGmpDivideTest.cpp: div, mod, sqrt and the operators.
#include <gtest/gtest.h>

#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"

using vkt::test::Fields;
using vkt::test::Raw;
using vkt::test::LimitMode;
using vkt::test::Text;

namespace {

std::u16string Repeat(char16_t c, int n) { return std::u16string(static_cast<std::size_t>(n), c); }

struct DivCase {
  std::u16string a;
  std::u16string b;
  std::u16string fields;
};

TEST(CGmpDiv, Table) {
  const DivCase cases[] = {
      {u"1", u"3", u"+||" + Repeat(u'3', 40)},
      {u"2", u"3", u"+||" + Repeat(u'6', 40)},  // cut, not rounded to ...7
      {u"10", u"3", u"+|3|" + Repeat(u'3', 40)},
      {u"22", u"7", u"+|3|1428571428571428571428571428571428571428"},
      {u"1", u"8", u"+||125"},
      {u"7", u"2", u"+|3|5"},
      {u"123456789012345678901234", u"3", u"+|41152263004115226300411|" + Repeat(u'3', 37)},
      {u"0", u"5", u"+|0|"},
      {u"0", u"0.1", u"+||"},  // a divisor of one after preparing: null
      {u"5", u"0.1", u"+|50|"},
      {u"0.001", u"0.01", u"+||1"},
      {u"100", u"0.25", u"+|400|"},
      {u"1", u"1024", u"+||0009765625"},
      {u"1", u"1e39", u"+||" + Repeat(u'0', 38) + u"1"},
      {u"1", u"1e40", u"+||" + Repeat(u'0', 39) + u"1"},
      {u"1", u"1e41", u"+|0|"},  // no decimal digit came: the integer part stays 0
      {u"-1", u"3", u"-||" + Repeat(u'3', 40)},
      {u"1", u"-3", u"-||" + Repeat(u'3', 40)},
      {u"-6", u"-3", u"+|2|"},
      {u"2.5", u"0.5", u"+|5|"},
      {u"123456789012345678901234567890", u"987654321098765432109876543210",
       u"+||1249999988609375000142382812498220214843"},
      {u"98765432109876543210987654321", u"0.0000000007", u"+|141093474442680776015696649030000000000|"},
      {u"1", u"7", u"+||1428571428571428571428571428571428571428"},
  };
  for (const DivCase& c : cases) {
    CGmp x(c.a.c_str());
    CGmp y(c.b.c_str());
    EXPECT_EQ(x.div(&y), 1) << testing::PrintToString(c.a) << " / " << testing::PrintToString(c.b);
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.a) << " / " << testing::PrintToString(c.b);
  }
}

TEST(CGmpDiv, LimitMode) {
  LimitMode reduced;
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"1", u"0.333333333333"}, {u"100", u"33.333333333333"}, {u"1000", u"333.33333333333"}};
  for (const auto& [a, expected] : cases) {
    CGmp x(a);
    CGmp three(3);
    x.div(&three);
    EXPECT_EQ(Text(x), expected) << testing::PrintToString(a);
  }
}

TEST(CGmpDiv, ByZeroOrNullChangesNothing) {
  CGmp x(u"-12.5");
  CGmp zero(u"0");
  CGmp null;
  EXPECT_EQ(x.div(&zero), 0);
  EXPECT_EQ(x.div(&null), 0);
  EXPECT_EQ(x.div(nullptr), 0);
  EXPECT_EQ(Fields(x), u"-|12|5");
  CGmp stray(u"2");
  stray.m_strInt = u"x";  // a unit that is no digit divides like zero
  EXPECT_EQ(x.div(&stray), 0);
  EXPECT_EQ(Fields(x), u"-|12|5");
}

TEST(CGmpDiv, ByOneKeepsEveryDigit) {
  const std::u16string digits = Repeat(u'7', 75);
  CGmp x(digits.c_str());
  CGmp one(u"-1");
  EXPECT_EQ(x.div(&one), 1);
  EXPECT_EQ(Fields(x), u"-|" + digits + u"|");
  // One only after preparing: still no Validate.
  CGmp ten(u"10");
  CGmp big(u"1e70");
  big.div(&ten);
  EXPECT_EQ(Text(big), u"1" + Repeat(u'0', 69));
  CGmp negativeByPoint(u"0");
  CGmp tenth(u"-0.1");
  negativeByPoint.div(&tenth);
  EXPECT_EQ(Fields(negativeByPoint), u"-||");  // the sign is set before the early return
}

TEST(CGmpDiv, SelfAndOneThirdTimesThree) {
  CGmp x(u"-4.5");
  x.div(&x);
  EXPECT_EQ(Fields(x), u"+|1|");
  CGmp third(1);
  CGmp three(3);
  third.div(&three);
  third.mul(&three);
  EXPECT_EQ(Text(third), u"0." + Repeat(u'9', 40));
}

struct ModCase {
  const char16_t* a;
  const char16_t* b;
  const char16_t* expected;
};

constexpr ModCase kMod[] = {
    {u"7", u"3", u"1"},    {u"-7", u"3", u"2"},   {u"7", u"-3", u"-2"}, {u"7.5", u"2", u"1.5"},
    {u"-7.5", u"2", u"0.5"}, {u"6", u"3", u"0"},  {u"-6", u"3", u"0"},  {u"5", u"0", u"5"},
    {u"5", u"", u"5"},     {u"-7", u"-3", u"-1"}, {u"0.3", u"0.1", u"0"},
};

TEST(CGmpMod, Table) {
  for (const ModCase& c : kMod) {
    CGmp x(c.a);
    CGmp y(c.b);
    x.mod(y);
    EXPECT_EQ(Text(x), c.expected) << testing::PrintToString(c.a) << " mod " << testing::PrintToString(c.b);
  }
  CGmp self(u"4.5");
  self.mod(self);
  EXPECT_EQ(Text(self), u"0");
}

struct RootCase {
  const char16_t* value;
  const char16_t* root;
};

constexpr RootCase kRoots[] = {
    {u"2", u"1.4142135623730950488016887242096980785696"},
    {u"3", u"1.7320508075688772935274463415058723669428"},
    {u"4", u"2"},
    {u"9", u"3"},
    {u"0.25", u"0.5"},
    {u"0.0001", u"0.01"},
    {u"1000000", u"1000"},
    {u"1e20", u"10000000000"},
    {u"1e22", u"100000000056.3369512889074396344100194983655814920972"},
    {u"1e24", u"1249494689944.4133585002291439324089447720990752589745"},
    {u"0", u"0"},
    {u"", u""},
};

TEST(CGmpSqrt, Table) {
  for (const RootCase& c : kRoots) {
    CGmp x(c.value);
    EXPECT_EQ(x.sqrt(), 1) << testing::PrintToString(c.value);
    EXPECT_EQ(Text(x), c.root) << testing::PrintToString(c.value);
  }
  CGmp negative(u"-4");
  EXPECT_EQ(negative.sqrt(), 0);
  EXPECT_EQ(Text(negative), u"-4");
}

TEST(CGmpOperators, AssigningForms) {
  CGmp x(u"2.5");
  x += x;
  EXPECT_EQ(Text(x), u"5");
  x -= 1;
  EXPECT_EQ(Text(x), u"4");
  x *= x;
  EXPECT_EQ(Text(x), u"16");
  x /= 3;
  EXPECT_EQ(Text(x), u"5." + Repeat(u'3', 40));
  CString text(u"0.0000000000000000000000000000000000000001");
  x += text;
  EXPECT_EQ(Text(x), u"5." + Repeat(u'3', 39) + u"4");
  CGmp y(u"7");
  y /= 0;
  EXPECT_EQ(Text(y), u"7");
  CGmp zero(0);
  y /= zero;
  EXPECT_EQ(Text(y), u"7");
  y *= 1;
  EXPECT_EQ(Text(y), u"7");
  y *= 0;
  EXPECT_TRUE(y.IsNull());
  y += 0;
  EXPECT_TRUE(y.IsNull());
  y = 3;
  y /= y;
  EXPECT_EQ(Text(y), u"1");
}

TEST(CGmpOperators, Comparisons) {
  CGmp a(u"1.5");
  CGmp b(u"2");
  CGmp null;
  CGmp negative(u"-0.5");
  EXPECT_TRUE(a < b);
  EXPECT_TRUE(b > a);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(null == CGmp(0));
  EXPECT_TRUE(null == 0);
  EXPECT_FALSE(null > 0);
  EXPECT_TRUE(null >= 0);
  EXPECT_TRUE(null <= 0);
  EXPECT_FALSE(null < 0);
  EXPECT_TRUE(negative < 0);
  EXPECT_TRUE(negative <= 0);
  EXPECT_FALSE(negative >= 0);
  EXPECT_TRUE(b == 2);
  EXPECT_TRUE(b >= 2);
  EXPECT_TRUE(b <= 2);
  EXPECT_TRUE(a > 1);
  EXPECT_TRUE(a < 2);
  EXPECT_TRUE(negative > -1);
}

}  // namespace
