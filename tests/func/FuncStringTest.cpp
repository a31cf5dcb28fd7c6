// Tests of the 26 text built-ins through whole calculations: cutting, trimming, joining, searching,
// comparing, replacing, the engines behind like, URIs, dates and number pictures, and the bad calls.
#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using Case = std::pair<const char16_t*, const char16_t*>;

// Formula and the run's Summary(): "[kind] value", or "[0] -1 1072: Syntax error: call" for a bad call.
const Case kStrings[] = {
    {u"=left('abc',0)", u"[1] "},
    {u"=left('abc',9)", u"[1] abc"},
    {u"=left('abc',-1)", u"[0] -1 1072: Syntax error: left(abc, -1)"},
    {u"=right('abc',99999999999)", u"[1] abc"},  // the count saturates
    {u"=right('abc')", u"[0] -1 1072: Syntax error: right(abc)"},
    {u"=left(\"'ab'c\",4)", u"[1] 'ab'"},  // a result in quotes keeps them
    {u"=mid('abcdef',2,2)", u"[1] cd"},
    {u"=mid('abcdef',-3,2)", u"[1] ab"},
    {u"=mid('abcdef',4,9)", u"[1] ef"},
    {u"=mid('abc',3,1)", u"[1] "},
    {u"=mid('abc',0,-1)", u"[0] -1 1072: Syntax error: mid(abc, 0, -1)"},
    {u"=len('')", u"[2] 0"},
    {u"=len('a b')", u"[2] 3"},
    {u"=len()", u"[0] -1 1072: Syntax error: len()"},
    {u"=trim('xxaxx','x')", u"[1] a"},
    {u"=trim('  a  ')", u"[1] a"},
    {u"=trim()", u"[1] "},
    {u"=trim(' \ta\n ')", u"[1] \ta\n"},  // blanks only by default
    {u"=trim('xax','')", u"[1] xax"},     // an empty set removes nothing
    {u"=trimLeft('xyaxy','yx')", u"[1] axy"},
    {u"=trimRight('  a  ')", u"[1]   a"},
    {u"=trimToNumber('12,345.50 USD','x')", u"[6] 12345.5"},
    {u"=trimToNumber()", u"[6] "},
    {u"=toUpperCase('aB1')", u"[1] AB1"},
    {u"=toLowerCase('aB1','x')", u"[1] ab1"},
    {u"=toLowerCase()", u"[1] "},
    {u"=concatenate('a',1,'','b')", u"[1] a1b"},
    {u"=concatenate()", u"[1] "},
    {u"=phonetic(' a ','','b','sep=, ')", u"[1] a, b"},
    {u"=phonetic(' a ','','b','isTrim=0;isIgnoreBlank=0;sep=-')", u"[1]  a --b"},
    {u"=phonetic('a','b')", u"[1] ab"},
    {u"=phonetic('a','isTrim=0')", u"[1] a"},
    {u"=phonetic('','b','ISIGNOREBLANK = no ; SEP=;=')", u"[1] ;=b"},  // sep takes the rest
    {u"=phonetic('a','x=1;isTrim=0')", u"[1] ax=1;isTrim=0"},  // the next key is 1;isTrim
    {u"=phonetic('a','=x')", u"[1] a=x"},
    {u"=phonetic('a','b','')", u"[1] ab"},  // no options: the last is a blank item
    {u"=phonetic('sep=-')", u"[1] "},
    {u"=phonetic()", u"[0] -1 1072: Syntax error: phonetic()"},
    {u"=indexOf('aXb','x')", u"[1] 1"},
    {u"=indexOf('aXb','x',0,1)", u"[1] -1"},
    {u"=indexOf('abc','c',9)", u"[1] -1"},
    {u"=indexOf('abc','',2)", u"[1] 2"},
    {u"=indexOf('abc','c',-1)", u"[0] -1 1072: Syntax error: indexOf(abc, c, -1)"},
    {u"=indexOf('abc')", u"[0] -1 1072: Syntax error: indexOf(abc)"},
    {u"=lastIndexOf('abcabc','bc')", u"[1] 4"},
    {u"=lastIndexOf('aBcabc','Bc',1)", u"[1] 1"},
    {u"=lastIndexOf('abc','x')", u"[1] -1"},
    {u"=lastIndexOf('abc','')", u"[0] -1 1072: Syntax error: lastIndexOf(abc, )"},
    {u"=lastIndexOf('ab','abc')", u"[0] -1 1072: Syntax error: lastIndexOf(ab, abc)"},
    {u"=lastIndexOf('ab')", u"[0] -1 1072: Syntax error: lastIndexOf(ab)"},
    {u"=indexOneOf('xc','abc')", u"[1] 2"},  // a position in the second argument
    {u"=indexOneOf('xc','abc',5)", u"[1] -1"},
    {u"=indexOneOf('Ca','abc',0,1)", u"[1] 0"},
    {u"=indexOneOf('a','')", u"[1] -1"},
    {u"=indexOneOf('a','a',-1)", u"[0] -1 1072: Syntax error: indexOneOf(a, a, -1)"},
    {u"=indexOfArray('a, b ,c','b')", u"[1] 1"},
    {u"=indexOfArray('a;b','b',0,0,';')", u"[1] 1"},
    {u"=indexOfArray('a,b','a',1)", u"[1] -1"},
    {u"=indexOfArray('a,B','b',0,1,' ')", u"[1] -1"},  // a blank separator counts as ","
    {u"=indexOfArray('a','a',-1)", u"[0] -1 1072: Syntax error: indexOfArray(a, a, -1)"},
    {u"=endWith('abc','BC')", u"[2] 1"},
    {u"=endWith('abc','BC',1)", u"[2] 0"},
    {u"=endWith('c','abc')", u"[2] 0"},
    {u"=endWith('abc','')", u"[2] 1"},
    {u"=endWith('abc')", u"[0] -1 1072: Syntax error: endWith(abc)"},
    {u"=compare('a','B')", u"[2] -1"},
    {u"=compare('a','A')", u"[2] 0"},
    {u"=compare('a')", u"[0] -1 1072: Syntax error: compare(a)"},
    {u"=replace('abcdef',1,3,'x')", u"[1] axxxef"},  // overwritten in place, not spliced
    {u"=replace('abcdef',1,2,'xyz')", u"[1] axyef"},  // z is cut, but takes d along
    {u"=replace('abc',1,1,'xyz')", u"[1] ax"},
    {u"=replace('abc',1,9,'')", u"[1] a"},
    {u"=replace('abc',9,1,'x')", u"[1] abc"},
    {u"=replace('abc',-5,1,'x')", u"[1] xbc"},
    {u"=replace('abc',2,99999999999,'xy')", u"[1] abx"},  // start plus count would pass INT_MAX
    {u"=replace('abc',0,-1,'x')", u"[0] -1 1072: Syntax error: replace(abc, 0, -1, x)"},
    {u"=replace('abc',0,1)", u"[0] -1 1072: Syntax error: replace(abc, 0, 1)"},
    {u"=replaceAll('aXa','a','aa')", u"[1] aaXaa"},
    {u"=replaceAll('abc','','x')", u"[1] abc"},
    {u"=replaceAll('abc','b')", u"[0] -1 1072: Syntax error: replaceAll(abc, b)"},
    {u"=replaceOneOf('a-b_c','-_','..')", u"[1] a..b..c"},
    {u"=replaceOneOf('a-b','-','')", u"[1] ab"},
    {u"=replaceOneOf('a','-')", u"[0] -1 1072: Syntax error: replaceOneOf(a, -)"},
    {u"=like('abc','a%')", u"[2] 1"},
    {u"=like('ABC','a_c')", u"[2] 1"},
    {u"=like('ABC','a_c',1)", u"[2] 0"},
    {u"=like('abc')", u"[0] -1 1072: Syntax error: like(abc)"},
    {u"=encodeURI('a b/é')", u"[1] a%20b%2f%c3%a9"},
    {u"=encodeURIComponent('a b/')", u"[1] a%20b/"},
    {u"=encodeURI()", u"[0] -1 1072: Syntax error: encodeURI()"},
    {u"=formatDate('2024-1-5 08:03:09','Month D, YYYY')", u"[1] January 5, 2024"},
    {u"=formatDate('2024-1-5')", u"[0] -1 1072: Syntax error: formatDate(2024-1-5)"},
    {u"=formatNum(1234.5,'#,##0.00')", u"[1] 1,234.50"},
    {u"=formatNum(1)", u"[0] -1 1072: Syntax error: formatNum(1)"},
};

TEST(FuncString, Table) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  for (const auto& [formula, expected] : kStrings) {
    EXPECT_EQ(host.Run(*calc, formula).Summary(), expected) << vkt::test::Row(formula);
  }
}

// With the case flag, compare collates by the process locale; in C.UTF-8 that is code point order.
TEST(FuncString, CompareCollatesByTheProcessLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  vkt::test::OnExit restore([&] { std::setlocale(LC_ALL, before.c_str()); });
  if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) GTEST_SKIP() << "the C.UTF-8 locale is not installed";
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  const Case kCollated[] = {
      {u"=compare('a','B',1)", u"[2] 1"},  // B stands before a
      {u"=compare('a','B',0)", u"[2] -1"},
      {u"=compare('É','é')", u"[2] 0"},
      {u"=compare('é','f',1)", u"[2] 1"},
  };
  for (const auto& [formula, expected] : kCollated) {
    EXPECT_EQ(host.Run(*calc, formula).Summary(), expected) << vkt::test::Row(formula);
  }
}

}  // namespace
