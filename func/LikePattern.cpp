// func/LikePattern.cpp: compiling, caching and matching like patterns.
//
// The matcher works in from both ends of the text while the pattern starts
// or ends with something other than %, and searches only between an inner %
// and the closing one.
#include "func/LikePattern.h"

#include "platform/Maps.h"
#include "platform/Sync.h"
#include "platform/WideRuntime.h"

namespace vkt::func {

CLikePattern::~CLikePattern() {
  for (CLikeToken* token : arrTokens) delete token;
}

namespace {

constexpr int kLiteral = 0;
constexpr int kAny = 1;  // %
constexpr int kOne = 2;  // _
constexpr int kSet = 3;

// Chosen: CMapStringToOb holds CObject*, which CLikePattern is not, so each
// cached pattern lives inside an entry that is one.
class CLikeEntry : public CObject {
 public:
  CLikePattern pattern;
};

struct LikeCache {
  CCritSec lock;           // held for lookup, compile and copy
  CMapStringToOb map{10};  // exact pattern text -> CLikeEntry; nothing is removed
};

// Chosen: made at the first use and never destroyed, so the compiled patterns
// live to the end of the process, also for a like that runs while other
// statics are being torn down.
LikeCache& Cache() {
  static LikeCache* const cache = new LikeCache();
  return *cache;
}

void AddToken(CLikePattern& pattern, int kind, const CString& text, int bInclude) {
  CLikeToken* token = new CLikeToken();
  token->nKind = kind;
  token->strText = text;
  token->bInclude = bInclude;
  pattern.arrTokens.Add(token);
}

void FlushLiteral(CLikePattern& pattern, CString& pending) {
  if (pending.IsEmpty()) return;
  AddToken(pattern, kLiteral, pending, 1);
  pending.Empty();
}

// The text between brackets. A leading ! or ^ negates; an empty rest gives no
// token; exactly three units x-y with x not above y are a range, spelled out.
// Chosen: that rule decides over any count of characters, so [a-z0-9] is the
// plain list of its six units, "-" twice.
void AddSet(CLikePattern& pattern, CString set) {
  int bInclude = 1;
  if (set[0] == u'!' || set[0] == u'^') {  // GetAt gives 0 on empty text
    set = set.Mid(1);
    bInclude = 0;
  }
  if (set.IsEmpty()) return;
  if (set.GetLength() == 3 && set[1] == u'-' && set[0] <= set[2]) {
    CString range;
    range.Preallocate(set[2] - set[0] + 1);
    for (int ch = set[0]; ch <= set[2]; ++ch) range += static_cast<char16_t>(ch);
    set = range;
  }
  AddToken(pattern, kSet, set, bInclude);
}

void Compile(const CString& text, CLikePattern& pattern) {
  CString pending;  // literal text not yet in a token
  const int length = text.GetLength();
  for (int i = 0; i < length; ++i) {
    const char16_t ch = text[i];
    if (ch != u'%' && ch != u'_' && ch != u'[') {
      pending += ch;
      continue;
    }
    FlushLiteral(pattern, pending);
    const int count = pattern.arrTokens.GetSize();
    if (ch == u'%') {
      if (count == 0 || pattern.arrTokens[count - 1]->nKind != kAny) AddToken(pattern, kAny, CString(), 1);
    } else if (ch == u'_') {
      AddToken(pattern, kOne, CString(), 1);
    } else {
      const int close = text.Find(u']', i + 1);
      if (close < 0) {  // unclosed: the [ and the rest are literal
        pending = text.Mid(i);
        break;
      }
      AddSet(pattern, text.Mid(i + 1, close - i - 1));
      i = close;
    }
  }
  FlushLiteral(pattern, pending);
  pattern.nMinLen = 0;
  for (const CLikeToken* token : pattern.arrTokens)
    if (token->nKind != kAny) pattern.nMinLen += token->nKind == kLiteral ? token->strText.GetLength() : 1;
}

// The text is matched by positions: tokens f..l of the pattern against the
// units s..e of the text. Neither the pattern nor the text is changed.
struct Matcher {
  CLikeToken* const* tokens;
  const char16_t* text;
  bool bCase;
  int e;  // the end of the text still to match

  static bool Same(char16_t a, char16_t b, bool exact) {
    return a == b || (!exact && vkt::towlower(a) == vkt::towlower(b));
  }

  // The literal standing at pos, inside the text before e.
  bool LiteralAt(const CString& literal, int pos, bool exact) const {
    const int length = literal.GetLength();
    if (length > e - pos) return false;
    for (int i = 0; i < length; ++i)
      if (!Same(literal[i], text[pos + i], exact)) return false;
    return true;
  }

