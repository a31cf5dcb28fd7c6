// Tests of the numeric built-ins through whole calculations, of the texts their bodies leave, and of
// the random source behind rand.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::U;

// Formula and the run's Summary(): "[kind] value", or for a failed body
// "[0] -1 1072: text" with text 1003 (a wrong number of arguments) or 1004
// (a value the function cannot take) and the call; or "body " and the text
// the body left.
const std::pair<const char16_t*, const char16_t*> kMath[] = {
    {u"=sum(1,2.5,-0.5)*round(2/3,4)", u"[6] 2.0001"},  // 3 * 0.6667, exact
    {u"=sum(1,'abc','12abc')", u"[6] 13"},              // a word counts as nothing, leading digits do
    {u"=sum(0,'')", u"[6] "},                           // a null sum stays null
    {u"=sum(1,-1)", u"[6] 0"},                          // a real subtraction: zero
    {u"=sum(99999999999999999999,1)", u"[6] 100000000000000000000"},
    {u"=average(1,'',3)", u"[6] 1.3333333333333333333333333333333333333333"},  // a blank divides
    {u"=average(0)", u"[6] "},                          // null divided by 1 stays null
    {u"=average(0,0)", u"[6] 0"},
    {u"=max(-1,-3,-2)", u"[6] -1"},
    {u"=max('1.50',1)", u"[6] 1.5"},                    // the normalised text wins
    {u"=max('2abc',2)", u"[1] 2abc"},                   // equal: the earliest text stands
    {u"=max('abc',-1)", u"[1] abc"},                    // a word is zero, above -1
    {u"=min(2,'1.0',1)", u"[6] 1"},
    {u"=min('',1)", u"[6] "},                           // a blank is zero, below 1
    {u"=median(4,1,3,2)", u"[6] 2.5"},
    {u"=median(2,1)", u"[6] 1.5"},                      // two: their mean, unsorted
    {u"=median('',0,5)", u"[6] 0"},                     // blank and zero tie; 0 in the middle
    {u"=median(10,'abc',5,1)", u"[6] 3"},               // sorted: abc(0) 1 5 10
    {u"=percent(0.1234,1)", u"[1] 12.3%"},              // no pure number: text
    {u"=percent(0.005)", u"[1] 1%"},                    // half away from zero
    {u"=percent(0.1234,-2)", u"[1] 12%"},               // negative decimals count as 0
    {u"=percent(0.5,1.5,99)", u"[1] 50.00%"},           // decimals 1.5 round to 2; more ignored
    {u"=percent('abc')", u"[1] %"},
    {u"=abs('- 5')", u"[6] 5"},
    {u"=abs('')", u"[6] "},
    {u"=abs('-abc')", u"[1] abc"},
    {u"=abs('  -  -2')", u"[6] -2"},                    // one minus goes, no more
    {u"=floor('-0.0001')", u"[2] -1"},
    {u"=floor('abc')", u"[2] "},
    {u"=ceil(-0.5)", u"[2] 0"},                         // -0 validated to 0
    {u"=ceil(2.1)", u"[2] 3"},
    {u"=ceil('2.000')", u"[2] 2"},
    {u"=int(-1.5)", u"[2] -2"},                         // towards minus infinity
    {u"=int('7.000')", u"[2] 7"},
    {u"=int('12abc')", u"[1] 12abc"},                   // no point: the text stands
    {u"=round(1.005,2)", u"[6] 1.01"},                  // a double would give 1.00
    {u"=round(-2.5,0)", u"[6] -3"},
    {u"=round(-0.4,0)", u"[6] 0"},                      // no sign on a zero
    {u"=round(9.995,2)", u"[6] 10"},                    // the carry grows a digit
    {u"=round(1.234,2.5)", u"[6] 1.234"},               // decimals 2.5 round to 3
    {u"=round('',2)", u"[6] 0"},
    {u"=mod(-7,3)", u"[6] 2"},                          // the sign of the divisor
    {u"=mod(7,0)", u"[6] 7"},                           // zero divisor: unchanged
    {u"=sqrt(2)", u"[6] 1.4142135623730950488016887242096980785696"},
    {u"=sqrt('abc')", u"[6] "},
    {u"=exp(1)", u"[6] 2.71828182845905"},              // 15 digits from the double
    {u"=exp(1000)", u"[6] "},                           // an infinity keeps no digits
    {u"=log(10)", u"[6] 2.30258509299405"},
    {u"=log10(0.01)", u"[6] -2"},
    {u"=pow(2,0.5)", u"[6] 1.4142135623731"},
    {u"=pow(0,0)", u"[6] 1"},
    {u"=pow(-8,0.5)", u"[6] "},                         // NaN keeps no digits
    {u"=rand()*0", u"[6] 0"},
    // The text a body leaves, before the evaluator reads it as a number.
    {u"=round(1.5,2)", u"body 1.50"},  // padded to the decimals
    {u"=round('-2.5',0)", u"body -3"},
    {u"=abs('-1.000000000000000000000000000000000000000000000000')",
     u"body 1.000000000000000000000000000000000000000000000000"},  // as it came: no length test
    {u"=percent('-1.000000000000000000000000000000000000000000000000')", u"body '-100%'"},
    {u"=floor('-1.000000000000000000000000000000000000000000000000')", u"body -1"},  // zeros go first
    {u"=max('abc')", u"body 'abc'"},   // a word goes out quoted
    {u"=ceil(' 2.50 ')", u"body 3"},   // blanks go with normalising
    {u"=sum()", u"[0] -1 1072: Syntax error: sum()"},
    {u"=max()", u"[0] -1 1072: Syntax error: max()"},
    {u"=median()", u"[0] -1 1072: Syntax error: median()"},
    {u"=percent()", u"[0] -1 1072: Syntax error: percent()"},
    {u"=abs(1,2)", u"[0] -1 1072: Syntax error: abs(1, 2)"},
    {u"=floor()", u"[0] -1 1072: Syntax error: floor()"},
    {u"=round(1,2,3)", u"[0] -1 1072: Syntax error: round(1, 2, 3)"},
    {u"=log10()", u"[0] -1 1072: Syntax error: log10()"},
    {u"=rand(1)", u"[0] -1 1072: Syntax error: rand(1)"},
    {u"=round(1,-0.5)", u"[0] -1 1072: Bad value: round(1, -0.5)"},  // -0.5 rounds away to -1
    {u"=sqrt(-4)", u"[0] -1 1072: Bad value: sqrt(-4)"},
    {u"=log(0)", u"[0] -1 1072: Bad value: log(0)"},
    {u"=log10(-1)", u"[0] -1 1072: Bad value: log10(-1)"},
    {u"=pow(2,-1)", u"[0] -1 1072: Bad value: pow(2, -1)"},
    // 41 decimals are one too many: the arguments before them are
    // normalised for the call text, those behind them not.
    {u"=sum('1.50','0.12345678901234567890123456789012345678901','4.0')",
     u"[0] -1 1072: Bad value: sum(1.5, 0.12345678901234567890123456789012345678901, 4.0)"},
    {u"=floor('0.12345678901234567890123456789012345678901')",
     u"[0] -1 1072: Bad value: floor(0.12345678901234567890123456789012345678901)"},
};

