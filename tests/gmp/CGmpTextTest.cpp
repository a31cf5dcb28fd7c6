// tests/gmp/CGmpTextTest.cpp: SetString in its three strictness modes,
// GetString with decimals and grouping, and Validate at both limit sets.
#include <gtest/gtest.h>

#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"

using vkt::test::Fields;
using vkt::test::Raw;
using vkt::test::LimitMode;
using vkt::test::Text;

namespace {

struct ParseCase {
  const char16_t* text;
  int result;
  const char16_t* fields;  // as Fields() shows them
};

constexpr ParseCase kFull[] = {
    {u"12", 1, u"+|12|"},
    {u"1,234.5", 1, u"+|1234|5"},
    {u"12,", 1, u"+|12|"},
    {u"1,2,3", 1, u"+|123|"},  // no rule for groups
    {u"1.", 1, u"+|1|"},
    {u".5", 1, u"+|0|5"},
    {u"-.5", 1, u"-|0|5"},
    {u"0.0", 1, u"+|0|"},  // zero, not null
    {u"1e3", 1, u"+|1000|"},
    {u"1E3", 1, u"+|1000|"},
    {u"1e+3", 1, u"+|1000|"},
    {u"1.5e3", 1, u"+|1500|"},
    {u"25e-1", 1, u"+|2|5"},
    {u"1e3-", 1, u"+||001"},     // the sign may stand anywhere among the digits
    {u"1e2-1", 1, u"+||000000000000000000001"},  // digits 2 and 1: 1e-21
    {u"1e2  ", 1, u"+|100|"},
    {u"1e2 x", 1, u"+|100|"},    // behind the exponent's blank nothing is read
    {u"  12  ", 1, u"+|12|"},
    {u"", 1, u"+||"},
    {u"   ", 1, u"+||"},
    {u"00", 1, u"+||"},  // leading zeros stripped down to nothing: null
    {u"0", 1, u"+|0|"},
    {u"007.5", 1, u"+|7|5"},
    {u"00.5", 1, u"+||5"},
    {u".", 1, u"+|0|"},  // a point alone: the integer part becomes 0
    {u"-1e-100", 1, u"+||"},  // cut to nothing, which clears the sign first
    {u"-0", 0, u"+|0|"},  // a negative zero is no number, but a valid zero
    {u"-0.00", 0, u"+|0|"},
    {u"-", 0, u"+||"},
    {u"- 5", 0, u"+||"},  // a blank right behind the minus
    {u"+5", 0, u"+||"},
    {u"abc", 0, u"+||"},
    {u"50%", 0, u"+|50|"},
    {u"1.2.3", 0, u"+|1|2"},
    {u"1.5,3", 0, u"+|1|5"},  // a comma behind the point
    {u"1 2", 0, u"+|1|"},
    {u"1e", 0, u"+|1|"},
    {u"1e+", 0, u"+|1|"},
    {u"1e+-3", 0, u"+|1|"},  // the second sign ends the reading: no digits
    {u"1e2x", 0, u"+|100|"},
    {u"1e1001", 0, u"+|1|"},  // beyond the exponent bound
    {u"1e-1001", 0, u"+|1|"},
    {u"-12.50", 1, u"-|12|5"},
};

TEST(CGmpSetString, FullTable) {
  for (const ParseCase& c : kFull) {
    CGmp x(7);
    EXPECT_EQ(x.SetString(c.text, CGmp::CheckStrict_Full), c.result) << testing::PrintToString(c.text);
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.text);
    CGmp y;  // Normal reads exactly as Full
    EXPECT_EQ(y.SetString(c.text, CGmp::CheckStrict_Normal), c.result) << testing::PrintToString(c.text);
    EXPECT_EQ(Fields(y), c.fields) << testing::PrintToString(c.text);
  }
}

constexpr ParseCase kNone[] = {
    {u"abc12.5x", 1, u"+|12|5"},
    {u"x-12", 1, u"-|12|"},
    {u"a.5", 1, u"+|0|5"},
    {u"-.5", 1, u"+|0|5"},  // the minus before the point is not seen
    {u"12-5", 1, u"+|12|"},
    {u"1.5e3", 1, u"+|1|5"},
    {u"12e3e4", 1, u"+|12000|"},
    {u"1,2,3.4,5", 1, u"+|123|4"},
    {u"1e-3", 1, u"+|1|"},  // an e needs a digit right behind it
    {u"ab 12 cd", 1, u"+|12|"},
    {u"abc", 1, u"+||"},
    {u"   ", 1, u"+||"},
    {u"x-0", 0, u"+|0|"},
    {u"1e3.5", 0, u"+|1000|"},  // the span takes the point; the exponent faults on it
};

TEST(CGmpSetString, NoneTable) {
  for (const ParseCase& c : kNone) {
    CGmp x;
    EXPECT_EQ(x.SetString(c.text, CGmp::CheckStrict_None), c.result) << testing::PrintToString(c.text);
    EXPECT_EQ(Fields(x), c.fields) << testing::PrintToString(c.text);
  }
}

