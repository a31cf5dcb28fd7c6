// tests/toolbox/UriTest.cpp: percent escapes both ways at their edges, hex digits, query parsing and
// building, and a round trip of generated mixed text through EncodeURI and DecodeURI.
#include <gtest/gtest.h>
#include <random>

#include "VKTCalc.h"
#include "foundation/CStrKit.h"
#include "tests/support/Text.h"

using namespace std::literals;
using vkt::test::Row, vkt::test::U;

// op: 'E'ncodeURI, EncodeUR'L', EncodeURI_'C'hinese, 'D'ecodeURI, DecodeHex'H'ars; expected: answer|text.
constexpr struct { char op; int flag; std::u16string_view text, expected; } kEscapes[] = {
    {'E', 0, u"abc", u"0|abc"}, {'E', 1, u"abc", u"0|abc"}, {'E', 0, u"", u"0|"}, {'E', 0, u"a%b", u"0|a%b"},
    {'E', 1, u"a b", u"1|a%20b"}, {'E', 0, u"@", u"1|%40"}, {'E', 1, u"@", u"0|@"},
    {'E', 0, u"!'()*-_.~", u"1|%21%27%28%29%2a%2d%5f%2e%7e"}, {'E', 1, u"\u0081\u07ff", u"1|%c2%81%df%bf"},
    {'E', 1, u"!'()*-_.~", u"1|%21%27%28%29%2a%2d%5f%2e%7e"}, {'E', 1, u"\"<>[]\\^`{|}", u"0|\"<>[]\\^`{|}"},
    {'E', 0, u"$#&=:;/?+,", u"1|%24%23%26%3d%3a%3b%2f%3f%2b%2c"}, {'E', 0, u"\u4e2d", u"1|%e4%b8%ad"},
    {'E', 1, u"\u0080", u"0|\u0080"}, {'E', 1, u"\u0080 ", u"1|\ufffd%20"},  // 128 goes out as the byte 0x80
    {'E', 1, u"\xdc00", u"1|%ef%bf%bd"}, {'E', 1, u"\U0001F600", u"1|%ef%bf%bd%ef%bf%bd"},  // halves: U+FFFD
    {'E', 1, u"a\0 b"sv, u"0|a\0 b"sv}, {'E', 1, u"a b\0c"sv, u"1|a%20b"},  // both passes stop at a zero unit
    {'L', 1, u"a?b c", u"1|a?b%20c"}, {'L', 1, u"a b", u"0|a b"}, {'L', 0, u"a b?c", u"0|a b?c"},
    {'L', 0, u"a b?c/d?", u"1|a b?c%2fd%3f"}, {'C', 0, u"a b\u4e2d", u"-|a b%e4%b8%ad"}, {'C', 0, u"", u"-|"},
    {'C', 0, u"\u0080!\0"sv, u"-|\u0080!\0"sv}, {'D', 0, u"a%20b+c", u"-|a b c"}, {'D', 0, u"", u"-|"},
    {'D', 0, u"%e4%b8%AD", u"-|\u4e2d"}, {'D', 0, u"a%2", u"-|a"}, {'D', 0, u"a%", u"-|a"},
    {'D', 0, u"a%2\0b"sv, u"-|a"}, {'D', 0, u"a%zzb", u"-|aSb"}, {'D', 0, u"%e4%b8", u"-|\ufffd"},
    {'D', 0, u"\u4e2d", u"-|-"}, {'D', 0, u"a\0b"sv, u"-|a\0b"sv},  // the low byte; a zero unit stays
    {'H', 0, u"4E", u"N|4E"}, {'H', 0, u"4e", u"N|4e"}, {'H', 0, u"00", u"\0|00"sv}, {'H', 0, u"zz", u"S|zz"},
    {'H', 0, u"fF", u"\u00ff|fF"}, {'H', 0, u"1\0"sv, u"\u00b9|1\0"sv},  // 16 - 87, cut to a byte
};
TEST(Uri, Escapes) {
  for (const auto& c : kEscapes) {
    CString text(c.text);
    WORD digits[2] = {text[0], text.GetLength() > 1 ? text[1] : u'\0'};
    char16_t answer = c.op == 'H' ? CUtilityCalc::DecodeHexChars(digits) : u'-';
    if (c.op == 'E') answer = static_cast<char16_t>(u'0' + CUtilityCalc::EncodeURI(text, c.flag));
    if (c.op == 'L') answer = static_cast<char16_t>(u'0' + CUtilityCalc::EncodeURL(text, c.flag));
    if (c.op == 'C') CUtilityCalc::EncodeURI_Chinese(text);
    if (c.op == 'D') CUtilityCalc::DecodeURI(text);
    EXPECT_EQ(answer + (u"|" + U(text)), c.expected) << c.op << c.flag << " " << Row(CString(c.text));
  }
  EXPECT_EQ(CUtilityCalc::DecodeHexChars(nullptr), 0);
}

