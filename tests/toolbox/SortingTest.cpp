// tests/toolbox/SortingTest.cpp: sort patterns both ways, texts with numbers and field lists compared, and
// every sort, under C.UTF-8 and a language's collation; a random leading-number sort stays a permutation.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <random>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/GmpText.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row, vkt::test::U;

constexpr struct { const char16_t* text; int pattern; } kParse[] = {
    {u"recogonizeInt,recogonizeDouble", 2}, {u"recogonizeDouble,recogonizeInt", 1}, {u"bytext,bydata", 0},
    {u"MATCHCASE , bytext", 24}, {nullptr, 0}, {u"x,recogonizeInteger", 1}, {u"recogonizeDecimal", 2}};
constexpr struct { int pattern; const char16_t* text; } kBuild[] = {
    {5, u"recogonizeInt,ignoreComma"}, {4, u""}, {24, u"matchCase,byText"}, {2, u"recogonizeDouble"}};

TEST(Sorting, PatternParsedAndBuilt) {
  for (const auto& r : kParse) EXPECT_EQ(CUtilityCalc::ParseColSortPattern(r.text), r.pattern) << Row(r.text);
  for (CString out(u"stale"); const auto& r : kBuild)
    EXPECT_EQ((CUtilityCalc::BuildColSortPattern(out, BYTE(r.pattern)), U(out)), r.text) << r.pattern;
}

// how 0: CompareStringW, 'w': the same with sep |, else CompareStringByAD at | in that order. "9{69}" is
// 69 nines. expected: the sign (< = >), then, when given, what the call leaves of a / b.
struct Cmp { const char16_t *a, *b; int pattern; char how; const char16_t* expected; };
constexpr Cmp kCompare[] = {
    {u"a10", u"a9", 1, 0, u">"}, {u"a10x", u"a9x", 1, 0, u">x / x"}, {u"a1", u"a1b", 1, 0, u"< / b"},
    {u"1.5", u"1.25", 1, 0, u"<"}, {u"1.5", u"1.25", 2, 0, u">"}, {u"", u"1", 1, 0, u"<"},
    {u"B{300}", u"a", 0, 0, u">"}, {u"1,000", u"999", 6, 0, u">"}, {u"1,000", u"999", 2, 0, u"<"},
    {u"1,0.5,1", u"10.5", 7, 0, u">,1 / "}, {u"-5", u"-3", 1, 0, u">"}, {u"file9", u"file10", 1, 0, u"<"},
    {u"file9", u"file10", 0, 0, u">"}, {u"1 b", u"1a", 1, 0, u">b / a"}, {u"a1", u"ab", 1, 0, u"<a1 / ab"},
    {u"9{69}", u"9{70}", 1, 0, u"<"}, {u"9{69}1", u"9{69}2", 1, 0, u"<"},
    {u"009{69}2", u"9{69}1", 1, 0, u">"}, {u"B", u"a", 16, 0, u"<"}, {u"0.9{69}1", u"0.9{69}10", 2, 0, u"="},
    {u"0.9{69}", u"0.9{69}1", 2, 0, u"<"}, {u"1.0{40}1", u"1.0{40}2", 2, 0, u"<"},
    {u"a|10", u"a|9", 1, 'w', u">"}, {u"a|10", u"a|9", 1, 'a', u">"}, {u"a|10", u"a|9", 1, 'd', u"<"},
    {u"a|1", u"a", 0, 'a', u">"}, {u"a|1", u"a", 0, 'D', u">"}, {u"a", u"a|1", 0, 'd', u"<"},
    {u"", u"x", 0, 'a', u"<"}, {u"", u"x", 0, 'd', u">"}, {u"x", u"", 0, 'a', u">"}, {u"", u"", 0, 'd', u"="},
    {u"b|1", u"a|2|3", 0, 'a', u"> / 3"}, {u"x|1|2", u"x|1", 0, 'a', u">2 / "}};
constexpr Cmp kCompareLocale[] = {  // punctuation and case weigh last
    {u"-5", u"3", 1, 0, u">"}, {u"a-c", u"ab", 0, 0, u">"}, {u"b", u"B", 16, 0, u"<"}};

// S Sort_CStringArray, L leading number, N by length, D texts as numbers, G CGmp array, F double array.
struct Sort { char op; const char16_t* items; int bCase, nSkip; const char16_t* sorted; };
constexpr Sort kSorts[] = {
    {'S', u"ab9|cd1", 0, 2, u"cd1|ab9"}, {'S', u"zzb|a|yya", 0, 2, u"a|yya|zzb"}, {'S', nullptr, 0, 0, u""},
    {'S', u"b|A|a|B", 1, 0, u"A|B|a|b"}, {'S', u"b|A|c", 0, 0, u"A|b|c"}, {'D', u"x", 0, 0, u"x"},
    {'L', u"10a|9b|x", 0, 0, u"9b|10a|x"}, {'L', u"5b|5A|0", 0, 0, u"0|5A|5b"}, {'N', nullptr, 0, 0, u""},
    {'L', u"007a|7b|10c|0x|00y", 0, 0, u"0x|00y|7b|10c|007a"},  // leading zeros count as length; 0 is 00
    {'N', u"ccc||bb|a", 0, 0, u"|a|bb|ccc"}, {'G', u"10|-2.5||0|9.99", 0, 0, u"-2.5||0|9.99|10"},
    {'D', u"10|9.5|-1|abc|1e2|0", 0, 0, u"-1|abc|0|9.5|10|1e2"},  // abc reads as null, equal to 0
    {'F', u"3.5|-1|2|0|-0.25", 0, 0, u"-1|-0.25|0|2|3.5"}};
