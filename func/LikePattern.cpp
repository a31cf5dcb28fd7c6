// func/LikePattern.cpp: compiling, caching and matching like patterns.
#include "func/LikePattern.h"

namespace vkt::func {

CLikePattern::~CLikePattern() {
  for (CLikeToken* token : arrTokens) delete token;
}

CLikePattern* GetLikePattern(CString&) { return new CLikePattern(); }

int MatchLike(CLikePattern*, CString&, int) { return 0; }

}  // namespace vkt::func
