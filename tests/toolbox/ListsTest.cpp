// tests/toolbox/ListsTest.cpp: list cutting (separators at the ends, in quotes, wider than one unit,
// with and without trimming), the number list, and the sorting, comparing and appending services.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;

std::u16string Item(const CString& text) { return U(text); }
std::u16string Item(UINT value) { const std::string d = std::to_string(value); return {d.begin(), d.end()}; }

// Each item in brackets, so that no item and one empty item differ; then the growth step: "[a][ b] 2".
template <class Array>
std::u16string Show(Array& items) {
  std::u16string out;
  for (int i = 0; i < items.GetSize(); ++i) out += u"[" + Item(items[i]) + u"]";
  return out + u" " + Item(static_cast<UINT>(items.GetGrowBy()));
}

CUIntArray& Set(CUIntArray& items, const std::vector<UINT>& values) {
  items.RemoveAll();
  for (UINT value : values) items.Add(value);
  return items;
}

// op: 'A' CString2Array, 'W' CString2ArrayEx with the first unit of sep, 'X' with the whole sep (both
// expand \r\n), 'U' CString2UIntArray into [4][5], then the text as it trims it.
constexpr struct { char op; const char16_t *text, *sep; int bTrim; const char16_t* expected; } kCuts[] = {
    {'A', u"a, b", u",", 1, u"[a][b] 2"}, {'A', u"a, b", u",", 0, u"[a][ b] 2"},
    {'A', nullptr, u",", 1, u" 0"}, {'A', u"a,b", nullptr, 0, u" 0"},  // the stale item goes all the same
    {'A', u",a,b,", u",", 0, u"[][a][b][] 4"},  // a separator at either end gives an empty item
    {'A', u"'a,b',c", u",", 0, u"['a][b'][c] 3"},  // quotes give no protection
    {'A', u"a::b", u"::", 0, u"[a][b] 2"}, {'A', u"a:b", u"::", 0, u"[a:b] 1"},
    {'A', u"aaa", u"aa", 0, u"[][] 2"}, {'A', u"A,a", u"a", 0, u"[A,][] 2"},  // leftover a goes; case counts
    {'A', u" a \t, b\t ", u",", 1, u"[a \t][b] 2"},  // blanks go; white space too at the end
    {'A', u"\u4e2d\u3001\u6587", u"\u3001", 0, u"[\u4e2d][\u6587] 2"},
    {'W', u"a\\r\\nb, c\\r\\n ,\\r", u",", 1, u"[a\r\nb][c\r\n][\\r] 3"}, {'W', u"a,b", u"", 1, u" 0"},
    {'X', u"x\\r\\n;;y;;", u";;", 0, u"[x\r\n][y][] 3"},
    {'U', u" 1, 2 ,3 ", u",", 0, u"[1][2][3] 3 1, 2 ,3"},
    {'U', u"-1;x;7abc", u";", 0, u"[4294967295][0][7] 3 -1;x;7abc"},
    {'U', u"5,", u",", 0, u"[5][0] 2 5,"}, {'U', u" \t ", u",", 0, u"[4][5] 0 "},  // an empty last item is 0
};

TEST(ListCutting, Table) {
  for (const auto& c : kCuts) {
    CStringArray out;
    out.Add(CString(u"stale"));
    CUIntArray numbers;
    CString text(c.text);
    if (c.op == 'A') CUtilityCalc::CString2Array(out, c.text, c.sep, c.bTrim);
    if (c.op == 'W') CUtilityCalc::CString2ArrayEx(out, c.text, WORD{c.sep[0]}, c.bTrim);
    if (c.op == 'X') CUtilityCalc::CString2ArrayEx(out, c.text, c.sep, c.bTrim);
    if (c.op == 'U') CUtilityCalc::CString2UIntArray(Set(numbers, {4, 5}), text, c.sep[0]);
    EXPECT_EQ(c.op == 'U' ? Show(numbers) + u" " + U(text) : Show(out), c.expected)
        << c.op << " " << Row(c.text) << " by " << Row(c.sep) << " trim " << c.bTrim;
  }
}

TEST(SmallServices, CompareSortAndAppendOnce) {
  const auto sign = [](const char16_t* a, const char16_t* b, int bCase) {
    const int answer = CUtilityCalc::StrCmpW(a, b, bCase);
    return answer < 0 ? '<' : answer > 0 ? '>' : '=';
  };
  // Null comes before even the empty text; case counts only with bCase.
  EXPECT_EQ((std::string{sign(nullptr, nullptr, 1), sign(nullptr, u"", 1), sign(u"", nullptr, 0),
                         sign(u"b", u"A", 0), sign(u"abc", u"ABC", 0), sign(u"abc", u"ABC", 1),
                         sign(u"abc", u"abd", 1)}),
            "=<>>=><");
  CUIntArray items, from;
  CUtilityCalc::Sort_CUIntArray(Set(items, {3, 0xFFFFFFFFu, 1, 2, 1}));
  EXPECT_EQ(Show(items), u"[1][1][2][3][4294967295] 0");  // as unsigned
  // A value, or every value of another array, once; 1 when anything was added.
  const auto add = [&](int value) { return CUtilityCalc::CUIntArrayAppendSingle(items, value); };
  Set(items, {1, 2});
  EXPECT_EQ((std::vector<int>{add(2), add(3), add(-1), add(-1)}), (std::vector<int>{0, 1, 1, 0}));
  EXPECT_EQ(Show(items), u"[1][2][3][4294967295] 0");
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(Set(items, {1}), Set(from, {1, 2, 2, 3})), 1);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(items, from), 0);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(items, items), 0);
  EXPECT_EQ(Show(items), u"[1][2][3] 0");  // repeats inside `from` are added once
}

}  // namespace