  // A token of kind 2 or 3 against one unit. Other kinds than a set take any
  // unit, so that two % side by side (never compiled) still behave as one.
  bool TakesUnit(const CLikeToken& token, char16_t ch) const {
    if (token.nKind != kSet) return true;
    bool found = false;
    for (int i = 0; !found && i < token.strText.GetLength(); ++i) found = Same(token.strText[i], ch, bCase);
    return found == (token.bInclude != 0);
  }

  // Matches tokens from f on against the text from s on, up to the next % or
  // past l; false at the first difference.
  bool Advance(int& f, int l, int& s) const {
    for (; f <= l && tokens[f]->nKind != kAny; ++f) {
      const CLikeToken& token = *tokens[f];
      if (token.nKind == kLiteral) {
        if (!LiteralAt(token.strText, s, bCase)) return false;
        s += token.strText.GetLength();
      } else {
        if (s >= e || !TakesUnit(token, text[s])) return false;
        ++s;
      }
    }
    return true;
  }

  // The same from the end, while the last token is not %; tokens[f] is %.
  bool Retreat(int f, int& l, int s) {
    for (; l > f && tokens[l]->nKind != kAny; --l) {
      const CLikeToken& token = *tokens[l];
      if (token.nKind == kLiteral) {
        const int length = token.strText.GetLength();
        if (length > e - s || !LiteralAt(token.strText, e - length, bCase)) return false;
        e -= length;
      } else {
        if (e <= s || !TakesUnit(token, text[e - 1])) return false;
        --e;
      }
    }
    return true;
  }

  // The next place at or after from where the token behind a % can start.
  // A literal is looked for exactly first; only once no exact occurrence is
  // left, and case does not count, case-blind ones follow. So with case
  // ignored a case-blind occurrence in front of an exact one is no place.
  int Candidate(const CLikeToken& token, int from, bool& exact) const {
    if (token.nKind != kLiteral) {
      for (int q = from; q < e; ++q)
        if (TakesUnit(token, text[q])) return q;
      return -1;
    }
    for (int q = from; exact && q < e; ++q)
      if (LiteralAt(token.strText, q, true)) return q;
    exact = false;
    for (int q = from; !bCase && q < e; ++q)
      if (LiteralAt(token.strText, q, false)) return q;
    return -1;
  }

  // Chosen: the search is greedy rather than a trial of every candidate on
  // copies, whose work grows as the text length to the power of the inner %
  // count ('%a%a%a%b%' on a long run of 'a'). Each stretch of tokens between
  // two % goes to its first candidate where it matches in full and stays
  // there. The answers are the same: the candidates behind a later start are
  // a subset of those behind an earlier one (for literals too, exact ones
  // first), so whatever a later place leaves to match, the first one can
  // match as well. Each stretch is tried at most once per text position, and
  // nothing recurses.
  int Match(int f, int l, int s) {
    if (!Advance(f, l, s)) return 0;
    if (f > l) return s == e ? 1 : 0;
    if (!Retreat(f, l, s)) return 0;
    while (f < l) {  // tokens[f] and tokens[l] are %
      const CLikeToken& next = *tokens[f + 1];
      bool exact = true;
      for (int q = Candidate(next, s, exact);; q = Candidate(next, q + 1, exact)) {
        if (q < 0) return 0;
        int g = f + 1;
        int t = q;
        if (Advance(g, l, t)) {
          f = g;
          s = t;
          break;
        }
      }
    }
    return 1;  // only the closing % is left
  }
};

}  // namespace

CLikePattern* GetLikePattern(CString& pattern) {
  LikeCache& cache = Cache();
  CCritSecGuard guard(cache.lock);
  CLikePattern* result = new CLikePattern();
  CObject* found = nullptr;
  if (!cache.map.Lookup(pattern, found)) {
    CLikeEntry* entry = new CLikeEntry();
    cache.map.SetAt(pattern, entry);
    Compile(pattern, entry->pattern);
    found = entry;
  }
  const CLikePattern& compiled = static_cast<CLikeEntry*>(found)->pattern;
  for (const CLikeToken* token : compiled.arrTokens)
    AddToken(*result, token->nKind, token->strText, token->bInclude);
  result->nMinLen = compiled.nMinLen;
  return result;
}

int MatchLike(CLikePattern* pattern, CString& text, int bCase) {
  if (pattern == nullptr) return 0;
  const int count = pattern->arrTokens.GetSize();
  if (count == 0) return 1;  // the empty pattern matches everything
  if (text.GetLength() < pattern->nMinLen) return 0;
  Matcher matcher{pattern->arrTokens.begin(), text.GetString(), bCase != 0, text.GetLength()};
  return matcher.Match(0, count - 1, 0);
}

}  // namespace vkt::func
