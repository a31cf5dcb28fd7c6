// Tests of the plain exports and process-wide settings: their values at
// load, the date formats, the date checks and the error finder.
#include "VKTCalc.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

std::u16string S(const CString& s) { return std::u16string(s.View()); }

// Restores the formats and switches a test changed.
class EntryTest : public testing::Test {
 protected:
  void TearDown() override {
    SetDateTimeFormat(u"%Y.%m.%d", 1);
    SetDateTimeFormat(u"%Y.%m.%d %H:%M:%S", 0);
    CUtilityCalc::Calc_EnableChinese(1);
    CUtilityCalc::Calc_EnableComplex(1);
    CUtilityCalc::SetCurrentLanguage(0);
    InjectionAPI_FindAndGetSoapLikeError(nullptr);
    SetLggInterface(nullptr);
  }
};

TEST_F(EntryTest, SettingsAtLoad) {
  EXPECT_EQ(CUtilityCalc::Calc_IsChineseEnabled(), 1);
  EXPECT_EQ(CUtilityCalc::Calc_IsComplexEnabled(), 1);
  EXPECT_EQ(CUtilityCalc::Calc_GetCompareCalcDeclen(), -1);
  EXPECT_EQ(CUtilityCalc::GetCurrentLanguage(), 0);
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
  EXPECT_EQ(g_bLS, 0);
  CString format;
  GetDateTimeFormat(format, 1);
  EXPECT_EQ(S(format), u"%Y.%m.%d");
  GetDateTimeFormat(format, 0);
  EXPECT_EQ(S(format), u"%Y.%m.%d %H:%M:%S");
}

TEST_F(EntryTest, SwitchesStoreTheValueAsGiven) {
  CUtilityCalc::Calc_EnableChinese(7);
  EXPECT_EQ(CUtilityCalc::Calc_IsChineseEnabled(), 7);
  EXPECT_EQ(CUtilityCalc::m_bCalcEnableChinese, 7);
  CUtilityCalc::Calc_EnableComplex(0);
  EXPECT_EQ(CUtilityCalc::Calc_IsComplexEnabled(), 0);
  CUtilityCalc::SetCurrentLanguage(2052);
  EXPECT_EQ(CUtilityCalc::GetCurrentLanguage(), 2052);
  // The setter only reports; the setting stays as it was.
  EXPECT_EQ(CUtilityCalc::Calc_SetCompareCalcDeclen(3), -1);
  EXPECT_EQ(CUtilityCalc::Calc_GetCompareCalcDeclen(), -1);
}

TEST_F(EntryTest, TimeToStringByEitherFormat) {
  COleDateTime time(2024, 3, 3, 14, 5, 6);
  EXPECT_EQ(S(TimeToString(time, 0)), u"2024.03.03 14:05:06");
  EXPECT_EQ(S(TimeToString(time, 1)), u"2024.03.03");
  SetDateTimeFormat(u"%d/%m/%Y", 1);
  EXPECT_EQ(S(TimeToString(time, 1)), u"03/03/2024");
  EXPECT_EQ(S(TimeToString(time, 0)), u"2024.03.03 14:05:06");  // the other format stays
  SetDateTimeFormat(nullptr, 1);
  CString format(u"x");
  GetDateTimeFormat(format, 1);
  EXPECT_EQ(S(format), u"");
  EXPECT_EQ(S(TimeToString(time, 1)), u"");
}

TEST_F(EntryTest, IsdtAndChkdt) {
  COleDateTime in1900(1900, 6, 1, 0, 0, 0);
  COleDateTime in1901(1901, 1, 1, 0, 0, 0);
  EXPECT_EQ(isdt(&in1900, 1901), 0);
  EXPECT_EQ(isdt(&in1901, 1901), 1);

  COleDateTime invalid(2024, 2, 30, 0, 0, 0);
  ASSERT_EQ(invalid.GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(isdt(&invalid, 100), 0);
  COleDateTime null;
  null.SetStatus(COleDateTime::null);
  EXPECT_EQ(isdt(&null, 100), 0);

  double before = in1900.m_dt;
  chkdt(&in1900, 1901);
  EXPECT_EQ(in1900.GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(in1900.m_dt, before);  // only the status changes
  chkdt(&in1901, 1901);
  EXPECT_EQ(in1901.GetStatus(), COleDateTime::valid);
  chkdt(&null, 3000);
  EXPECT_EQ(null.GetStatus(), COleDateTime::null);
}

int g_finderCalls = 0;
int FindBang(CString& text) {
  ++g_finderCalls;
  if (text.Find(u'!') < 0) return 0;
  text = u"found";
  return 1;
}

TEST_F(EntryTest, SoapLikeErrorFinder) {
  CString text(u"a!b");
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 0);  // no finder installed
  EXPECT_EQ(S(text), u"a!b");
  InjectionAPI_FindAndGetSoapLikeError(&FindBang);
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 1);
  EXPECT_EQ(S(text), u"found");
  InjectionAPI_FindAndGetSoapLikeError(nullptr);
  g_finderCalls = 0;
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 0);
  EXPECT_EQ(g_finderCalls, 0);
}

TEST_F(EntryTest, TickTimeCountsMillisecondsSince1601) {
  // 1 January 2020 UTC is 13,222,310,400,000 ms after 1 January 1601.
  ULONGLONG now = GetTickTime();
  EXPECT_GT(now, 13222310400000ull);
  EXPECT_LT(now, 13222310400000ull + 200ull * 365 * 86400000ull);
  EXPECT_GE(GetTickTime(), now);
}

class FixedLanguage : public ILggInterface {
 public:
  const char16_t* GetText(int) override { return u"text"; }
  void TranslateText(CString& text) override { text = u"translated"; }
};

TEST_F(EntryTest, LanguageInterfaceIsSwappedFromThreads) {
  FixedLanguage a;
  FixedLanguage b;
  std::thread t1([&] { for (int i = 0; i < 1000; ++i) SetLggInterface(&a); });
  std::thread t2([&] { for (int i = 0; i < 1000; ++i) SetLggInterface(&b); });
  t1.join();
  t2.join();
  SetLggInterface(nullptr);  // dropping it makes no call on it
}

}  // namespace
