// tests/gmp/CGmpTest.cpp: CGmp through its interface at both limit sets, with the forms it leaves: the
// arithmetic, Compare and the operators, then text in and out, doubles, machine integers, arrays, streams.
#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "CGmp.h"
#include "tests/support/GmpText.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/Text.h"

using namespace vkt::test;
using Strict = CGmp::Enum_PureDigitCheckStrict;

namespace {

// op: + - * / % add minu mul div mod; c, C Compare(b, 0 or 1); s sqrt; r Round, < Div_10exp and
// > Mul_10exp by n = b; n Neg; v Validate. a and b as Value() reads them, a null b passes a null
// pointer, "=" the object itself. fields: a afterwards; result: what the call returns; ls 1: reduced limits.
struct OpCase { char op; const char16_t *a, *b, *fields; int result = 1, ls = 0; };

const OpCase kOps[] = {
    {'+', u"0.1", u"0.2", u"+|0|3"}, {'+', u"-0.5", u"0.25", u"-||25"}, {'+', u"3", u"-5", u"-|2|"},
    {'+', u"9{20}", u"1", u"+|10{20}|"}, {'+', u"-0.001", u"-0.999", u"-|1|"}, {'-', u"-1", u"1", u"-|2|"},
    {'+', u"9.99", u"0.01", u"+|10|"}, {'+', u"200.05", u"-200", u"+||05"},  // carry over, borrow to ""
    {'+', u"-1", u"1", u"+|0|"}, {'-', u"-5", u"-5", u"+|0|"},  // equal magnitudes: zero, not null, no sign
    {'+', u"7", u"", u"+|7|"}, {'+', u"", u"0", u"+||"}, {'+', u"", u"7", u"+|7|"},  // null, zero: nothing
    {'+', u"2.5", nullptr, u"+|2|5"}, {'-', u"2.5", nullptr, u"+|2|5"}, {'+', u"2.5", u"=", u"+|5|"},
    {'-', u"2.5", u"=", u"+|0|"}, {'-', u"3", u"5", u"-|2|"}, {'-', u"0.3", u"0.1", u"+||2"},
    {'-', u"1", u"0.001", u"+||999"}, {'-', u"1000", u"0.001", u"+|999|999"}, {'-', u"", u"5", u"-|5|"},
    {'+', u"9{60}", u"0.1{40}", u"+|9{60}|1{40}"}, {'v', u"+|9{60}|1{40}", u"", u"+|9{60}|"},  // exact; cut
    {'+', u"9{14}", u"0.5", u"+|9{14}|5", 1, 1},  // exact beyond the reduced limits too
    {'-', u"0.7{39}1", u"0.7{39}2", u"+|0|"},  // equal up to the 40th place: not one unit of it
    {'*', u"5", u"0", u"+||"}, {'*', u"5", u"", u"+||"}, {'*', u"", u"5", u"+||"},  // by zero or null: null
    {'*', u"0", u"5", u"+|0|"}, {'*', u"1.5", u"1.5", u"+|2|25"}, {'*', u"0.1", u"0.1", u"+||01"},
    {'*', u"-2", u"-3", u"+|6|"}, {'*', u"2.5", u"-0.4", u"-|1|"}, {'*', u"-1.5", u"=", u"+|2|25"},
    {'*', u"0.2", u"3", u"+|0|6"}, {'*', u"0.05", u"10", u"+|0|5"},  // the last partial product's 0 stays
    {'*', u"0.2", u"3.1", u"+||62"}, {'*', u"0.005", u"100", u"+||5"}, {'*', u"+||3{40}", u"3", u"+||9{40}"},
    {'*', u"12345678901234567890", u"98765432109876543210", u"+|1219326311370217952237463801111263526900|"},
    // 17 units of the 40th place times 0.5: the copy is cut from 1.7 units to 1 before the 5 multiplies it.
    {'*', u"0.0{38}17", u"0.5", u"+||0{39}5"}, {'*', u"1e200", u"1e200", u"+|10{400}|"},
    {'*', u"0.000001", u"0.000001", u"+||000000000001", 1, 1}, {'*', u"0.0000001", u"0.000001", u"+||", 1, 1},
    {'*', u"1234567.1234567", u"10", u"+|12345671|234567", 1, 1},
    {'/', u"1", u"3", u"+||3{40}"}, {'/', u"2", u"3", u"+||6{40}"}, {'/', u"7", u"2", u"+|3|5"},  // cut
    {'/', u"22", u"7", u"+|3|1428571428571428571428571428571428571428"}, {'/', u"1e70", u"10", u"+|10{69}|"},
    {'/', u"123456789012345678901234", u"3", u"+|41152263004115226300411|3{37}"},
    {'/', u"9{30}", u"7{29}", u"+|12|8571428571428571428571428572585714285714"},
    {'/', u"98765432109876543210987654321", u"0.0000000007", u"+|141093474442680776015696649030{10}|"},
    {'/', u"0", u"5", u"+|0|"}, {'/', u"5", u"0.1", u"+|50|"}, {'/', u"0.001", u"0.01", u"+||1"},
    {'/', u"1", u"1024", u"+||0009765625"}, {'/', u"-1", u"3", u"-||3{40}"}, {'/', u"-6", u"-3", u"+|2|"},
    {'/', u"1", u"1e39", u"+||0{38}1"}, {'/', u"1", u"1e40", u"+||0{39}1"}, {'/', u"2.5", u"0.5", u"+|5|"},
    {'/', u"1", u"1e41", u"+|0|"}, {'/', u"0", u"0.1", u"+||"},  // no decimal came: 0; 0 / 1 at once: null
    {'/', u"-4.5", u"=", u"+|1|"}, {'/', u"7{75}", u"-1", u"-|7{75}|"},  // by one: every digit kept
    {'/', u"0", u"-0.1", u"-||"},  // the sign is set before the early return
    {'/', u"-12.5", u"0", u"-|12|5", 0}, {'/', u"-12.5", u"", u"-|12|5", 0},  // fails, the value stays
    {'/', u"-12.5", nullptr, u"-|12|5", 0}, {'/', u"-12.5", u"+|x|", u"-|12|5", 0},  // x: no digit, as zero
    {'/', u"100", u"3", u"+|33|333333333333", 1, 1}, {'/', u"1000", u"3", u"+|333|33333333333", 1, 1},
    {'%', u"7", u"3", u"+|1|"}, {'%', u"7.5", u"2", u"+|1|5"}, {'%', u"-7.5", u"2", u"+||5"},
    {'%', u"-7", u"3", u"+|2|"}, {'%', u"7", u"-3", u"-|2|"}, {'%', u"-7", u"-3", u"-|1|"},  // b's sign
    {'%', u"-6", u"3", u"+|0|"}, {'%', u"0.3", u"0.1", u"+|0|"}, {'%', u"4.5", u"=", u"+|0|"},
    {'%', u"5", u"0", u"+|5|"}, {'s', u"4", u"", u"+|2|"}, {'s', u"0.0001", u"", u"+||01"},
    {'s', u"2", u"", u"+|1|4142135623730950488016887242096980785696"}, {'s', u"1e20", u"", u"+|10000000000|"},
    {'s', u"0", u"", u"+|0|"}, {'s', u"", u"", u"+||"}, {'s', u"-4", u"", u"-|4|", 0},
    // 40 rounds do not reach the root: the estimate, above it, stays.
    {'s', u"1e22", u"", u"+|100000000056|3369512889074396344100194983655814920972"},
    {'r', u"1.25", u"1", u"+|1|3"}, {'r', u"-1.25", u"1", u"-|1|3"}, {'r', u"1.24999", u"1", u"+|1|2"},
    {'r', u"9.99", u"1", u"+|10|"}, {'r', u"-0.5", u"0", u"-|1|"}, {'r', u"-0.4", u"0", u"+|0|"},
    {'r', u"1.5", u"5", u"+|1|5"}, {'r', u"0.05", u"1", u"+||1"}, {'r', u"0.994", u"2", u"+|0|99"},
    {'r', u"0.995", u"2", u"+|1|"}, {'>', u"1.5", u"1", u"+|15|"}, {'>', u"0.05", u"1", u"+|0|5"},
    {'>', u"0.005", u"2", u"+||5"}, {'>', u"12", u"3", u"+|12000|"}, {'>', u"0", u"5", u"+|0|"},
    {'>', u"12", u"0", u"+|12|"}, {'<', u"1.5", u"1", u"+||15"}, {'<', u"123", u"2", u"+|1|23"},
    {'<', u"1", u"40", u"+||0{39}1"}, {'<', u"-1", u"41", u"+||"}, {'<', u"-12", u"2147483647", u"+||"},
    {'<', u"1", u"12", u"+||000000000001", 1, 1}, {'<', u"1", u"13", u"+||", 1, 1},
    {'n', u"5", u"", u"-|5|"}, {'n', u"0", u"", u"+|0|"}, {'n', u"-|0|", u"", u"+|0|"},  // a zero: no sign
    {'v', u"+|0007|", u"", u"+|7|"}, {'v', u"-|000|500", u"", u"-||5"}, {'v', u"-|0|000", u"", u"+|0|"},
    {'v', u"-|0{30}1|", u"", u"-|1|"},    // 31 digits: past the short road
    {'v', u"-|0|0{40}1", u"", u"+|0|"},  // cut away, and the sign with it
    {'c', u"", u"", u"+||", 0}, {'C', u"", u"", u"+||", 0}, {'c', u"", u"0", u"+||", 0},
    {'C', u"", u"0", u"+||", -1}, {'c', u"0", u"", u"+|0|", 0}, {'C', u"0", u"", u"+|0|", 1},  // null < 0
    {'c', u"", u"5", u"+||", -1}, {'c', u"", u"-5", u"+||", 1}, {'c', u"-5", u"", u"-|5|", -1},
    {'C', u"5", u"", u"+|5|", 1}, {'C', u"-3", nullptr, u"-|3|", -1}, {'c', u"-1", u"1", u"-|1|", -1},
    {'c', u"-1", u"-2", u"-|1|", 1}, {'c', u"1.5", u"1.25", u"+|1|5", 1}, {'c', u"2", u"10", u"+|2|", -1},
    {'c', u"0.7{39}1", u"0.7{39}2", u"+|0|7{39}1", 0},
};

int Call(const OpCase& c, CGmp& x) {
  CGmp y = Value(c.b);
  CGmp* b = c.b == nullptr ? nullptr : (std::u16string_view(c.b) == u"=" ? &x : &y);
  const int n = std::atoi(Row(c.b).c_str());
  switch (c.op) {
    case '+': x.add(b); break;
    case '-': x.minu(b); break;
    case '*': x.mul(b); break;
    case '/': return x.div(b);
    case '%': x.mod(*b); break;
    case 'c': return x.Compare(b, 0);
    case 'C': return x.Compare(b, 1);
    case 's': return x.sqrt();
    case 'r': x.Round(n); break;
    case '<': x.Div_10exp(n); break;
    case '>': x.Mul_10exp(n); break;
    case 'n': x.Neg(); break;
    default: x.Validate(); break;
  }
  return 1;
}

TEST(CGmpArithmetic, Table) {
  for (const OpCase& c : kOps) {
    LimitMode mode(c.ls);
    CGmp x = Value(c.a);
    EXPECT_EQ(Call(c, x), c.result) << Row(c.a) << " " << c.op << " " << Row(c.b);
    EXPECT_EQ(Fields(x), Expand(c.fields)) << Row(c.a) << " " << c.op << " " << Row(c.b);
  }
}

TEST(CGmpOperators, Steps) {
  const struct { const char16_t* a; void (*step)(CGmp& x); const char16_t* fields; } kRows[] = {
      {u"2.5", [](CGmp& x) { x += x; }, u"+|5|"}, {u"2.5", [](CGmp& x) { x -= x; }, u"+|0|"},
      {u"-1.5", [](CGmp& x) { x *= x; }, u"+|2|25"}, {u"-4.5", [](CGmp& x) { x /= x; }, u"+|1|"},
      {u"5", [](CGmp& x) { x += CString(u"0.0000000000000000000000000000000000000001"); }, u"+|5|0{39}1"},
      {u"7", [](CGmp& x) { x /= 0; }, u"+|7|"}, {u"7", [](CGmp& x) { x /= CGmp(0); }, u"+|7|"},  // silently
      {u"7", [](CGmp& x) { x *= 1; }, u"+|7|"}, {u"7", [](CGmp& x) { x *= 0; }, u"+||"},
      {u"", [](CGmp& x) { x += 0; }, u"+||"}, {u"", [](CGmp& x) { x = 3; }, u"+|3|"},
      {u"", [](CGmp& x) { x.Set(-2147483647 - 1); }, u"-|2147483648|"},
      {u"", [](CGmp& x) { x.Set(-9223372036854775807L - 1); }, u"-|9223372036854775808|"},
      {u"5", [](CGmp& x) { x.Set(0); }, u"+|0|"},
      {u"5", [](CGmp& x) { x = CGmp(static_cast<const CGmp*>(nullptr)); }, u"+||"},
  };
  for (const auto& c : kRows) {
    CGmp x = Value(c.a);
    c.step(x);
    EXPECT_EQ(Fields(x), Expand(c.fields)) << Row(c.a) << ", row " << (&c - kRows);
  }
}

// The tests of a value, and the comparison operators against an int k and against CGmp(k), all
// from the sign of a - k.
TEST(CGmpStates, TestsAndComparisons) {
  constexpr struct { const char16_t* a; int k, sign, null, zero, one, odd; } kRows[] = {
      {u"", 0, 0, 1, 1, 0, 0},     {u"abc", 0, 0, 1, 1, 0, 0},  {u"0", 0, 0, 0, 1, 0, 0},
      {u"0.01", 0, 1, 0, 0, 0, 0}, {u"-0.5", 0, -1, 0, 0, 0, 0}, {u"-0.5", -1, 1, 0, 0, 0, 0},
      {u"-1", -1, 0, 0, 0, 1, 1},  {u"1.5", 2, -1, 0, 0, 0, 1},  {u"13.2", 13, 1, 0, 0, 0, 1},
      {u"2", 2, 0, 0, 0, 0, 0},    {u".7", 1, -1, 0, 0, 0, 0}};
  for (const auto& c : kRows) {
    const CGmp x(c.a);
    const CGmp y(c.k);
    const int s = c.sign;
    const std::array<int, 14> got = {x.IsNull(), x.IsZero(), CGmp::IsZero(c.a), CGmp::IsZero(&x), x.IsOne(),
                                     x.IsOddInt(), x == c.k, x < c.k, x > c.k, x <= c.k, x >= c.k, x == y,
                                     x < y, x > y};
    const std::array<int, 14> want = {c.null, c.zero, c.zero, c.zero, c.one, c.odd, s == 0, s < 0, s > 0,
                                      s <= 0, s >= 0, s == 0, s < 0, s > 0};
    EXPECT_EQ(got, want) << Row(c.a) << " vs " << c.k;
  }
  EXPECT_TRUE(CGmp::IsZero(static_cast<const CGmp*>(nullptr)));
}

// The text and fields with runs expanded, what SetString returns, ls 1 at the reduced limits.
struct ParseCase { const char16_t* text; int result; const char16_t* fields; int ls = 0; };

// Read as Full and as Normal, with the same outcome.
const ParseCase kFull[] = {
    {u"1,234.5", 1, u"+|1234|5"}, {u"1.", 1, u"+|1|"}, {u".5", 1, u"+|0|5"}, {u"-.5", 1, u"-|0|5"},
    {u"1,2,3", 1, u"+|123|"}, {u"0.0", 1, u"+|0|"},  // no rule for groups; zero, not null
    {u"1e3", 1, u"+|1000|"}, {u"1E3", 1, u"+|1000|"}, {u"1.5e3", 1, u"+|1500|"}, {u"25e-1", 1, u"+|2|5"},
    {u"1e3-", 1, u"+||001"}, {u"1e2-1", 1, u"+||0{20}1"},  // the sign may stand anywhere among the digits
    {u"1e2  ", 1, u"+|100|"}, {u"1e2 x", 1, u"+|100|"},   // behind the exponent's blank nothing is read
    {u"  12  ", 1, u"+|12|"}, {u"", 1, u"+||"}, {u"   ", 1, u"+||"}, {nullptr, 1, u"+||"}, {u"0", 1, u"+|0|"},
    {u"007.5", 1, u"+|7|5"}, {u"00.5", 1, u"+||5"}, {u"00", 1, u"+||"},  // zeros stripped to nothing: null
    {u".", 1, u"+|0|"}, {u"-12.50", 1, u"-|12|5"}, {u"-1e-100", 1, u"+||"},  // cut to nothing, no sign
    {u"-0", 0, u"+|0|"}, {u"-0.00", 0, u"+|0|"},  // a negative zero is no number, but a valid zero
    {u"-", 0, u"+||"}, {u"- 5", 0, u"+||"}, {u"+5", 0, u"+||"}, {u"abc", 0, u"+||"}, {u"50%", 0, u"+|50|"},
    {u"1.2.3", 0, u"+|1|2"}, {u"1.5,3", 0, u"+|1|5"}, {u"1 2", 0, u"+|1|"}, {u"1e", 0, u"+|1|"},
    {u"1e+", 0, u"+|1|"}, {u"1e2x", 0, u"+|100|"}, {u"1e1001", 0, u"+|1|"},  // past the exponent bound
    {u"1e+-3", 0, u"+|1|"},  // the second sign ends the reading: no digits
    {u"1e100", 1, u"+|10{100}|"}, {u"-,{5000}7.25", 1, u"-|7|25"}, {u"a{100000}12.5b{100000}", 0, u"+||"},
    {u"7{79}", 1, u"+|7{79}|"}, {u"7{79}8", 0, u"+|7{79}|"},  // runs of 79 digits, kept whole
    {u"7{79}.7{79}", 1, u"+|7{79}|"}, {u"0.3{80}", 0, u"+|0|3{40}"}, {u"10{100000}", 0, u"+|10{78}|"},
    {u"9{20}.3{40}", 1, u"+|9{20}|3{40}"}, {u"9{21}.3{40}", 1, u"+|9{21}|3{39}"},  // decimals cut first
    {u"9{50}.3{30}", 1, u"+|9{50}|3{10}"}, {u"9{60}.3{40}", 1, u"+|9{60}|"}, {u"9{61}.3{5}", 1, u"+|9{61}|"},
    {u"0.3{50}", 1, u"+|0|3{40}"}, {u"0.123456789012345", 1, u"+|0|123456789012", 1},
    {u"1000.123456789012", 1, u"+|1000|123456789", 1},
};

// Read as None: the number is looked for inside the text first.
const ParseCase kNone[] = {
    {u"abc12.5x", 1, u"+|12|5"}, {u"a{100000}12.5b{100000}", 1, u"+|12|5"}, {u"x-12", 1, u"-|12|"},
    {u"a.5", 1, u"+|0|5"}, {u"12-5", 1, u"+|12|"}, {u"1.5e3", 1, u"+|1|5"}, {u"12e3e4", 1, u"+|12000|"},
    {u"-.5", 1, u"+|0|5"}, {u"1e-3", 1, u"+|1|"},  // no minus before the point; an e needs a digit behind
    {u"1,2,3.4,5", 1, u"+|123|4"}, {u"ab 12 cd", 1, u"+|12|"}, {u"abc", 1, u"+||"}, {u"x-0", 0, u"+|0|"},
    {u"1e3.5", 0, u"+|1000|"},  // the span takes the point; the exponent faults on it
};

TEST(CGmpSetString, Tables) {
  for (const int strict : {2, 1, 0}) {
    for (const ParseCase& c : strict ? std::span<const ParseCase>(kFull) : kNone) {
      LimitMode limits(c.ls);
      const std::u16string text = Expand(c.text);
      CGmp x(7);
      const int result = x.SetString(c.text ? text.c_str() : nullptr, static_cast<Strict>(strict));
      EXPECT_EQ(result, c.result) << Row(c.text) << " strict " << strict;
      EXPECT_EQ(Fields(x), Expand(c.fields)) << Row(c.text) << " strict " << strict;
    }
  }
}

// Each row also shows that the value stays as it was, that the output may be one of its fields, that
// the static Round of the text gives the same without grouping, and that all decimals printed read back
// as the same fields.
TEST(CGmpGetString, Table) {
  // The value as Value() reads it, nDec, bSep, the text (runs expanded), ls 1 at the reduced limits.
  constexpr struct { const char16_t* value; int nDec, bSep; const char16_t* text; int ls = 0; } kRows[] = {
      {u"1.005", 2, 0, u"1.01"}, {u"9.995", 2, 0, u"10.00"}, {u"2.5", 0, 0, u"3"}, {u"-2.5", 0, 0, u"-3"},
      {u"-0.001", 2, 0, u"0.00"}, {u"-0.4", 0, 0, u"0"}, {u"-0.005", 2, 0, u"-0.01"},  // no sign on 0
      {u"1.24999", 1, 0, u"1.2"}, {u"12", 3, 0, u"12.000"}, {u"0.125", 5, 0, u"0.12500"}, {u"0", 0, 0, u"0"},
      {u"0", 2, 0, u"0.00"}, {u"", 2, 0, u"0.00"}, {u"", -1, 0, u""}, {u"0.4", 0, 0, u"0"},
      {u"abc", 2, 0, u"0.00"}, {u"  2.345 ", 2, 0, u"2.35"}, {u"-||25", -1, 0, u"-0.25"},  // "" prints as 0
      {u"3", 50, 0, u"3.0{40}"}, {u"12.5", 45, 0, u"12.50{39}"}, {u"12.5", 45, 0, u"12.50{11}", 1},  // limit
      {u"-1234567.5", -1, 1, u"-1,234,567.5"}, {u"1234", -1, 1, u"1,234"}, {u"123", -1, 1, u"123"},
      {u"-999.96", 1, 1, u"-1,000.0"}, {u"123456", 0, 1, u"123,456"}, {u"0.25", -1, 1, u"0.25"},
      {u"-0.0{39}1", -1, 0, u"-0.0{39}1"}, {u"1e70", -1, 0, u"10{70}"},
      {u"9{30}.1{30}", -1, 0, u"9{30}.1{30}"},
  };
  for (const auto& c : kRows) {
    LimitMode mode(c.ls);
    CGmp x = Value(c.value);
    const std::u16string before = Fields(x);
    const std::u16string expected = Expand(c.text);
    CString out(u"junk");
    x.GetString(out, c.nDec, c.bSep);
    EXPECT_EQ(U(out), expected) << Row(c.value) << " at " << c.nDec << " sep " << c.bSep;
    EXPECT_EQ(Fields(x), before) << Row(c.value);
    x.GetString(x.m_strDec, c.nDec, c.bSep);
    EXPECT_EQ(U(x.m_strDec), expected) << Row(c.value);
    if (Expand(c.value).find(u'|') != std::u16string::npos) continue;
    CString text(Expand(c.value));
    CGmp::Round(text, c.nDec);
    std::u16string plain = expected;  // Round never groups
    std::erase(plain, u',');
    EXPECT_EQ(U(text), plain) << Row(c.value);
    if (c.nDec >= 0) continue;
    CGmp back;
    EXPECT_EQ(back.SetString(out.GetString(), CGmp::CheckStrict_Full), 1) << Row(c.value);
    EXPECT_EQ(Fields(back), before) << Row(c.value);
  }
}

TEST(CGmpDouble, FromDouble) {
  const struct { double value; const char16_t* expected; } kRows[] = {
      {0.1, u"0.1"}, {0.1 + 0.2, u"0.3"}, {123456.789, u"123456.789"}, {1e-5, u"0.00001"}, {-2.5, u"-2.5"},
      {1.0 / 3.0, u"0.33333333333333"}, {2.0 / 3.0, u"0.66666666666667"},  // 15 digits, the lone 0 too
      {123456789012345.67, u"123456789012346"}, {1e22, u"10000000000000000000000"},  // never integer digits
      {-0.0, u"0"}, {1e-20, u"0"}, {HUGE_VAL, u""}, {-HUGE_VAL, u""}, {NAN, u""},
  };
  for (const auto& c : kRows) EXPECT_EQ(Text(CGmp(c.value)), c.expected) << c.value;
  EXPECT_EQ(CGmp(1e300).m_strInt.GetLength(), 79);  // the parser's run limit
}

TEST(CGmpDouble, ToDouble) {
  // Str2Double(text, strip) gives expected; so does CGmp(text).GetDouble() where viaGmp is 1.
  const struct { const char16_t* text; int strip; double expected; int viaGmp; } kRows[] = {
      {u"1.5", 0, 1.5, 1}, {u"0.1", 0, 0.1, 1}, {u"-12345.678", 0, -12345.678, 1}, {u"1e70", 0, 1e70, 1},
      {u"", 0, 0.0, 1}, {nullptr, 1, 0.0, 1}, {u"abc", 0, 0.0, 1}, {u"1,234.5", 0, 1.0, 0},
      {u"1,234.5", 1, 1234.5, 1}, {u"  -2e3x", 0, -2000.0, 0}, {u"+.25", 0, 0.25, 0}, {u"0x10", 0, 16.0, 0},
      {u"--1", 0, 0.0, 0}, {u"1e-400", 0, 0.0, 1}, {u"1e400", 0, HUGE_VAL, 0},
  };
  for (const auto& c : kRows) {
    EXPECT_EQ(CGmp::Str2Double(c.text, c.strip), c.expected) << Row(c.text);
    if (!c.viaGmp) continue;
    EXPECT_EQ(CGmp(c.text).GetDouble(), c.expected) << Row(c.text);
  }
}

TEST(CGmpDouble, IndependentOfTheLocale) {
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "fr_FR.UTF-8"))
    GTEST_SKIP() << "no locale with a decimal comma installed";
  EXPECT_EQ(Text(CGmp(0.5)), u"0.5");
  EXPECT_EQ(CGmp(u"2.25").GetDouble(), 2.25);
  EXPECT_EQ(CGmp::Str2Double(u"1.5", 0), 1.5);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(CGmpDouble, Double2Str) {
  constexpr struct { double value; int nDec, limit, keepZeros, keepZero; const char16_t* text; } kRows[] = {
      {0.0, 2, 0, 1, 0, u""}, {0.0, 2, 0, 1, 1, u"0.00"}, {2.5, 4, 0, 0, 1, u"2.5"}, {3.0, 2, 0, 0, 1, u"3"},
      {1.0 / 3.0, -1, 1, 1, 1, u"0.33333333"},  // bLimit: at most 8
      {-0.004, 2, 0, 1, 0, u""},                 // shows as 0.00: a zero value
  };
  for (const auto& c : kRows) {
    CString out(u"junk");
    CGmp::Double2Str(out, c.value, c.nDec, c.limit, c.keepZeros, c.keepZero);
    EXPECT_EQ(U(out), c.text) << c.value << " at " << c.nDec;
  }
}

