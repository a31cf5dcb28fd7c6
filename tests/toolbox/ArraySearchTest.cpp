// tests/toolbox/ArraySearchTest.cpp: the number-list reader, the binary search of a sorted CUIntArray, and
// the finds, repeat-free appends and conversions over handle, 64-bit, number, text and byte arrays.
#include <gtest/gtest.h>

#include "VKTCalc.h"

namespace {

using C = CUtilityCalc;
std::string Num(void* p) { return std::to_string(reinterpret_cast<std::size_t>(p)); }
template <class T> std::string Num(T value) { return std::to_string(value); }
template <class A> std::string Show(const A& a) {  // [1,2]; past 20 elements [first..last] and the size
  std::string out = "[";
  const int n = a.GetSize();
  for (int i = 0; i < n; i += n > 20 ? n - 1 : 1) out += (i ? n > 20 ? ".." : "," : "") + Num(a[i]);
  return out + (n > 20 ? "] " + Num(n) : "]");
}
std::string Join(std::initializer_list<std::string> parts) {  // made from left to right, as a braced list is
  std::string out;
  for (const std::string& part : parts) out += (out.empty() ? "" : " ") + part;
  return out;
}
template <class A> A Make(const char16_t* digits) {  // the C-style cast also makes handles
  A a;
  for (; *digits; ++digits) a.Add((std::remove_cvref_t<decltype(a[0])>)std::size_t(*digits - u'0'));
  return a;
}

constexpr struct { const char16_t* text; const char* expected; } kLists[] = {  // into [9]: the size, out
    {u"1,3,5-8", "7 [9,5,6,7,8,1,3]"}, {u"3,3", "2 [9,3]"}, {u"5-3", "1 [9]"}, {nullptr, "1 [9]"},
    {u"-5", "7 [9,0,1,2,3,4,5]"}, {u"1-", "1 [9]"}, {u"a,b", "2 [9,0]"},  // empty ends and no number read 0
    {u"3-5,2-3,5-6", "6 [9,2,3,4,5,6]"},  // 5-6 joins 3-5, then the walk starts again and joins 2-3
    {u"3-4,1-10", "13 [9,1,2,3,4,5,6,7,8,9,10,3,4]"}, {u"8-9,9", "3 [9,8,9]"},  // 3-4 apart; 8-9 repeats 9
    {u"0-999999", "1000001 [9..999999] 1000001"}, {u"0-1000000", "1 [9]"},  // past a million values: dropped
    {u"2147483646-2147483647", "3 [9,2147483646,2147483647]"},
};

TEST(Str2MultiNumberArray, Table) {
  for (const auto& c : kLists) {
    CUIntArray out = Make<CUIntArray>(u"9");
    EXPECT_EQ(Join({Num(C::Str2MultiNumberArray(c.text, out)), Show(out)}), c.expected);
  }
}

// Handles: find, find from -5 to 2, 1 to 3, 1 to 99 and 4 to 9, find one of arg, same single, append the
// first of arg, append all, the array; 64-bit: find, append all, the array and its growth step, append one.
constexpr struct { const char16_t *items, *arg; const char* expected; } kFamily[] = {
    {u"1231", u"1", "0 0 -1 3 -1 0 0 -1 0 [1,2,3,1] 0 [1,2,3,1] 0 0"},  // -5 counts as 0; stop 3 misses 3
    {u"1234", u"43", "3 -1 -1 3 -1 2 2 -1 0 [1,2,3,4] 3 [1,2,3,4] 0 3"},
    {u"12", u"3443", "-1 -1 -1 -1 -1 -1 -1 2 1 [1,2,3,4] -1 [1,2,3,4] 0 2"},  // repeats of arg go in once
    {u"", u"12", "-1 -1 -1 -1 -1 -1 -1 0 1 [1,2] -1 [1,2] 80 0"},  // an empty array's step: at least 80
};

TEST(FindAndAppend, Table) {
  for (const auto& c : kFamily) {
    auto h = Make<CArray<void*, void*>>(c.items), hs = Make<CArray<void*, void*>>(c.arg);
    auto q = Make<CArray<LONGLONG, LONGLONG>>(c.items), qs = Make<CArray<LONGLONG, LONGLONG>>(c.arg);
    const auto in = [&h, v = hs[0]](int from, int to) { return Num(C::CHandleArrayFind(h, v, from, to)); };
    EXPECT_EQ(Join({Num(C::CHandleArrayFind(h, hs[0])), in(-5, 2), in(1, 3), in(1, 99), in(4, 9),
                    Num(C::CHandleArrayFindOneOf(h, hs)), Num(C::CHandleArrayFindSameSingle(h, hs)),
                    Num(C::CHandleArrayAppendSingle(h, hs[0])), Num(C::CHandleArrayAppendSingle(h, hs)),
                    Show(h), Num(C::CInt64ArrayFind(q, qs[0])), (C::CInt64ArrayAppendSingle(q, qs), Show(q)),
                    Num(q.GetGrowBy()), Num(C::CInt64ArrayAppendSingle(q, qs[0]))}), c.expected);
  }
}

// The sorted search; a walk: removal, texts and back (empties skipped, kept), Same, SafeSetAt, map, builds.
TEST(SortedAndConverted, SearchBuildTextsMapBytes) {
  CUIntArray items, few, u, back, keys, none;
  for (UINT i = 0; i < 999; ++i) items.Add(3 * i + 1);
  items.Add(0xFFFFFFFFu);  // ordered as unsigned
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(C::BSearch_CUIntArray(items, items[i], 0), i);
  for (UINT v : {0u, 2u, 1502u, 0x80000000u}) EXPECT_EQ(C::BSearch_CUIntArray(items, v, 1), -1) << v;
  for (int n = 0; n < 5; few.Add(2 * n++ + 1))  // [] to [1,3,5,7]: each found, then 2n + 1 missed
    for (int i = 0; i <= n; ++i) EXPECT_EQ(C::BSearch_CUIntArray(few, 2 * i + 1, 0), i < n ? i : -1) << n;
  CStringArray texts;
  CMap<DWORD, DWORD, DWORD, DWORD> map;
  for (DWORD key : {9u, 0xFFFFFFFFu, 2u}) map.SetAt(key, 0);
  CByteArray bytes = Make<CByteArray>(u"12");
  const auto set = [&bytes](int index) { return Num(C::SafeSetAt(&bytes, index, 7)); };
  C::UIntArrayBuild(u, 2, 2147483647);  // past INT_MAX as unsigned; read back, the texts saturate
  C::UIntArray2CStringArray(texts, u);
  texts.Add(CString());  // kept only with bKeepEmpty
  EXPECT_EQ(Join({Num(C::BSearch_CUIntArray(items, 1501, 1)), Show(items), Num(items[500]), texts[1].ToUtf8(),
                  (C::CStringArray2UIntArray(back, texts, 0), Show(back)), Num(back.GetGrowBy()),
                  Num(C::CUIntArraySame(u, back)), (C::CStringArray2UIntArray(back, texts, 1), Show(back)),
                  Num(C::CUIntArraySame(none, back)), Num(C::CUIntArraySame(none, none)),
                  (C::UIntArrayBuild(back, 2, 2147483647), Num(C::CUIntArraySame(u, back))),
                  set(1), set(2), set(-1), Num(C::SafeSetAt(nullptr, 0, 7)), Show(bytes),
                  (C::CMapUInt2Array(map, keys, 1), Show(keys)), Num(keys.GetGrowBy()),
                  (C::UIntArrayBuild(u, -1, 5), Show(u)), (C::UIntArrayBuild(u, 0, 5), Show(u))}),
            "500 [1..4294967295] 999 1504 2147483648 [2147483647,2147483647] 3 0 [2147483647,2147483647,0] "
            "0 1 1 1 0 0 0 [1,7] [2,9,4294967295] 3 [2147483647,2147483648] []");
}

}  // namespace
