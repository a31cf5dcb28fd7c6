// func/LikePattern.h: the pattern language of like. Internal: nothing under
// include/ includes it.
//
//   %      any run of characters, also none; several in a row count as one
//   _      exactly one character
//   [set]  one character of the set; [!set] and [^set] one that is not in it.
//          A set of exactly three units with "-" in the middle (a-z) is a
//          range; any other text is a plain list, so [a-z0-9] holds seven
//          characters. An unclosed [ is literal.
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
  virtual ~CLikePattern();

  CArray<CLikeToken*, CLikeToken*> arrTokens;  // owned
  int nMinLen = 0;  // the shortest text that can match
};

// A new pattern object for the text, which the caller owns; pattern may be
// used up.
CLikePattern* GetLikePattern(CString& pattern);
// 1 when the text matches; uses up both the pattern and the text. bCase
// nonzero: case counts.
int MatchLike(CLikePattern* pattern, CString& text, int bCase);

}  // namespace vkt::func
