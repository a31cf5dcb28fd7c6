// Tests of CStrKit: cutting, searching, quotes, joins, array searches, dates, truth values, file encodings.
#include "foundation/CStrKit.h"
#include <gtest/gtest.h>
#include <cstdio>
#include <string>
#include <vector>
#include "foundation/CGlobalInfo.h"
#include "tests/support/Text.h"
using namespace vkt::test;
using Kit = CStrKit;
std::u16string Items(const CStringArray& a) {  // each item in brackets
  std::u16string text;
  for (const CString& s : a) text.append(u"[").append(s.View()).append(u"]");
  return text;
}
struct LeftRightCase { const char16_t *text, *sep; int bTrim, result; const char16_t* parts; };
constexpr LeftRightCase kLeftRight[] = {
    {u"a:b", u":", 0, 1, u"[a][b]"},
    {u"ab", u":", 0, 0, u"[][]"},
    {u"a:b:c", u":", 0, 1, u"[a][b:c]"},  // the first separator only
    {u" a = 1 ", u"=", 1, 1, u"[a][1]"},
    {u"a<>b", u"<>", 0, 1, u"[a][b]"},
    {nullptr, u":", 0, 0, u"[][]"},
};
struct SplitCase { const char16_t* text; char16_t sep; int bTrim; const char16_t* items; };
constexpr SplitCase kSplit[] = {
    {u"a,b,", u',', 0, u"[a][b][]"},  // a trailing separator: the last item is empty
    {nullptr, u',', 0, u""},
    {u"abc", 0, 0, u""},
    {u"abc", u',', 0, u"[abc]"},
    {u" a ,\tb\t,, c\t", u',', 1, u"[a][\tb\t][][c]"},  // inner items lose blanks only
};
TEST(CStrKit, CuttingTexts) {
  for (const LeftRightCase& c : kLeftRight) {
    CString parts[] = {u"old", u"old"};
    EXPECT_EQ(Kit::GetLeftRight(c.text, c.sep, parts[0], parts[1], c.bTrim), c.result) << Row(c.text);
    EXPECT_EQ(U(u"[" + parts[0] + u"][" + parts[1] + u"]"), c.parts) << Row(c.text);
  }
  CString both(u"x=y"), right;  // the output may be the text being split
  EXPECT_TRUE(Kit::GetLeftRight(both, u"=", both, right, 0) == 1 && both == u"x" && right == u"y");
  for (const SplitCase& c : kSplit) {
    CStringArray out;
    out.Add(u"stale");
    Kit::CString2Array(out, c.text, c.sep, c.bTrim);
    EXPECT_EQ(Items(out), c.items) << Row(c.text);
  }
}
struct FindCase { const char16_t *text, *what; int first, last; };  // FindNoCase, ReverseFindNoCase
constexpr FindCase kFind[] = {
    {u"Hello World", u"world", 6, 6},
    {u"abcABCabc", u"ABC", 0, 6},
    {u"abc", u"x", -1, -1},
    {u"abc", u"", -1, -1},
    {nullptr, u"a", -1, -1},
};
// strstr and strstrs with lengths (-1: up to the NUL) and a case flag (0: case ignored).
struct CountCase { const char16_t *text, *what; int textLen, whatLen, bCase, at, count; };
constexpr CountCase kCounts[] = {
    {u"Name", u"name", 4, 4, 0, 0, 1},
    {u"Name", u"name", 4, 4, 1, -1, 0},
    {u"abcabc", u"ca", 3, 2, 1, -1, 0},  // the lengths limit the search
    {u"a|b|c|", u"|", -1, 1, 1, 1, 3},
    {u"aaaa", u"aa", 4, 2, 1, 0, 2},  // no overlapping matches
    {u"abc", u"", 3, 0, 1, -1, 0},
};
TEST(CStrKit, Searching) {
  for (const FindCase& c : kFind) {
    EXPECT_EQ(Kit::FindNoCase(c.text, c.what), c.first) << Row(c.text) << " / " << Row(c.what);
    EXPECT_EQ(Kit::ReverseFindNoCase(c.text, c.what), c.last) << Row(c.text) << " / " << Row(c.what);
  }
  for (const CountCase& c : kCounts) {
    EXPECT_EQ(Kit::strstr(c.text, c.what, c.textLen, c.whatLen, c.bCase), c.at) << Row(c.text);
    EXPECT_EQ(Kit::strstrs(c.text, c.what, c.textLen, c.whatLen, c.bCase), c.count) << Row(c.text);
  }
  BYTE data[] = {1, 2, 1, 2, 1, 2, 2}, pair[] = {1, 2}, twos[] = {2, 2};  // counted without overlaps
  EXPECT_TRUE(Kit::memmems(data, pair, 7, 2) == 3 && Kit::memmems(data, twos, 7, 2) == 1);
  EXPECT_TRUE(!Kit::memmems(data, pair, 1, 2) && !Kit::memmems(nullptr, pair, 7, 2));
}
struct QuoteCase { const char16_t *text, *quotes; int bNoEscape; std::vector<UINT> stretches; };  // from, to
const QuoteCase kQuotes[] = {
    {u"a'b\"c'd", nullptr, 0, {1, 5}},  // the other quote is text inside
    {u"\\'a'", nullptr, 0, {}},         // an escaped opener leaves an unclosed stretch
    {u"'a''b'", nullptr, 0, {0, 2, 3, 5}},
    {u"'a\\'b'", nullptr, 0, {0, 5}},   // an escaped quote inside
    {u"'a\\'b'", nullptr, 1, {0, 3}},   // the backslash as plain text
    {u"\"x\" 'y'", u"\"", 0, {0, 2}},   // only the quotes asked for
    {u"ab\\", nullptr, 0, {}},          // a backslash at the very end
};
TEST(CStrKit, QuotesAndArrays) {
  for (const QuoteCase& c : kQuotes) {
    CUIntArray starts, ends;
    starts.Add(99);
    const int n = Kit::FindQuotes(c.text, starts, ends, c.quotes, c.bNoEscape);
    std::vector<UINT> got;
    for (int i = 0; i < n; ++i) got.insert(got.end(), {starts.GetAt(i), ends.GetAt(i)});
    EXPECT_TRUE(got == c.stretches && starts.GetSize() == n && ends.GetSize() == n) << Row(c.text);
  }
  CUIntArray starts, ends, none;
  Kit::FindQuotes(u"x 'ab' y 'c'", starts, ends, nullptr, 0);  // stretches 2-5 and 9-11
  std::string found;
  for (UINT at = 0; at < 13; ++at) found += std::to_string(1 + Kit::ArrayFindBetween(starts, ends, at));
  EXPECT_TRUE(found == "0011110002220" && Kit::ArrayFindBetween(starts, none, 3) == -1);  // both ends in
  CStringArray items, empty;
  for (const char16_t* s : {u"a", u"B", u"", u"b"}) items.Add(s);
  EXPECT_EQ(U(Kit::Array2CString(items, WORD{u','})) + U(Kit::Array2CString(empty, u",")), u"a,B,,b");
  EXPECT_EQ(U(Kit::Array2CString(items, u"\r\n")), u"a\r\nB\r\n\r\nb");
  EXPECT_EQ(U(Kit::Array2CString(items, static_cast<const char16_t*>(nullptr))), u"aBb");
  const std::vector<int> at = {  // null reads as empty; the search starts at `start`
      Kit::ArrayCompare(items, u"b", 0), Kit::ArrayCompareNoCase(items, u"b", 0),
      Kit::ArrayCompareNoCase(items, u"b", 2), Kit::ArrayCompareNoCase(items, u"b", 4),
      Kit::ArrayCompare(items, u"a", -3), Kit::ArrayCompare(items, nullptr, 0),
      Kit::ArrayCompare(items, u"c", 0)};
  EXPECT_EQ(at, (std::vector<int>{3, 1, 3, -1, 0, 2, -1}));
  EXPECT_TRUE(Kit::IsDigit(u'0') && Kit::IsDigit(u'9') && !Kit::IsDigit(u'/') && !Kit::IsDigit(0xFF10));
  auto make = [](std::initializer_list<UINT> l) { CUIntArray x; for (UINT v : l) x.Add(v); return x; };
  CUIntArray a = make({3, 1, 2}), b = make({3, 1, 5}), prefix = make({3, 1}), from = make({2, 4, 4, ~0u});
  EXPECT_EQ((std::vector<int>{Kit::CUIntArrayCompare(a, a), Kit::CUIntArrayCompare(a, b),
                              Kit::CUIntArrayCompare(b, a), Kit::CUIntArrayCompare(prefix, a)}),
            (std::vector{0, -1, 1, -1}));  // a prefix comes first
  EXPECT_TRUE(Kit::CUIntArrayAppendSingle(a, from) == 2 && Kit::CUIntArrayAppendSingle(a, a) == 0);
  EXPECT_EQ(std::vector<UINT>(a.begin(), a.end()), (std::vector<UINT>{3, 1, 2, 4, 0xFFFFFFFFu}));
  EXPECT_TRUE(Kit::CUIntArrayFind(a, -1) == 4 && Kit::CUIntArrayFind(a, 7) == -1);
}
// Each text read by ParseDate (the parts in brackets) and XMLString2Time (the time); neither gives anything
// when it refuses the text (a refused date is null, which formats as empty text).
struct DateCase { const char16_t *text, *parts, *time; };
constexpr DateCase kDates[] = {
    {u"2024-01-15", u"[2024][01][15]", u"2024-01-15 00:00:00"},
    {u"  2024-01-15T08:30:15.250 ", u"[2024][01][15][08][30][15][250]", u"2024-01-15 08:30:15"},
    {u"2024\u5e741\u670815\u65e5", u"[2024][1][15]", u""},
    {u" 2024 / 1 - 15T08:30:00", u"[2024][1][15][08][30][00]", u""},  // runs of separators count as one
    {u"20240115", u"[2024][01][15]", u""},
    {u"2024-01", u"", u""},
    {u"2024-Jan-15", u"", u""},
    {u"2024-02-30T00:00:00", u"[2024][02][30][00][00][00]", u""},
    {u"2024-01-15T08:30:00.", u"[2024][01][15][08][30][00]", u""},
    {u"2024-01-15T08", u"[2024][01][15][08]", u""},
    {u"2024-01-15T08:30:00 x", u"", u""},
    {u"2024-01-15T08:30:00+05:", u"", u""},
};
TEST(CStrKit, DatesAndTruth) {
  for (const DateCase& c : kDates) {
    CString text(c.text);
    CStringArray parts;
    parts.Add(u"stale");
    COleDateTime out(2000, 1, 1, 0, 0, 0);
    EXPECT_EQ(Kit::ParseDate(text, parts), *c.parts ? 1 : 0) << Row(c.text);
    EXPECT_EQ(Kit::XMLString2Time(text, &out), *c.time ? 1 : 0) << Row(c.text);
    EXPECT_EQ(Items(parts), c.parts) << Row(c.text);
    EXPECT_EQ(U(out.Format(u"%Y-%m-%d %H:%M:%S")), c.time) << Row(c.text);
  }
  const COleDateTimeSpan toUtc = *CGlobalInfo::GetInstance()->GetLocalDateTimeSpan();
  const COleDateTime day(2024, 6, 1, 0, 0, 0), noon = day + COleDateTimeSpan(0, 12, 0, 0) - toUtc;  // local
  for (const char16_t* text : {u"2024-06-01T12:00:00Z", u"2024-06-01T14:00:00+02:00",
                               u"2024-06-01T07:30:00-0430", u"2024-06-01T20:00:00+08", u"2024-06-01Z"}) {
    CString t(text);
    COleDateTime out;  // a plain day stays the day written
    EXPECT_TRUE(Kit::XMLString2Time(t, &out) && out == (text[10] == u'T' ? noon : day)) << Row(text);
  }
  CString date(u"2024-01-15");
  EXPECT_TRUE(Kit::XMLString2Time(date, nullptr) == 1 && Kit::Str2Bool(nullptr) == 0);
  for (const char16_t* text : {u"1", u"TRUE", u"Yes", u"y", u"On", u"t", u" true ", u"2", u"-1", u"+.5"})
    EXPECT_EQ(Kit::Str2Bool(text), 1) << Row(text);
  for (const char16_t* text : {u"0", u"0.0", u"-0", u"", u"false", u"no", u"yes!", u"1a", u".", u"1.2.3"})
    EXPECT_EQ(Kit::Str2Bool(text), 0) << Row(text);
}
TEST(CStrKit, File2CStringReadsEachEncoding) {
  const struct { std::string bytes; std::u16string text; } kFiles[] = {
      {"\xEF\xBB\xBF\xE4\xB8\xAD", u"\u4e2d"},                 // UTF-8 with its mark
      {"\xE4\xB8\xAD", u"\u4e2d"},                             // and without
      {std::string("\xFF\xFE\x2D\x4E" "a\0", 6), u"\u4e2da"},  // UTF-16LE
      {std::string("\xFE\xFF\x4E\x2D", 4), u"\u4e2d"},         // UTF-16BE
  };
  const std::string path = ::testing::TempDir() + "cstrkit_file2cstring.txt";
  CString wide(path.c_str()), out;
  for (const auto& c : kFiles) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    ASSERT_TRUE(f && std::fwrite(c.bytes.data(), 1, c.bytes.size(), f) == c.bytes.size() && !std::fclose(f));
    out = u"stale";
    EXPECT_TRUE(Kit::File2CString(out, wide) == 1 && U(out) == c.text) << testing::PrintToString(c.bytes);
  }
  std::remove(path.c_str());
  out = u"stale";
  EXPECT_TRUE(!Kit::File2CString(out, wide) && out.IsEmpty() && !Kit::File2CString(out, nullptr));
}
