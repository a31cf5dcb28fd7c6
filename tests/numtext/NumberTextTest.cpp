// tests/numtext/NumberTextTest.cpp: the cleaning of number text into its
// canonical form and out of surrounding text, range tests, digit strings and
// the conversions to and from machine integers.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"

namespace {

using vkt::test::LimitMode;

std::u16string Digits(int n, char16_t digit = u'1') { return std::u16string(static_cast<std::size_t>(n), digit); }
std::string Row(const std::u16string& text) { return testing::PrintToString(text); }
std::u16string Str(const CString& text) { return std::u16string(text.View()); }

struct ResetCase {
  std::u16string text;
  int bLS;
  int result;
  std::u16string expected;  // the text afterwards; unchanged when result is 0
};

TEST(ResetPureNumberString, CanonicalFormWithinTheLimits) {
  const ResetCase cases[] = {
      {u"12.500", 0, 1, u"12.5"},
      {u"12.000", 0, 1, u"12"},
      {u"12.", 0, 1, u"12"},
      {u"12..", 0, 1, u"12"},
      {u"-0", 0, 1, u"0"},
      {u"-0.00", 0, 1, u"0"},
      {u".5", 0, 1, u".5"},  // no 0 is put in front
      {u"100", 0, 1, u"100"},  // zeros without a point are digits
      {u" \t7.10 ", 0, 1, u"7.1"},
      {u"1." + Digits(1) + Digits(50, u'0'), 0, 1, u"1.1"},  // zeros stripped before the count
      {Digits(60), 0, 1, Digits(60)},
      {Digits(61), 0, 0, Digits(61)},
      {u"-" + Digits(59), 0, 1, u"-" + Digits(59)},
      {u"-" + Digits(60), 0, 0, u"-" + Digits(60)},  // the sign counts as a character
      {u"1." + Digits(40), 0, 1, u"1." + Digits(40)},
      {u"1." + Digits(41), 0, 0, u"1." + Digits(41)},
      {Digits(20) + u"." + Digits(40), 0, 1, Digits(20) + u"." + Digits(40)},
      {Digits(21) + u"." + Digits(40) + u"00", 0, 0, Digits(21) + u"." + Digits(40) + u"00"},
      {Digits(14), 1, 1, Digits(14)},
      {Digits(15), 1, 0, Digits(15)},
      {u"0." + Digits(12), 1, 1, u"0." + Digits(12)},
      {u"0." + Digits(13), 1, 0, u"0." + Digits(13)},
      {u"1." + Digits(13), 1, 0, u"1." + Digits(13)},
  };
  for (const ResetCase& c : cases) {
    LimitMode mode(c.bLS);
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::ResetPureNumberString(text), c.result) << Row(c.text);
    EXPECT_EQ(Str(text), c.expected) << Row(c.text);
  }
}

struct TrimCase {
  const char16_t* text;
  int bKeepGroups;
  const char16_t* expected;
};

constexpr TrimCase kTrim[] = {
    {u"12,345.50 USD", 0, u"12345.50"},
    {u"12,345.50 USD", 1, u"12,345.50"},
    {u"abc-7.5xyz", 0, u"-7.5"},
    {u"1,23,456.7", 0, u"1"},      // a broken group keeps the first alone
    {u"1,23,456.7", 1, u"1,23,456.7"},
    {u"1234,567.8", 0, u"1234"},   // a first group of four: decimals go too
    {u"1,2345", 0, u"1"},
    {u"1,234,", 0, u"1"},          // the empty last group is broken
    {u"1,234", 1, u"1,234"},
    {u"1,234", 0, u"1234"},
    {u"007", 0, u"7"},
    {u"007", 1, u"007"},
    {u"0", 0, u""},                // nothing to fall back on
    {u"000", 0, u""},
    {u"-0", 0, u""},               // no sign on empty text
    {u"-0.5", 0, u"-0.5"},         // a 0 returns in front of decimals
    {u"0,123.4", 0, u"123.4"},     // the zeros go before the groups are read
    {u"1.", 0, u"1."},             // the decimals are not tidied
    {u"1.50", 0, u"1.50"},
    {u"1.2.3", 0, u"1.2"},
    {u"1.2,3", 0, u"1.2"},
    {u"5-3", 0, u"5"},             // a minus only in front
    {u"--5", 0, u"-5"},
    {u"-x5", 0, u"5"},             // the minus must touch the digit
    {u"x.5", 0, u"5"},
    {u"abc", 0, u""},
    {u"", 0, u""},
};

TEST(TrimToNumber, Table) {
  for (const TrimCase& c : kTrim) {
    CString text(c.text);
    CUtilityCalc::TrimToNumber(text, c.bKeepGroups);
    EXPECT_EQ(Str(text), c.expected) << Row(c.text) << " bKeepGroups " << c.bKeepGroups;
  }
}

struct RangeCase {
  const char16_t* value;
  const char16_t* low;
  const char16_t* high;
  int expected;
};