TEST(CGmpSetString, VeryLongText) {
  const std::u16string words = std::u16string(100000, u'a') + u"12.5" + std::u16string(100000, u'b');
  CGmp x;
  EXPECT_EQ(x.SetString(words.c_str(), CGmp::CheckStrict_None), 1);
  EXPECT_EQ(Fields(x), u"+|12|5");
  EXPECT_EQ(x.SetString(words.c_str(), CGmp::CheckStrict_Full), 0);
  EXPECT_TRUE(x.IsNull());
  const std::u16string zeros = u"1" + std::u16string(100000, u'0');
  EXPECT_EQ(x.SetString(zeros.c_str(), CGmp::CheckStrict_Full), 0);
  EXPECT_EQ(Text(x), u"1" + std::u16string(78, u'0'));  // the run stops at 79 digits
  const std::u16string groups = u"-" + std::u16string(5000, u',') + u"7.25";
  EXPECT_EQ(x.SetString(groups.c_str(), CGmp::CheckStrict_Full), 1);
  EXPECT_EQ(Fields(x), u"-|7|25");
}

TEST(CGmpSetString, NullPointerGivesNull) {
  CGmp x(5);
  EXPECT_EQ(x.SetString(nullptr, CGmp::CheckStrict_Full), 1);
  EXPECT_TRUE(x.IsNull());
}

TEST(CGmpSetString, RunOfSeventyNineDigits) {
  const std::u16string digits79(79, u'7');
  CGmp x;
  EXPECT_EQ(x.SetString(digits79.c_str(), CGmp::CheckStrict_Full), 1);
  EXPECT_EQ(Text(x), digits79);  // kept whole beyond the full length
  const std::u16string digits80 = digits79 + u"8";
  EXPECT_EQ(x.SetString(digits80.c_str(), CGmp::CheckStrict_Full), 0);
  EXPECT_EQ(Text(x), digits79);
  // Each part has a run of its own.
  const std::u16string both = digits79 + u"." + digits79;
  EXPECT_EQ(x.SetString(both.c_str(), CGmp::CheckStrict_Full), 1);
  EXPECT_EQ(x.m_strInt.GetLength(), 79);
  EXPECT_EQ(x.m_strDec.GetLength(), 0);  // 79 integer digits leave no room
  const std::u16string longDec = u"0." + std::u16string(80, u'3');
  EXPECT_EQ(x.SetString(longDec.c_str(), CGmp::CheckStrict_Full), 0);
  EXPECT_EQ(Text(x), u"0." + std::u16string(40, u'3'));
}

TEST(CGmpSetString, ExponentMakesLongIntegers) {
  CGmp x(u"1e100");
  EXPECT_EQ(Text(x), u"1" + std::u16string(100, u'0'));
}

struct LimitCase {
  const char16_t* text;
  const char16_t* expected;
};

// Built from digit counts: int digits, dec digits, expected kept decimals.
struct CutCase {
  int intDigits;
  int decDigits;
  int keptDecimals;
};

constexpr CutCase kCuts[] = {
    {20, 40, 40}, {21, 40, 39}, {60, 40, 0}, {61, 5, 0}, {1, 50, 40}, {50, 30, 10}, {0, 50, 40},
};

std::u16string Number(int intDigits, int decDigits) {
  std::u16string s = intDigits == 0 ? u"0" : std::u16string(static_cast<std::size_t>(intDigits), u'9');
  if (decDigits > 0) s += u"." + std::u16string(static_cast<std::size_t>(decDigits), u'3');
  return s;
}

TEST(CGmpValidate, CutsDecimalsFirst) {
  for (const CutCase& c : kCuts) {
    CGmp x(Number(c.intDigits, c.decDigits).c_str());
    EXPECT_EQ(x.m_strDec.GetLength(), c.keptDecimals) << c.intDigits << "/" << c.decDigits;
    EXPECT_EQ(x.m_strInt.GetLength(), c.intDigits == 0 ? 1 : c.intDigits);
  }
}

TEST(CGmpValidate, LimitMode) {
  LimitMode reduced;
  EXPECT_EQ(Text(u"0.123456789012345"), u"0.123456789012");
  CGmp x(u"1000.123456789012");
  EXPECT_EQ(Fields(x), u"+|1000|123456789");  // 1000.1234567890, trailing 0 stripped
  EXPECT_EQ(CGmp::GetMaxFullLength(), 14);
  EXPECT_EQ(CGmp::GetMaxDecLength(), 12);
}

TEST(CGmpValidate, InvariantsOnRawFields) {
  const std::u16string tiny = u"-0." + std::u16string(40, u'0') + u"1";  // 41 decimals
  EXPECT_EQ(Fields(CGmp(tiny.c_str())), u"+|0|");  // cut away, and the sign with them
  EXPECT_EQ(Fields(CGmp(u"0007")), u"+|7|");
  CGmp x = Raw(u"000", u"500", 1);
  x.Validate();
  EXPECT_EQ(Fields(x), u"-||5");
  CGmp z = Raw(u"0", u"000", 1);
  z.Validate();
  EXPECT_EQ(Fields(z), u"+|0|");  // a zero loses its sign
  CGmp big = Raw(u"0000000000000000000000000000001", u"", 1);  // 31 digits: no fast path
  big.Validate();
  EXPECT_EQ(Fields(big), u"-|1|");
}

