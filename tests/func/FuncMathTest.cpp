// Tests of the numeric built-ins through whole calculations (parse,
// Calculate, result text and kind), of the exact texts their bodies leave
// through the function manager, and of the random statics behind rand.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::RunOutcome;
using vkt::test::TestHost;

std::string Utf8(const std::u16string& text) { return CString(std::u16string_view(text)).ToUtf8(); }

struct ValueCase {
  const char16_t* formula;
  const char16_t* value;  // root->GetValue(text, 0, 0)
  unsigned char kind;     // para.nResultKind
};

class FuncMath : public testing::Test {
 protected:
  FuncMath() : m_calc(NewCalc(nullptr, nullptr)) {}

  RunOutcome Run(const std::u16string& formula) { return m_host.Run(*m_calc, formula.c_str()); }

  // Runs a call through the manager alone: the text the wrapper leaves, before
  // the evaluator reads it as a number (which drops trailing zeros).
  std::u16string Call(const char16_t* name, std::initializer_list<const char16_t*> args) {
    CFuncPara para;
    para.strName = name;
    for (const char16_t* arg : args) para.arrArgs.Add(CString(arg));
    CErrorCollector errors;
    EXPECT_EQ(m_calc->GetFuncMnger()->CallFunc(para, 0, &errors, -1), 1)
        << Utf8(name);
    return std::u16string(para.strResult.View());
  }

  void ExpectValues(std::span<const ValueCase> cases) {
    for (const ValueCase& c : cases) {
      const RunOutcome out = Run(c.formula);
      const std::string row = Utf8(c.formula);
      EXPECT_EQ(out.code, 0) << row << ": " << Utf8(out.errorText);
      EXPECT_EQ(out.value, c.value) << row;
      EXPECT_EQ(out.resultKind, c.kind) << row;
      EXPECT_EQ(out.error, 0) << row;
    }
  }

  vkt::test::ScopedFakeLanguage m_language;
  std::unique_ptr<ICalc> m_calc;
  TestHost m_host;
};

// ---- Whole calculations ------------------------------------------------------

constexpr ValueCase kAggregates[] = {
    {u"=sum(1,2.5,-0.5)*round(2/3,4)", u"2.0001", 6},  // 3 * 0.6667, exact
    {u"=sum(1,'abc',2)", u"3", 6},                     // a word counts as nothing
    {u"=sum('12abc',1)", u"13", 6},                    // leading digits count
    {u"=sum('2020-01-01',1)", u"2021", 6},             // a date reads as its year
    {u"=sum('1,234.5',1)", u"1235.5", 6},              // grouping commas read
    {u"=sum(0)", u"", 6},                              // a null sum stays null
    {u"=sum(0,0)", u"", 6},
    {u"=sum('')", u"", 6},
    {u"=sum(1,-1)", u"0", 6},                          // a real subtraction: zero
    {u"=sum(-1.25,-2.5)", u"-3.75", 6},
    {u"=sum(0.1,0.2)", u"0.3", 6},
    {u"=sum(99999999999999999999,1)", u"100000000000000000000", 6},
    {u"=sum(0.123456789012345678901234567890123456789,0.000000000000000000000000000000000000001)",
     u"0.12345678901234567890123456789012345679", 6},
    {u"=average(1,'',3)", u"1.3333333333333333333333333333333333333333", 6},  // blank divides
    {u"=average(0)", u"", 6},                          // null divided by 1 stays null
    {u"=average(0,0)", u"0", 6},
    {u"=average(-1,-2)", u"-1.5", 6},
    {u"=average(0.1,0.2,0.3,0.4)", u"0.25", 6},
    {u"=max(1,3,2)", u"3", 6},
    {u"=max(-1,-2)", u"-1", 6},
    {u"=max('1.50',1)", u"1.5", 6},                    // the normalised text wins
    {u"=max('2abc',2)", u"2abc", 1},                   // equal: the earliest text stands
    {u"=max('abc',-1)", u"abc", 1},                    // a word is zero, above -1
    {u"=min(2,'1.0',1)", u"1", 6},
    {u"=min('',1)", u"", 6},                           // a blank is zero, below 1
    {u"=min(-0.5,-0.25)", u"-0.5", 6},
    {u"=median(3,1,2)", u"2", 6},
    {u"=median(4,1,3,2)", u"2.5", 6},
    {u"=median(2,1)", u"1.5", 6},                      // two: their mean, unsorted
    {u"=median(7)", u"7", 6},
    {u"=median(-1,-3)", u"-2", 6},
    {u"=median(0.1,0.2)", u"0.15", 6},
    {u"=median('',0,5)", u"0", 6},                     // blank and zero tie; 0 in the middle
    {u"=median(10,'abc',5,1)", u"3", 6},               // sorted: abc(0) 1 5 10
};

