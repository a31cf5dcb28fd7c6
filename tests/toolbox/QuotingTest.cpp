// tests/toolbox/QuotingTest.cpp: quoting and unquoting, each form at its edges, the quote scan, and
// round trips of awkward texts through escape and quote and back.
#include <gtest/gtest.h>

#include <string>

#include "VKTCalc.h"
#include "tests/support/Text.h"

namespace {

using vkt::test::Row;
using vkt::test::U;

std::u16string Num(int n) { const std::string d = std::to_string(n); return {d.begin(), d.end()}; }

// op: 'D'etect, 'F'ormat, 'U'nFormat, 'd'ettach, 'A'ttach (with the flag), FindQuotes 'Q'. expected: the
// answer (a quote or a number), '|', then the text afterwards or, for 'Q', each stretch found.
constexpr struct { char op; int flag; const char16_t *text, *expected; } kQuoting[] = {
    {'D', 0, nullptr, u"0|"}, {'D', 0, u"'", u"0|'"}, {'D', 0, u"''", u"'|''"}, {'D', 0, u"\"\"", u"\"|\"\""},
    {'D', 0, u"'a\"", u"0|'a\""}, {'D', 0, u"a'", u"0|a'"}, {'D', 0, u"\"it's\"", u"\"|\"it's\""},
    {'F', 0, u"ab", u"0|ab"}, {'F', 0, u"\\", u"1|\\\\"}, {'F', 0, u"\"'", u"1|\\\"\\'"},
    {'F', 0, u"\\n", u"1|\\\\n"}, {'F', 0, u"\u4e2d'", u"1|\u4e2d\\'"},  // any backslash is escaped
    {'U', 0, u"a\\'b\\\\", u"1|a'b\\"}, {'U', 0, u"\\\\b", u"1|\\b"}, {'U', 0, u"\\\\\\'", u"1|\\'"},
    {'U', 0, u"a\\b", u"0|a\\b"}, {'U', 0, u"a\\'b\\", u"0|a\\'b\\"},  // one bad escape: all or nothing
    {'U', 0, u"ab\\", u"0|ab\\"}, {'U', 0, u"abc", u"0|abc"},
    {'d', 0, u"''abc''", u"'|abc"}, {'d', 0, u"'\"x\"'", u"\"|x"}, {'d', 0, u"'abc\"", u"0|'abc\""},
    {'d', 1, u"'a\\'b'", u"'|a'b"}, {'d', 0, u"'a\\'b'", u"'|a\\'b"}, {'d', 1, u"'a\\b'", u"'|a\\b"},
    {'d', 1, u"a\\'b", u"0|a\\'b"}, {'d', 0, u"''", u"'|"}, {'d', 0, u"'''", u"'|'"}, {'d', 1, u"'", u"0|'"},
    {'d', 0, u" 'a' ", u"0| 'a' "},  // blanks outside are not trimmed away
    {'A', 0, u"", u"0|''"}, {'A', 0, u"'", u"0|\"'\""}, {'A', 1, u"'", u"0|\"\\'\""},
    {'A', 0, u"\"", u"0|'\"'"}, {'A', 1, u"\"", u"0|'\\\"'"}, {'A', 1, u"\\", u"0|'\\\\'"},
    {'A', 0, u"it's", u"0|\"it's\""}, {'A', 1, u"it's", u"0|\"it\\'s\""},  // still double quotes, escaped
    {'A', 0, u"'a", u"0|''a'"}, {'A', 1, u"'a", u"0|\"\\'a\""},  // a leading quote alone keeps single ones
    {'A', 0, u"'abc'", u"0|'abc'"}, {'A', 0, u"\"x\"", u"0|'x'"},  // without format a pair is replaced
    {'Q', 0, u"a'b\"c'd", u"1|1-5 "}, {'Q', 0, u"'a'\"b\"", u"2|0-2 3-5 "}, {'Q', 0, u"'a\\'b'", u"1|0-5 "},
    {'Q', 0, u"\\\\'a'", u"1|2-4 "}, {'Q', 0, u"\\'a'", u"0|"}, {'Q', 0, u"x\\", u"0|"},
};

TEST(Quoting, Table) {
  for (const auto& c : kQuoting) {
    CString text(c.text);
    CUIntArray starts, ends;
    starts.Add(99);  // emptied first
    int answer = 0;
    switch (c.op) {
      case 'D': answer = CUtilityCalc::DetectStringQuotes(c.text); break;
      case 'F': answer = CUtilityCalc::Format_Quates(text); break;
      case 'U': answer = CUtilityCalc::UnFormat_Quates(text); break;
      case 'd': answer = CUtilityCalc::Dettach_Quotes(text, c.flag); break;
      case 'A': CUtilityCalc::Attach_Quotes(text, c.flag); break;
      default:
        answer = CUtilityCalc::FindQuotes(text, starts, ends);
        text.Empty();
        for (int i = 0; i < answer; ++i) text += CString(Num(starts[i]) + u"-" + Num(ends[i]) + u" ");
    }
    const std::u16string shown = answer > 9 ? std::u16string(1, char16_t(answer)) : Num(answer);  // a quote
    EXPECT_EQ(shown + u"|" + U(text), c.expected) << c.op << c.flag << " " << Row(c.text);
  }
}

// Texts that come back unchanged from their quoted form, which is one stretch from end to end, and
// from their escaped form.
TEST(Quoting, RoundTrips) {
  for (const char16_t* original :
       {u"", u"a", u"'", u"\"", u"\\", u"''", u"\\'", u"it's", u"say \"hi\"", u"C:\\dir\\", u"'quoted'",
        u"\"'mixed'\"", u"  blanks  ", u"tab\tand\r\nline", u"\u4e2d'\u6587\"", u"\xD83D\xDE00 pair"}) {
    CString text(original), escaped(original);
    CUIntArray starts, ends;
    CUtilityCalc::Attach_Quotes(text, 1);
    const char16_t quote = text[0];
    EXPECT_EQ(CUtilityCalc::DetectStringQuotes(text), quote) << Row(original);
    ASSERT_EQ(CUtilityCalc::FindQuotes(text, starts, ends), 1) << Row(original);
    EXPECT_EQ(Num(starts[0]) + u"-" + Num(ends[0]), u"0-" + Num(text.GetLength() - 1)) << Row(original);
    EXPECT_EQ(CUtilityCalc::Dettach_Quotes(text, 1), quote) << Row(original);
    EXPECT_EQ(U(text), original);
    const int escapedAny = CUtilityCalc::Format_Quates(escaped);
    EXPECT_EQ(CUtilityCalc::UnFormat_Quates(escaped), escapedAny) << Row(original);
    EXPECT_EQ(U(escaped), original);
  }
}

}  // namespace
