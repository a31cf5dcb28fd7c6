// gmp/Digits.h: the digit-string layer under CGmp. Not installed; nothing
// under include/ may include it.
//
// A natural number is a string of '0'..'9', most significant digit first;
// the empty string reads as 0. Decimal digits are left-aligned: index 0 is
// the tenths. A missing position reads as 0. Callers promise digits only; a
// stray unit gives a meaningless result but never undefined behaviour.
#pragma once

#include <cstdint>

#include "platform/CString.h"

namespace vkt::digits {

inline int DigitValue(char16_t ch) { return static_cast<int>(ch) - u'0'; }
inline bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

bool AllDigitUnits(const char16_t* units, int length);   // only '0'..'9'
bool Digits_IsZero(const char16_t* digits, int length);  // empty or all '0'
bool Digits_IsZero(const CString& s);
int Digits_IsOdd(const CString& s);  // low bit of the last digit; 0 for ""
// n above 0 appends n zeros, n below 0 puts -n zeros in front.
void Digits_Pad(CString& s, int n);
void Digits_Inc(CString& a);  // a += 1; "" becomes "1"
// a += b. A zero a is replaced by a copy of b, leading zeros and all.
void Digits_AddInt(CString& a, const CString& b);
// a -= b, and a must not be below b. Leading zeros are stripped, so equal
// numbers leave the empty string. Returns the final borrow.
int Digits_MinuInt(CString& a, const CString& b);
// Left-aligned a += b; returns the carry out of the tenths. a grows to b's
// length and may end in zeros.
int Digits_AddDec(CString& a, const CString& b);
// Left-aligned a -= b, trailing zeros stripped; returns the borrow out of the
// tenths.
int Digits_MinuDec(CString& a, const CString& b);
// -1, 0 or 1. Length decides first, so both must be free of leading zeros.
int Digits_CompareInt(const char16_t* a, int aLength, const char16_t* b, int bLength);
int Digits_CompareInt(const CString& a, const CString& b);
// -1, 0 or 1 over at most the first (decimal limit - 1) places; a place past
// the end of a string is below every digit, 0 included.
int Digits_CompareDec(const CString& a, const CString& b);

// Division helpers. Digits_Half halves s (through 64 bits below 19 digits).
void Digits_Half(CString& s);
// Whole quotient of a by d through 64 bits, a left as the remainder; 0 (and
// a untouched) when either has more than 18 digits or the quotient is 0.
std::int64_t Digits_DivFast(CString& a, const CString& d);
// Long division by repeated subtraction: q = a div d, a = a mod d. Both free
// of leading zeros, d not zero.
void Digits_Div(CString& q, CString& a, const CString& d);

// Small helpers shared by the CGmp sources.
void StripLeadingZeros(CString& s);   // all of them: "000" becomes ""
void StripTrailingZeros(CString& s);
void SetLength(CString& s, int length);  // cuts s to length units (length <= current)
void AppendUnsigned(CString& s, std::uint64_t value);  // decimal, "0" for 0

}  // namespace vkt::digits
