// tests/numtext/IsPureNumberTest.cpp: the judge of number text under every
// degree of strictness, with and without grouping commas and exponents, and
// the digit bounds at and one past the limits in both limit modes.
#include <gtest/gtest.h>

#include <string>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"

namespace {

using vkt::test::LimitMode;

constexpr CGmp::Enum_PureDigitCheckStrict kNone = CGmp::CheckStrict_None;
constexpr CGmp::Enum_PureDigitCheckStrict kNormal = CGmp::CheckStrict_Normal;
constexpr CGmp::Enum_PureDigitCheckStrict kFull = CGmp::CheckStrict_Full;

struct PureCase {
  const char16_t* text;
  int none;    // expected under CheckStrict_None
  int normal;  // under CheckStrict_Normal
  int full;    // under CheckStrict_Full
};

void ExpectAllModes(const PureCase& c, int bComma, int bExp) {
  const std::string row = testing::PrintToString(std::u16string(c.text)) +
                          " bComma " + std::to_string(bComma) + " bExp " + std::to_string(bExp);
  EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text, bComma, kNone, bExp), c.none) << row << " none";
  EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text, bComma, kNormal, bExp), c.normal) << row << " normal";
  EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text, bComma, kFull, bExp), c.full) << row << " full";
}

// Rows that do not depend on commas or exponents: walked with bComma 0 and 1.
constexpr PureCase kPlain[] = {
    {u"", 1, 1, 1},
    {u"   ", 1, 1, 0},
    {u"  12  ", 1, 1, 0},
    {u" -1", 1, 1, 0},
    {u"12 ", 1, 1, 0},
    {u"12", 1, 1, 1},
    {u"007", 1, 1, 1},  // leading zeros are digits like any other
    {u"00", 1, 1, 1},
    {u"0.0", 1, 1, 1},  // zero without a sign is fine everywhere
    {u"12.", 1, 0, 0},
    {u"12. ", 1, 0, 0},  // a blank behind the point is as bad as nothing
    {u".", 1, 0, 0},
    {u"-", 1, 0, 0},
    {u"- ", 1, 0, 0},
    {u"-0", 1, 0, 0},
    {u"-0.00", 1, 0, 0},
    {u"-00.10", 1, 1, 1},  // a non-zero decimal carries the sign
    {u"-0.5", 1, 1, 1},
    {u"-.5", 1, 1, 1},
    {u".5", 1, 1, 1},
    {u"+5", 0, 0, 0},
    {u"--5", 0, 0, 0},
    {u"1 2", 0, 0, 0},
    {u"- 5", 0, 0, 0},
    {u"12a", 0, 0, 0},
    {u"\t12", 0, 0, 0},  // only the character 32 is a blank
    {u"12\t", 0, 0, 0},
    {u"1.2.3", 0, 0, 0},
    {u"50%", 0, 0, 0},
    {u"1e5", 0, 0, 0},  // an exponent needs bExp
    {u"\uFF11", 0, 0, 0},  // a full-width digit is no digit here
};

TEST(IsPureNumber, PlainTextUnderEveryStrictness) {
  for (const PureCase& c : kPlain) {
    ExpectAllModes(c, 0, 0);
    ExpectAllModes(c, 1, 0);
  }
}

TEST(IsPureNumber, NullPointerIsANumber) {
  for (CGmp::Enum_PureDigitCheckStrict strict : {kNone, kNormal, kFull}) {
    EXPECT_EQ(CUtilityCalc::IsPureNumber(nullptr, 0, strict, 0), 1);
    EXPECT_EQ(CUtilityCalc::IsPureNumber(nullptr, 1, strict, 1), 1);
  }
}

// bComma 1: commas are allowed, never required.
constexpr PureCase kGrouped[] = {
    {u"1234", 1, 1, 1},
    {u"1,234", 1, 1, 1},
    {u"123,456", 1, 1, 1},   // a first group of three
    {u"12,345,678.9", 1, 1, 1},
    {u"-1,234.5", 1, 1, 1},  // positions count behind the sign
    {u"1,2", 1, 1, 1},       // the last group is not checked
    {u"1,2345", 1, 1, 1},
    {u"1,234 ", 1, 1, 0},
    {u"1,234.", 1, 0, 0},
    {u",123", 0, 0, 0},
    {u"-,123", 0, 0, 0},
    {u"1234,567", 0, 0, 0},  // a first group of four
    {u"1,23,456", 0, 0, 0},
    {u"1,234,56.7", 0, 0, 0},  // the point breaks the group
    {u"1,2.5", 0, 0, 0},
    {u"1,234,", 0, 0, 0},
    {u"1, 234", 0, 0, 0},
    {u"1,,234", 0, 0, 0},
    {u"1,234.5,6", 0, 0, 0},  // no comma behind the point
    {u"0,123", 0, 0, 0},      // no non-zero digit before the comma
    {u"00,123", 0, 0, 0},
    {u"-0,5", 0, 0, 0},
};

TEST(IsPureNumber, GroupingCommasWithBComma) {
  for (const PureCase& c : kGrouped) ExpectAllModes(c, 1, 0);
}

