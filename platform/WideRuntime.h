// platform/WideRuntime.h: the runtime's text functions on 16-bit text.
// Internal: nothing under include/ includes it.
//
// Strings are NUL-terminated char16_t; a null pointer reads as empty text.
// Case folding, white space and collation follow the process locale through
// the C library, one 16-bit unit at a time. Surrogate units are never folded
// and never white space: each passes through as it is.
//
// Collation widens the text to UTF-32 first. A well-formed surrogate pair
// becomes its code point; a lone surrogate becomes U+FFFD, so broken text
// still sorts, next to other replaced characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vkt {

// Ordering by the process locale (LC_COLLATE): <0, 0 or >0.
int wcscoll(const char16_t* a, const char16_t* b);
// As wcscoll, both texts first folded to lower case.
int _wcsicoll(const char16_t* a, const char16_t* b);

// Unit-by-unit comparison after folding each unit to lower case: <0, 0 or >0,
// by the folded unit values. _wcsnicmp looks at most at n units.
int _wcsicmp(const char16_t* a, const char16_t* b);
int _wcsnicmp(const char16_t* a, const char16_t* b, std::size_t n);

// One unit. Folding keeps a unit whose counterpart lies outside 16 bits.
char16_t towupper(char16_t ch);
char16_t towlower(char16_t ch);
bool iswdigit(char16_t ch);  // '0'..'9' only, in every locale
bool iswspace(char16_t ch);  // by the process locale (LC_CTYPE)

// Optional white space, an optional sign, then decimal digits up to the first
// other unit; 0 when no digit follows. Chosen: a value beyond the type's range
// saturates at its limit (INT_MAX / INT_MIN, INT64_MAX / INT64_MIN), so a
// long digit run never wraps to a small or negative number.
int _wtoi(const char16_t* text);
std::int64_t _wtoi64(const char16_t* text);

std::size_t wcslen(const char16_t* text);  // units before the NUL; 0 for null

// UTF-16 to UTF-32 in wchar_t, as the C library's wide functions take it
// (lone surrogates become U+FFFD), and back (code points past U+FFFF become
// pairs; values that are no code point become U+FFFD).
std::wstring Utf16ToWide(const char16_t* text, std::size_t length);
std::u16string WideToUtf16(const wchar_t* text, std::size_t length);

}  // namespace vkt