TEST(CGmpInteger, GetInt64AndStr2Int) {
  // CGmp(text).GetInt64() rounds by the first decimal alone, Str2Int(text) half up on the magnitude.
  constexpr struct { const char16_t* text; std::int64_t int64; int int32; } kRows[] = {
      {u"2.5", 3, 3}, {u"-2.5", -3, -3}, {u"2.4999", 2, 2}, {u"0.5", 1, 1}, {u"-0.49", 0, 0}, {u"", 0, 0},
      {u"abc", 0, 0}, {u"1,234", 1234, 1234}, {u"12abc", 12, 12}, {u"9{20}", INT64_MAX, INT32_MAX},
      {u"9223372036854775807.5", INT64_MAX, INT32_MAX},  // both saturate
  };
  for (const auto& c : kRows) {
    const std::u16string text = Expand(c.text);
    EXPECT_EQ(CGmp(text.c_str()).GetInt64(), c.int64) << Row(c.text);
    EXPECT_EQ(CGmp::Str2Int(text.c_str()), c.int32) << Row(c.text);
  }
  EXPECT_EQ(CGmp::Str2Int(nullptr), 0);
}

TEST(CGmpArray, InitAndDestroy) {
  CArray<CGmp*, CGmp*> items;
  CGmp::InitGmpArray(items, 3);
  items[1]->Set(5);
  CGmp::InitGmpArray(items, 2);  // deletes the three, makes two new ones
  ASSERT_EQ(items.GetSize(), 2);
  EXPECT_TRUE(items[0]->IsNull() && items[1]->IsNull());
  CGmp::DestroyGmpArray(items);
  CGmp::DestroyGmpArray(items);  // harmless the second time
  EXPECT_TRUE(items.GetSize() == 2 && items[0] == nullptr && items[1] == nullptr);
  CGmp::InitGmpArray(items, 0);
  EXPECT_EQ(items.GetSize(), 0);
}

