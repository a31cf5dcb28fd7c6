// Tests of the wide runtime in the "C" locale: integers and their limits, folding, collation, UTF-32 text.
#include "platform/WideRuntime.h"
#include <gtest/gtest.h>
#include <climits>
#include <clocale>
#include <cstdint>
#include "tests/support/Text.h"
using vkt::test::Row;
struct IntCase { const char16_t* text; int expected; std::int64_t expected64; };
constexpr IntCase kInts[] = {
    {nullptr, 0, 0},
    {u"  \t\n-017", -17, -17},  // white space, a sign, leading zeros
    {u"+12abc", 12, 12},        // stops at the first other unit
    {u"- 1", 0, 0},             // no blank after the sign
    {u"\x3000" u"5", 0, 0},     // the "C" locale knows no ideographic space
    {u"\xFF11", 0, 0},          // nor full-width digits
    {u"2147483648", INT_MAX, 2147483648LL},  // saturates
    {u"-2147483649", INT_MIN, -2147483649LL},
    {u"9223372036854775808", INT_MAX, INT64_MAX},
    {u"-9223372036854775809", INT_MIN, INT64_MIN},
};
// Signs of _wcsicmp (folded unit values), wcscoll (code points) and _wcsicoll (folded code points).
struct CompareCase { const char16_t* a; const char16_t* b; int icmp, coll, icoll; };
constexpr CompareCase kCompare[] = {
    {nullptr, u"", 0, 0, 0},
    {nullptr, u"a", -1, -1, -1},
    {u"Sum", u"sUM", 0, -1, 0},
    {u"abc", u"abd", -1, -1, -1},
    {u"ab", u"abc", -1, -1, -1},  // a prefix sorts first
    {u"A", u"_", 1, -1, 1},       // folded to lower case: 'a' (97) after '_' (95)
    {u"\xD800", u"\xDC00", -1, 0, 0},  // lone surrogates: by value, or both U+FFFD
    {u"\xD83D\xDE00", u"\xFFEE", -1, 1, 1},  // a pair is one code point above U+FFEE
};
TEST(WideRuntime, IntegersAndComparisons) {
  for (const IntCase& c : kInts) {
    EXPECT_EQ(vkt::_wtoi(c.text), c.expected) << Row(c.text);
    EXPECT_EQ(vkt::_wtoi64(c.text), c.expected64) << Row(c.text);
  }
  ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
  auto sign = [](int v) { return (v > 0) - (v < 0); };
  for (const CompareCase& c : kCompare) {
    EXPECT_EQ(sign(vkt::_wcsicmp(c.a, c.b)), c.icmp) << Row(c.a) << " vs " << Row(c.b);
    EXPECT_EQ(sign(vkt::wcscoll(c.a, c.b)), c.coll) << Row(c.a) << " vs " << Row(c.b);
    EXPECT_EQ(sign(vkt::_wcsicoll(c.a, c.b)), c.icoll) << Row(c.a) << " vs " << Row(c.b);
  }
  EXPECT_TRUE(vkt::_wcsnicmp(u"ABCx", u"abcy", 3) == 0 && vkt::_wcsnicmp(u"ABCx", u"abcy", 4) < 0);
  EXPECT_TRUE(vkt::_wcsnicmp(u"ab", u"AB", 9) == 0 && vkt::_wcsnicmp(u"x", u"y", 0) == 0);  // to the NUL
}
TEST(WideRuntime, UnitsAndWideText) {
  const std::u16string units = u"aQ09/:\x0661\xD83D\xDE00 \t\r\v";  // other scripts' digits are not ours
  std::u16string upper, lower, kinds;
  for (char16_t c : units) {
    upper += vkt::towupper(c);
    lower += vkt::towlower(c);
    kinds += vkt::iswdigit(c) ? u'd' : vkt::iswspace(c) ? u's' : u'-';
  }
  EXPECT_EQ(upper, u"AQ09/:\x0661\xD83D\xDE00 \t\r\v");  // surrogates pass through
  EXPECT_EQ(lower, u"aq09/:\x0661\xD83D\xDE00 \t\r\v");
  EXPECT_EQ(kinds, u"--dd-----ssss");
  EXPECT_TRUE(!vkt::iswspace(0) && vkt::wcslen(nullptr) == 0 && vkt::wcslen(u"a\xD83D\xDE00") == 3);  // units
  const char16_t text[] = u"a\xD83D\xDE00z\xD800!\xDC00";
  const std::wstring wide = vkt::Utf16ToWide(text, vkt::wcslen(text));
  EXPECT_EQ(wide, (std::wstring{L'a', wchar_t(0x1F600), L'z', wchar_t(0xFFFD), L'!', wchar_t(0xFFFD)}));
  EXPECT_EQ(vkt::WideToUtf16(wide.data(), wide.size()), u"a\xD83D\xDE00z\xFFFD!\xFFFD");
  const wchar_t bad[] = {wchar_t(0x110000), wchar_t(0xD800), L'x'};
  EXPECT_EQ(vkt::WideToUtf16(bad, 3), u"\xFFFD\xFFFDx");
  EXPECT_EQ(vkt::Utf16ToWide(u"\xD800", 1) + vkt::Utf16ToWide(nullptr, 5), std::wstring(1, wchar_t(0xFFFD)));
}
