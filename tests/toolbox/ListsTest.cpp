// Tests of list cutting (separators at the ends, inside quotes, longer than
// one unit, with and without trimming), the number list, and the small
// sorting, comparing and appending services.
#include "VKTCalc.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {

std::string Row(const char16_t* text) { return text == nullptr ? "(null)" : CString(text).ToUtf8(); }

std::vector<std::u16string> Items(const CStringArray& array) {
  std::vector<std::u16string> items;
  for (const CString& s : array) items.emplace_back(s.View());
  return items;
}

std::vector<UINT> Values(const CUIntArray& array) { return {array.begin(), array.end()}; }

CUIntArray Make(std::initializer_list<UINT> values) {
  CUIntArray array;
  for (UINT v : values) array.Add(v);
  return array;
}

struct CutCase {
  const char16_t* text;
  const char16_t* sep;
  int bTrim;
  std::vector<std::u16string> expected;
};

const CutCase kCuts[] = {
    {u"a, b", u",", 1, {u"a", u"b"}},
    {u"a, b", u",", 0, {u"a", u" b"}},
    {u"", u",", 1, {}},
    {nullptr, u",", 1, {}},
    {u"a,b", u"", 0, {}},
    {u"a,b", nullptr, 0, {}},
    {u"a", u",", 0, {u"a"}},
    {u"a,b,", u",", 0, {u"a", u"b", u""}},  // a trailing separator gives an empty last item
    {u",", u",", 0, {u"", u""}},
    {u",a", u",", 0, {u"", u"a"}},
    {u"a,,b", u",", 0, {u"a", u"", u"b"}},
    {u"'a,b',c", u",", 0, {u"'a", u"b'", u"c"}},  // quotes give no protection
    {u"\"x,y\"", u",", 1, {u"\"x", u"y\""}},
    {u"a\r\nb\r\n", u"\r\n", 0, {u"a", u"b", u""}},
    {u"a::b", u"::", 0, {u"a", u"b"}},
    {u"a:b", u"::", 0, {u"a:b"}},
    {u"aaa", u"aa", 0, {u"", u""}},  // ends in the separator, so the leftover a is dropped
    {u"aaaa", u"aa", 0, {u"", u"", u""}},
    {u"A,a", u"a", 0, {u"A,", u""}},  // the comparison has case
    // Items before a separator lose blanks only; the last loses all white space.
    {u" a \t, b\t ", u",", 1, {u"a \t", u"b"}},
    {u"  ,  ", u",", 1, {u"", u""}},
    {u"中,文,", u",", 0, {u"中", u"文", u""}},
    {u"中、文", u"、", 0, {u"中", u"文"}},
};

TEST(CString2Array, Table) {
  for (const CutCase& c : kCuts) {
    CStringArray out;
    out.Add(CString(u"stale"));  // emptied first, also when nothing is cut
    CUtilityCalc::CString2Array(out, c.text, c.sep, c.bTrim);
    EXPECT_EQ(Items(out), c.expected) << Row(c.text) << " by " << Row(c.sep) << " trim " << c.bTrim;
  }
}

TEST(CString2Array, GrowthStepIsTheItemCount) {
  CStringArray out;
  CUtilityCalc::CString2Array(out, u"a,b,c", u",", 0);
  EXPECT_EQ(out.GetGrowBy(), 3);
}

TEST(CString2ArrayEx, LineEndsAreExpandedInEachItem) {
  CStringArray out;
  CUtilityCalc::CString2ArrayEx(out, u"a\\r\\nb, c\\r\\n ,\\r", WORD{u','}, 1);
  EXPECT_EQ(Items(out), (std::vector<std::u16string>{u"a\r\nb", u"c\r\n", u"\\r"}));

  CUtilityCalc::CString2ArrayEx(out, u"x\\r\\n;;y;;", u";;", 0);
  EXPECT_EQ(Items(out), (std::vector<std::u16string>{u"x\r\n", u"y", u""}));
}

