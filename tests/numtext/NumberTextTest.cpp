// tests/numtext/NumberTextTest.cpp: IsPureNumber under every strictness, flag and limit mode; the
// cleaning and display of number text, range tests, digit strings and the integer conversions.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "VKTCalc.h"
#include "numtext/NumberDisplay.h"
#include "tests/support/GmpText.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::LimitMode;
using vkt::test::Row;
using vkt::test::U;
using I64 = std::numeric_limits<LONGLONG>;
using Strict = CGmp::Enum_PureDigitCheckStrict;

std::u16string D(int n, char16_t digit = u'1') { return std::u16string(static_cast<std::size_t>(n), digit); }

// `expect` holds the answers under CheckStrict_None, _Normal and _Full, as "110", with bComma and
// bExp set. Without them a comma or an e refuses the text; elsewhere they change nothing.
void ExpectPure(const char16_t* text, const char* expect) {
  const std::u16string s = text == nullptr ? u"" : text;
  for (int bComma = 0; bComma < 2; ++bComma) {
    for (int bExp = 0; bExp < 2; ++bExp) {
      const bool refused = (!bComma && s.find(u',') != s.npos) || (!bExp && s.find_first_of(u"eE") != s.npos);
      for (int m = 0; m < 3; ++m)
        EXPECT_EQ(CUtilityCalc::IsPureNumber(text, bComma, static_cast<Strict>(m), bExp),
                  refused ? 0 : expect[m] - '0')
            << Row(text).substr(0, 40) << " (" << s.size() << " units) " << bComma << bExp << m;
    }
  }
}

constexpr struct { const char16_t* text; const char* expect; } kPure[] = {
    {nullptr, "111"},
    {u"", "111"},
    {u"   ", "110"},  // Full takes no blank at all
    {u"12 ", "110"},
    {u"12.", "100"},  // a point needs a digit behind it
    {u"-", "100"},
    {u"-0.00", "100"},   // no sign on zero
    {u"-00.10", "111"},  // a non-zero decimal carries the sign
    {u"+5", "000"},
    {u"1 2", "000"},
    {u"\t12", "000"},    // only the character 32 is a blank
    {u"\uFF11", "000"},  // a full-width digit is no digit here
    {u"1.2.3", "000"},
    {u"123,456", "111"},
    {u"-12,345,678.9", "111"},  // positions count behind the sign
    {u"1,2", "111"},            // the last group is not checked
    {u",123", "000"},
    {u"1234,567", "000"},  // a first group of four
    {u"1,23,456", "000"},
    {u"1,234,56.7", "000"},  // the point ends a group too
    {u"1,234,", "000"},
    {u"1,234.5,6", "000"},  // no comma behind the point
    {u"0,123", "000"},      // the first group needs a digit above 0
    {u"1.5E-3", "111"},
    {u"1.e5", "111"},  // with the e behind it the point is not bare
    {u"1e 5", "111"},  // a blank ends the exponent; the rest is not examined
    {u"e5", "110"},    // no digit: only Full counts them
    {u"1e5x", "000"},
};

TEST(IsPureNumber, Table) {
  for (const auto& c : kPure) ExpectPure(c.text, c.expect);
}

TEST(IsPureNumber, DigitCountsAtAndPastTheLimits) {
  std::u16string grouped = u"11";
  for (int i = 0; i < 6; ++i) grouped += u",111";
  const struct { std::u16string text; int bLS; const char* expect; } runs[] = {
      {D(79), 1, "110"},  // 79 digits a side in either limit mode
      {D(80), 1, "000"},
      {u"1." + D(80), 0, "000"},
      {D(79) + u"." + D(79), 0, "110"},  // each side counts alone
      {D(67), 0, "110"},  // Full: 66 integer digits and 69 in all (20 and 23 with g_bLS)
      {D(67, u'0'), 0, "110"},  // leading zeros count
      {u"-" + D(66), 0, "111"},
      {D(66) + u".1234", 0, "110"},
      {u"." + D(69), 0, "111"},
      {u"." + D(70), 0, "110"},
      {D(21), 1, "110"},
      {D(20) + u".1234", 1, "110"},
      {grouped, 1, "111"},  // 20 digits: commas are none
      {grouped + u",111", 1, "110"},
  };
  for (const auto& c : runs) {
    LimitMode mode(c.bLS);
    ExpectPure(c.text.c_str(), c.expect);
  }
}

TEST(ResetPureNumberString, CanonicalFormWithinTheLimits) {
  const struct { std::u16string text; int bLS; int result; std::u16string after = {}; } cases[] = {
      {u"12.500", 0, 1, u"12.5"},  // `after` empty: the text is unchanged
      {u"12..", 0, 1, u"12"},
      {u"-0.00", 0, 1, u"0"},
      {u"100", 0, 1},  // zeros without a point are digits
      {u" \t7.10 ", 0, 1, u"7.1"},
      {u"1.1" + D(50, u'0'), 0, 1, u"1.1"},  // zeros go before the count
      {D(60), 0, 1},
      {D(61), 0, 0},
      {u"-" + D(60), 0, 0},  // the sign counts as a character
      {u"1." + D(40), 0, 1},
      {u"1." + D(41), 0, 0},
      {D(15), 1, 0},
      {u"0." + D(12), 1, 1},
      {u"0." + D(13), 1, 0},
  };
  for (const auto& c : cases) {
    LimitMode mode(c.bLS);
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::ResetPureNumberString(text), c.result) << Row(text);
    EXPECT_EQ(U(text), c.after.empty() ? c.text : c.after);
  }
}

