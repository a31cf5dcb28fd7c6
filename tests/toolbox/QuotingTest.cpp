// Tests of quoting and unquoting: each form on its own at its edges, then
// round trips of awkward texts through escape + quote and back.
#include "VKTCalc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::u16string S(const CString& s) { return std::u16string(s.View()); }
std::string Row(const char16_t* text) { return text == nullptr ? "(null)" : CString(text).ToUtf8(); }

struct DetectCase {
  const char16_t* text;
  char16_t expected;
};

constexpr DetectCase kDetect[] = {
    {nullptr, 0},
    {u"", 0},
    {u"'", 0},  // one unit is no pair, though it opens and closes
    {u"''", u'\''},
    {u"\"\"", u'"'},
    {u"'a\"", 0},
    {u"\"a'", 0},
    {u"'abc'", u'\''},
    {u"a'", 0},
    {u"'a", 0},
    {u"'中文'", u'\''},
    {u"\"it's\"", u'"'},
};

TEST(DetectStringQuotes, Table) {
  for (const DetectCase& c : kDetect)
    EXPECT_EQ(CUtilityCalc::DetectStringQuotes(c.text), c.expected) << Row(c.text);
}

struct EscapeCase {
  const char16_t* text;
  const char16_t* expected;
  int result;
};

constexpr EscapeCase kFormat[] = {
    {u"a'b", u"a\\'b", 1},
    {u"ab", u"ab", 0},
    {u"", u"", 0},
    {u"\\", u"\\\\", 1},
    {u"\"'", u"\\\"\\'", 1},
    {u"C:\\dir\\", u"C:\\\\dir\\\\", 1},
    {u"\\n", u"\\\\n", 1},  // a backslash before anything else is escaped too
    {u"中'文", u"中\\'文", 1},
};

TEST(Format_Quates, Table) {
  for (const EscapeCase& c : kFormat) {
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::Format_Quates(text), c.result) << Row(c.text);
    EXPECT_EQ(S(text), c.expected) << Row(c.text);
  }
}

constexpr EscapeCase kUnFormat[] = {
    {u"a\\'b\\\\", u"a'b\\", 1},
    {u"a\\b", u"a\\b", 0},        // \b is no escape: all or nothing
    {u"ab\\", u"ab\\", 0},        // a lone backslash at the end
    {u"a\\'b\\", u"a\\'b\\", 0},  // a good escape does not save a bad one behind it
    {u"\\\\b", u"\\b", 1},        // the escaped backslash is not read again
    {u"abc", u"abc", 0},
    {u"", u"", 0},
    {u"\\", u"\\", 0},
    {u"\\\\\\'", u"\\'", 1},
    {u"\\\"x\\\"", u"\"x\"", 1},
    {u"\\'中\\'", u"'中'", 1},
};

TEST(UnFormat_Quates, Table) {
  for (const EscapeCase& c : kUnFormat) {
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::UnFormat_Quates(text), c.result) << Row(c.text);
    EXPECT_EQ(S(text), c.expected) << Row(c.text);
  }
}

struct QuoteCase {
  const char16_t* text;
  int flag;
  const char16_t* expected;
  char16_t result;  // Dettach_Quotes only
};

constexpr QuoteCase kDettach[] = {
    {u"''abc''", 0, u"abc", u'\''},
    {u"'abc\"", 0, u"'abc\"", 0},
    {u"'a\\'b'", 1, u"a'b", u'\''},
    {u"'a\\'b'", 0, u"a\\'b", u'\''},
    {u"'\"x\"'", 0, u"x", u'"'},  // both layers go; the answer is the inner quote
    {u"\"'x'\"", 0, u"x", u'\''},
    {u"a\\'b", 1, u"a\\'b", 0},  // unquoted: not unescaped either
    {u"''", 0, u"", u'\''},
    {u"'''", 0, u"'", u'\''},
    {u"'", 1, u"'", 0},
    {u"", 1, u"", 0},
    {u"'a\\b'", 1, u"a\\b", u'\''},  // a bad escape stays, the quotes still go
    {u"\"中文\"", 1, u"中文", u'"'},
    {u" 'a' ", 0, u" 'a' ", 0},  // blanks outside are not trimmed away
};

TEST(Dettach_Quotes, Table) {
  for (const QuoteCase& c : kDettach) {
    CString text(c.text);
    EXPECT_EQ(CUtilityCalc::Dettach_Quotes(text, c.flag), c.result) << Row(c.text) << " flag " << c.flag;
    EXPECT_EQ(S(text), c.expected) << Row(c.text) << " flag " << c.flag;
  }
}