TEST(FuncMath, Table) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  for (const auto& [formula, expected] : kMath) {
    CTraceCollector trace;
    trace.nMode = 2;  // records the text each body leaves
    const std::u16string summary = host.Run(*calc, formula, &trace).Summary();
    const std::u16string left = trace.arrValues.GetSize() == 1 ? U(trace.arrValues[0]) : u"?";
    EXPECT_EQ(std::u16string_view(expected).starts_with(u"body ") ? u"body " + left : summary, expected)
        << vkt::test::Row(formula);
  }
  // A sum of many tenths stays exact, where doubles drift.
  std::u16string tenths = u"0.1";
  for (int i = 1; i < 333; ++i) tenths += u",0.1";
  EXPECT_EQ(host.Run(*calc, (u"=sum(" + tenths + u")").c_str()).value, u"33.3");
  EXPECT_EQ(host.Run(*calc, (u"=average(" + tenths + u")").c_str()).value, u"0.1");
}

// The pools are shared between threads; their lock keeps each draw whole:
// the words stay within 31 bits, each of 0 to 99 comes up from both pools,
// and the first symbol is a letter.
TEST(RandomSource, ConcurrentDraws) {
  std::vector<std::set<UINT>> smalls(4);
  std::vector<int> bad(4, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, &smalls, &bad] {
      for (int i = 0; i < 500; ++i) {  // 25 refills of each pool
        const UINT word = CUtilityCalc::GetUIntRand(t % 2);
        smalls[t].insert(static_cast<UINT>(CUtilityCalc::C0_99(t % 2)));
        CString text(u"ab");
        CUtilityCalc::GenRandalphabetDigitString(text, 8);
        const std::u16string s = U(text);
        bad[t] += word > 0x80000000u || s.size() != 10 || s.compare(0, 2, u"ab") != 0 || s[2] < u'A' ||
                  s.find_first_not_of(u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ", 2) != std::u16string::npos;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < 4; ++t) {
    EXPECT_EQ(bad[t], 0) << t;
    EXPECT_TRUE(smalls[t].size() > 90 && *smalls[t].rbegin() <= 99) << t;  // 500 draws miss about one
  }
}

}  // namespace