// Rows for the edits in place that take a text and one int: TrimToNumber, SepNumber, FitDecimals.
struct EditCase { const char16_t* text; int arg; const char16_t* expected; };

template <std::size_t N>
void ExpectEdits(const EditCase (&rows)[N], void (*edit)(CString&, int)) {
  for (const EditCase& c : rows) {
    CString text(c.text);
    edit(text, c.arg);
    EXPECT_EQ(U(text), c.expected) << Row(c.text) << " with " << c.arg;
  }
}

constexpr EditCase kTrimToNumber[] = {  // arg: bKeepGroups
    {u"12,345.50 USD", 0, u"12345.50"},
    {u"12,345.50 USD", 1, u"12,345.50"},
    {u"abc-7.5xyz", 0, u"-7.5"},
    {u"1,23,456.7", 0, u"1"},     // a broken group keeps the first alone, without decimals
    {u"1234,567.8", 0, u"1234"},  // a first group of four
    {u"1,234,", 0, u"1"},         // an empty last group
    {u"000", 0, u""},  // nothing to fall back on
    {u"-0", 0, u""},   // and no sign on empty text
    {u"-0.5", 0, u"-0.5"},
    {u"0,123.4", 0, u"123.4"},  // the zeros go before the groups are read
    {u"1.", 0, u"1."},          // the decimals are not tidied
    {u"1.2,3", 0, u"1.2"},
    {u"-x5-3", 0, u"5"},  // a minus only in front, touching the digit
    {u"abc", 0, u""},
    {u"", 0, u""},
};

TEST(TrimToNumber, Table) { ExpectEdits(kTrimToNumber, CUtilityCalc::TrimToNumber); }

constexpr EditCase kSepNumber[] = {  // arg: bCheck
    {u"1234567.891", 1, u"1,234,567.891"},  // decimals are not grouped
    {u"  -1234", 1, u"  -1,234"},           // blanks and sign stay in front
    {u"123456", 1, u"123,456"},
    {u"123", 0, u"123"},
    {u"abc1234", 1, u"abc1234"},     // no number: left alone
    {u"abc1234", 0, u"abc1,234"},    // unchecked: the caller vouched
    {u"12,34567", 0, u"1,234,567"},  // old commas go first
    {u"1234,567", 1, u"1234,567"},
    {u"", 1, u""},
};

TEST(SepNumber, Table) { ExpectEdits(kSepNumber, CUtilityCalc::SepNumber); }

constexpr EditCase kFitDecimals[] = {  // arg: decimals, -1 for as many as there are
    {u"2.00", -1, u"2"},   {u"100", -1, u"100"}, {u".0", -1, u""},      {u"", -1, u""},
    {u"", 2, u""},         {u"12", 0, u"12"},    {u"12", 2, u"12.00"},  {u"12.345", 0, u"12"},
    {u"12.345", 2, u"12.34"}, {u"12.34", 2, u"12.34"}, {u"12.3", 3, u"12.300"},
};

TEST(FitDecimals, CutsOrPadsWithoutRounding) { ExpectEdits(kFitDecimals, vkt::numtext::FitDecimals); }

// Format bits: 0-5 decimals (63: as many as there are), 64 shows a zero, 128 groups thousands.
constexpr struct { const char16_t* text; int format, bRound, bKeep; const char16_t* expected; } kDisp[] = {
    {u"1234.5", 2 + 192, 1, 0, u"1,234.50"},
    {u"0", 2 + 192, 1, 0, u"0.00"},
    {u"0", 2 + 128, 1, 0, u""},
    {u"2.00", 63, 0, 0, u"2"},
    {u"1.239", 2, 0, 0, u"1.23"},  // cut, not rounded
    {u"1.005", 2, 1, 0, u"1.01"},
    {u"999.5", 64 + 128, 1, 0, u"1,000"},
    {u"-2.5", 64, 1, 0, u"-3"},
    {u".5", 2, 0, 0, u".50"},             // cutting does not add the 0
    {u".5", 2, 1, 0, u"0.50"},            // rounding writes it
    {u"-0.001", 2 + 64, 1, 0, u"0.00"},   // rounding drops the sign
    {u"-0.001", 2 + 64, 0, 0, u"-0.00"},  // cutting keeps it
    {u"1,234.5", 2, 0, 0, u"1234.50"},    // commas come off
    {u"  1234", 128, 1, 1, u"  1,234"},
    {u"  1234", 128, 1, 0, u"1,234"},
    {u"  1234", 128, 0, 1, u"  1,234"},  // kept once, not twice
    {u"12 ", 2, 0, 0, u"12.00"},
    {u"  -0.001", 2, 1, 1, u"  "},  // emptied late: the blanks return
    {u"  0", 2, 1, 1, u""},         // emptied early: they do not
    {u"abc", 2, 1, 0, u"abc"},      // no number: unchanged
    {u"", 2 + 64, 1, 0, u"0.00"},   // the empty text rounds to a zero
    {u"1.5", 62, 0, 0, u"1.50000000000000000000000000000000000000000000000000000000000000"},
};

