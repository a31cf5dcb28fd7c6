// Tests of CString: the edge rules hosts rely on (cut counts, -1 searches,
// trimming sets, formatting), storage across the inline/heap border, and
// surrogate pairs passing through untouched.
#include "platform/CString.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

std::u16string S(const CString& s) { return std::u16string(s.View()); }

TEST(CStringBasics, NullAndEmpty) {
  CString a(static_cast<const char16_t*>(nullptr));
  CString b(static_cast<const char*>(nullptr));
  EXPECT_TRUE(a.IsEmpty());
  EXPECT_TRUE(b.IsEmpty());
  EXPECT_EQ(a.GetString()[0], u'\0');
  CString c(u"x", -3);
  EXPECT_TRUE(c.IsEmpty());
}

TEST(CStringBasics, EmbeddedNulIsCounted) {
  const char16_t raw[] = {u'a', 0, u'b'};
  CString s(raw, 3);
  EXPECT_EQ(s.GetLength(), 3);
  EXPECT_EQ(s.Find(u'b'), 2);
  CString copy(s);
  EXPECT_EQ(copy, s);
  EXPECT_NE(s, CString(u"a"));
}

TEST(CStringStorage, InlineHeapBorderSurvivesCopyMoveAndGrowth) {
  for (int length : {0, 1, 62, 63, 64, 65, 200}) {
    CString s(u'7', length);
    CString copy(s);
    CString moved(std::move(copy));
    EXPECT_EQ(moved.GetLength(), length);
    EXPECT_EQ(moved, s);
    EXPECT_TRUE(copy.IsEmpty());  // NOLINT: moved-from is empty by contract
    moved += u'8';
    EXPECT_EQ(moved.GetLength(), length + 1);
    EXPECT_EQ(moved.Right(1), CString(u"8"));
    EXPECT_EQ(moved.GetString()[length + 1], u'\0');
    CString assigned;
    assigned = moved;
    assigned = std::move(assigned);
    EXPECT_EQ(assigned, moved);
  }
}

TEST(CStringStorage, SelfAppendAcrossReallocation) {
  CString s(u'a', 60);
  s += s;  // grows past the inline buffer while reading itself
  EXPECT_EQ(s, CString(u'a', 120));
  s.Append(s.GetString() + 100, 20);
  EXPECT_EQ(s.GetLength(), 140);
  s = s.GetString() + 130;  // assign from our own block
  EXPECT_EQ(s, CString(u'a', 10));
  s.Insert(5, s.GetString());
  EXPECT_EQ(s, CString(u'a', 20));
}

struct MidCase {
  const char16_t* text;
  int first;
  int count;  // -1: the one-argument form
  const char16_t* expected;
};

constexpr MidCase kMid[] = {
    {u"abcdef", 2, 2, u"cd"},
    {u"abcdef", 4, 10, u"ef"},  // count past the end is cut
    {u"abcdef", 6, 1, u""},     // start at the end
    {u"abcdef", 9, 1, u""},     // start past the end
    {u"abcdef", -2, 3, u"abc"}, // negative start counts as 0
    {u"abcdef", 1, 0, u""},
    {u"abcdef", 1, -1, u"bcdef"},
    {u"", 0, 5, u""},
};

TEST(CStringExtract, MidTable) {
  for (const MidCase& c : kMid) {
    CString s(c.text);
    CString got = c.count < 0 ? s.Mid(c.first) : s.Mid(c.first, c.count);
    EXPECT_EQ(S(got), c.expected) << "Mid of " << CString(c.text).ToUtf8() << " at " << c.first;
  }
}

TEST(CStringExtract, LeftRightCut) {
  CString s(u"hello");
  EXPECT_EQ(S(s.Left(2)), u"he");
  EXPECT_EQ(S(s.Left(99)), u"hello");
  EXPECT_EQ(S(s.Left(-1)), u"");
  EXPECT_EQ(S(s.Right(3)), u"llo");
  EXPECT_EQ(S(s.Right(99)), u"hello");
  EXPECT_EQ(S(s.Right(-1)), u"");
}

struct FindCase {
  const char16_t* text;
  const char16_t* what;
  int start;
  int expected;
};

constexpr FindCase kFind[] = {
    {u"abcabc", u"bc", 0, 1},
    {u"abcabc", u"bc", 2, 4},
    {u"abcabc", u"bc", 5, -1},
    {u"abcabc", u"bc", 6, -1},
    {u"abcabc", u"bc", 7, -1},  // start past the end
    {u"abcabc", u"", 3, 3},     // empty text is found where we start
    {u"abcabc", u"", 7, -1},
    {u"abc", u"abcd", 0, -1},
    {u"abc", u"a", -5, 0},      // negative start counts as 0
};