constexpr Sort kSortsLocale[] = {{'S', u"b|A|a|B", 1, 0, u"a|A|b|B"}, {'L', u"-3|2x|10", 0, 0, u"2x|10|-3"}};

template <std::size_t C, std::size_t S> void Check(const Cmp (&compares)[C], const Sort (&sorts)[S]) {
  for (const Cmp& r : compares) {
    CString a(std::u16string_view(vkt::test::Expand(r.a))), b(std::u16string_view(vkt::test::Expand(r.b)));
    const auto pattern = static_cast<Enum_ColSortPattern>(r.pattern);
    const int n = r.how == 0 || r.how == 'w' ? CUtilityCalc::CompareStringW(a, b, pattern, r.how ? u'|' : 0)
                                             : CUtilityCalc::CompareStringByAD(a, b, pattern, u'|', r.how);
    const std::u16string got = u"<=>"[(n > 0) - (n < 0) + 1] + (r.expected[1] ? U(a) + u" / " + U(b) : u"");
    EXPECT_EQ(got, r.expected) << Row(r.a) << " : " << Row(r.b) << " " << r.pattern << r.how;
  }
  for (const Sort& r : sorts) {
    CStringArray items;  // null gives none
    CUtilityCalc::CString2Array(items, r.items, u"|", 0);
    CArray<CGmp, CGmp> gmps;  // the same numbers for the G and F rows
    CArray<double, double> doubles;
    for (const CString& item : items) gmps.Add(CGmp(item.GetString())), doubles.Add(CGmp(item).GetDouble());
    if (r.op == 'S') CUtilityCalc::Sort_CStringArray(items, r.bCase, r.nSkip);
    if (r.op == 'L') CUtilityCalc::Sort_CStringArray_LeftNumber(items, r.bCase);
    if (r.op == 'N') CUtilityCalc::Sort_CStringArrayByLen(items);
    if (r.op == 'D') CUtilityCalc::Sort_CDoubleArray(items);
    r.op == 'G' ? CUtilityCalc::Sort_CDoubleArray(gmps) : CUtilityCalc::Sort_CDoubleArray(doubles);
    std::u16string got;
    for (int i = 0; i < items.GetSize(); ++i)
      got += (i ? u"|" : u"") + (r.op == 'G'   ? vkt::test::Text(gmps[i])
                                 : r.op == 'F' ? vkt::test::Text(CGmp(doubles[i])) : U(items[i]));
    EXPECT_EQ(got, r.sorted) << r.op << " " << Row(r.items);
  }
}

// The tests set the locale themselves and put back the one in force before.
TEST(Sorting, UnderCUtf8ThenALanguageLocale) {
  const std::string old = setlocale(LC_ALL, nullptr);
  ASSERT_TRUE(setlocale(LC_ALL, "C.UTF-8"));
  Check(kCompare, kSorts);
  const bool language = setlocale(LC_ALL, "en_US.UTF-8") || setlocale(LC_ALL, "de_DE.UTF-8");
  if (language) Check(kCompareLocale, kSortsLocale);
  setlocale(LC_ALL, old.c_str());
  if (!language) GTEST_SKIP() << "neither en_US.UTF-8 nor de_DE.UTF-8 is installed";
}

// Minus signs make the leading-number order circular under a language locale (9 < 10 < -5 < 9): the
// sort must still only permute. Seeded, so that a failure replays.
TEST(Sorting, LeadingNumberSortOfRandomTextsIsAPermutation) {
  const std::string old = setlocale(LC_ALL, nullptr);
  for (const char* name : {"C.UTF-8", "en_US.UTF-8"}) {
    const bool installed = setlocale(LC_ALL, name) != nullptr;
    std::mt19937 random(20261125);
    CStringArray items;
    std::vector<std::u16string> before, after;
    for (int i = 0; i < 400; ++i, items.Add(CString(std::u16string_view(before.back()))))
      for (before.emplace_back(); random() % 7 != 0;) before.back() += u"-0123456789aB "[random() % 14];
    CUtilityCalc::Sort_CStringArray_LeftNumber(items, static_cast<int>(random() % 2));
    for (const CString& item : items) after.push_back(U(item));
    std::ranges::sort(before), std::ranges::sort(after);
    EXPECT_EQ(after, before) << name << (installed ? "" : " (not installed)");
  }
  setlocale(LC_ALL, old.c_str());
}

}  // namespace