TEST_F(FuncMath, Aggregates) { ExpectValues(kAggregates); }

constexpr ValueCase kShapes[] = {
    {u"=percent(0.1234,1)", u"12.3%", 1},              // no pure number: text
    {u"=percent(1)", u"100%", 1},
    {u"=percent(0.005)", u"1%", 1},                    // half away from zero
    {u"=percent(-0.005)", u"-1%", 1},
    {u"=percent(0.1234,-2)", u"12%", 1},               // negative decimals count as 0
    {u"=percent(0.12345,2,99)", u"12.35%", 1},         // further arguments ignored
    {u"=percent(0.5,2)", u"50.00%", 1},
    {u"=percent(0.5,1.5)", u"50.00%", 1},              // decimals 1.5 round to 2
    {u"=percent('abc')", u"%", 1},
    {u"=abs('- 5')", u"5", 6},
    {u"=abs('')", u"", 6},
    {u"=abs(-3)", u"3", 6},
    {u"=abs(3)", u"3", 6},
    {u"=abs('abc')", u"abc", 1},
    {u"=abs('-abc')", u"abc", 1},
    {u"=abs('  -  -2')", u"-2", 6},                    // one minus goes, no more
    {u"=floor(-0.5)", u"-1", 2},
    {u"=floor(2.7)", u"2", 2},
    {u"=floor(-2)", u"-2", 2},
    {u"=floor('-0.0001')", u"-1", 2},
    {u"=floor('abc')", u"", 2},
    {u"=ceil(-0.5)", u"0", 2},                         // -0 validated to 0
    {u"=ceil(2.1)", u"3", 2},
    {u"=ceil('2.000')", u"2", 2},
    {u"=ceil('0.000')", u"0", 2},
    {u"=ceil(-2.9)", u"-2", 2},
    {u"=int(-0.5)", u"-1", 2},                         // towards minus infinity
    {u"=int(-1.5)", u"-2", 2},
    {u"=int(2)", u"2", 2},
    {u"=int(-3)", u"-3", 2},
    {u"=int('7.000')", u"7", 2},
    {u"=int(9.99)", u"9", 2},
    {u"=int('abc')", u"abc", 1},                       // no point: the text stands
    {u"=int('12abc')", u"12abc", 1},
};

TEST_F(FuncMath, ShapesOfOneNumber) { ExpectValues(kShapes); }

// Rounding by the digit behind the cut, in decimal: a double would give
// 1.00 for 1.005 and 2.67 for 2.675.
constexpr ValueCase kRound[] = {
    {u"=round(1.005,2)", u"1.01", 6},
    {u"=round(2.675,2)", u"2.68", 6},
    {u"=round(0.125,2)", u"0.13", 6},
    {u"=round(-0.125,2)", u"-0.13", 6},
    {u"=round(2.5,0)", u"3", 6},
    {u"=round(-2.5,0)", u"-3", 6},
    {u"=round(1.4999,0)", u"1", 6},
    {u"=round(-1.45,1)", u"-1.5", 6},
    {u"=round(-0.4,0)", u"0", 6},                      // no sign on a zero
    {u"=round(9.995,2)", u"10", 6},                    // the carry grows a digit
    {u"=round(-9.995,2)", u"-10", 6},
    {u"=round(1.234,2.5)", u"1.234", 6},               // decimals 2.5 round to 3
    {u"=round(2/3,4)", u"0.6667", 6},
    {u"=round('',2)", u"0", 6},
};

TEST_F(FuncMath, Round) { ExpectValues(kRound); }

constexpr ValueCase kArithmetic[] = {
    {u"=mod(7,3)", u"1", 6},
    {u"=mod(-7,3)", u"2", 6},                          // the sign of the divisor
    {u"=mod(7,-3)", u"-2", 6},
    {u"=mod(7.5,2)", u"1.5", 6},
    {u"=mod(7,0)", u"7", 6},                           // zero divisor: unchanged
    {u"=sqrt(4)", u"2", 6},
    {u"=sqrt(2)", u"1.4142135623730950488016887242096980785696", 6},
    {u"=sqrt(0)", u"0", 6},
    {u"=sqrt('abc')", u"", 6},
    {u"=exp(0)", u"1", 6},
    {u"=exp(1)", u"2.71828182845905", 6},              // 15 digits from the double
    {u"=exp('')", u"1", 6},
    {u"=exp(1000)", u"", 6},                           // an infinity keeps no digits
    {u"=log(1)", u"0", 6},
    {u"=log(10)", u"2.30258509299405", 6},
    {u"=log10(1000)", u"3", 6},
    {u"=log10(0.01)", u"-2", 6},
    {u"=pow(2,10)", u"1024", 6},
    {u"=pow(2,0.5)", u"1.4142135623731", 6},
    {u"=pow(-2,3)", u"-8", 6},
    {u"=pow(0,0)", u"1", 6},
    {u"=pow(-8,0.5)", u"", 6},                         // NaN keeps no digits
};