TEST(CString2ArrayEx, NoSeparatorGivesNoItem) {
  CStringArray out;
  out.Add(CString(u"stale"));
  CUtilityCalc::CString2ArrayEx(out, u"a,b", WORD{0}, 1);
  EXPECT_EQ(out.GetSize(), 0);
  CUtilityCalc::CString2ArrayEx(out, u"a,b", u"", 1);
  EXPECT_EQ(out.GetSize(), 0);
}

struct UIntCase {
  const char16_t* text;
  WORD sep;
  const char16_t* trimmedText;
  std::vector<UINT> expected;
};

const UIntCase kUInts[] = {
    {u" 1, 2 ,3 ", u',', u"1, 2 ,3", {1, 2, 3}},
    {u"5,", u',', u"5,", {5, 0}},  // the empty last item reads as 0
    {u"-1;x;7abc", u';', u"-1;x;7abc", {4294967295u, 0, 7}},
    {u"12", u',', u"12", {12}},
};

TEST(CString2UIntArray, Table) {
  for (const UIntCase& c : kUInts) {
    CString text(c.text);
    CUIntArray out = Make({99});
    CUtilityCalc::CString2UIntArray(out, text, c.sep);
    EXPECT_EQ(Values(out), c.expected) << Row(c.text);
    EXPECT_EQ(std::u16string(text.View()), c.trimmedText) << Row(c.text);
    EXPECT_EQ(out.GetGrowBy(), static_cast<int>(c.expected.size())) << Row(c.text);
  }
}

TEST(CString2UIntArray, BlankTextLeavesTheListAlone) {
  CString text(u" \t ");
  CUIntArray out = Make({4, 5});
  CUtilityCalc::CString2UIntArray(out, text, u',');
  EXPECT_EQ(Values(out), (std::vector<UINT>{4, 5}));
  EXPECT_TRUE(text.IsEmpty());
}

TEST(StrCmpW, NullsAndCase) {
  EXPECT_EQ(CUtilityCalc::StrCmpW(nullptr, nullptr, 1), 0);
  EXPECT_LT(CUtilityCalc::StrCmpW(nullptr, u"", 1), 0);  // null comes before even empty text
  EXPECT_GT(CUtilityCalc::StrCmpW(u"", nullptr, 0), 0);
  EXPECT_EQ(CUtilityCalc::StrCmpW(u"abc", u"ABC", 0), 0);
  EXPECT_NE(CUtilityCalc::StrCmpW(u"abc", u"ABC", 1), 0);
  EXPECT_LT(CUtilityCalc::StrCmpW(u"abc", u"abd", 1), 0);
  EXPECT_GT(CUtilityCalc::StrCmpW(u"b", u"A", 0), 0);
  EXPECT_EQ(CUtilityCalc::StrCmpW(u"中文", u"中文", 1), 0);
}

TEST(Sort_CUIntArray, AscendingAsUnsigned) {
  CUIntArray items = Make({3, 0xFFFFFFFFu, 1, 2, 1});
  CUtilityCalc::Sort_CUIntArray(items);
  EXPECT_EQ(Values(items), (std::vector<UINT>{1, 1, 2, 3, 0xFFFFFFFFu}));

  CUIntArray empty;
  CUtilityCalc::Sort_CUIntArray(empty);
  EXPECT_EQ(empty.GetSize(), 0);
}

TEST(CUIntArrayAppendSingle, OneValue) {
  CUIntArray to = Make({1, 2});
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, 2), 0);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, 3), 1);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, -1), 1);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, -1), 0);
  EXPECT_EQ(Values(to), (std::vector<UINT>{1, 2, 3, 0xFFFFFFFFu}));
}

TEST(CUIntArrayAppendSingle, AnotherArray) {
  CUIntArray to = Make({1});
  CUIntArray from = Make({1, 2, 2, 3});
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, from), 1);
  EXPECT_EQ(Values(to), (std::vector<UINT>{1, 2, 3}));  // repeats inside from are added once
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, from), 0);
  EXPECT_EQ(CUtilityCalc::CUIntArrayAppendSingle(to, to), 0);
  EXPECT_EQ(Values(to), (std::vector<UINT>{1, 2, 3}));
}

}  // namespace