constexpr RangeCase kRange[] = {
    {u"5", u"", u"", 1},
    {u"abc", u"", u"", 1},     // no bounds, nothing to test
    {u"9", u"10", u"", 0},
    {u"10", u"10", u"", 1},    // bounds are inclusive
    {u"20", u"", u"20.0", 1},
    {u"21", u"", u"20", 0},
    {u"5", u"abc", u"20", 1},  // a bound that is no number is passed over
    {u"50", u"abc", u"20", 0},
    {u"5", u"1", u"abc", 1},
    {u"abc", u"1", u"", 0},    // the null value compares like zero
    {u"abc", u"-1", u"", 1},
    {u"abc", u"", u"5", 1},
    {u"-5", u"-10", u"-1", 1},
    {u"-0.5", u"-0.4", u"", 0},
    {u"1,500", u"1,000", u"2,000", 1},
    {u"2,500", u"1,000", u"2,000", 0},
    {u"12 ", u"", u"12", 1},
};

TEST(IsValidNumber, Table) {
  for (const RangeCase& c : kRange) {
    CString value(c.value);
    CString low(c.low);
    CString high(c.high);
    EXPECT_EQ(CUtilityCalc::IsValidNumber(value, low, high), c.expected)
        << Row(c.value) << " in [" << Row(c.low) << ", " << Row(c.high) << "]";
    EXPECT_EQ(Str(value), c.value);  // the arguments are only read
  }
}

TEST(IsString0To9, Table) {
  struct Case {
    const char16_t* text;
    int expected;
  };
  constexpr Case cases[] = {
      {u"", 1}, {u"0123456789", 1}, {u"12a", 0}, {u" 1", 0},
      {u"-1", 0}, {u"1.5", 0}, {u"1,000", 0}, {u"\uFF11", 0},
  };
  for (const Case& c : cases) EXPECT_EQ(CUtilityCalc::IsString0To9(c.text), c.expected) << Row(c.text);
  EXPECT_EQ(CUtilityCalc::IsString0To9(nullptr), 1);
}

TEST(GetDecLen, Table) {
  struct Case {
    const char16_t* text;
    int expected;
  };
  constexpr Case cases[] = {
      {u"12.345", 3}, {u"12", 0}, {u"1.", 0}, {u".5", 1}, {u"1.2.3", 3}, {u"", 0},
  };
  for (const Case& c : cases) {
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::GetDecLen(text), c.expected) << Row(c.text);
  }
}

TEST(Int64Str, SignedAndUnsignedText) {
  struct Case {
    LONGLONG value;
    const char16_t* signedText;
    const char16_t* unsignedText;
  };
  constexpr Case cases[] = {
      {0, u"0", u"0"},
      {42, u"42", u"42"},
      {-1, u"-1", u"18446744073709551615"},
      {std::numeric_limits<LONGLONG>::min(), u"-9223372036854775808", u"9223372036854775808"},
      {std::numeric_limits<LONGLONG>::max(), u"9223372036854775807", u"9223372036854775807"},
  };
  for (const Case& c : cases) {
    CString out(u"old");
    CUtilityCalc::Int64Str(out, c.value);
    EXPECT_EQ(Str(out), c.signedText);
    CUtilityCalc::UInt64Str(out, c.value);
    EXPECT_EQ(Str(out), c.unsignedText);
  }
}

TEST(Str2Int64, RoundsByTheDigitBehindThePoint) {
  struct Case {
    const char16_t* text;
    LONGLONG expected;
  };
  constexpr Case cases[] = {
      {u"", 0},
      {u"   ", 0},
      {u"12", 12},
      {u"  12", 12},
      {u"12abc", 12},
      {u"2.5", 3},
      {u"-2.5", -3},
      {u"2.45", 2},        // only the first decimal counts
      {u"2.4", 2},
      {u"-0.5", -1},
      {u"0.5", 1},
      {u"7.", 7},
      {u"  -2.9", -3},
      {u"9223372036854775807.9", std::numeric_limits<LONGLONG>::max()},  // stays at the limit
      {u"-9223372036854775808.9", std::numeric_limits<LONGLONG>::min()},
  };
  for (const Case& c : cases) EXPECT_EQ(CUtilityCalc::Str2Int64(c.text), c.expected) << Row(c.text);
  EXPECT_EQ(CUtilityCalc::Str2Int64(nullptr), 0);
}

TEST(Double2Int, RoundsHalfAwayFromZero) {
  struct Case {
    double value;
    int expected;
  };
  constexpr Case cases[] = {
      {0.0, 0}, {2.5, 3}, {-2.5, -3}, {2.49, 2}, {-2.49, -2}, {0.5, 1}, {-0.5, -1},
      {7.0, 7}, {2147483646.6, 2147483647},
      {1e20, std::numeric_limits<int>::max()}, {-1e20, std::numeric_limits<int>::min()},
  };
  for (const Case& c : cases) EXPECT_EQ(CUtilityCalc::Double2Int(c.value), c.expected) << c.value;
  EXPECT_EQ(CUtilityCalc::Double2Int(std::nan("")), 0);
}

}  // namespace
