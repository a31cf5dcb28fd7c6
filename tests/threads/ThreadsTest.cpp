// Threads at once on what the process shares: the catalogue's first build, one calculator (rand()
// included), the settings and the string sorts. Each thread keeps what it saw; the main thread compares.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "VKTCalc.h"
#include "func/ProcessState.h"
#include "tests/support/TestHost.h"
#include "tests/support/Threads.h"

namespace {

using vkt::test::U;
using vkt::test::kThreads;
using vkt::test::OnThreads;

std::u16string Number(long long n) { return U(CString(std::to_string(n).c_str())); }

// Thread t passes `passes` times over the rows from row t; each see(t, row.in) must give row.out.
struct Row { const char16_t* in; const char16_t* out; };
template <std::size_t N, class See>
void EachThreadSees(const Row (&rows)[N], std::size_t passes, See see) {
  std::vector<std::u16string> seen[kThreads];
  OnThreads([&](int t) {
    for (std::size_t i = 0; i < passes * N; ++i) seen[t].push_back(see(t, rows[(i + t) % N].in));
  });
  for (std::size_t t = 0, i = 0; t < kThreads; i = (i + 1) % (passes * N), t += i == 0)
    EXPECT_EQ(seen[t][i], rows[(i + t) % N].out) << "thread " << t << ", run " << i;
}

// First in the file, and under ctest alone in its process: the catalogue is still unbuilt.
constexpr Row kLookups[] = {  // index:pName:body; the bodies are attached last
    {u"sum", u"75:sum:1"}, {u"SUM", u"75:sum:1"}, {u"chinesenum", u"5:chineseNum:1"},
    {u"If", u"39:if:1"},   {u"rand", u"63:rand:1"}, {u"nosuch", u"-1"}, {u"", u"-1"},
};

TEST(Catalogue, FirstUseFromSeveralThreadsGivesEveryoneTheSameRecords) {
  std::unique_ptr<CFuncMnger> managers[kThreads];
  EachThreadSees(kLookups, 1, [&](int t, const char16_t* name) {
    if (!managers[t]) managers[t].reset(CFuncMnger::NewFuncMnger());  // builds the catalogue
    const int index = managers[t]->FindFunc(name);
    const CFuncInfo* info = managers[t]->GetFuncByIndex(index);
    return Number(index) + (info ? u":" + U(info->pName) + (info->pfnBody ? u":1" : u":0") : u"");
  });
}

// Eight threads ask for column names at once, the first time in the process: one table for all.
TEST(ColumnNames, FirstUseFromEightThreadsGivesEveryoneTheSameTexts) {
  constexpr int kCols[] = {0, 25, 26, 699};
  const char16_t* seen[8][4] = {};
  OnThreads([&](int t) { for (int i = 0; i < 4; ++i) seen[t][i] = CUtilityCalc::GetColName(kCols[i]); }, 8);
  for (int t = 0; t < 8; ++t)
    for (int i = 0; i < 4; ++i) EXPECT_EQ(seen[t][i], seen[0][i]) << "thread " << t << ", col " << kCols[i];
  EXPECT_EQ(U(seen[0][0]) + u" " + U(seen[0][1]) + u" " + U(seen[0][2]) + u" " + U(seen[0][3]), u"A Z AA ZX");
}

// One calculator (manager made first), a host per thread: the printed tree, the value or the error.
constexpr Row kFormulas[] = {
    {u"A1+sum(B1,2)", u"A1+sum(B1,2)|10"},
    {u"if(A1>B1,\"big\",\"small\")", u"if(A1>B1,'big','small')|big"},
    {u"C1+\"y\"", u"C1+'y'|xy"},
    {u"max(A1,hostfn(2,'a'),B1)", u"max(A1,hostfn(2,'a'),B1)|7"},
    {u"1/3", u"1/3|0.3333333333333333333333333333333333333333"},
    {u"int(rand()/100)", u"int(rand()/100)|0"},  // rand() gives 0 to 99
    {u"A1-\"a\"", u"A1-'a'|#1003 Syntax error: 5-'a'"},  // the text shows the tree at the failure
};

TEST(Calc, ThreadsParseAndRunDifferentFormulasAtOnce) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  ASSERT_NE(calc->GetFuncMnger(), nullptr);  // the first GetFuncMnger must not race
  vkt::test::TestHost hosts[kThreads];
  for (vkt::test::TestHost& host : hosts)
    host.variables = {{u"A1", u"5"}, {u"B1", u"3"}, {u"C1", u"'x'"}}, host.functions = {{u"hostfn", u"7"}};
  EachThreadSees(kFormulas, 10, [&](int t, const char16_t* text) {
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(text, nullptr));
    CString printed;
    if (root) root->GetExpression(printed);
    vkt::test::RunOutcome out = hosts[t].Run(*calc, text);
    return U(printed) + u"|" + (out.code ? u"#" + Number(out.error) + u" " + out.errorText : out.value);
  });
}

