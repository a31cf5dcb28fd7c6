// Tests of the amount built-ins through whole calculations: RMB, chineseNum, chineseDate, chineseBankDate
// and englishNum, with their texts, their failures and the kind and quotes of what they give.
#include <gtest/gtest.h>

#include <memory>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using Case = std::pair<const char16_t*, const char16_t*>;

// Formula and the run's Summary(): "[kind] value".
const Case kAmounts[] = {
    {u"=englishNum(0)", u"[1] zero"},
    {u"=englishNum(21)", u"[1] twenty one"},
    {u"=englishNum(100)", u"[1] one hundred"},
    {u"=englishNum(105)", u"[1] one hundred and five"},
    {u"=englishNum(125)", u"[1] one hundred and twenty five"},
    {u"=englishNum(1000)", u"[1] one thousand"},
    {u"=englishNum(1001)", u"[1] one thousand and one"},
    {u"=englishNum(1200)", u"[1] one thousand and two hundred"},
    {u"=englishNum(1234)", u"[1] one thousand two hundred and thirty four"},
    {u"=englishNum(1000001)", u"[1] one million and one"},
    {u"=englishNum(123456)", u"[1] one hundred twenty three thousand four hundred and fifty six"},
    {u"=englishNum(123456789)", u"[1] one hundred twenty three million four hundred fifty six thousand seven "
                                u"hundred and eighty nine"},
    {u"=englishNum(1000000000)", u"[1] one billion"},
    {u"=englishNum(123456789012)", u"[1] one hundred twenty three billion four hundred fifty six million "
                                   u"seven hundred eighty nine thousand and twelve"},
    {u"=englishNum(0.5)", u"[1] zero point five"},
    {u"=englishNum(0.25)", u"[1] zero point twenty five"},
    {u"=englishNum(0.05)", u"[1] zero point zero five"},
    {u"=englishNum(0.125)", u"[1] zero point one two five"},
    {u"=englishNum(1000.11)", u"[1] one thousand point eleven"},
    {u"=englishNum(-12.5)", u"[1] minus twelve point five"},
    {u"=englishNum('1.50')", u"[1] one point fifty"},
    {u"=englishNum('1.50',0)", u"[1] one point five"},
    {u"=englishNum('0.10')", u"[1] zero point one zero"},
    {u"=englishNum('3.00',1)", u"[1] three point zero zero"},
    {u"=englishNum('3.00',0)", u"[1] three"},
    {u"=englishNum('-0')", u"[1] zero"},
    {u"=englishNum('1,000,000,020 ')", u"[1] one billion and twenty"},
    {u"=englishNum('999999999999')", u"[1] nine hundred ninety nine billion nine hundred ninety nine million "
                                     u"nine hundred ninety nine thousand nine hundred and ninety nine"},
    {u"=englishNum('1234567890123')", u"[1] "},  // 13 digits
    {u"=englishNum('abc')", u"[1] "},
    {u"=englishNum('1.2.3')", u"[1] "},
    {u"=englishNum('--5')", u"[1] "},
    {u"=englishNum()", u"[0] -1 1072: Syntax error: englishNum()"},
    {u"=RMB('1,234.5')", u"[1] 壹仟贰佰叁拾肆元伍角整"},
    {u"=RMB(12345678901234)", u"[1] "},
    {u"=chineseNum('2024-01')", u"[1] 贰零贰肆-零壹"},
    {u"=chineseNum('2024-01',1)", u"[1] 二〇二四-〇一"},
    {u"=chineseNum('a9b0',0)", u"[1] a玖b零"},
    {u"=chineseNum(\"'7\")", u"[1] '柒"},  // a quote in the text stays
    {u"=chineseDate('2024-01-05')", u"[1] 二O二四年一月五日"},
    {u"=chineseBankDate('2024-01-05')", u"[1] 贰零贰肆年零壹月零伍日"},
    {u"=chineseDate('2005-10-20')", u"[1] 二OO五年十月二十日"},
    {u"=chineseBankDate('2005-10-20')", u"[1] 贰零零伍年零壹拾月零贰拾日"},
    {u"=chineseDate('2024-11-31','Y年')", u"[1] 四年"},
    {u"=chineseDate('24/12/31','yy年M月d日')", u"[1] 二四年十二月三十一日"},
    {u"=chineseBankDate('5.11.19','YYyY-mm-DD')", u"[1] 贰零零伍-壹拾壹-壹拾玖"},
    {u"=chineseBankDate('2024-12-30','D日Y')", u"[1] 零叁拾日肆"},
    {u"=chineseBankDate('2024-13-01')", u"[1] 2024-13-01"},
    {u"=chineseDate('2024-12-32')", u"[1] 2024-12-32"},
    {u"=chineseDate('2024-12-00','Y')", u"[1] 四"},  // only the fields the format names are read
    {u"=chineseDate('2024-1-5','x')", u"[1] 2024-1-5"},
    {u"=chineseDate('2024-1','Y')", u"[1] 2024-1"},
    {u"=chineseDate(20240105,'')", u"[1] 二O二四年一月五日"},
    {u"=chineseBankDate()", u"[0] -1 1072: Syntax error: chineseBankDate()"},
};

TEST(FuncAmounts, Table) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  vkt::test::TestHost host;
  for (const auto& [formula, expected] : kAmounts) {
    EXPECT_EQ(host.Run(*calc, formula).Summary(), expected) << vkt::test::Row(formula);
  }
}

}  // namespace
