// Tests of CString: cut counts, -1 searches, trimming sets, formatting, storage, UTF-8, surrogate units.
#include "platform/CString.h"
#include <gtest/gtest.h>
#include <string>
#include "tests/support/Text.h"
using namespace vkt::test;
struct Out {  // results, numbers or texts, joined by '|'; the braces keep the calls in the order written
  template <class... T>
  Out(T... parts) { ((text += Part(parts), text += u'|'), ...); text.Delete(text.GetLength() - 1); }
  static CString Part(int n) { return CString(std::to_string(n).c_str()); }
  static CString Part(const CString& s) { return s; }
  CString text;
};
struct CallCase { const char16_t* text; Out (*call)(CString& s); const char16_t* expected; };
const CallCase kCalls[] = {
    {u"abcabc", [](auto& s) { return Out{s.Find(u"bc"), s.Find(u"bc", 2), s.Find(u"bc", 5)}; }, u"1|4|-1"},
    {u"abcabc", [](auto& s) { return Out{s.Find(u"bc", 7), s.Find(u"", 3), s.Find(u"", 7)}; }, u"-1|3|-1"},
    {u"abc", [](auto& s) { return Out{s.Find(u"abcd"), s.Find(u"a", -5), s.Find(u'c', -1)}; }, u"-1|0|2"},
    {u"a,b;c,", [](auto& s) { return Out{s.Find(u','), s.Find(u',', 2), s.Find(u',', 6)}; }, u"1|5|-1"},
    {u"a,b;c,", [](auto& s) { return Out{s.ReverseFind(u','), s.ReverseFind(u'x')}; }, u"5|-1"},
    {u"a,b;c,", [](auto& s) { return Out{s.FindOneOf(u";,"), s.FindOneOf(nullptr)}; }, u"1|-1"},
    {u"b", [](auto& s) { return Out{s.Compare(u"c"), s.Compare(u"a"), s.Compare(nullptr)}; }, u"-1|1|1"},
    {u"AB", [](auto& s) { return Out{s.CompareNoCase(u"ab"), s.CompareNoCase(u"AC"), s[2]}; }, u"0|-1|0"},
    {u"ab", [](auto& s) { return Out{s.Collate(u"b") < 0, s.CollateNoCase(u"AB")}; }, u"1|0"},
    {u"abcdef", [](auto& s) { return Out{s.Mid(2, 2), s.Mid(4, 10), s.Mid(6, 1), s.Mid(9, 1)}; }, u"cd|ef||"},
    {u"abcdef", [](auto& s) { return Out{s.Mid(-2, 3), s.Mid(1, 0), s.Mid(1)}; }, u"abc||bcdef"},
    {u"hello", [](auto& s) { return Out{s.Left(2), s.Left(99), s.Left(-1), s.Right(3)}; }, u"he|hello||llo"},
    {u"hello", [](auto& s) { return Out{s.Right(99), s.Right(-1)}; }, u"hello|"},  // a negative count is 0
    {u"aabxab", [](auto& s) { return Out{s.SpanIncluding(u"ab"), s.SpanExcluding(u"x")}; }, u"aab|aab"},
    {u" \ta b\r\n", [](auto& s) { return Out{s.TrimRight(), s.TrimLeft()}; }, u" \ta b|a b"},
    {u"\u3000a\u3000", [](auto& s) { return Out{s.Trim()}; }, u"a"},  // ideographic space is white space
    {u"xxaxx", [](auto& s) { return Out{s.TrimRight(u'x'), s.TrimLeft(u'x')}; }, u"xxa|a"},
    {u"-+-a+-", [](auto& s) { return Out{s.TrimRight(u"+-"), s.TrimLeft(u"+-")}; }, u"-+-a|a"},
    {u"x-ax-", [](auto& s) { return Out{CString(s).Trim(u'x'), s.Trim(u"-x")}; }, u"-ax-|a"},
    {u"a", [](auto& s) { return Out{s.Insert(0, u'X'), s.Insert(9, u"YZ"), s}; }, u"2|4|XaYZ"},  // appended
    {u"a", [](auto& s) { return Out{s.Insert(-3, u"<"), s}; }, u"2|<a"},
    {u"<Xab", [](auto& s) { return Out{s.Delete(3, 9), s.Delete(9, 1), s.Delete(0, 0), s}; }, u"3|3|3|<Xa"},
    {u"aaa", [](auto& s) { return Out{s.Replace(u"a", u"bb"), s.Replace(u"bbbb", u"b"), s}; }, u"3|1|bbb"},
    {u"abc", [](auto& s) { return Out{s.Replace(u"", u"x"), s.Replace(u"b", nullptr), s}; }, u"0|1|ac"},
    {u"a-b-c", [](auto& s) { return Out{s.Replace(u'-', u'+'), s, s.Remove(u'+'), s}; }, u"2|a+b+c|2|abc"},
    {u"ab", [](auto& s) { return Out{(s.SetAt(1, u'z'), s.SetAt(2, u'q'), s.SetAt(-1, u'q'), s)}; }, u"az"},
    {u"z\xD835", [](auto& s) { return Out{s.MakeUpper(), s.MakeLower()}; }, u"Z\xD835|z\xD835"},
    {u"abc", [](auto& s) { return Out{s.MakeReverse(), s = u'z', s = "\xe4\xb8\xad"}; }, u"cba|z|\u4e2d"},
    {u"b", [](auto& s) { return Out{u'<' + (u"a" + s) + CString(u"c") + u'>'}; }, u"<abc>"},
};
TEST(CString, CallTable) {
  for (std::size_t i = 0; i < std::size(kCalls); ++i) {
    CString s(kCalls[i].text);
    EXPECT_EQ(U(kCalls[i].call(s).text), kCalls[i].expected) << "row " << i << ": " << Row(kCalls[i].text);
  }
}
struct FormatCase { void (*format)(CString& s); const char16_t* expected; };
const FormatCase kFormats[] = {
    {[](auto& s) { s.Format(u"%s|%d|%u|%02d", u"ab", -12, 4000000000u, 7); }, u"ab|-12|4000000000|07"},
    {[](auto& s) { s.Format(u"%I64d|%llu", -5000000000LL, 5000000000ULL); }, u"-5000000000|5000000000"},
    {[](auto& s) { s.Format(u"%5.1f|%x|%ld|%lx|%I32d", 0.5, 255u, -5L, 17UL, 3); }, u"  0.5|ff|-5|11|3"},
    {[](auto& s) { s.Format(u"[%5s][%-4s][%.2s][%%]", u"ab", u"x", u"wxyz"); }, u"[   ab][x   ][wx][%]"},
    {[](auto& s) { s.Format(u"[%*d][%*c][%.*s]", 3, 7, -2, u'c', 1, u"yz"); }, u"[  7][c ][y]"},
    {[](auto& s) { s.Format(u"%s|%S|%.1S", static_cast<const char16_t*>(nullptr), "\xe4\xb8\xad", "ab"); },
     u"(null)|\u4e2d|a"},
    {[](auto& s) { s.Format(u"%hd|%q|trailing %", 5); }, u"5|%q|trailing "},  // unknown codes stay
    {[](auto& s) { s.Format(nullptr); }, u""},
    {[](auto& s) { s = u"x"; s.AppendFormat(u"%s%s", s.GetString(), s.GetString()); }, u"xxx"},  // ourselves
};
TEST(CString, FormatTable) {
  for (const FormatCase& c : kFormats) {
    CString s(u"old");
    c.format(s);
    EXPECT_EQ(U(s), c.expected);
  }
}
TEST(CString, StorageAcrossTheInlineBorder) {
  const char16_t raw[] = {u'a', 0, u'b'};  // a NUL inside is counted
  for (const CString& s : {CString(static_cast<const char*>(nullptr)), CString(u"x", -3), CString(raw, 3)})
    EXPECT_TRUE(s.GetString()[s.GetLength()] == 0 && s.Find(u'b') == s.GetLength() - 1);
  for (int length : {0, 1, 62, 63, 64, 65, 200}) {
    CString s(u'7', length), moved(CString(s) + u'8'), copy(std::move(moved));
    moved = std::move(copy);
    EXPECT_TRUE(copy.IsEmpty() && moved.GetLength() == length + 1 && moved[length + 1] == 0) << length;
    EXPECT_TRUE(moved.Left(length) == s && moved.Right(1) == u"8" && moved > s && s < moved) << length;
  }
  CString s(u'a', 60);
  s += s;  // grows past the inline buffer while reading itself
  s.Append(s.GetString() + 100, 20);
  s = s.GetString() + 130;  // assign ten units from our own block
  s.Insert(5, s.GetString());
  EXPECT_EQ(s, CString(u'a', 20));
}
TEST(CString, BufferTokensAndUtf8) {
  CString s(u"abc");
  char16_t* p = s.GetBufferSetLength(100);
  EXPECT_TRUE(s.GetLength() == 100 && p[0] == u'a' && p[3] == 0);  // the new part is zero
  s.ReleaseBuffer();                                                // up to the first NUL
  s.GetBuffer(10)[1] = u'Q';
  s.ReleaseBuffer(2);
  CString list(u",a,,bc,");
  int pos = 0;
  const Out tokens{s, list.Tokenize(u",", pos), list.Tokenize(u",", pos), list.Tokenize(u",", pos)};
  EXPECT_EQ(U(tokens.text), u"aQ|a|bc|");
  EXPECT_EQ(pos, -1);
  CString utf8("\xe4\xb8\xad" "a" "\xf0\x9d\x90\x80");  // U+4E2D, a, U+1D400
  EXPECT_EQ(U(utf8), u"\u4e2d" "a" "\xD835\xDC00");
  EXPECT_EQ(utf8.ToUtf8(), "\xe4\xb8\xad" "a" "\xf0\x9d\x90\x80");
  EXPECT_EQ(U(CString("\xff" "a")) + U(CString::FromUtf8("\xe4\xb8")), u"\uFFFD" "a" "\uFFFD");  // bad; cut
  EXPECT_EQ(CString(u"\xD800x").ToUtf8(), "\xef\xbf\xbd" "x");
}