constexpr const char16_t* kCommaTexts[] = {u"1,234", u"1,234.56", u"1,2", u"12,345,678.9"};

TEST(IsPureNumber, CommasRefusedWithoutBComma) {
  for (const char16_t* text : kCommaTexts) ExpectAllModes({text, 0, 0, 0}, 0, 0);
}

// bExp 1 (with bComma 1, as the statistical functions call it).
constexpr PureCase kExponent[] = {
    {u"1e5", 1, 1, 1},
    {u"1.5E-3", 1, 1, 1},
    {u"1e", 1, 1, 1},   // the exponent may be empty
    {u"1e+", 1, 1, 1},
    {u"1.e5", 1, 1, 1},  // the e stands behind the point, so the point is not bare
    {u"1,234e2", 1, 1, 1},
    {u"1e 5", 1, 1, 1},   // a blank ends the exponent; the rest is not examined
    {u"1e5 x", 1, 1, 1},
    {u"e5", 1, 1, 0},     // no digit at all: only the full count refuses it
    {u"-e5", 1, 0, 0},
    {u"1e5x", 0, 0, 0},
    {u"1e++5", 0, 0, 0},
    {u"1e5e5", 0, 0, 0},
    {u"1e5.5", 0, 0, 0},
    {u"1 e5", 0, 0, 0},
};

TEST(IsPureNumber, ExponentWithBExp) {
  for (const PureCase& c : kExponent) ExpectAllModes(c, 1, 1);
}

std::u16string Digits(int n, char16_t digit = u'1') { return std::u16string(static_cast<std::size_t>(n), digit); }

struct RunCase {
  std::u16string text;
  int bLS;
  int none;
  int normal;
  int full;
};

TEST(IsPureNumber, LongDigitRunsAtAndPastTheLimits) {
  const RunCase cases[] = {
      // The bounds of 80 digits a side do not move with the limit mode.
      {Digits(79), 0, 1, 1, 0},
      {Digits(80), 0, 0, 0, 0},
      {Digits(79), 1, 1, 1, 0},
      {Digits(80), 1, 0, 0, 0},
      {u"1." + Digits(79), 0, 1, 1, 0},
      {u"1." + Digits(80), 0, 0, 0, 0},
      {Digits(79) + u"." + Digits(79), 0, 1, 1, 0},  // each side counts alone
      {Digits(70), 0, 1, 1, 0},
      // Full: at most 66 integer digits and 69 in all, with the usual limits.
      {Digits(66), 0, 1, 1, 1},
      {Digits(67), 0, 1, 1, 0},
      {Digits(66) + u".123", 0, 1, 1, 1},
      {Digits(67) + u".123", 0, 1, 1, 0},
      {Digits(66) + u".1234", 0, 1, 1, 0},
      {Digits(60) + u"." + Digits(9), 0, 1, 1, 1},
      {Digits(60) + u"." + Digits(10), 0, 1, 1, 0},
      {u"." + Digits(69), 0, 1, 1, 1},
      {u"." + Digits(70), 0, 1, 1, 0},
      {u"-" + Digits(66), 0, 1, 1, 1},  // the sign is no digit
      {Digits(66, u'0'), 0, 1, 1, 1},   // leading zeros count
      {Digits(67, u'0'), 0, 1, 1, 0},
      // With g_bLS set: 20 integer digits and 23 in all.
      {Digits(20), 1, 1, 1, 1},
      {Digits(21), 1, 1, 1, 0},
      {Digits(20) + u".123", 1, 1, 1, 1},
      {Digits(20) + u".1234", 1, 1, 1, 0},
      {u"." + Digits(23), 1, 1, 1, 1},
      {u"." + Digits(24), 1, 1, 1, 0},
      {Digits(21), 0, 1, 1, 1},
  };
  for (const RunCase& c : cases) {
    LimitMode mode(c.bLS);
    const std::string row = std::to_string(c.text.size()) + " units, g_bLS " + std::to_string(c.bLS);
    EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text.c_str(), 0, kNone, 0), c.none) << row;
    EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text.c_str(), 1, kNormal, 0), c.normal) << row;
    EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text.c_str(), 1, kNormal, 1), c.normal) << row;
    EXPECT_EQ(CUtilityCalc::IsPureNumber(c.text.c_str(), 1, kFull, 0), c.full) << row;
  }
}

TEST(IsPureNumber, GroupingCommasAreNoDigits) {
  LimitMode mode(1);
  std::u16string grouped = u"11";
  for (int i = 0; i < 6; ++i) grouped += u",111";  // 20 digits
  EXPECT_EQ(CUtilityCalc::IsPureNumber(grouped.c_str(), 1, kFull, 0), 1);
  grouped += u",111";
  EXPECT_EQ(CUtilityCalc::IsPureNumber(grouped.c_str(), 1, kFull, 0), 0);
}

TEST(IsPureNumber, VeryLongTextIsRefusedWithoutHarm) {
  const std::u16string huge = Digits(1 << 20);
  EXPECT_EQ(CUtilityCalc::IsPureNumber(huge.c_str(), 1, kNone, 0), 0);
  EXPECT_EQ(CUtilityCalc::IsPureNumber(huge.c_str(), 1, kFull, 0), 0);
}

}  // namespace
