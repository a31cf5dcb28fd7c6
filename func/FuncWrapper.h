// func/FuncWrapper.h: the common wrapper that runs every body, built-in or
// registered, and the texts by number that the function manager shows.
// Internal: nothing under include/ includes it.
#pragma once

#include "func/LanguageText.h"

#include "CFuncItem.h"
#include "platform/CString.h"

class CErrorCollector;

namespace vkt::func {

// Runs `body` on the frame. Before the call each quoted argument loses its
// quotes (every enclosing pair, escapes undone) and arrQuoted marks it.
// After a return of 1 a non-empty result is left as it is when it is a pure
// number and the kind is not 1, 3 or 4; otherwise it is put into quotes
// anew, and a kind 2, 5 or 6 becomes 1. Gives 1. Any other return becomes
// an error text in pErr (the body's strResult, or text 1003 for 0 and 1004
// for -1 formatted with the call text), strResult is emptied and the
// answer is 0. The error number is left alone. A null pErr receives nothing.
int RunBody(CFuncPara& para, PFN_FUNCBODY body, CErrorCollector* pErr);

// "name(arg1, arg2)", or "name()" without arguments.
CString CallText(CFuncPara& para);

// Texts by number and the filling of "%s": shared with the error collector.
using vkt::FormatOneArgument;
using vkt::LanguageText;
inline void TranslateText(CString& text) { vkt::TranslateLanguageText(text); }

}  // namespace vkt::func