constexpr QuoteCase kAttach[] = {
    {u"", 0, u"''", 0},
    {u"", 1, u"''", 0},
    {u"'", 0, u"\"'\"", 0},
    {u"'", 1, u"\"\\'\"", 0},
    {u"\"", 0, u"'\"'", 0},
    {u"\"", 1, u"'\\\"'", 0},
    {u"a", 1, u"'a'", 0},
    {u"\\", 1, u"'\\\\'", 0},
    {u"it's", 0, u"\"it's\"", 0},
    {u"it's", 1, u"\"it\\'s\"", 0},  // the escaped quote still asks for double quotes
    {u"'a", 0, u"''a'", 0},           // a leading single quote alone keeps single quotes
    {u"'a", 1, u"\"\\'a\"", 0},       // escaped, it is no longer leading
    {u"'abc'", 0, u"'abc'", 0},       // without format an existing pair is replaced
    {u"\"x\"", 0, u"'x'", 0},
    {u"''", 0, u"''", 0},
    {u"a b", 0, u"'a b'", 0},
    {u"say \"hi\"", 1, u"'say \\\"hi\\\"'", 0},
    {u"中文", 1, u"'中文'", 0},
};

TEST(Attach_Quotes, Table) {
  for (const QuoteCase& c : kAttach) {
    CString text(c.text);
    CUtilityCalc::Attach_Quotes(text, c.flag);
    EXPECT_EQ(S(text), c.expected) << Row(c.text) << " flag " << c.flag;
  }
}

// Texts that must come back unchanged from their quoted form.
constexpr const char16_t* kRoundTrip[] = {
    u"",
    u"a",
    u"'",
    u"\"",
    u"\\",
    u"''",
    u"\\'",
    u"it's",
    u"say \"hi\"",
    u"C:\\dir\\",
    u"'quoted'",
    u"\"'mixed'\"",
    u"  blanks around  ",
    u"tab\tand\r\nline",
    u"中文'引号\"",
    u"\u00e9t\u00e9",
    u"\xD83D\xDE00 pair",  // a surrogate pair passes as two units
    u"a\\b\\",
};

TEST(QuotingRoundTrip, QuotedFormIsOneStretch) {
  for (const char16_t* original : kRoundTrip) {
    CString text(original);
    CUtilityCalc::Attach_Quotes(text, 1);
    EXPECT_NE(CUtilityCalc::DetectStringQuotes(text), 0) << Row(original);

    // The quoted form is one stretch from end to end.
    CUIntArray starts;
    CUIntArray ends;
    ASSERT_EQ(CUtilityCalc::FindQuotes(text, starts, ends), 1) << Row(original);
    EXPECT_EQ(starts[0], 0u) << Row(original);
    EXPECT_EQ(ends[0], static_cast<UINT>(text.GetLength() - 1)) << Row(original);
  }
}

TEST(QuotingRoundTrip, AttachDettachRestores) {
  for (const char16_t* original : kRoundTrip) {
    CString text(original);
    CUtilityCalc::Attach_Quotes(text, 1);
    const char16_t quote = text[0];
    EXPECT_EQ(CUtilityCalc::Dettach_Quotes(text, 1), quote) << Row(original);
    EXPECT_EQ(S(text), original) << Row(original);
  }
}

TEST(QuotingRoundTrip, FormatUnFormatRestores) {
  for (const char16_t* original : kRoundTrip) {
    CString text(original);
    const int escaped = CUtilityCalc::Format_Quates(text);
    EXPECT_EQ(CUtilityCalc::UnFormat_Quates(text), escaped) << Row(original);
    EXPECT_EQ(S(text), original) << Row(original);
  }
}

struct FindCase {
  const char16_t* text;
  std::vector<UINT> starts;
  std::vector<UINT> ends;
};

const FindCase kFind[] = {
    {u"a'b\"c'd", {1}, {5}},  // the other quote is text inside
    {u"\\'a'", {}, {}},       // the escaped quote is skipped; the next never closes
    {u"'a'\"b\"", {0, 3}, {2, 5}},
    {u"'abc", {}, {}},
    {u"'a\\'b'", {0}, {5}},
    {u"\\\\'a'", {2}, {4}},  // an escaped backslash escapes nothing more
    {u"''", {0}, {1}},
    {u"", {}, {}},
    {u"x\\", {}, {}},  // a backslash at the end skips past the end safely
    {u"中'文'", {1}, {3}},
};

TEST(FindQuotes, Table) {
  for (const FindCase& c : kFind) {
    CString text(c.text);
    CUIntArray starts;
    CUIntArray ends;
    starts.Add(99);  // emptied first
    ends.Add(99);
    EXPECT_EQ(CUtilityCalc::FindQuotes(text, starts, ends), static_cast<int>(c.starts.size())) << Row(c.text);
    EXPECT_EQ(std::vector<UINT>(starts.begin(), starts.end()), c.starts) << Row(c.text);
    EXPECT_EQ(std::vector<UINT>(ends.begin(), ends.end()), c.ends) << Row(c.text);
  }
}

}  // namespace