// op: ParseURL'P'ara, ParseUR'L'; the arrays start as old, keep; expected: answer|[base|]name:value;...
constexpr struct { char op; const char16_t* text; int keepBare; const char16_t* expected; } kParse[] = {
    {'P', u"a=1&b&c=2", 0, u"2|a:1;c:2;"}, {'P', u"a=1&b&c=2", 1, u"3|a:1;b:;c:2;"}, {'P', u"b", 0, u"0|"},
    {'P', u"", 1, u"0|old:keep;"}, {'P', u"a=b=c", 0, u"1|a:b=c;"}, {'P', u"b", 1, u"1|b:;"},
    {'P', u"a=1&", 1, u"2|a:1;:;"}, {'P', u"=1&a%20=x+y", 0, u"2|:1;a%20:x+y;"},  // nothing decoded
    {'L', u"x?y=1", 0, u"1|x|y:1;"}, {'L', u"x?", 1, u"0|x?|old:keep;"}, {'L', u"x", 1, u"0|x|old:keep;"},
    {'L', nullptr, 1, u"0||old:keep;"}, {'L', u"x?a?b=c", 0, u"1|x|a?b:c;"}, {'L', u"?y", 1, u"1||y:;"},
};
TEST(Uri, ParseURLParaAndParseURL) {
  for (const auto& c : kParse) {
    CStringArray names, values;
    names.Add(u"old"), values.Add(u"keep");
    CString query(c.text), base(u"stale");
    const int answer = c.op == 'P' ? CUtilityCalc::ParseURLPara(query, names, values, c.keepBare)
                                   : CUtilityCalc::ParseURL(c.text, base, names, values, c.keepBare);
    std::u16string got = char16_t(u'0' + answer) + (c.op == 'P' ? u"|"s : u"|" + U(base) + u"|");
    for (int i = 0; i < names.GetSize(); ++i) got += U(names[i]) + u":" + U(values[i]) + u";";
    EXPECT_EQ(got, c.expected) << c.op << Row(c.text) << c.keepBare << " values " << values.GetSize();
  }
}

// names and values are cut at commas; a null base passes the text of out itself, which starts as o.
constexpr struct { const char16_t *base, *names, *values; int keepEmpty; const char16_t* expected; } kGen[]{
    {u"x", u"a,b", u"1", 0, u"x?a=1"}, {u"x", u"a,b", u"1", 1, u"x?a=1&b="}, {u"x", u"", u"1", 1, u"x"},
    {u"x", u",b,c", u"1,2,3", 0, u"x?b=2&c=3"}, {u"", u"a", u"1 2&", 0, u"?a=1 2&"},  // nothing encoded
    {nullptr, u"a", u"1", 0, u"o?a=1"}, {nullptr, u"", u"", 0, u"o"},
};
TEST(Uri, GenURL) {
  for (const auto& c : kGen) {
    CStringArray names, values;
    CStrKit::CString2Array(names, c.names, u',', 0), CStrKit::CString2Array(values, c.values, u',', 0);
    CString out(u"o");
    CUtilityCalc::GenURL(out, c.base == nullptr ? out.GetString() : c.base, names, values, c.keepEmpty);
    EXPECT_EQ(U(out), c.expected) << Row(c.base) << " " << Row(c.names) << " " << Row(c.values);
  }
}

// Text without %, NUL, U+0080, surrogates (nor + under flag 1) comes back, escaped as ASCII without blanks.
TEST(Uri, RoundTrip) {
  constexpr unsigned kRanges[][2] = {{0x20, 0x5F}, {0x20, 0x5F}, {0x81, 0x77F}, {0x800, 0xD000},
                                     {0xE000, 0x2000}};  // first unit, count
  std::mt19937 random(20240611);
  for (int n = 0; n < 400; ++n) {
    std::u16string text;
    for (std::size_t length = random() % 40; text.size() < length;) {
      const unsigned range = random() % 5, unit = kRanges[range][0] + random() % kRanges[range][1];
      if (unit != u'%' && (unit != u'+' || n % 2 == 0)) text += static_cast<char16_t>(unit);
    }
    CString encoded(text);
    CUtilityCalc::EncodeURI(encoded, n % 2);
    for (char16_t unit : encoded.View()) ASSERT_TRUE(unit < 0x80 && unit != u' ') << Row(encoded);
    CUtilityCalc::DecodeURI(encoded);
    EXPECT_EQ(U(encoded), text) << Row(CString(text));
  }
}
