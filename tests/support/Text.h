// tests/support/Text.h: how tests compare and show 16-bit text. Every test
// uses these rather than a helper of its own.
//
// U(x) turns a CString or a possibly null pointer into a std::u16string that
// EXPECT_EQ compares and prints; a null pointer reads "<null>". Row(x) is the
// same text as UTF-8, for the message of a failing row. PrintTo lets gtest
// print a CString operand directly.
#pragma once

#include <ostream>
#include <string>

#include "platform/CString.h"

inline void PrintTo(const CString& text, std::ostream* os) { *os << '"' << text.ToUtf8() << '"'; }

namespace vkt::test {

inline std::u16string U(const CString& text) { return std::u16string(text.View()); }
inline std::u16string U(const char16_t* text) { return text == nullptr ? u"<null>" : std::u16string(text); }

inline std::string Row(const CString& text) { return text.ToUtf8(); }
inline std::string Row(const char16_t* text) { return text == nullptr ? "<null>" : CString(text).ToUtf8(); }

}  // namespace vkt::test
