// tests/foundation/CStrKitTest.cpp: the static text and array operations,
// table by table: splitting, searching, quotes, joins, date texts and truth
// values.
#include "foundation/CStrKit.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "foundation/CGlobalInfo.h"

namespace {

std::vector<std::u16string> Items(const CStringArray& a) {
  std::vector<std::u16string> out;
  for (int i = 0; i < a.GetSize(); ++i) out.emplace_back(a.GetAt(i).View());
  return out;
}

CStringArray Array(std::initializer_list<const char16_t*> items) {
  CStringArray a;
  for (const char16_t* s : items) a.Add(CString(s));
  return a;
}

std::string Show(const char16_t* s) { return s == nullptr ? "null" : CString(s).ToUtf8(); }

struct LeftRightCase {
  const char16_t* text;
  const char16_t* sep;
  int bTrim;
  int result;
  const char16_t* left;
  const char16_t* right;
};

constexpr LeftRightCase kLeftRight[] = {
    {u"a:b", u":", 0, 1, u"a", u"b"},
    {u"ab", u":", 0, 0, u"", u""},
    {u"a:b:c", u":", 0, 1, u"a", u"b:c"},   // the first separator only
    {u":b", u":", 0, 1, u"", u"b"},
    {u"a:", u":", 0, 1, u"a", u""},
    {u" a = 1 ", u"=", 1, 1, u"a", u"1"},
    {u" a = 1 ", u"=", 0, 1, u" a ", u" 1 "},
    {u"a<>b", u"<>", 0, 1, u"a", u"b"},
    {u"ab", u"", 0, 0, u"", u""},
    {nullptr, u":", 0, 0, u"", u""},
};

TEST(CStrKit, GetLeftRightTable) {
  for (const LeftRightCase& c : kLeftRight) {
    CString left(u"old"), right(u"old");
    EXPECT_EQ(CStrKit::GetLeftRight(c.text, c.sep, left, right, c.bTrim), c.result) << Show(c.text);
    EXPECT_EQ(left, c.left) << Show(c.text);
    EXPECT_EQ(right, c.right) << Show(c.text);
  }
  // The output may be the text being split.
  CString both(u"x=y"), right;
  EXPECT_EQ(CStrKit::GetLeftRight(both, u"=", both, right, 0), 1);
  EXPECT_EQ(both, u"x");
  EXPECT_EQ(right, u"y");
}

struct SplitCase {
  const char16_t* text;
  char16_t sep;
  int bTrim;
  std::vector<std::u16string> items;
};

const SplitCase kSplit[] = {
    {u"a,b", u',', 0, {u"a", u"b"}},
    {u"a, b", u',', 1, {u"a", u"b"}},
    {u"a,b,", u',', 0, {u"a", u"b", u""}},          // trailing separator: last item empty
    {u",", u',', 0, {u"", u""}},
    {u"", u',', 0, {}},
    {nullptr, u',', 0, {}},
    {u"abc", u',', 0, {u"abc"}},
    {u"abc", 0, 0, {}},
    {u" a ,\tb\t, c\t", u',', 1, {u"a", u"\tb\t", u"c"}},  // inner items lose blanks only
    {u"a,,b", u',', 1, {u"a", u"", u"b"}},
    {u"x&y=1&", u'&', 0, {u"x", u"y=1", u""}},
};

TEST(CStrKit, CString2ArrayTable) {
  for (const SplitCase& c : kSplit) {
    CStringArray out = Array({u"stale"});
    CStrKit::CString2Array(out, c.text, c.sep, c.bTrim);
    EXPECT_EQ(Items(out), c.items) << Show(c.text);
  }
}

struct FindCase {
  const char16_t* text;
  const char16_t* what;
  int first;
  int last;
};

constexpr FindCase kFind[] = {
    {u"Hello World", u"world", 6, 6},
    {u"abcABCabc", u"ABC", 0, 6},
    {u"aaaa", u"aa", 0, 2},
    {u"abc", u"abcd", -1, -1},
    {u"abc", u"", -1, -1},
    {u"", u"a", -1, -1},
    {nullptr, u"a", -1, -1},
    {u"abc", nullptr, -1, -1},
    {u"line\r\nline\r\n", u"\r\n", 4, 10},
};

TEST(CStrKit, FindNoCaseTable) {
  for (const FindCase& c : kFind) {
    EXPECT_EQ(CStrKit::FindNoCase(c.text, c.what), c.first) << Show(c.text) << " / " << Show(c.what);
    EXPECT_EQ(CStrKit::ReverseFindNoCase(c.text, c.what), c.last) << Show(c.text) << " / " << Show(c.what);
  }
}

TEST(CStrKit, StrstrAndCounts) {
  EXPECT_EQ(CStrKit::strstr(u"Name", u"name", 4, 4, 0), 0);  // 0: case ignored
  EXPECT_EQ(CStrKit::strstr(u"Name", u"name", 4, 4, 1), -1);
  EXPECT_EQ(CStrKit::strstr(u"abcabc", u"ca", -1, -1, 1), 2);
  EXPECT_EQ(CStrKit::strstr(u"abcabc", u"ca", 3, 2, 1), -1);  // lengths limit the search
  EXPECT_EQ(CStrKit::strstrs(u"a|b|c|", u"|", -1, 1, 1), 3);
  EXPECT_EQ(CStrKit::strstrs(u"aaaa", u"aa", 4, 2, 1), 2);   // non-overlapping
  EXPECT_EQ(CStrKit::strstrs(u"AaA", u"a", 3, 1, 1), 1);
  EXPECT_EQ(CStrKit::strstrs(u"AaA", u"a", 3, 1, 0), 3);
  EXPECT_EQ(CStrKit::strstrs(u"abc", u"", 3, 0, 1), 0);

  BYTE data[] = {1, 2, 1, 2, 1, 2, 2};
  BYTE what[] = {1, 2};
  BYTE twos[] = {2, 2};
  EXPECT_EQ(CStrKit::memmems(data, what, 7, 2), 3);
  EXPECT_EQ(CStrKit::memmems(data, twos, 7, 2), 1);
  EXPECT_EQ(CStrKit::memmems(data, what, 1, 2), 0);
  EXPECT_EQ(CStrKit::memmems(nullptr, what, 7, 2), 0);
  EXPECT_EQ(CStrKit::memmems(data, what, 7, 0), 0);
}

struct QuoteCase {
  const char16_t* text;
  const char16_t* quotes;
  int bNoEscape;
  std::vector<UINT> starts;
  std::vector<UINT> ends;
};

const QuoteCase kQuotes[] = {
    {u"a'b\"c'd", nullptr, 0, {1}, {5}},           // the other quote is text inside
    {u"\\'a'", nullptr, 0, {}, {}},                // escaped opener, unclosed stretch
    {u"'a''b'", nullptr, 0, {0, 3}, {2, 5}},
    {u"'a\\'b'", nullptr, 0, {0}, {5}},            // escaped quote inside
    {u"'a\\'b'", nullptr, 1, {0}, {3}},            // backslash as plain text
    {u"\"x\" 'y'", u"\"", 0, {0}, {2}},            // only the quotes asked for
    {u"'open", nullptr, 0, {}, {}},
    {u"ab\\", nullptr, 0, {}, {}},                 // a backslash at the very end
};

TEST(CStrKit, FindQuotesTable) {
  for (const QuoteCase& c : kQuotes) {
    CUIntArray starts, ends;
    starts.Add(99);
    int n = CStrKit::FindQuotes(c.text, starts, ends, c.quotes, c.bNoEscape);
    std::vector<UINT> s(starts.begin(), starts.end()), e(ends.begin(), ends.end());
    EXPECT_EQ(n, static_cast<int>(c.starts.size())) << Show(c.text);
    EXPECT_EQ(s, c.starts) << Show(c.text);
    EXPECT_EQ(e, c.ends) << Show(c.text);
  }
}

TEST(CStrKit, ArrayFindBetweenIsInclusive) {
  CUIntArray starts, ends;
  CStrKit::FindQuotes(u"x 'ab' y 'c'", starts, ends, nullptr, 0);  // stretches 2-5 and 9-11
  const int expected[] = {-1, -1, 0, 0, 0, 0, -1, -1, -1, 1, 1, 1, -1};
  for (UINT pos = 0; pos < 13; ++pos)
    EXPECT_EQ(CStrKit::ArrayFindBetween(starts, ends, pos), expected[pos]) << "pos " << pos;
  CUIntArray shortEnds;  // a missing end never matches
  EXPECT_EQ(CStrKit::ArrayFindBetween(starts, shortEnds, 3), -1);
}

TEST(CStrKit, JoinsAndArraySearches) {
  CStringArray items = Array({u"a", u"B", u"", u"b"});
  EXPECT_EQ(CStrKit::Array2CString(items, static_cast<WORD>(u',')), u"a,B,,b");
  EXPECT_EQ(CStrKit::Array2CString(items, u"\r\n"), u"a\r\nB\r\n\r\nb");
  EXPECT_EQ(CStrKit::Array2CString(items, static_cast<const char16_t*>(nullptr)), u"aBb");
  CStringArray none;
  EXPECT_EQ(CStrKit::Array2CString(none, u", "), u"");

  EXPECT_EQ(CStrKit::ArrayCompare(items, u"b", 0), 3);
  EXPECT_EQ(CStrKit::ArrayCompareNoCase(items, u"b", 0), 1);
  EXPECT_EQ(CStrKit::ArrayCompareNoCase(items, u"b", 2), 3);  // from start on
  EXPECT_EQ(CStrKit::ArrayCompareNoCase(items, u"b", 4), -1);
  EXPECT_EQ(CStrKit::ArrayCompare(items, u"a", -3), 0);
  EXPECT_EQ(CStrKit::ArrayCompare(items, nullptr, 0), 2);     // null reads as empty
  EXPECT_EQ(CStrKit::ArrayCompare(items, u"c", 0), -1);

  EXPECT_EQ(CStrKit::IsDigit(u'0'), 1);
  EXPECT_EQ(CStrKit::IsDigit(u'9'), 1);
  EXPECT_EQ(CStrKit::IsDigit(u'a'), 0);
  EXPECT_EQ(CStrKit::IsDigit(0xFF10), 0);  // full-width digits are not digits here
}

TEST(CStrKit, UIntArrayHelpers) {
  CUIntArray a, b;
  for (UINT v : {3u, 1u, 2u}) a.Add(v);
  for (UINT v : {3u, 1u, 2u}) b.Add(v);
  EXPECT_EQ(CStrKit::CUIntArrayCompare(a, b), 0);
  b.SetAt(2, 5);
  EXPECT_EQ(CStrKit::CUIntArrayCompare(a, b), -1);
  EXPECT_EQ(CStrKit::CUIntArrayCompare(b, a), 1);
  b.SetSize(2);
  EXPECT_EQ(CStrKit::CUIntArrayCompare(b, a), -1);  // a prefix comes first

  EXPECT_EQ(CStrKit::CUIntArrayFind(a, 2), 2);
  EXPECT_EQ(CStrKit::CUIntArrayFind(a, 7), -1);
  EXPECT_EQ(CStrKit::CUIntArrayFind(a, -1), -1);

  CUIntArray from;
  for (UINT v : {2u, 4u, 4u, 0xFFFFFFFFu}) from.Add(v);
  EXPECT_EQ(CStrKit::CUIntArrayAppendSingle(a, from), 2);
  std::vector<UINT> got(a.begin(), a.end());
  EXPECT_EQ(got, (std::vector<UINT>{3, 1, 2, 4, 0xFFFFFFFFu}));
  EXPECT_EQ(CStrKit::CUIntArrayFind(a, -1), 4);
  EXPECT_EQ(CStrKit::CUIntArrayAppendSingle(a, a), 0);
}

struct DateCase {
  const char16_t* text;
  int result;
  std::vector<std::u16string> parts;
};

const DateCase kParseDate[] = {
    {u"2024-01-15", 1, {u"2024", u"01", u"15"}},
    {u"2024/1/5", 1, {u"2024", u"1", u"5"}},
    {u"24.1.5", 1, {u"24", u"1", u"5"}},
    {u"2024\u5e741\u670815\u65e5", 1, {u"2024", u"1", u"15"}},
    {u"2024-01-15T08:30:00", 1, {u"2024", u"01", u"15", u"08", u"30", u"00"}},
    {u" 2024 - 01 - 15 ", 1, {u"2024", u"01", u"15"}},
    {u"20240115", 1, {u"2024", u"01", u"15"}},
    {u"2024-01", 0, {}},
    {u"2024-Jan-15", 0, {}},
    {u"", 0, {}},
    {u"2024-01-15Z", 0, {}},
};

TEST(CStrKit, ParseDateTable) {
  for (const DateCase& c : kParseDate) {
    CString text(c.text);
    CStringArray parts = Array({u"stale"});
    EXPECT_EQ(CStrKit::ParseDate(text, parts), c.result) << Show(c.text);
    EXPECT_EQ(Items(parts), c.parts) << Show(c.text);
  }
}

struct BoolCase {
  const char16_t* text;
  int expected;
};

constexpr BoolCase kBool[] = {
    {u"1", 1},     {u"true", 1},  {u"TRUE", 1}, {u"Yes", 1}, {u"y", 1},    {u"On", 1},
    {u"t", 1},     {u" true ", 1}, {u"2", 1},   {u"-1", 1},  {u"0.5", 1},  {u"+.5", 1},
    {u"0", 0},     {u"0.0", 0},   {u"-0", 0},   {u"", 0},    {nullptr, 0}, {u"false", 0},
    {u"no", 0},    {u"off", 0},   {u"yes!", 0}, {u"1a", 0},  {u".", 0},    {u"1.2.3", 0},
};

TEST(CStrKit, Str2BoolTable) {
  for (const BoolCase& c : kBool) EXPECT_EQ(CStrKit::Str2Bool(c.text), c.expected) << Show(c.text);
}

struct XmlCase {
  const char16_t* text;
  int result;
  int fields[6];  // year, month, day, hour, minute, second as read
};

constexpr XmlCase kXml[] = {
    {u"2024-01-15T08:30:00", 1, {2024, 1, 15, 8, 30, 0}},
    {u"  2024-01-15T08:30:15.250 ", 1, {2024, 1, 15, 8, 30, 15}},
    {u"2024-01-15T08:30", 1, {2024, 1, 15, 8, 30, 0}},
    {u"2024-01-15", 1, {2024, 1, 15, 0, 0, 0}},
    {u"2024-02-30T00:00:00", 0, {}},
    {u"2024-01-15T24:00:00", 0, {}},
    {u"2024-01-15T08:30:00.", 0, {}},
    {u"2024-01-15T08", 0, {}},
    {u"24-01-15T08:30:00", 0, {}},
    {u"2024-01-15T08:30:00 x", 0, {}},
    {u"2024-01-15T08:30:00+05:", 0, {}},
    {u"", 0, {}},
};

TEST(CStrKit, XMLString2TimeTable) {
  for (const XmlCase& c : kXml) {
    CString text(c.text);
    COleDateTime out(2000, 1, 1, 0, 0, 0);
    EXPECT_EQ(CStrKit::XMLString2Time(text, &out), c.result) << Show(c.text);
    if (c.result == 0) {
      EXPECT_EQ(out.GetStatus(), COleDateTime::null) << Show(c.text);
      continue;
    }
    ASSERT_EQ(out.GetStatus(), COleDateTime::valid) << Show(c.text);
    int got[6] = {out.GetYear(), out.GetMonth(), out.GetDay(), out.GetHour(), out.GetMinute(), out.GetSecond()};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(got[i], c.fields[i]) << Show(c.text) << " field " << i;
  }
  CString ok(u"2024-01-15");
  EXPECT_EQ(CStrKit::XMLString2Time(ok, nullptr), 1);
}

TEST(CStrKit, XMLString2TimeMovesZonesIntoLocalTime) {
  COleDateTimeSpan toUtc = *CGlobalInfo::GetInstance()->GetLocalDateTimeSpan();
  COleDateTime noon(2024, 6, 1, 12, 0, 0);
  COleDateTime expected = noon - toUtc;  // 12:00 UTC as local time

  const char16_t* sameMoment[] = {u"2024-06-01T12:00:00Z", u"2024-06-01T14:00:00+02:00",
                                  u"2024-06-01T07:30:00-0430", u"2024-06-01T20:00:00+08"};
  for (const char16_t* text : sameMoment) {
    CString t(text);
    COleDateTime out;
    ASSERT_EQ(CStrKit::XMLString2Time(t, &out), 1) << Show(text);
    EXPECT_EQ(out, expected) << Show(text);
  }
  CString dateOnly(u"2024-06-01Z");  // a day stays the day written
  COleDateTime day;
  ASSERT_EQ(CStrKit::XMLString2Time(dateOnly, &day), 1);
  EXPECT_EQ(day, COleDateTime(2024, 6, 1, 0, 0, 0));
}

TEST(CStrKit, File2CStringEncodings) {
  struct FileCase {
    std::string bytes;
    std::u16string text;
  };
  const FileCase cases[] = {
      {"plain\r\nline", u"plain\r\nline"},
      {"\xEF\xBB\xBF\xE4\xB8\xAD", u"\u4e2d"},          // UTF-8 with its mark
      {"\xE4\xB8\xAD", u"\u4e2d"},                      // UTF-8 without
      {std::string("\xFF\xFE\x2D\x4E" "a\0", 6), u"\u4e2da"},  // UTF-16LE
      {std::string("\xFE\xFF\x4E\x2D", 4), u"\u4e2d"},          // UTF-16BE
      {"", u""},
  };
  std::string path = ::testing::TempDir() + "cstrkit_file2cstring.txt";
  CString wpath(path.c_str());
  for (const FileCase& c : cases) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    std::fwrite(c.bytes.data(), 1, c.bytes.size(), f);
    std::fclose(f);
    CString out(u"stale");
    EXPECT_EQ(CStrKit::File2CString(out, wpath), 1) << testing::PrintToString(c.bytes);
    EXPECT_EQ(out.View(), c.text) << testing::PrintToString(c.bytes);
  }
  std::remove(path.c_str());
  CString out(u"stale");
  EXPECT_EQ(CStrKit::File2CString(out, wpath), 0);
  EXPECT_EQ(out, u"");
  EXPECT_EQ(CStrKit::File2CString(out, nullptr), 0);
}

}  // namespace