// Values travel as they are, raw fields too. The first one cut anywhere fails the read and keeps the
// sign read so far; an empty stream changes nothing.
TEST(CGmpStream, RoundTripAndCuts) {
  const char16_t* kValues[] = {u"-9{60}", u"0.7{40}", u"", u"0", u"-|007|500"};
  MemoryOutput out;
  std::size_t first = 0;
  for (const char16_t* v : kValues) {
    Value(v).Serialize(&out);
    first = first ? first : out.bytes.size();
  }
  MemoryInput in(out.bytes);
  for (const char16_t* v : kValues) {
    CGmp back(u"123");
    EXPECT_EQ(back.Deserialize(&in), 1) << Row(v);
    EXPECT_EQ(Fields(back), Fields(Value(v)));
  }
  EXPECT_EQ(in.Remaining(), 0u);
  for (std::size_t keep = 0; keep < first; ++keep) {
    MemoryInput cut(std::vector<BYTE>(out.bytes.begin(), out.bytes.begin() + static_cast<long>(keep)));
    CGmp x(u"3.75");
    EXPECT_EQ(x.Deserialize(&cut), 0) << keep;
    EXPECT_EQ(Fields(x).substr(0, keep >= 1 ? 1 : 6), keep >= 1 ? u"-" : u"+|3|75") << keep;
  }
  CGmp x;
  EXPECT_EQ(x.Deserialize(nullptr), 0);
  x.Serialize(nullptr);
}

}  // namespace
