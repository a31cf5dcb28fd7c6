// func/LikePattern.h: the pattern language of like. Internal: nothing under
// include/ includes it.
//
//   %      any run of characters, also none; several in a row count as one
//   _      exactly one character
//   [set]  one character of the set; [!set] and [^set] one that is not in it.
//          A set of exactly three units with "-" in the middle (a-z) is a
//          range unless reversed; any other text, [c-a] too, is a plain list,
//          so [a-z0-9] is the six units a - z 0 - 9. An unclosed [ is
//          literal; [] and [!] are nothing.
//   other  itself; there is no escape character
//
// Compiled patterns are kept in a process-wide cache, which never shrinks,
// under a lock of its own; callers always get a copy of their own.
#pragma once

#include "platform/Arrays.h"
#include "platform/CString.h"

namespace vkt::func {

// One element of a compiled pattern.
class CLikeToken {
 public:
  int nKind = 0;     // 0 literal text, 1 %, 2 _, 3 set
  CString strText;   // the literal, or the set's characters with a range spelled out
  int bInclude = 1;  // a set: 1 for [set], 0 for [!set]
};

class CLikePattern {
 public:
  CLikePattern() = default;
  // The tokens are owned: a copy is made token by token, never memberwise.
  CLikePattern(const CLikePattern&) = delete;
  CLikePattern& operator=(const CLikePattern&) = delete;
  virtual ~CLikePattern();

  CArray<CLikeToken*, CLikeToken*> arrTokens;  // owned
  int nMinLen = 0;  // the shortest text that can match
};

// A new pattern object for the text, which the caller owns and deletes.
// Chosen: the text is left as it is.
CLikePattern* GetLikePattern(CString& pattern);
// 1 when the text matches, 0 otherwise and for a null pattern. bCase nonzero:
// case counts; zero: units are compared folded to lower case. Chosen: neither
// the pattern nor the text is changed, so a pattern may be matched again.
int MatchLike(CLikePattern* pattern, CString& text, int bCase);

}  // namespace vkt::func
