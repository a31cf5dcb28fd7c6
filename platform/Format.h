// platform/Format.h: the printf-style engine behind CString::Format and
// AppendFormat. Internal.
//
// Conversions: d i u x X o (sizes h, l, ll, I32, I64), f F e E g G, p, c C,
// s (16-bit text; null prints "(null)"), S (narrow UTF-8 text), flags
// "-+ #0", width and precision as digits or '*'. "%%" is a percent sign, an
// unknown conversion is copied as it stands, a lone '%' at the end prints
// nothing. Widths and precisions are capped at 100,000.
#pragma once

#include <cstdarg>

#include "platform/CString.h"

namespace vkt::platform {

// Appends format with its arguments to out. A null format appends nothing.
void FormatInto(CString& out, const char16_t* format, va_list args);

}  // namespace vkt::platform
