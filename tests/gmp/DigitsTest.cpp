// tests/gmp/DigitsTest.cpp: the digit strings under CGmp row by row; over seeded operands, the fast roads
// of mul and div against the digit-by-digit definitions, and fields holding units that are no digits.
#include "gmp/Digits.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

#include "gmp/GmpOps.h"
#include "tests/support/GmpText.h"
#include "tests/support/Text.h"

using namespace vkt::digits;
using namespace vkt::test;

namespace {

// op: A AddInt, M MinuInt, a AddDec, m MinuDec, C CompareInt, c CompareDec, i Inc, p Pad by b, o IsOdd,
// z IsZero, h Half, f DivFast, d Div. after: a afterwards, "quotient|rest" for Div; result: the carry,
// borrow, comparison or quotient returned; ls 1: reduced limits. Runs are expanded in a, b and after.
struct DigitCase { char op; const char16_t *a, *b, *after; int result, ls = 0; };

constexpr DigitCase kDigits[] = {
    {'A', u"", u"", u"", 0}, {'A', u"5", u"007", u"012", 0}, {'A', u"999", u"1", u"1000", 0},
    {'A', u"1", u"999", u"1000", 0}, {'A', u"05", u"3", u"08", 0}, {'M', u"1000", u"1", u"999", 0},
    {'A', u"0", u"007", u"007", 0}, {'M', u"5", u"5", u"", 0},  // a zero a takes b as it is; a - a is ""
    {'M', u"12", u"", u"12", 0}, {'M', u"007", u"7", u"", 0}, {'M', u"1", u"2", u"9", 1},  // 1 - 2: borrow
    {'a', u"5", u"5", u"0", 1}, {'a', u"1", u"099", u"199", 0}, {'a', u"", u"5", u"5", 0},
    {'a', u"25", u"0", u"25", 0}, {'a', u"99", u"01", u"00", 1},  // zero b: untouched; zeros stay
    {'m', u"5", u"25", u"25", 0}, {'m', u"25", u"5", u"75", 1}, {'m', u"5", u"5", u"", 0},
    {'m', u"123", u"023", u"1", 0}, {'m', u"", u"1", u"9", 1}, {'C', u"", u"0", u"", 0},
    {'C', u"0", u"5", u"0", -1}, {'C', u"5", u"", u"5", 1}, {'C', u"12", u"9", u"12", 1},
    {'C', u"12", u"13", u"12", -1}, {'C', u"13", u"13", u"13", 0}, {'c', u"", u"000", u"", 0},
    {'c', u"1", u"09", u"1", 1}, {'c', u"25", u"25", u"25", 0}, {'c', u"5", u"50", u"5", -1},  // past the end
    {'c', u"4{39}1", u"4{39}2", u"4{39}1", 0}, {'c', u"4{38}1", u"4{38}2", u"4{38}1", -1},  // 40th: out
    {'c', u"123456789011", u"123456789012", u"123456789011", 0, 1},
    {'c', u"12345678901", u"12345678902", u"12345678901", -1, 1}, {'i', u"999", u"", u"1000", 0},
    {'i', u"", u"", u"1", 0}, {'p', u"1000", u"-2", u"001000", 0}, {'p', u"1000", u"1", u"10000", 0},
    {'o', u"17", u"", u"17", 1}, {'o', u"", u"", u"", 0}, {'z', u"000", u"", u"000", 1},
    {'z', u"010", u"", u"010", 0}, {'h', u"18", u"", u"9", 0}, {'h', u"10{21}", u"", u"50{20}", 0},
    {'h', u"1234567890123456789012", u"", u"617283945061728394506", 0},
    {'f', u"100", u"7", u"2", 14}, {'f', u"3", u"7", u"3", 0},  // untouched when the quotient is 0
    {'f', u"1234567890123456789", u"3", u"1234567890123456789", 0},  // 19 digits: not this road
    {'d', u"1234567890123456789", u"3", u"411522630041152263|0", 0}, {'d', u"100", u"7", u"14|2", 0},
};

int Call(char op, CString& a, const CString& b) {
  switch (op) {
    case 'A': Digits_AddInt(a, b); return 0;
    case 'M': return Digits_MinuInt(a, b);
    case 'a': return Digits_AddDec(a, b);
    case 'm': return Digits_MinuDec(a, b);
    case 'C': return Digits_CompareInt(a, b);
    case 'c': return Digits_CompareDec(a, b);
    case 'i': Digits_Inc(a); return 0;
    case 'p': Digits_Pad(a, std::atoi(b.ToUtf8().c_str())); return 0;
    case 'o': return Digits_IsOdd(a);
    case 'z': return Digits_IsZero(a) ? 1 : 0;
    case 'h': Digits_Half(a); return 0;
    case 'f': return static_cast<int>(Digits_DivFast(a, b));
  }
  CString q;
  Digits_Div(q, a, b);
  a = q + u"|" + a;
  return 0;
}

TEST(Digits, Table) {
  for (const DigitCase& c : kDigits) {
    LimitMode mode(c.ls);
    CString a(Expand(c.a));
    EXPECT_EQ(Call(c.op, a, CString(Expand(c.b))), c.result) << c.op << " " << Row(c.a) << " " << Row(c.b);
    EXPECT_EQ(a.View(), Expand(c.after)) << c.op << " " << Row(c.a) << " " << Row(c.b);
  }
}

// Division as the digit strings take it: the whole quotient by the 64-bit shortcut, then one digit
// at a time, each placed with Div_10exp and summed, until the limit or an exact end.
void DivideDigitByDigit(CGmp& x, const CGmp& divisor) {
  CGmp y(divisor);
  vkt::gmp::div_Prepare(x, y);
  if (y.m_strInt == u"1") return;
  CString a(x.m_strInt);
  x.Empty();
  AppendUnsigned(x.m_strInt, static_cast<unsigned long long>(Digits_DivFast(a, y.m_strInt)));
  for (int k = 0; !Digits_IsZero(a) && x.m_strDec.GetLength() < CGmp::GetMaxDecLength();) {
    for (; Digits_CompareInt(y.m_strInt, a) > 0; ++k) a += u'0';
    CGmp t;
    Digits_Div(t.m_strInt, a, y.m_strInt);
    t.Div_10exp(k);
    if (t.IsZero()) break;
    vkt::gmp::AddMagnitude(x, t);
  }
  x.Validate();
}

// Over canonical operands of up to maxInt integer and maxDec decimal digits, integer parts "" and "0"
// among them and zeros frequent (powers of ten, short products): the fast multiplication against the
// stepwise one and, cut or not, against the rows; every fifth pair, division against the one above.
void CheckPaths(unsigned seed, int rounds, int maxInt, int maxDec) {
  std::mt19937 random(seed);
  auto sparse = [&]() { return static_cast<char16_t>(random() % 3 == 0 ? u'0' : u'0' + random() % 10); };
  auto next = [&]() {
    const int in = static_cast<int>(random() % static_cast<unsigned>(maxInt + 1));
    const int dec = static_cast<int>(random() % static_cast<unsigned>(maxDec + 1));
    std::u16string s;
    for (int i = 0; i < in; ++i) s += i == 0 ? static_cast<char16_t>(u'1' + random() % 9) : sparse();
    if (in == 0 && random() % 2) s += u'0';
    CGmp x;
    x.m_strInt = CString(s);
    s.clear();
    for (int i = 0; i < dec; ++i) s += sparse();
    while (!s.empty() && s.back() == u'0') s.pop_back();
    x.m_strDec = CString(s);
    return x;
  };
  for (int round = 0; round < rounds; ++round) {
    const CGmp a = next();
    CGmp b = next();
    if (b.IsZero()) continue;
    std::string show = testing::PrintToString(Fields(a));
    show += " and " + testing::PrintToString(Fields(b));
    CGmp quick(a);
    CGmp slow(a);
    ASSERT_TRUE(vkt::gmp::MultiplyFast(quick, b));
    vkt::gmp::MultiplyStepwise(slow, b);
    ASSERT_EQ(Fields(quick), Fields(slow)) << "mul " << show;
    CGmp rows(a.IsZero() ? slow : a);
    if (!a.IsZero()) vkt::gmp::MultiplyByRows(rows, b);
    ASSERT_EQ(Fields(rows), Fields(slow)) << "rows " << show;
    if (round % 5 != 0 || b.IsOne()) continue;
    quick = slow = a;
    ASSERT_EQ(quick.div(&b), 1);
    DivideDigitByDigit(slow, b);
    ASSERT_EQ(Fields(quick), Fields(slow)) << "div " << show;
  }
}

TEST(CGmpPaths, FastRoadsMatchTheDefinitions) {
  CheckPaths(1, 20000, 40, 30);
  LimitMode reduced;
  CheckPaths(2, 20000, 12, 10);
}

// A host may write the fields: units that are no digits give some value, but never a crash, a hang
// or undefined behaviour.
TEST(CGmpPaths, StrayUnitsAreSurvived) {
  std::mt19937 random(5);
  const std::u16string units = u"0123456789x-.: \xffff";
  auto junk = [&]() {
    CGmp x;
    for (CString* field : {&x.m_strInt, &x.m_strDec}) {
      std::u16string s(random() % 25, u' ');
      for (char16_t& unit : s) unit = units[random() % units.size()];
      *field = CString(s);
    }
    x.m_bNeg = static_cast<int>(random() % 3);
    return x;
  };
  for (int round = 0; round < 3000; ++round) {
    const CGmp a = junk();
    CGmp b = junk();
    for (auto op : {&CGmp::add, &CGmp::minu, &CGmp::mul}) (CGmp(a).*op)(&b);
    CGmp(a).div(&b);
    CGmp(a).mod(b);
    CGmp r(a);
    r.Compare(&b, 1);
    r.Round(static_cast<int>(random() % 5));
    CString out;
    r.GetString(out, static_cast<int>(random() % 6) - 1, 1);
    (r = a).Validate();
    if (round % 10 == 0) (r = a).sqrt();
  }
}

}  // namespace
