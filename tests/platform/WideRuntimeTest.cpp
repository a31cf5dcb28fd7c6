// Tests of the runtime text functions on 16-bit text: integer reading with
// its stops and limits, case-folded comparison, collation under the "C"
// locale, and the UTF-16 / UTF-32 conversion with broken surrogates.
#include "platform/WideRuntime.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdint>

namespace {

struct IntCase {
  const char16_t* text;
  int expected;
};

constexpr IntCase kWtoi[] = {
    {u"", 0},
    {u"0", 0},
    {u"42", 42},
    {u"+42", 42},
    {u"-42", -42},
    {u"  \t\n17", 17},          // leading white space is skipped
    {u"12abc", 12},             // stops at the first other character
    {u"1 2", 1},                // ...also at a blank
    {u"1.9", 1},                // truncates
    {u"abc", 0},
    {u"-", 0},
    {u"+-1", 0},                // one sign only
    {u"- 1", 0},                // no blank after the sign
    {u"007", 7},
    {u"\x3000" u"5", 0},        // the "C" locale knows no ideographic space
    {u"2147483647", INT_MAX},
    {u"2147483648", INT_MAX},   // saturates
    {u"-2147483648", INT_MIN},
    {u"-2147483649", INT_MIN},
    {u"99999999999999999999999", INT_MAX},
    {u"\xFF11", 0},             // a full-width digit is no digit
};

// The test process runs in the "C" locale, which knows only ASCII blanks.
TEST(WideRuntime, Wtoi) {
  for (const IntCase& c : kWtoi) {
    EXPECT_EQ(vkt::_wtoi(c.text), c.expected) << testing::PrintToString(c.text);
  }
  EXPECT_EQ(vkt::_wtoi(nullptr), 0);
}

struct Int64Case {
  const char16_t* text;
  std::int64_t expected;
};

constexpr Int64Case kWtoi64[] = {
    {u"", 0},
    {u"2147483648", 2147483648LL},
    {u"-2147483649", -2147483649LL},
    {u"9223372036854775807", INT64_MAX},
    {u"9223372036854775808", INT64_MAX},
    {u"-9223372036854775808", INT64_MIN},
    {u"-9223372036854775809", INT64_MIN},
    {u" +123x", 123},
};

TEST(WideRuntime, Wtoi64) {
  for (const Int64Case& c : kWtoi64) {
    EXPECT_EQ(vkt::_wtoi64(c.text), c.expected) << testing::PrintToString(c.text);
  }
  EXPECT_EQ(vkt::_wtoi64(nullptr), 0);
}

struct CompareCase {
  const char16_t* a;
  const char16_t* b;
  int expected;  // sign
};

constexpr CompareCase kIcmp[] = {
    {u"", u"", 0},
    {u"abc", u"ABC", 0},
    {u"Sum", u"sUM", 0},
    {u"abc", u"abd", -1},
    {u"abd", u"ABC", 1},
    {u"ab", u"abc", -1},        // a prefix sorts first
    {u"abc", u"ab", 1},
    {u"A", u"_", 1},            // folded to lower case: 'a' (97) after '_' (95)
    {u"\xD800", u"\xD800", 0},  // lone surrogates compare by value
    {u"\xD800", u"\xDC00", -1},
};

TEST(WideRuntime, Wcsicmp) {
  for (const CompareCase& c : kIcmp) {
    const int got = vkt::_wcsicmp(c.a, c.b);
    EXPECT_EQ((got > 0) - (got < 0), c.expected)
        << testing::PrintToString(c.a) << " vs " << testing::PrintToString(c.b);
  }
  EXPECT_EQ(vkt::_wcsicmp(nullptr, u""), 0);
  EXPECT_LT(vkt::_wcsicmp(nullptr, u"a"), 0);
}

TEST(WideRuntime, Wcsnicmp) {
  EXPECT_EQ(vkt::_wcsnicmp(u"ABCx", u"abcy", 3), 0);
  EXPECT_LT(vkt::_wcsnicmp(u"ABCx", u"abcy", 4), 0);
  EXPECT_EQ(vkt::_wcsnicmp(u"ab", u"AB", 10), 0);  // stops at the terminator
  EXPECT_GT(vkt::_wcsnicmp(u"abc", u"AB", 10), 0);
  EXPECT_EQ(vkt::_wcsnicmp(u"x", u"y", 0), 0);
}

TEST(WideRuntime, SingleUnits) {
  EXPECT_EQ(vkt::towupper(u'a'), u'A');
  EXPECT_EQ(vkt::towupper(u'Z'), u'Z');
  EXPECT_EQ(vkt::towlower(u'Q'), u'q');
  EXPECT_EQ(vkt::towupper(u'1'), u'1');
  EXPECT_EQ(vkt::towupper(u'\xD83D'), u'\xD83D');  // surrogates pass through
  EXPECT_EQ(vkt::towlower(u'\xDE00'), u'\xDE00');
  EXPECT_EQ(vkt::towupper(u'\x4E2D'), u'\x4E2D');
  for (char16_t c = u'0'; c <= u'9'; ++c) EXPECT_TRUE(vkt::iswdigit(c));
  EXPECT_FALSE(vkt::iswdigit(u'/'));
  EXPECT_FALSE(vkt::iswdigit(u':'));
  EXPECT_FALSE(vkt::iswdigit(u'\x0661'));  // other scripts' digits are not ours
  for (char16_t c : {u' ', u'\t', u'\n', u'\v', u'\f', u'\r'}) EXPECT_TRUE(vkt::iswspace(c));
  EXPECT_FALSE(vkt::iswspace(u'a'));
  EXPECT_FALSE(vkt::iswspace(u'\0'));
  EXPECT_FALSE(vkt::iswspace(u'\xD800'));
}

TEST(WideRuntime, Wcslen) {
  EXPECT_EQ(vkt::wcslen(nullptr), 0u);
  EXPECT_EQ(vkt::wcslen(u""), 0u);
  EXPECT_EQ(vkt::wcslen(u"a\xD83D\xDE00"), 3u);  // units, not characters
}

// Collation by the "C" locale is code point order, after widening; the
// process locale is put back afterwards.
TEST(WideRuntime, CollationUnderTheCLocale) {
  const char* old = std::setlocale(LC_ALL, nullptr);
  const std::string saved = old ? old : "C";
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(vkt::wcscoll(u"abc", u"abc"), 0);
  EXPECT_LT(vkt::wcscoll(u"abc", u"abd"), 0);
  EXPECT_LT(vkt::wcscoll(u"B", u"a"), 0);        // capitals first by code point
  EXPECT_GT(vkt::wcscoll(u"abc", u"ab"), 0);
  EXPECT_LT(vkt::wcscoll(u"", u"a"), 0);
  EXPECT_EQ(vkt::wcscoll(nullptr, u""), 0);
  // U+1F600 lies above U+FFFF: the pair compares as one code point above U+FFEE,
  // although its first unit (D83D) lies below it.
  EXPECT_GT(vkt::wcscoll(u"\xD83D\xDE00", u"\xFFEE"), 0);
  // A lone surrogate reads as U+FFFD and must not crash.
  EXPECT_EQ(vkt::wcscoll(u"\xD800", u"\xDC00"), 0);
  EXPECT_EQ(vkt::_wcsicoll(u"ABC", u"abc"), 0);
  EXPECT_LT(vkt::_wcsicoll(u"B", u"c"), 0);
  EXPECT_GT(vkt::_wcsicoll(u"b", u"A"), 0);     // folded: 'b' after 'a'
  std::setlocale(LC_ALL, saved.c_str());
}

TEST(WideRuntime, WideConversion) {
  const char16_t text[] = u"a\xD83D\xDE00z\xD800!\xDC00";
  const std::wstring wide = vkt::Utf16ToWide(text, vkt::wcslen(text));
  const std::wstring expected = {L'a', static_cast<wchar_t>(0x1F600), L'z',
                                 static_cast<wchar_t>(0xFFFD), L'!',
                                 static_cast<wchar_t>(0xFFFD)};
  EXPECT_EQ(wide, expected);
  EXPECT_EQ(vkt::Utf16ToWide(u"\xD800", 1), std::wstring(1, static_cast<wchar_t>(0xFFFD)));

  const std::u16string back = vkt::WideToUtf16(wide.data(), wide.size());
  EXPECT_EQ(back, u"a\xD83D\xDE00z\xFFFD!\xFFFD");
  const wchar_t bad[] = {static_cast<wchar_t>(0x110000), static_cast<wchar_t>(0xD800), L'x'};
  EXPECT_EQ(vkt::WideToUtf16(bad, 3), u"\xFFFD\xFFFDx");
  EXPECT_EQ(vkt::Utf16ToWide(nullptr, 5), L"");
}

}  // namespace