TEST_F(FuncMath, Arithmetic) { ExpectValues(kArithmetic); }

// A sum of many tenths stays exact, where doubles drift.
TEST_F(FuncMath, ManyTenthsSumExactly) {
  struct Row {
    int count;
    const char16_t* sum;
    const char16_t* average;
  };
  const Row rows[] = {{10, u"1", u"0.1"}, {100, u"10", u"0.1"}, {333, u"33.3", u"0.1"}};
  for (const Row& row : rows) {
    std::u16string args;
    for (int i = 0; i < row.count; ++i) args += i == 0 ? u"0.1" : u",0.1";
    const RunOutcome sum = Run(u"=sum(" + args + u")");
    EXPECT_EQ(sum.value, row.sum) << row.count;
    EXPECT_EQ(sum.resultKind, 6) << row.count;
    EXPECT_EQ(Run(u"=average(" + args + u")").value, row.average) << row.count;
  }
}

struct ErrorCase {
  const char16_t* formula;
  const char16_t* errorText;  // the fake language's 1003 and 1004 with the call text
};

constexpr ErrorCase kErrors[] = {
    {u"=sum()", u"Syntax error: sum()"},
    {u"=average()", u"Syntax error: average()"},
    {u"=max()", u"Syntax error: max()"},
    {u"=min()", u"Syntax error: min()"},
    {u"=median()", u"Syntax error: median()"},
    {u"=percent()", u"Syntax error: percent()"},
    {u"=abs()", u"Syntax error: abs()"},
    {u"=abs(1,2)", u"Syntax error: abs(1, 2)"},
    {u"=ceil(1,2)", u"Syntax error: ceil(1, 2)"},
    {u"=floor()", u"Syntax error: floor()"},
    {u"=int()", u"Syntax error: int()"},
    {u"=round(1)", u"Syntax error: round(1)"},
    {u"=round(1,2,3)", u"Syntax error: round(1, 2, 3)"},
    {u"=mod(1)", u"Syntax error: mod(1)"},
    {u"=sqrt(1,2)", u"Syntax error: sqrt(1, 2)"},
    {u"=exp(1,2)", u"Syntax error: exp(1, 2)"},
    {u"=log()", u"Syntax error: log()"},
    {u"=log10(1,2)", u"Syntax error: log10(1, 2)"},
    {u"=pow(1)", u"Syntax error: pow(1)"},
    {u"=rand(1)", u"Syntax error: rand(1)"},
    {u"=round(1,-1)", u"Bad value: round(1, -1)"},
    {u"=round(1,-0.5)", u"Bad value: round(1, -0.5)"},  // -0.5 rounds away to -1
    {u"=sqrt(-4)", u"Bad value: sqrt(-4)"},
    {u"=log(0)", u"Bad value: log(0)"},
    {u"=log(-1)", u"Bad value: log(-1)"},
    {u"=log('abc')", u"Bad value: log(abc)"},
    {u"=log10(-1)", u"Bad value: log10(-1)"},
    {u"=pow(2,-1)", u"Bad value: pow(2, -1)"},
    // 41 decimals are one too many; the arguments before it are normalised
    // when the call text is made.
    {u"=sum('1.50','0.12345678901234567890123456789012345678901')",
     u"Bad value: sum(1.5, 0.12345678901234567890123456789012345678901)"},
    {u"=floor('0.12345678901234567890123456789012345678901')",
     u"Bad value: floor(0.12345678901234567890123456789012345678901)"},
    {u"=max(1,'1234567890123456789012345678901234567890123456789012345678901')",
     u"Bad value: max(1, 1234567890123456789012345678901234567890123456789012345678901)"},
};

TEST_F(FuncMath, BadCallsAndBadValues) {
  for (const ErrorCase& c : kErrors) {
    const RunOutcome out = Run(c.formula);
    const std::string row = Utf8(c.formula);
    EXPECT_EQ(out.code, -1) << row;
    EXPECT_EQ(out.error, 1072) << row;  // the calculator's number for a failed body
    EXPECT_EQ(out.errorText, c.errorText) << row;
    EXPECT_EQ(out.resultKind, 0) << row;
  }
}

