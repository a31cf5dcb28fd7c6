// tests/numtext/NumberDisplayTest.cpp: what a cell shows for a number text:
// grouping by thousands, the format byte with and without rounding, kept
// blanks, and the fitting of decimals underneath.
#include <gtest/gtest.h>

#include <string>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"
#include "numtext/NumberDisplay.h"

namespace {

using vkt::test::LimitMode;

std::u16string Str(const CString& text) { return std::u16string(text.View()); }
std::string Row(const char16_t* text) { return testing::PrintToString(std::u16string(text)); }

struct SepCase {
  const char16_t* text;
  int bCheck;
  const char16_t* expected;
};

constexpr SepCase kSep[] = {
    {u"1234567.891", 1, u"1,234,567.891"},  // decimals are not grouped
    {u"-1234", 1, u"-1,234"},
    {u"  1234", 1, u"  1,234"},             // blanks and sign stay in front
    {u"1,234,567", 1, u"1,234,567"},
    {u"123456", 1, u"123,456"},
    {u"1234.5678", 1, u"1,234.5678"},
    {u".12345", 1, u".12345"},
    {u"123", 1, u"123"},
    {u"123", 0, u"123"},
    {u"1234", 0, u"1,234"},
    {u"abc1234", 1, u"abc1234"},            // no number: left alone
    {u"abc1234", 0, u"abc1,234"},           // unchecked: the caller vouched
    {u"12,34567", 0, u"1,234,567"},         // old commas go first
    {u"1234,567", 1, u"1234,567"},
    {u"1e5000", 1, u"1e5000"},
    {u"-", 1, u"-"},
    {u"", 1, u""},
};

TEST(SepNumber, Table) {
  for (const SepCase& c : kSep) {
    CString text(c.text);
    CUtilityCalc::SepNumber(text, c.bCheck);
    EXPECT_EQ(Str(text), c.expected) << Row(c.text) << " bCheck " << c.bCheck;
  }
}

struct DispCase {
  const char16_t* text;
  int format;
  int bRound;
  int bKeepBlanks;
  const char16_t* expected;
};

// Format bits: 0-5 decimals (63: as many as there are), 64 shows a zero,
// 128 groups thousands.
constexpr DispCase kDisp[] = {
    {u"1234.5", 2 + 192, 1, 0, u"1,234.50"},
    {u"0", 2 + 192, 1, 0, u"0.00"},
    {u"0", 2 + 128, 1, 0, u""},
    {u"0.000", 2, 0, 0, u""},
    {u"1.50", 63, 1, 0, u"1.5"},
    {u"2.00", 63, 1, 0, u"2"},
    {u"2.00", 63, 0, 0, u"2"},
    {u"100", 63, 0, 0, u"100"},
    {u"1.239", 2, 0, 0, u"1.23"},            // cut, not rounded
    {u"1.239", 2, 1, 0, u"1.24"},
    {u"1.005", 2, 1, 0, u"1.01"},
    {u"9.995", 2 + 128, 1, 0, u"10.00"},
    {u"999.5", 64 + 128, 1, 0, u"1,000"},
    {u"2.5", 64, 1, 0, u"3"},
    {u"-2.5", 64, 1, 0, u"-3"},
    {u"2.5", 64, 0, 0, u"2"},
    {u"12", 3, 0, 0, u"12.000"},
    {u"12.", 2, 0, 0, u"12.00"},
    {u".5", 2, 0, 0, u".50"},                // cutting does not add the 0
    {u".5", 2, 1, 0, u"0.50"},               // rounding writes it
    {u"-0.001", 2, 1, 0, u""},               // displays as zero: empty
    {u"-0.001", 2, 0, 0, u""},
    {u"-0.001", 2 + 64, 1, 0, u"0.00"},      // rounding drops the sign
    {u"-0.001", 2 + 64, 0, 0, u"-0.00"},     // cutting keeps it
    {u"-1234567.5", 1 + 128, 1, 0, u"-1,234,567.5"},
    {u"1,234.5", 2, 0, 0, u"1234.50"},       // commas come off
    {u"1,234.5", 2 + 128, 0, 0, u"1,234.50"},
    {u"1,2", 0, 0, 0, u"12"},
    {u"  1234", 128, 1, 1, u"  1,234"},
    {u"  1234", 128, 1, 0, u"1,234"},
    {u"  1234", 128, 0, 1, u"  1,234"},      // kept once, not twice
    {u"12 ", 2, 0, 0, u"12.00"},
    {u"  -0.001", 2, 1, 1, u"  "},           // emptied late: the blanks return
    {u"  0", 2, 1, 1, u""},                  // emptied early: they do not
    {u"abc", 2, 1, 0, u"abc"},               // no number: unchanged
    {u"1e5", 2, 1, 0, u"1e5"},
    {u"", 2, 1, 0, u""},
    {u"", 2 + 64, 0, 0, u""},
    {u"", 2 + 64, 1, 0, u"0.00"},            // the empty text rounds to a zero
    {u"1.2345678901234567890123456789012345678901234567890", 63, 1, 0,
     u"1.2345678901234567890123456789012345678901"},  // the value holds 40 decimals
    {u"1.5", 62, 0, 0, u"1.50000000000000000000000000000000000000000000000000000000000000"},
};

TEST(ConvertToDispFormat, Table) {
  for (const DispCase& c : kDisp) {
    CString text(c.text);
    CUtilityCalc::ConvertToDispFormat(text, static_cast<BYTE>(c.format), c.bRound, c.bKeepBlanks);
    EXPECT_EQ(Str(text), c.expected) << Row(c.text) << " format " << c.format << " bRound "
                                     << c.bRound << " bKeepBlanks " << c.bKeepBlanks;
  }
}

TEST(ConvertToDispFormat, RoundingFollowsTheLimitMode) {
  LimitMode mode(1);
  CString text(u"1.23456789012345");
  CUtilityCalc::ConvertToDispFormat(text, 63, 1, 0);
  EXPECT_EQ(Str(text), u"1.234567890123");
}

struct FitCase {
  const char16_t* text;
  int n;
  const char16_t* expected;
};

constexpr FitCase kFit[] = {
    {u"1.50", -1, u"1.5"}, {u"2.00", -1, u"2"}, {u"100", -1, u"100"}, {u"1.", -1, u"1"},
    {u".0", -1, u""},      {u"", -1, u""},      {u"", 2, u""},        {u"12", 0, u"12"},
    {u"12", 2, u"12.00"},  {u"12.345", 0, u"12"}, {u"12.345", 2, u"12.34"},
    {u"12.3", 3, u"12.300"}, {u"12.", 2, u"12.00"}, {u"12.34", 2, u"12.34"},
    {u"-0.999", 1, u"-0.9"},
};

TEST(FitDecimals, CutsOrPadsWithoutRounding) {
  for (const FitCase& c : kFit) {
    CString text(c.text);
    vkt::numtext::FitDecimals(text, c.n);
    EXPECT_EQ(Str(text), c.expected) << Row(c.text) << " n " << c.n;
  }
}

}  // namespace