struct ShowCase {
  const char16_t* value;
  int nDec;
  int bSep;
  const char16_t* expected;
};

constexpr ShowCase kShow[] = {
    {u"1.005", 2, 0, u"1.01"},
    {u"9.995", 2, 0, u"10.00"},
    {u"1.95", 1, 0, u"2.0"},
    {u"2.5", 0, 0, u"3"},
    {u"-2.5", 0, 0, u"-3"},
    {u"-0.001", 2, 0, u"0.00"},  // rounds away to nothing: no sign
    {u"-0.005", 2, 0, u"-0.01"},
    {u"12", 3, 0, u"12.000"},
    {u"0", 2, 0, u"0.00"},
    {u"", 2, 0, u"0.00"},  // a null value with decimals asked for
    {u"", -1, 0, u""},
    {u"", 0, 0, u""},
    {u"0", 0, 0, u"0"},
    {u"0", -1, 1, u"0"},
    {u"0.4", 0, 0, u"0"},
    {u"-0.4", 0, 0, u"0"},
    {u"0.5", 0, 0, u"1"},
    {u"-1234567.5", -1, 1, u"-1,234,567.5"},
    {u"1234", -1, 1, u"1,234"},
    {u"123", -1, 1, u"123"},
    {u"-999.96", 1, 1, u"-1,000.0"},
    {u"123456", 0, 1, u"123,456"},
    {u"0.25", -1, 1, u"0.25"},
    {u"0.125", 5, 0, u"0.12500"},
    {u"1.24999", 1, 0, u"1.2"},
};

TEST(CGmpGetString, Table) {
  for (const ShowCase& c : kShow) {
    CGmp x(c.value);
    CString out(u"junk");
    x.GetString(out, c.nDec, c.bSep);
    EXPECT_EQ(std::u16string(out.View()), c.expected)
        << testing::PrintToString(c.value) << " at " << c.nDec << " sep " << c.bSep;
  }
}

TEST(CGmpGetString, DecimalsAboveTheLimitCountAsIt) {
  CGmp x(u"12.5");
  CString out;
  x.GetString(out, 45, 0);
  EXPECT_EQ(std::u16string(out.View()), u"12.5" + std::u16string(39, u'0'));
  LimitMode reduced;
  x.GetString(out, 45, 0);
  EXPECT_EQ(std::u16string(out.View()), u"12.5" + std::u16string(11, u'0'));
}

TEST(CGmpGetString, RoundingLeavesTheValueAlone) {
  CGmp x(u"1.005");
  CString out;
  x.GetString(out, 2, 0);
  EXPECT_EQ(Fields(x), u"+|1|005");
}

TEST(CGmpGetString, EmptyIntegerPartPrintsZero) {
  CGmp x = Raw(u"", u"25", 1);
  EXPECT_EQ(Text(x), u"-0.25");
}

TEST(CGmpGetString, OutputMayBeAField) {
  CGmp x(u"12.5");
  x.GetString(x.m_strDec, -1, 0);
  EXPECT_EQ(std::u16string(x.m_strDec.View()), u"12.5");
}

TEST(CGmpRoundText, ThroughTheTextConstructor) {
  constexpr LimitCase kRound[] = {
      {u"1.005", u"1.01"},
      {u"abc", u"0.00"},  // no number: whatever the parser gathered, here nothing
      {u"-0.004", u"0.00"},
      {u"  2.345 ", u"2.35"},
  };
  for (const LimitCase& c : kRound) {
    CString text(c.text);
    CGmp::Round(text, 2);
    EXPECT_EQ(std::u16string(text.View()), c.expected) << testing::PrintToString(c.text);
  }
  CString wide(u"3");
  CGmp::Round(wide, 50);
  EXPECT_EQ(std::u16string(wide.View()), u"3." + std::u16string(40, u'0'));
}

// Printing all decimals and reading the text back gives the same fields,
// grouped or not.
TEST(CGmpText, RoundTrip) {
  constexpr const char16_t* kValues[] = {
      u"0", u"", u"-0.5", u"123456789012345678901234567890.1234567890123456789012345678",
      u"-0.0000000000000000000000000000000000000001", u"1e70", u"-98765.4321",
  };
  for (const char16_t* v : kValues) {
    CGmp x(v);
    for (int sep = 0; sep <= 1; ++sep) {
      CString out;
      x.GetString(out, -1, sep);
      CGmp back;
      EXPECT_EQ(back.SetString(out.GetString(), CGmp::CheckStrict_Full), 1) << testing::PrintToString(v);
      EXPECT_EQ(Fields(back), Fields(x)) << testing::PrintToString(v);
    }
  }
}

}  // namespace
