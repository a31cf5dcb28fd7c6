// gmp/Digits.cpp: schoolbook arithmetic on bare digit strings, one 16-bit
// unit per decimal digit, worked from the right end on the raw buffers.
// CGmp combines these into signed decimals; the limits and signs are its
// business, except for the decimal comparison, which stops at the limit.
#include "gmp/Digits.h"

#include <algorithm>
#include <cstring>

#include "CGmp.h"
#include "platform/Config.h"

namespace vkt::digits {

namespace {

char16_t ToUnit(int value) { return static_cast<char16_t>(u'0' + value); }

// Every natural number of up to 18 digits fits a signed 64-bit integer. Stray
// units make a meaningless value; unsigned arithmetic keeps that defined.
std::uint64_t ParseSmall(const char16_t* p, int n) {
  std::uint64_t v = 0;
  for (int i = 0; i < n; ++i) v = v * 10 + static_cast<std::uint64_t>(DigitValue(p[i]));
  return v;
}

void AssignUnsigned(CString& s, std::uint64_t value) {
  s.Empty();
  AppendUnsigned(s, value);
}

// Subtracts s from a as often as a is not below s and returns the count. The
// bound only matters for stray units, which could otherwise loop for ever.
int SubtractRepeatedly(CString& a, const CString& s) {
  int count = 0;
  while (count < 100 && Digits_CompareInt(a, s) >= 0) {
    Digits_MinuInt(a, s);
    ++count;
  }
  return count;
}

// q += count followed by zeros zeros.
void AddScaledCount(CString& q, int count, int zeros) {
  if (count == 0) return;
  CString part;
  AppendUnsigned(part, static_cast<std::uint64_t>(count));
  Digits_Pad(part, zeros);
  Digits_AddInt(q, part);
}

}  // namespace

void StripLeadingZeros(CString& s) {
  const char16_t* p = s.GetString();
  int n = s.GetLength();
  int z = 0;
  while (z < n && p[z] == u'0') ++z;
  if (z > 0) s.Delete(0, z);
}

void StripTrailingZeros(CString& s) {
  const char16_t* p = s.GetString();
  int n = s.GetLength();
  while (n > 0 && p[n - 1] == u'0') --n;
  SetLength(s, n);
}

void SetLength(CString& s, int length) {
  if (length < s.GetLength()) s.GetBufferSetLength(length);
}

void AppendUnsigned(CString& s, std::uint64_t value) {
  char16_t buffer[20];
  int n = 0;
  do {
    buffer[n++] = static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  } while (value != 0);
  std::reverse(buffer, buffer + n);
  s.Append(buffer, n);
}

bool AllDigitUnits(const char16_t* units, int length) {
  int i = 0;
  // Four units at a time: each must lie below 0x80, and then adding 0x50
  // sets bit 7 exactly from '0' on, adding 0x46 exactly from ':' on.
  for (; i + 4 <= length; i += 4) {
    std::uint64_t x;
    std::memcpy(&x, units + i, sizeof x);
    if ((x & 0xFF80FF80FF80FF80ULL) != 0) return false;
    if (((x + 0x0050005000500050ULL) & 0x0080008000800080ULL) != 0x0080008000800080ULL) return false;
    if (((x + 0x0046004600460046ULL) & 0x0080008000800080ULL) != 0) return false;
  }
  for (; i < length; ++i)
    if (!IsDigit(units[i])) return false;
  return true;
}

bool Digits_IsZero(const char16_t* digits, int length) {
  for (int i = 0; i < length; ++i)
    if (digits[i] != u'0') return false;
  return true;
}

bool Digits_IsZero(const CString& s) { return Digits_IsZero(s.GetString(), s.GetLength()); }

int Digits_IsOdd(const CString& s) {
  int n = s.GetLength();
  return n == 0 ? 0 : (s.GetString()[n - 1] & 1);
}

void Digits_Pad(CString& s, int n) {
  if (n == 0) return;
  int length = s.GetLength();
  if (n > 0) {
    char16_t* p = s.GetBufferSetLength(length + n);
    std::fill(p + length, p + length + n, u'0');
    return;
  }
  n = -n;
  char16_t* p = s.GetBufferSetLength(length + n);
  std::copy_backward(p, p + length, p + length + n);
  std::fill(p, p + n, u'0');
}

void Digits_Inc(CString& a) {
  int n = a.GetLength();
  char16_t* p = a.GetBuffer();
  int carry = 1;
  for (int i = n - 1; i >= 0 && carry != 0; --i) {
    int sum = DigitValue(p[i]) + carry;
    carry = sum > 9 ? 1 : 0;
    p[i] = ToUnit(carry ? sum - 10 : sum);
  }
  if (carry != 0) a.Insert(0, u'1');
}

void Digits_AddInt(CString& a, const CString& b) {
  if (Digits_IsZero(a)) {
    a = b;
    return;
  }
  if (&a == &b) {
    CString copy(b);
    Digits_AddInt(a, copy);
    return;
  }
  int lb = b.GetLength();
  if (a.GetLength() < lb) Digits_Pad(a, a.GetLength() - lb);
  int la = a.GetLength();
  char16_t* pa = a.GetBuffer();
  const char16_t* pb = b.GetString();
  int carry = 0;
  int i = la - 1;
  for (int j = lb - 1; j >= 0; --j, --i) {
    int sum = DigitValue(pa[i]) + DigitValue(pb[j]) + carry;
    carry = sum > 9 ? 1 : 0;
    pa[i] = ToUnit(carry ? sum - 10 : sum);
  }
  for (; i >= 0 && carry != 0; --i) {
    int sum = DigitValue(pa[i]) + carry;
    carry = sum > 9 ? 1 : 0;
    pa[i] = ToUnit(carry ? sum - 10 : sum);
  }
  if (carry != 0) a.Insert(0, u'1');
}

int Digits_MinuInt(CString& a, const CString& b) {
  if (&a == &b) {
    a.Empty();  // x - x
    return 0;
  }
  int lb = b.GetLength();
  if (a.GetLength() < lb) Digits_Pad(a, a.GetLength() - lb);
  int la = a.GetLength();
  char16_t* pa = a.GetBuffer();
  const char16_t* pb = b.GetString();
  int borrow = 0;
  int i = la - 1;
  for (int j = lb - 1; j >= 0; --j, --i) {
    int d = DigitValue(pa[i]) - DigitValue(pb[j]) - borrow;
    borrow = d < 0 ? 1 : 0;
    pa[i] = ToUnit(borrow ? d + 10 : d);
  }
  for (; i >= 0 && borrow != 0; --i) {
    int d = DigitValue(pa[i]) - borrow;
    borrow = d < 0 ? 1 : 0;
    pa[i] = ToUnit(borrow ? d + 10 : d);
  }
  StripLeadingZeros(a);
  return borrow;
}

int Digits_AddDec(CString& a, const CString& b) {
  if (Digits_IsZero(b)) return 0;
  if (&a == &b) {
    CString copy(b);
    return Digits_AddDec(a, copy);
  }
  int lb = b.GetLength();
  if (a.GetLength() < lb) Digits_Pad(a, lb - a.GetLength());
  char16_t* pa = a.GetBuffer();
  const char16_t* pb = b.GetString();
  // Places past b's end keep their digit until a carry arrives, and none can
  // arrive from the right of b: start at b's last digit.
  int carry = 0;
  for (int i = lb - 1; i >= 0; --i) {
    int sum = DigitValue(pa[i]) + DigitValue(pb[i]) + carry;
    carry = sum > 9 ? 1 : 0;
    pa[i] = ToUnit(carry ? sum - 10 : sum);
  }
  return carry;
}

int Digits_MinuDec(CString& a, const CString& b) {
  if (&a == &b) {
    a.Empty();
    return 0;
  }
  int lb = b.GetLength();
  if (a.GetLength() < lb) Digits_Pad(a, lb - a.GetLength());
  char16_t* pa = a.GetBuffer();
  const char16_t* pb = b.GetString();
  int borrow = 0;
  for (int i = lb - 1; i >= 0; --i) {
    int d = DigitValue(pa[i]) - DigitValue(pb[i]) - borrow;
    borrow = d < 0 ? 1 : 0;
    pa[i] = ToUnit(borrow ? d + 10 : d);
  }
  StripTrailingZeros(a);
  return borrow;
}

int Digits_CompareInt(const char16_t* a, int aLength, const char16_t* b, int bLength) {
  if (Digits_IsZero(a, aLength)) return Digits_IsZero(b, bLength) ? 0 : -1;
  if (aLength > bLength || Digits_IsZero(b, bLength)) return 1;
  if (aLength < bLength) return -1;
  for (int i = 0; i < aLength; ++i)
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
  return 0;
}

int Digits_CompareInt(const CString& a, const CString& b) {
  return Digits_CompareInt(a.GetString(), a.GetLength(), b.GetString(), b.GetLength());
}

int Digits_CompareDec(const CString& a, const CString& b) {
  if (Digits_IsZero(a)) return Digits_IsZero(b) ? 0 : -1;
  if (Digits_IsZero(b)) return 1;
  int la = a.GetLength();
  int lb = b.GetLength();
  int n = std::min(std::max(la, lb), CGmp::GetMaxDecLength() - 1);
  const char16_t* pa = a.GetString();
  const char16_t* pb = b.GetString();
  for (int i = 0; i < n; ++i) {
    // A place past the end sorts below every digit, 0 included.
    int ca = i < la ? static_cast<int>(pa[i]) : -1;
    int cb = i < lb ? static_cast<int>(pb[i]) : -1;
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return 0;
}

void Digits_Half(CString& s) {
  int n = s.GetLength();
  if (n < 19) {
    AssignUnsigned(s, ParseSmall(s.GetString(), n) / 2);
    return;
  }
  char16_t* p = s.GetBuffer();
  int out = 0;
  int carry = 0;
  for (int i = 0; i < n; ++i) {
    int v = carry + DigitValue(p[i]);
    int half = v / 2;
    carry = (v % 2) * 10;
    if (out == 0 && half == 0) continue;  // no leading zeros
    p[out++] = ToUnit(half);
  }
  SetLength(s, out);
}

std::int64_t Digits_DivFast(CString& a, const CString& d) {
  int la = a.GetLength();
  int ld = d.GetLength();
  if (la > 18 || ld > 18) return 0;
  std::uint64_t x = ParseSmall(a.GetString(), la);
  std::uint64_t y = ParseSmall(d.GetString(), ld);
  if (y == 0) return 0;
  std::uint64_t q = x / y;
  if (q == 0) return 0;
  AssignUnsigned(a, x - q * y);
  return static_cast<std::int64_t>(q);
}

void Digits_Div(CString& q, CString& a, const CString& d) {
  q.Empty();
  if (&a == &d) {
    CString copy(d);
    Digits_Div(q, a, copy);
    return;
  }
  // Each round shortens a or its distance to d by a place; the bound only
  // stops stray units from looping.
  const int rounds = 2 * a.GetLength() + 8;
  for (int round = 0; round < rounds; ++round) {
    if (Digits_IsZero(a)) return;
    int n = a.GetLength() - d.GetLength();
    if (n < 0) return;
    if (a.GetLength() < 19) {
      std::uint64_t x = ParseSmall(a.GetString(), a.GetLength());
      std::uint64_t y = ParseSmall(d.GetString(), d.GetLength());
      std::uint64_t r = y == 0 ? 0 : x / y;
      if (r != 0) {
        AssignUnsigned(a, x - r * y);
        CString part;
        AppendUnsigned(part, r);
        Digits_AddInt(q, part);
        return;
      }
    }
    if (n == 0) {
      AddScaledCount(q, SubtractRepeatedly(a, d), 0);
      return;
    }
    CString s(d);
    Digits_Pad(s, n);
    if (Digits_CompareInt(a, s) >= 0) {
      AddScaledCount(q, SubtractRepeatedly(a, s), n);
    } else if (n >= 2) {
      SetLength(s, s.GetLength() - 1);
      AddScaledCount(q, SubtractRepeatedly(a, s), n - 1);
    } else {
      AddScaledCount(q, SubtractRepeatedly(a, d), 0);
    }
  }
}

}  // namespace vkt::digits