TEST(CStringSearch, FindTextTable) {
  for (const FindCase& c : kFind) {
    EXPECT_EQ(CString(c.text).Find(c.what, c.start), c.expected)
        << CString(c.text).ToUtf8() << " / " << CString(c.what).ToUtf8() << " from " << c.start;
  }
}

TEST(CStringSearch, FindCharReverseAndOneOf) {
  CString s(u"a,b;c,");
  EXPECT_EQ(s.Find(u','), 1);
  EXPECT_EQ(s.Find(u',', 2), 5);
  EXPECT_EQ(s.Find(u',', 6), -1);
  EXPECT_EQ(s.Find(u',', 100), -1);
  EXPECT_EQ(s.ReverseFind(u','), 5);
  EXPECT_EQ(s.ReverseFind(u'x'), -1);
  EXPECT_EQ(s.FindOneOf(u";,"), 1);
  EXPECT_EQ(s.FindOneOf(u"xyz"), -1);
  EXPECT_EQ(s.FindOneOf(nullptr), -1);
}

struct TrimCase {
  const char16_t* text;
  const char16_t* set;  // null: the no-argument form (white space)
  const char16_t* left;
  const char16_t* right;
};

constexpr TrimCase kTrim[] = {
    {u"  \t a b \r\n", nullptr, u"a b \r\n", u"  \t a b"},
    {u"xxaxx", u"x", u"axx", u"xxa"},
    {u"-+-a+-", u"+-", u"a+-", u"-+-a"},
    {u"xxxx", u"x", u"", u""},
    {u"", u"x", u"", u""},
    {u"\u3000a\u3000", nullptr, u"a\u3000", u"\u3000a"},  // ideographic space is white space
};

TEST(CStringTrim, Table) {
  for (const TrimCase& c : kTrim) {
    CString left(c.text);
    CString right(c.text);
    if (c.set == nullptr) {
      left.TrimLeft();
      right.TrimRight();
    } else if (c.set[1] == 0) {
      left.TrimLeft(c.set[0]);
      right.TrimRight(c.set[0]);
    } else {
      left.TrimLeft(c.set);
      right.TrimRight(c.set);
    }
    EXPECT_EQ(S(left), c.left) << CString(c.text).ToUtf8();
    EXPECT_EQ(S(right), c.right) << CString(c.text).ToUtf8();
  }
}

TEST(CStringChange, InsertDeleteBoundaries) {
  CString s(u"abc");
  EXPECT_EQ(s.Insert(0, u'X'), 4);
  EXPECT_EQ(s.Insert(99, u"YZ"), 6);  // past the end appends
  EXPECT_EQ(S(s), u"XabcYZ");
  EXPECT_EQ(s.Insert(-3, u"<"), 7);
  EXPECT_EQ(S(s), u"<XabcYZ");
  EXPECT_EQ(s.Delete(5, 99), 5);  // count past the end is cut
  EXPECT_EQ(S(s), u"<Xabc");
  EXPECT_EQ(s.Delete(9, 1), 5);   // start past the end: nothing
  EXPECT_EQ(s.Delete(0, 0), 5);
  EXPECT_EQ(s.Delete(0), 4);
  EXPECT_EQ(S(s), u"Xabc");
}

struct ReplaceCase {
  const char16_t* text;
  const char16_t* from;
  const char16_t* to;
  int count;
  const char16_t* expected;
};

constexpr ReplaceCase kReplace[] = {
    {u"aaa", u"a", u"bb", 3, u"bbbbbb"},
    {u"aaaa", u"aa", u"a", 2, u"aa"},  // no overlapping matches
    {u"abc", u"", u"x", 0, u"abc"},    // empty pattern replaces nothing
    {u"abc", u"b", nullptr, 1, u"ac"},  // null replacement deletes
    {u"abc", u"z", u"y", 0, u"abc"},
    {u"a.b.c", u".", u"", 2, u"abc"},
};

TEST(CStringChange, ReplaceTable) {
  for (const ReplaceCase& c : kReplace) {
    CString s(c.text);
    EXPECT_EQ(s.Replace(c.from, c.to), c.count) << CString(c.text).ToUtf8();
    EXPECT_EQ(S(s), c.expected) << CString(c.text).ToUtf8();
  }
  CString s(u"a-b-c");
  EXPECT_EQ(s.Replace(u'-', u'+'), 2);
  EXPECT_EQ(S(s), u"a+b+c");
  EXPECT_EQ(s.Remove(u'+'), 2);
  EXPECT_EQ(S(s), u"abc");
}

TEST(CStringChange, SetAtOutsideIsIgnored) {
  CString s(u"ab");
  s.SetAt(1, u'z');
  s.SetAt(2, u'q');
  s.SetAt(-1, u'q');
  EXPECT_EQ(S(s), u"az");
}