TEST(ConvertToDispFormat, Table) {
  for (const auto& c : kDisp) {
    CString text(c.text);
    CUtilityCalc::ConvertToDispFormat(text, static_cast<BYTE>(c.format), c.bRound, c.bKeep);
    EXPECT_EQ(U(text), c.expected) << Row(c.text) << " " << c.format << " " << c.bRound << c.bKeep;
  }
  for (int bLS = 0; bLS < 2; ++bLS) {  // 63 keeps as many decimals as the limit mode holds
    LimitMode mode(bLS);
    CString text(u"1.2345678901234567890123456789012345678901234567890");
    CUtilityCalc::ConvertToDispFormat(text, 63, 1, 0);
    EXPECT_EQ(U(text), bLS ? u"1.234567890123" : u"1.2345678901234567890123456789012345678901");
  }
}

constexpr struct { const char16_t *value, *low, *high; int expected; } kRange[] = {
    {u"5", u"", u"", 1},         {u"12 ", u"", u"12", 1},
    {u"10", u"10", u"", 1},      {u"20", u"", u"20.0", 1},  // bounds are inclusive
    {u"21", u"", u"20", 0},      {u"1,500", u"1,000", u"2,000", 1},
    {u"50", u"abc", u"20", 0},   {u"50", u"1", u"abc", 1},  // a bound that is no number is passed over
    {u"abc", u"1", u"", 0},      {u"abc", u"-1", u"", 1},   // the null value compares like zero
};

TEST(IsValidNumber, Table) {
  for (const auto& c : kRange) {
    CString value(c.value), low(c.low), high(c.high);
    EXPECT_EQ(CUtilityCalc::IsValidNumber(value, low, high), c.expected)
        << Row(c.value) << " in [" << Row(c.low) << ", " << Row(c.high) << "]";
    EXPECT_EQ(U(value) + U(low) + U(high), U(c.value) + U(c.low) + U(c.high));  // only read
  }
}

TEST(IsString0To9AndGetDecLen, Table) {
  constexpr struct { const char16_t* text; int digitsOnly; int decLen; } cases[] = {
      {u"", 1, 0},       {u"0123456789", 1, 0}, {u" 1", 0, 0}, {u"-1", 0, 0}, {u"\uFF11", 0, 0},
      {u"12.345", 0, 3}, {u"1.", 0, 0},         {u".5", 0, 1}, {u"1.2.3", 0, 3},
  };
  for (const auto& c : cases) {
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::IsString0To9(c.text), c.digitsOnly) << Row(c.text);
    EXPECT_EQ(CUtilityCalc::GetDecLen(text), c.decLen) << Row(c.text);
  }
  EXPECT_EQ(CUtilityCalc::IsString0To9(nullptr), 1);
}

// Int64Str and UInt64Str write the value and Str2Int64 reads the signed text back; the rows
// without an unsigned text are only read, rounded by the first digit behind the point.
TEST(Int64Text, WrittenAndReadBack) {
  constexpr struct { LONGLONG value; const char16_t *signedText, *unsignedText = nullptr; } cases[] = {
      {0, u"0", u"0"},
      {-1, u"-1", u"18446744073709551615"},
      {I64::min(), u"-9223372036854775808", u"9223372036854775808"},
      {I64::max(), u"9223372036854775807", u"9223372036854775807"},
      {0, nullptr}, {0, u"   "}, {12, u"  12abc"}, {3, u"2.5"}, {-3, u"-2.5"}, {-1, u"-0.5"}, {7, u"7."},
      {2, u"2.45"},                            // only the first decimal counts
      {I64::max(), u"9223372036854775807.9"},  // stays at the limit
      {I64::min(), u"-9223372036854775808.9"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CUtilityCalc::Str2Int64(c.signedText), c.value) << Row(c.signedText);
    if (c.unsignedText == nullptr) continue;
    CString out(u"old");
    CUtilityCalc::Int64Str(out, c.value);
    EXPECT_EQ(U(out), c.signedText);
    CUtilityCalc::UInt64Str(out, c.value);
    EXPECT_EQ(U(out), c.unsignedText);
  }
}

TEST(Double2Int, RoundsHalfAwayFromZero) {
  constexpr struct { double value; int expected; } cases[] = {
      {0.0, 0}, {2.5, 3}, {-2.5, -3}, {2.49, 2}, {2147483646.6, 2147483647},
      {1e20, std::numeric_limits<int>::max()}, {-1e20, std::numeric_limits<int>::min()},
      {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const auto& c : cases) EXPECT_EQ(CUtilityCalc::Double2Int(c.value), c.expected) << c.value;
}

}  // namespace
