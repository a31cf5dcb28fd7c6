// The like engine: compiled token lists, matching with and without case, the search on patterns with
// many inner %, and the shared cache under two threads.
#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "func/LikePattern.h"
#include "tests/support/Text.h"

namespace {

using vkt::func::CLikePattern;
using vkt::func::MatchLike;
using vkt::test::Row;
using vkt::test::U;

std::unique_ptr<CLikePattern> Get(const char16_t* text) {
  CString pattern(text);
  return std::unique_ptr<CLikePattern>(vkt::func::GetLikePattern(pattern));
}

// Each token as kind, "!" for a negated set, and text; then "=" and nMinLen.
std::u16string Tokens(const CLikePattern& pattern) {
  CString out;
  for (const vkt::func::CLikeToken* token : pattern.arrTokens)
    out.AppendFormat(u"%d%s%s ", token->nKind, token->bInclude ? u"" : u"!", token->strText.GetString());
  out.AppendFormat(u"=%d", pattern.nMinLen);
  return U(out);
}

struct LikeCase {
  const char16_t* pattern;
  const char16_t* text;
  int expected[2];                   // with the case flag 0 and 1
  const char16_t* tokens = nullptr;  // if set, the compiled pattern as Tokens() shows it
};

const LikeCase kLike[] = {
    {u"a%", u"abc", {1, 1}, u"0a 1 =1"},
    {u"%c", u"abc", {1, 1}},
    {u"a_c", u"abc", {1, 1}, u"0a 2 0c =3"},
    {u"%b%", u"abc", {1, 1}},
    {u"%", u"abc", {1, 1}},
    {u"a__d", u"abc", {0, 0}},
    {u"a%c", u"ab", {0, 0}},
    {u"", u"abc", {1, 1}, u"=0"},
    {u"", u"", {1, 1}},
    {u"%", u"", {1, 1}},
    {u"_", u"", {0, 0}},
    {u"_", u"ab", {0, 0}},
    {u"abc", u"aBc", {1, 0}},
    {u"a[b]c", u"aBc", {1, 0}},
    {u"[a-c]", u"b", {1, 1}, u"3abc =1"},
    {u"[a-c]", u"-", {0, 0}},
    {u"[a-c0]", u"-", {1, 1}, u"3a-c0 =1"},
    {u"[!a-c]", u"b", {0, 0}},
    {u"[^a-c]", u"d", {1, 1}, u"3!abc =1"},
    {u"[c-a]", u"b", {0, 0}, u"3c-a =1"},
    {u"[c-a]", u"-", {1, 1}},
    {u"[a-z0-9][a-a]", u"5a", {0, 0}, u"3a-z0-9 3a =2"},
    {u"a[b", u"a[b", {1, 1}, u"0a 0[b =3"},  // pending text goes out before the unclosed [
    {u"a[]b", u"ab", {1, 1}, u"0a 0b =2"},
    {u"a[!]b", u"ab", {1, 1}},
    {u"%[]%[!]%_%", u"x", {1, 1}, u"1 2 1 =1"},  // no token between: the % stay one
    {u"%a%y", u"xaby", {1, 1}},
    {u"%ab%ab", u"abab", {1, 1}},
    {u"%aa%a", u"aaa", {1, 1}},
    {u"%_x%", u"ax", {1, 1}},
    {u"%[a]b%", u"xaby", {1, 1}},
    {u"%[a]b%", u"xbay", {0, 0}},
    {u"a%%c", u"abc", {1, 1}, u"0a 1 0c =2"},
    {u"%[!a]", u"ab", {1, 1}},
    {u"%a_c%", u"abxadc", {1, 1}},  // the first place fails, the second matches
    {u"%a_b%", u"AXbY", {1, 0}},
    {u"%a_b%", u"AXbaY", {0, 0}},  // exact places first: the case-blind one in front is never tried
};

TEST(LikePattern, Match) {
  for (const LikeCase& c : kLike) {
    std::unique_ptr<CLikePattern> pattern = Get(c.pattern);
    const std::u16string before = Tokens(*pattern);
    EXPECT_EQ(before, c.tokens != nullptr ? c.tokens : before) << Row(c.pattern);
    for (int bCase = 0; bCase <= 1; ++bCase) {
      CString text(c.text);
      EXPECT_EQ(MatchLike(pattern.get(), text, bCase), c.expected[bCase])
          << Row(c.text) << " like " << Row(c.pattern) << " case " << bCase;
      EXPECT_EQ(Tokens(*pattern) + U(text), before + U(c.text));  // neither is changed
    }
  }
  CString text(u"a");
  EXPECT_EQ(MatchLike(nullptr, text, 0), 0);
}

TEST(LikePattern, ManyInnerPercentsAnswer) {
  // 9,999 'a' and the row's text: trying every place in turn would not finish
  const LikeCase kRows[] = {
      {u"%a%a%a%a%a%a%b", u"a", {0, 0}},
      {u"%a%a%a%a%a%a%b%", u"a", {0, 0}},
      {u"%a%a%a%a%a%a%b%", u"b", {1, 1}},
  };
  for (const LikeCase& c : kRows) {
    CString text = CString(u'a', 9999) + c.text;
    EXPECT_EQ(MatchLike(Get(c.pattern).get(), text, 0), c.expected[0]) << Row(c.pattern) << Row(c.text);
  }
}

TEST(LikePattern, TwoThreadsCompileOneNewPatternIntoCopiesOfTheirOwn) {
  std::unique_ptr<CLikePattern> got[2];
  auto compile = [&got](int i) { got[i] = Get(u"%thread[0-9]_x%"); };
  std::thread a(compile, 0), b(compile, 1);
  a.join();
  b.join();
  EXPECT_EQ(Tokens(*got[0]), u"1 0thread 30123456789 2 0x 1 =9");
  EXPECT_EQ(Tokens(*got[1]), Tokens(*got[0]));
  EXPECT_NE(got[0]->arrTokens[1], got[1]->arrTokens[1]);  // no token is shared
}

}  // namespace