TEST(CStringCase, SurrogatesPassUntouched) {
  // U+1D400 (mathematical bold A) as a pair, beside plain letters.
  const char16_t text[] = {u'a', 0xD835, 0xDC00, u'\u00e9', 0};
  CString s(text);
  s.MakeUpper();
  EXPECT_EQ(s.GetAt(1), 0xD835);
  EXPECT_EQ(s.GetAt(2), 0xDC00);
  EXPECT_EQ(s.GetAt(0), u'A');
  s.MakeLower();
  EXPECT_EQ(s.GetAt(0), u'a');
  EXPECT_EQ(s.GetAt(1), 0xD835);
  EXPECT_EQ(CString(u"ABC").CompareNoCase(u"abc"), 0);
  EXPECT_LT(CString(u"abc").CompareNoCase(u"ABD"), 0);
}

TEST(CStringUtf8, RoundTripAndMalformed) {
  CString s("\xe4\xb8\xad" "a" "\xf0\x9d\x90\x80");  // U+4E2D, a, U+1D400
  ASSERT_EQ(s.GetLength(), 4);
  EXPECT_EQ(s.GetAt(0), 0x4E2D);
  EXPECT_EQ(s.GetAt(2), 0xD835);
  EXPECT_EQ(s.ToUtf8(), "\xe4\xb8\xad" "a" "\xf0\x9d\x90\x80");
  EXPECT_EQ(S(CString("\xff" "a")), u"\uFFFD" "a");  // a bad byte becomes U+FFFD
  EXPECT_EQ(S(CString("\xe4\xb8")), u"\uFFFD");      // truncated sequence
  const char16_t lone[] = {0xD800, u'x', 0};
  EXPECT_EQ(CString(lone).ToUtf8(), "\xef\xbf\xbd" "x");
}


TEST(CStringFormat, Conversions) {
  CString s;
  s.Format(u"%s|%d|%u|%02d|%03d|%c", u"ab", -12, 4000000000u, 7, 5, u'Z');
  EXPECT_EQ(S(s), u"ab|-12|4000000000|07|005|Z");
  s.Format(u"%I64d %I64u", static_cast<long long>(-9007199254740993LL),
           static_cast<unsigned long long>(18446744073709551615ULL));
  EXPECT_EQ(S(s), u"-9007199254740993 18446744073709551615");
  s.Format(u"%16.16f", 0.1);
  EXPECT_EQ(S(s), u"0.1000000000000000");
  s.Format(u"[%5s][%-4s][%.2s][%%]", u"ab", u"x", u"wxyz");
  EXPECT_EQ(S(s), u"[   ab][x   ][wx][%]");
  s.Format(u"%s", static_cast<const char16_t*>(nullptr));
  EXPECT_EQ(S(s), u"(null)");
  s.Format(u"%S", "\xe4\xb8\xad");
  EXPECT_EQ(s.GetAt(0), 0x4E2D);
  s.Format(u"trailing %");
  EXPECT_EQ(S(s), u"trailing ");
  CString t(u"x");
  t.AppendFormat(u"%s%s", t.GetString(), t.GetString());  // argument is ourselves
  EXPECT_EQ(S(t), u"xxx");
}

TEST(CStringBuffer, GetBufferSetLengthAndRelease) {
  CString s(u"abc");
  char16_t* p = s.GetBufferSetLength(100);
  EXPECT_EQ(s.GetLength(), 100);
  EXPECT_EQ(p[0], u'a');
  EXPECT_EQ(p[3], u'\0');  // the new part is zero
  s.ReleaseBuffer();       // up to the first NUL
  EXPECT_EQ(S(s), u"abc");
  p = s.GetBuffer(10);
  p[1] = u'Q';
  s.ReleaseBuffer(2);
  EXPECT_EQ(S(s), u"aQ");
}

TEST(CStringTokenize, SkipsDelimiterRuns) {
  CString s(u",a,,bc,");
  int pos = 0;
  EXPECT_EQ(S(s.Tokenize(u",", pos)), u"a");
  EXPECT_EQ(S(s.Tokenize(u",", pos)), u"bc");
  EXPECT_EQ(S(s.Tokenize(u",", pos)), u"");
  EXPECT_EQ(pos, -1);
}

TEST(CStringCompare, OrderAndConcatenation) {
  EXPECT_LT(CString(u"ab"), CString(u"b"));
  EXPECT_EQ(CString(u"a").Compare(u"b"), -1);
  EXPECT_EQ(CString(u"b").Compare(u"a"), 1);
  EXPECT_EQ(CString(u"a").Compare(nullptr), 1);
  EXPECT_EQ(S(u'<' + CString(u"a") + u"b" + CString(u"c") + u'>'), u"<abc>");
  EXPECT_EQ(CString(u"ab").Hash(), CString(u"ab").Hash());
}

}  // namespace
