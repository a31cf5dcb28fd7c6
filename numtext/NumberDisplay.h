// numtext/NumberDisplay.h: the steps under a cell's number display that are
// not public. Not installed; nothing under include/ may include it.
#pragma once

#include "platform/CString.h"

namespace vkt::numtext {

// Fits the decimals of a number text to n without rounding. n below 0 strips
// trailing zeros behind a point, and then a bare trailing point. Otherwise
// exactly n characters end up behind the point: the text is cut or padded
// with zeros, n of 0 drops the point, and a text without a point gets one
// only when n is above 0. The empty text stays empty.
void FitDecimals(CString& text, int n);

}  // namespace vkt::numtext