// percent and abs read the text as it stands, 50 decimals and all.
TEST_F(FuncMath, PercentAndAbsDoNotNormalise) {
  const char16_t* longText = u"'-1.000000000000000000000000000000000000000000000000'";
  EXPECT_EQ(Call(u"abs", {longText}), u"1.000000000000000000000000000000000000000000000000");
  EXPECT_EQ(Call(u"percent", {longText}), u"'-100%'");
  EXPECT_EQ(Call(u"floor", {longText}), u"-1");  // trailing zeros go before the length test
}

TEST_F(FuncMath, RandStaysWithinZeroTo99) {
  std::set<std::u16string> seen;
  for (int i = 0; i < 2000; ++i) {
    const RunOutcome out = Run(u"=rand()");
    ASSERT_EQ(out.code, 0);
    ASSERT_EQ(out.resultKind, 6);
    ASSERT_FALSE(out.value.empty());
    const int value = std::stoi(Utf8(out.value));
    ASSERT_GE(value, 0);
    ASSERT_LE(value, 99);
    EXPECT_EQ(Utf8(out.value), std::to_string(value));  // plain digits, no sign
    seen.insert(out.value);
  }
  EXPECT_GT(seen.size(), 90u);  // 2000 draws miss a value with odds near e^-20
}

// ---- The texts the wrapper leaves ----------------------------------------------

TEST_F(FuncMath, ResultTextsBeforeTheEvaluatorReadsThem) {
  struct Row {
    const char16_t* name;
    std::initializer_list<const char16_t*> args;
    const char16_t* text;
  };
  const Row rows[] = {
      {u"round", {u"1.5", u"2"}, u"1.50"},               // padded to the decimals
      {u"round", {u"9.995", u"2"}, u"10.00"},
      {u"round", {u"'-2.5'", u"0"}, u"-3"},
      {u"abs", {u"'-1.50'"}, u"1.50"},                   // trailing zeros as they came
      {u"max", {u"'1.50'", u"1"}, u"1.5"},
      {u"max", {u"'abc'"}, u"'abc'"},                    // a word goes out quoted
      {u"percent", {u"0.1234", u"1"}, u"'12.3%'"},
      {u"int", {u"'2'"}, u"2"},
      {u"sum", {u"0"}, u""},
      {u"ceil", {u"' 2.50 '"}, u"3"},                    // blanks go with normalising
  };
  for (const Row& row : rows)
    EXPECT_EQ(Call(row.name, row.args), row.text) << Utf8(row.name);
}

// ---- The random statics ----------------------------------------------------------

TEST(RandomSource, WordsAreNonNegativeAndVary) {
  for (int bWeak = 0; bWeak <= 1; ++bWeak) {
    std::set<UINT> seen;
    for (int i = 0; i < 100; ++i) {  // five refills of each pool
      const UINT word = CUtilityCalc::GetUIntRand(bWeak);
      EXPECT_LE(word, 0x80000000u) << bWeak;
      seen.insert(word);
      const int small = CUtilityCalc::C0_99(bWeak);
      EXPECT_GE(small, 0);
      EXPECT_LE(small, 99);
    }
    EXPECT_GT(seen.size(), 90u) << bWeak;  // 31-bit words hardly ever repeat
  }
}

TEST(RandomSource, AlphabetDigitStringAppendsWithALetterFirst) {
  for (int round = 0; round < 200; ++round) {
    CString text(u"ab");
    CUtilityCalc::GenRandalphabetDigitString(text, 8);
    ASSERT_EQ(text.GetLength(), 10);
    EXPECT_EQ(text.Left(2), CString(u"ab"));
    EXPECT_TRUE(text[2] >= u'A' && text[2] <= u'Z') << text.ToUtf8();
    for (int i = 3; i < 10; ++i)
      EXPECT_TRUE((text[i] >= u'A' && text[i] <= u'Z') || (text[i] >= u'0' && text[i] <= u'9'))
          << text.ToUtf8();
  }
  for (int count : {0, -3}) {
    CString text(u"x");
    CUtilityCalc::GenRandalphabetDigitString(text, count);
    EXPECT_EQ(text, CString(u"x")) << count;
  }
}

// The pools are shared; their lock keeps concurrent draws whole.
TEST(RandomSource, ConcurrentDrawsStayInRange) {
  std::vector<std::thread> threads;
  std::vector<int> bad(4, 0);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, &bad] {
      for (int i = 0; i < 2000; ++i) {
        if (CUtilityCalc::GetUIntRand(t % 2) > 0x80000000u) ++bad[t];
        CString text;
        CUtilityCalc::GenRandalphabetDigitString(text, 3);
        if (text.GetLength() != 3 || text[0] < u'A') ++bad[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < 4; ++t) EXPECT_EQ(bad[t], 0) << t;
}

}  // namespace
