// foundation/ListCutting.h: cutting a text into a list at a separator of any
// length. Internal: the list services of CUtilityCalc stand on it, and it
// is the rule that CStrKit's one-unit cut follows too.
#pragma once

#include "platform/Arrays.h"

namespace vkt {

// Cuts `text` (NUL-terminated) at each exact occurrence of the `sepLength`
// units at `sep`, scanning on behind each separator. `out` is emptied first;
// a null or empty text or separator leaves it empty. The growth step of
// `out` becomes the number of separators plus one.
//
// With `trim`, each item in front of a separator loses its leading and
// trailing blanks (U+0020 only) and the last item all white space
// (CString::Trim). When the text ends in the separator the last item is
// empty, whatever stands between the last cut and the end: with "aa" as the
// separator, "aaa" gives two empty items.
void CutList(CStringArray& out, const char16_t* text, const char16_t* sep, int sepLength, bool trim);

}  // namespace vkt
