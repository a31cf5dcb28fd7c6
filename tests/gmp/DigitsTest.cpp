// tests/gmp/DigitsTest.cpp: the digit-string layer on its own, and the limb
// layer against it.
#include "gmp/Digits.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "gmp/Limbs.h"
#include "tests/support/GmpText.h"

using namespace vkt::digits;

namespace {

std::u16string S(const CString& s) { return std::u16string(s.View()); }

struct Binary {
  const char16_t* a;
  const char16_t* b;
  const char16_t* result;
  int flag;  // carry, borrow or comparison, as the operation returns it
};

constexpr Binary kAddInt[] = {
    {u"", u"", u"", 0},       {u"0", u"007", u"007", 0},  // a zero a takes b as it stands
    {u"5", u"007", u"012", 0}, {u"999", u"1", u"1000", 0},
    {u"1", u"999", u"1000", 0}, {u"05", u"3", u"08", 0},
};

TEST(Digits, AddInt) {
  for (const Binary& c : kAddInt) {
    CString a(c.a);
    Digits_AddInt(a, CString(c.b));
    EXPECT_EQ(S(a), c.result) << testing::PrintToString(c.a) << " + " << testing::PrintToString(c.b);
  }
}

constexpr Binary kMinuInt[] = {
    {u"1000", u"1", u"999", 0}, {u"5", u"5", u"", 0},  // equal numbers leave nothing
    {u"12", u"", u"12", 0},     {u"1", u"2", u"9", 1},  // a below b: the borrow shows it
    {u"007", u"7", u"", 0},
};

TEST(Digits, MinuInt) {
  for (const Binary& c : kMinuInt) {
    CString a(c.a);
    EXPECT_EQ(Digits_MinuInt(a, CString(c.b)), c.flag) << testing::PrintToString(c.a);
    EXPECT_EQ(S(a), c.result) << testing::PrintToString(c.a) << " - " << testing::PrintToString(c.b);
  }
}

constexpr Binary kAddDec[] = {
    {u"5", u"5", u"0", 1},    {u"25", u"0", u"25", 0},  // zero b: untouched
    {u"1", u"099", u"199", 0}, {u"99", u"01", u"00", 1},  // zeros stay for the caller
    {u"", u"5", u"5", 0},
};

TEST(Digits, AddDec) {
  for (const Binary& c : kAddDec) {
    CString a(c.a);
    EXPECT_EQ(Digits_AddDec(a, CString(c.b)), c.flag) << testing::PrintToString(c.a);
    EXPECT_EQ(S(a), c.result) << testing::PrintToString(c.a) << " + " << testing::PrintToString(c.b);
  }
}

constexpr Binary kMinuDec[] = {
    {u"5", u"25", u"25", 0}, {u"25", u"5", u"75", 1}, {u"5", u"5", u"", 0}, {u"123", u"023", u"1", 0}, {u"", u"1", u"9", 1},
};

TEST(Digits, MinuDec) {
  for (const Binary& c : kMinuDec) {
    CString a(c.a);
    EXPECT_EQ(Digits_MinuDec(a, CString(c.b)), c.flag) << testing::PrintToString(c.a);
    EXPECT_EQ(S(a), c.result) << testing::PrintToString(c.a) << " - " << testing::PrintToString(c.b);
  }
}

constexpr Binary kCompareInt[] = {
    {u"", u"0", nullptr, 0},  {u"0", u"5", nullptr, -1}, {u"5", u"", nullptr, 1},
    {u"12", u"9", nullptr, 1}, {u"12", u"13", nullptr, -1}, {u"13", u"13", nullptr, 0},
};

constexpr Binary kCompareDec[] = {
    {u"5", u"50", nullptr, -1},  // a place past the end is below 0
    {u"", u"000", nullptr, 0},   {u"1", u"09", nullptr, 1}, {u"25", u"25", nullptr, 0},
};

TEST(Digits, Compare) {
  for (const Binary& c : kCompareInt)
    EXPECT_EQ(Digits_CompareInt(CString(c.a), CString(c.b)), c.flag) << testing::PrintToString(c.a);
  for (const Binary& c : kCompareDec)
    EXPECT_EQ(Digits_CompareDec(CString(c.a), CString(c.b)), c.flag) << testing::PrintToString(c.a);
}

TEST(Digits, CompareDecStopsBeforeTheLimit) {
  const std::u16string common(39, u'4');
  EXPECT_EQ(Digits_CompareDec(CString((common + u"1").c_str()), CString((common + u"2").c_str())), 0);
  EXPECT_EQ(Digits_CompareDec(CString((common.substr(1) + u"1").c_str()), CString((common.substr(1) + u"2").c_str())),
            -1);
  vkt::test::LimitMode reduced;
  EXPECT_EQ(Digits_CompareDec(CString(u"123456789011"), CString(u"123456789012")), 0);
  EXPECT_EQ(Digits_CompareDec(CString(u"12345678901"), CString(u"12345678902")), -1);
}

TEST(Digits, SmallOperations) {
  CString s(u"999");
  Digits_Inc(s);
  EXPECT_EQ(S(s), u"1000");
  CString e;
  Digits_Inc(e);
  EXPECT_EQ(S(e), u"1");
  Digits_Pad(s, -2);
  EXPECT_EQ(S(s), u"001000");
  Digits_Pad(s, 1);
  EXPECT_EQ(S(s), u"0010000");
  EXPECT_EQ(Digits_IsOdd(CString(u"17")), 1);
  EXPECT_EQ(Digits_IsOdd(CString(u"")), 0);
  EXPECT_TRUE(Digits_IsZero(CString(u"000")));
  EXPECT_FALSE(Digits_IsZero(CString(u"010")));
}

TEST(Digits, Half) {
  constexpr Binary kHalf[] = {
      {u"18", nullptr, u"9", 0},
      {u"1234567890123456789012", nullptr, u"617283945061728394506", 0},
      {u"1000000000000000000000", nullptr, u"500000000000000000000", 0},
  };
  for (const Binary& c : kHalf) {
    CString s(c.a);
    Digits_Half(s);
    EXPECT_EQ(S(s), c.result) << testing::PrintToString(c.a);
  }
}

TEST(Digits, DivFastAndDiv) {
  CString a(u"100");
  EXPECT_EQ(Digits_DivFast(a, CString(u"7")), 14);
  EXPECT_EQ(S(a), u"2");
  CString small(u"3");
  EXPECT_EQ(Digits_DivFast(small, CString(u"7")), 0);
  EXPECT_EQ(S(small), u"3");  // untouched when the quotient is 0
  CString big(u"1234567890123456789");
  EXPECT_EQ(Digits_DivFast(big, CString(u"3")), 0);  // 19 digits: not this road
  CString q;
  Digits_Div(q, big, CString(u"3"));
  EXPECT_EQ(S(q), u"411522630041152263");
  EXPECT_EQ(S(big), u"0");
}

// Long division by repeated subtraction and Knuth's division on limbs agree
// on quotient digits over random operands, both roads of Digits_Div
// included.
TEST(Digits, LimbDivisionAgreesWithDigitDivision) {
  std::mt19937_64 random(20240611);
  auto digits = [&random](int n) {
    std::u16string s;
    s += static_cast<char16_t>(u'1' + random() % 9);
    for (int i = 1; i < n; ++i) s += static_cast<char16_t>(u'0' + random() % 10);
    return s;
  };
  for (int round = 0; round < 3000; ++round) {
    const std::u16string a = digits(1 + static_cast<int>(random() % 90));
    const std::u16string d = digits(1 + static_cast<int>(random() % 45));
    CString q;
    CString rest(a.c_str());
    Digits_Div(q, rest, CString(d.c_str()));

    using namespace vkt::limbs;
    LimbBuffer u(LimbsFor(static_cast<int>(a.size())));
    LimbBuffer v(LimbsFor(static_cast<int>(d.size())));
    const int nu = FromDigits(a.c_str(), static_cast<int>(a.size()), nullptr, 0, 0, u.Data());
    const int nv = FromDigits(d.c_str(), static_cast<int>(d.size()), nullptr, 0, 0, v.Data());
    LimbBuffer lq(nu + 1);
    const int nq = Divide(u.Data(), nu, v.Data(), nv, lq.Data());
    UnitBuffer text(nq * kLimbDigits + 1);
    const int t = ToDigits(lq.Data(), nq, text.Data());
    EXPECT_EQ(std::u16string(text.Data(), static_cast<std::size_t>(t)), S(q)) << "a=" << testing::PrintToString(a)
                                                                              << " d=" << testing::PrintToString(d);
  }
}

}  // namespace
