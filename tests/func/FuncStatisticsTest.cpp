// Tests of the eight variance functions and sumdim through whole calculations, and of
// CUtilityCalc::SumDim called by a host.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::U;

// Formula and the run's Summary(): "[kind] value"; an empty result of a variance is text (kind 1).
// (*) The mean 2/3 is cut at 40 decimals and so is each partial product of a square: the last digits go.
const std::pair<const char16_t*, const char16_t*> kStatistics[] = {
    {u"=stdev(1,2,3,4)", u"[6] 1.2909944487358056283930884665941332036109"},  // root of 5 / 3
    {u"=varp(1,2,3,4)", u"[6] 1.25"},
    {u"=stdev(5)", u"[1] "},              // one value has no sample deviation
    {u"=stdevp('abc')", u"[1] "},         // nothing left
    {u"=stdevp(5)", u"[1] "},             // squares of zero stay null, and null writes as nothing
    {u"=varp(5,5,5)", u"[6] 0"},          // null divided by 3 is 0
    {u"=vara(1,'true','abc')", u"[6] 0.3333333333333333333333333333333333333213"},  // 1, 1, 0 (*)
    {u"=var(1,'true','abc')", u"[1] "},   // only 1 is left
    {u"=varpa('TRUE',0)", u"[6] 0.25"},
    {u"=var('TRUE',0)", u"[1] "},
    {u"=stdevpa(2,'x',4)", u"[6] 1.6329931618554520654648560498039275946439"},  // root of 8 / 3
    {u"=varp('1,234',1236)", u"[6] 1"},   // thousand commas allowed
    {u"=var('1e2',0)", u"[6] 5000"},      // and an exponent
    {u"=vara(1,'',3)", u"[6] 2"},         // an empty argument is dropped in every mode
    {u"=var(1,' ',2)", u"[6] 1"},         // blanks alone read as a number: a zero that counts
    {u"=stdevp(1,3,'2abc')", u"[6] 1"},   // leading digits do not make a number
    {u"=stdeva(1,'x',2)", u"[6] 1"},
    {u"=stdev()", u"[0] -1 1072: Syntax error: stdev()"},
    {u"=sumdim('1,2','3,4')", u"[1] 4,6"},
    {u"=sumdim('1.5,2','2,3.25')", u"[1] 3.5,5.25"},  // each column its most decimals
    {u"=sumdim('1, 2','3, 4')", u"[1] 4, 6"},
    {u"=sumdim('1 ,2','3 , 4')", u"[1] 4 , 6"},
    {u"=sumdim('1;2','3;4;5')", u"[1] 4;6;5"},        // a shorter row leaves the later columns
    {u"=sumdim('1|2','3|4','|')", u"[1] 4|6"},         // a separator and nothing else
    {u"=sumdim(1,2,3)", u"[1] 6"},                     // no separator: all are values
    {u"=sumdim('0,1','0,2')", u"[1] ,3"},              // a column of zeros stays null
    {u"=sumdim('9.99,-1.5','0.01,1.5')", u"[1] 10.00,0.0"},  // a real zero shows its decimals
    {u"=sumdim('1 2','3 4')", u"[1] 1"},  // a blank is no separator: '3 4' is one, and left out
    {u"=sumdim('')", u"[1] "},
    {u"=sumdim()", u"[0] -1 1072: Syntax error: sumdim()"},
};

TEST(FuncStatistics, Table) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  for (const auto& [formula, expected] : kStatistics)
    EXPECT_EQ(host.Run(*calc, formula).Summary(), expected) << vkt::test::Row(formula);
}

// Arguments, and the result of SumDim, which empties it first; the arguments stay as they were.
const std::pair<std::vector<const char16_t*>, const char16_t*> kSumDim[] = {
    {{}, u""},
    {{u"1,2", u"3"}, u"15"},  // 3 shows no separator, so 1,2 is one number with a comma
    {{u"1/-2", u"3/-4"}, u"4/-6"},  // a minus belongs to the number
};

TEST(FuncStatistics, SumDimForHosts) {
  for (const auto& [arguments, expected] : kSumDim) {
    CStringArray args;
    for (const char16_t* argument : arguments) args.Add(argument);
    CString result(u"left over");
    CUtilityCalc::SumDim(result, args);
    EXPECT_EQ(U(result), expected);
    ASSERT_EQ(args.GetSize(), static_cast<int>(arguments.size()));
    for (int i = 0; i < args.GetSize(); ++i) EXPECT_EQ(U(args[i]), arguments[i]);
  }
}

}  // namespace