// Thread 0 writes a setting back and forth while the others read it: a read gives the value at
// load (0) or the other one (1), never anything else (-1). Each setting ends at its value at load.
struct Setting { const char* name; void (*set)(int other); int (*read)(); };
template <class T> int Which(T got, T atLoad, T other) { return got == atLoad ? 0 : got == other ? 1 : -1; }
vkt::test::FakeLanguage g_language;
int Finder(CString&) { return 1; }
constexpr const char16_t* kDates[] = {u"%Y.%m.%d", u"%d %B %Y, with the month's name"};

constexpr Setting kSettings[] = {
    {"language", [](int o) { SetLggInterface(o ? &g_language : nullptr); },
     [] { return Which<ILggInterface*>(vkt::LanguageInterface(), nullptr, &g_language); }},
    {"error finder", [](int o) { InjectionAPI_FindAndGetSoapLikeError(o ? &Finder : nullptr); },
     [] { CString text; return CUtilityCalc::FindGetSoapLikeError(text); }},
    {"Chinese names", [](int o) { CUtilityCalc::Calc_EnableChinese(1 - o); },
     [] { return Which(CUtilityCalc::Calc_IsChineseEnabled(), 1, 0); }},
    {"language number", [](int o) { CUtilityCalc::SetCurrentLanguage(o ? 2052 : 0); },
     [] { return Which(CUtilityCalc::GetCurrentLanguage(), 0, 2052); }},
    {"date format", [](int o) { SetDateTimeFormat(kDates[o], 1); },
     [] { CString f; return GetDateTimeFormat(f, 1), Which(U(f), U(kDates[0]), U(kDates[1])); }},
};

void Contend(const Setting& setting) {
  std::atomic<int> odd{0}, writing{1};
  OnThreads([&](int t) {
    for (int i = 1; t == 0 && i <= 20000; ++i) setting.set(i & 1);
    for (writing -= t == 0; writing != 0;) odd += setting.read() < 0;
  });
  EXPECT_EQ(odd, 0) << setting.name;
  EXPECT_EQ(setting.read(), 0) << setting.name;
}

TEST(Settings, EachReadsAsOldOrNewWhileAnotherThreadWrites) {
  for (const Setting& s : kSettings) Contend(s);
}

// The string sorts hand their settings to the comparison through process-wide variables under one lock:
// four threads sorting at once, each its own way, must each get the order the same call gives alone.
TEST(Sorting, ThreadsSortingAtOnceWithTheirOwnSettingsGetTheirOwnOrder) {
  constexpr struct { int bCase, nSkip, bLeftNumber; } kWays[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}};
  CStringArray texts;
  for (const char16_t* t : {u"b10", u"B9", u"a2x", u"10a", u"9b", u"A", u"ab", u"-5", u"007", u"7", u"Ba"})
    texts.Add(t);
  auto sort = [&](int t) {
    CStringArray items(texts);
    kWays[t].bLeftNumber ? CUtilityCalc::Sort_CStringArray_LeftNumber(items, kWays[t].bCase)
                         : CUtilityCalc::Sort_CStringArray(items, kWays[t].bCase, kWays[t].nSkip);
    std::u16string order;
    for (const CString& item : items) order += U(item) + u"|";
    return order;
  };
  std::u16string alone[kThreads];
  for (int t = 0; t < kThreads; ++t) alone[t] = sort(t);
  for (int t = 1; t < kThreads; ++t) EXPECT_NE(alone[t], alone[t - 1]);  // each way sorts otherwise
  std::atomic<int> wrong{0};
  OnThreads([&](int t) { for (int i = 0; i < 2000; ++i) wrong += sort(t) != alone[t]; });
  EXPECT_EQ(wrong, 0);
}

}  // namespace
