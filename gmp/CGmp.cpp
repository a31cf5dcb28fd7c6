// gmp/CGmp.cpp: CGmp's object, its invariants and the plain digit work:
// construction, the tests, Validate, comparison, addition and subtraction,
// moving the point, rounding and the operators. Text lives in
// CGmpText.cpp, multiplication in CGmpMul.cpp, division in CGmpDivide.cpp,
// doubles, machine integers and streams in CGmpConvert.cpp.
#include "CGmp.h"

#include <algorithm>
#include <utility>

#include "gmp/Digits.h"
#include "gmp/GmpOps.h"

using namespace vkt::digits;

VKTCALC_API int g_bLS = 0;

namespace vkt::gmp {

bool IsCanonical(const CGmp& x) {
  const char16_t* p = x.m_strInt.GetString();
  const int l = x.m_strInt.GetLength();
  const char16_t* q = x.m_strDec.GetString();
  const int d = x.m_strDec.GetLength();
  if ((l > 1 && p[0] == u'0') || (d > 0 && q[d - 1] == u'0')) return false;
  return AllDigitUnits(p, l) && AllDigitUnits(q, d);
}

void AddMagnitude(CGmp& x, const CGmp& b) {
  if (&x == &b) {
    CGmp copy(b);
    AddMagnitude(x, copy);
    return;
  }
  int carry = Digits_AddDec(x.m_strDec, b.m_strDec);
  StripTrailingZeros(x.m_strDec);
  Digits_AddInt(x.m_strInt, b.m_strInt);
  if (carry) Digits_Inc(x.m_strInt);
}

void SubtractMagnitude(CGmp& x, const CGmp& b) {
  if (&x == &b) {
    x.m_strInt.Empty();
    x.m_strDec.Empty();
    return;
  }
  int borrow = Digits_MinuDec(x.m_strDec, b.m_strDec);
  Digits_MinuInt(x.m_strInt, b.m_strInt);
  if (borrow) {
    static const CString kOne(u"1");
    Digits_MinuInt(x.m_strInt, kOne);
  }
}

int CompareMagnitude(const CGmp& x, const CGmp& b) {
  int c = Digits_CompareInt(x.m_strInt, b.m_strInt);
  return c != 0 ? c : Digits_CompareDec(x.m_strDec, b.m_strDec);
}

void MultiplyByDigit(CGmp& x, int k) {
  if (k == 1) return;
  if (k < 0 || k > 9) return;  // a digit or nothing: keeps the carry small
  int carry = 0;
  char16_t* dec = x.m_strDec.GetBuffer();
  for (int i = x.m_strDec.GetLength() - 1; i >= 0; --i) {
    int t = DigitValue(dec[i]) * k + carry;
    dec[i] = static_cast<char16_t>(u'0' + t % 10);
    carry = t / 10;
  }
  char16_t* in = x.m_strInt.GetBuffer();
  for (int i = x.m_strInt.GetLength() - 1; i >= 0; --i) {
    int t = DigitValue(in[i]) * k + carry;
    in[i] = static_cast<char16_t>(u'0' + t % 10);
    carry = t / 10;
  }
  if (carry != 0) x.m_strInt.Insert(0, static_cast<char16_t>(u'0' + carry));
}

}  // namespace vkt::gmp

namespace {

bool Negative(const CGmp& x) { return x.m_bNeg != 0; }

// add and minu are one algorithm; subtract turns the sign test round.
void AddSigned(CGmp& x, CGmp* b, bool subtract) {
  if (b == nullptr || b->IsZero()) return;
  if (b == &x) {
    CGmp copy(*b);
    AddSigned(x, &copy, subtract);
    return;
  }
  const bool neg = Negative(x);
  const bool magnitudesAdd = subtract ? neg != Negative(*b) : neg == Negative(*b);
  if (magnitudesAdd) {
    vkt::gmp::AddMagnitude(x, *b);
    return;
  }
  const int c = vkt::gmp::CompareMagnitude(x, *b);
  if (c == 0) {
    // Equal magnitudes: a zero, not a null value, and not negative.
    x.Empty();
    x.m_strInt = u"0";
  } else if (c < 0) {
    CGmp diff(*b);
    vkt::gmp::SubtractMagnitude(diff, x);
    x.m_strInt = std::move(diff.m_strInt);
    x.m_strDec = std::move(diff.m_strDec);
    x.m_bNeg = neg ? 0 : 1;
  } else {
    vkt::gmp::SubtractMagnitude(x, *b);
  }
}

}  // namespace

CGmp::CGmp() : m_bNeg(0) {}

CGmp::CGmp(int value) : m_bNeg(0) { Set(value); }

CGmp::CGmp(double value) : m_bNeg(0) { Set(value); }

CGmp::CGmp(const char16_t* text) : m_bNeg(0) { SetString(text, CheckStrict_Full); }

CGmp::CGmp(const CGmp* other) : m_bNeg(0) { Set(other); }

CGmp::CGmp(const CGmp& other)
    : m_strInt(other.m_strInt), m_strDec(other.m_strDec), m_bNeg(other.m_bNeg) {}

CGmp::~CGmp() = default;

void CGmp::Empty() {
  m_strInt.Empty();
  m_strDec.Empty();
  m_bNeg = 0;
}

void CGmp::Set(int value) { Set(static_cast<long long>(value)); }

void CGmp::Set(long value) { Set(static_cast<long long>(value)); }

void CGmp::Set(long long value) {
  Empty();
  // The magnitude as unsigned, so that the lowest value has one too.
  unsigned long long magnitude = static_cast<unsigned long long>(value);
  if (value < 0) {
    m_bNeg = 1;
    magnitude = 0ULL - magnitude;
  }
  AppendUnsigned(m_strInt, magnitude);
}

void CGmp::Set(const CGmp* other) {
  if (other == nullptr) {
    Empty();
    return;
  }
  if (other == this) return;
  m_strInt = other->m_strInt;
  m_strDec = other->m_strDec;
  m_bNeg = other->m_bNeg;
}

CGmp& CGmp::operator=(const CGmp& other) {
  Set(&other);
  return *this;
}

CGmp& CGmp::operator=(int value) {
  Set(value);
  return *this;
}

bool CGmp::IsNull() const { return m_strInt.IsEmpty() && m_strDec.IsEmpty(); }

bool CGmp::IsZero() const { return Digits_IsZero(m_strInt) && Digits_IsZero(m_strDec); }

bool CGmp::IsZero(const CGmp* value) { return value == nullptr || value->IsZero(); }

bool CGmp::IsZero(const char16_t* text) { return CGmp(text).IsZero(); }

bool CGmp::IsOne() const { return Digits_IsZero(m_strDec) && m_strInt == u"1"; }

int CGmp::IsOddInt() const { return Digits_IsOdd(m_strInt); }

void CGmp::Neg() { m_bNeg = IsZero() ? 0 : (m_bNeg ? 0 : 1); }

void CGmp::Validate() {
  const char16_t* dec = m_strDec.GetString();
  int d = m_strDec.GetLength();
  while (d > 0 && dec[d - 1] == u'0') --d;

  const char16_t* in = m_strInt.GetString();
  int l = m_strInt.GetLength();
  if (l > 1 && in[0] == u'0') {
    StripLeadingZeros(m_strInt);
    l = m_strInt.GetLength();
  }
  // Whole numbers below 19 digits pay for nothing more.
  if (d != 0 || l >= 19) {
    const int maxDec = GetMaxDecLength();
    const int maxFull = GetMaxFullLength();
    if (d > maxDec) {
      d = maxDec;
      while (d > 0 && dec[d - 1] == u'0') --d;
    }
    if (l + d > maxFull) {
      d = l <= maxFull ? maxFull - l : 0;
      while (d > 0 && dec[d - 1] == u'0') --d;
    }
  }
  SetLength(m_strDec, d);
  if (m_bNeg && d == 0 && Digits_IsZero(m_strInt)) m_bNeg = 0;
}

int CGmp::Compare(CGmp* b, int flag) {
  const bool thisNull = IsNull();
  const bool bNull = b == nullptr || b->IsNull();  // a null pointer is a null value
  if (thisNull && bNull) return 0;
  if (thisNull) {
    if (b->IsZero()) return flag > 0 ? -1 : 0;
    return Negative(*b) ? 1 : -1;
  }
  if (bNull) {
    if (IsZero()) return flag > 0 ? 1 : 0;
    return Negative(*this) ? -1 : 1;
  }
  const bool neg = Negative(*this);
  if (neg != Negative(*b)) return neg ? -1 : 1;
  const int c = Compare_NotNeg(*b);
  return neg ? -c : c;
}

void CGmp::add(CGmp* b) { AddSigned(*this, b, false); }

void CGmp::minu(CGmp* b) { AddSigned(*this, b, true); }

void CGmp::Round(int n) {
  if (n < 0 || m_strDec.GetLength() <= n) return;
  const char16_t next = m_strDec.GetString()[n];
  SetLength(m_strDec, n);
  if (next < u'5') {
    Validate();
    return;
  }
  // One unit of the last kept place, with the sign of this.
  CGmp unit;
  unit.m_bNeg = m_bNeg;
  if (n == 0) {
    unit.m_strInt = u"1";
  } else {
    char16_t* p = unit.m_strDec.GetBufferSetLength(n);
    std::fill(p, p + n - 1, u'0');
    p[n - 1] = u'1';
  }
  add(&unit);
}

void CGmp::Mul_10exp(int n) {
  if (n < 1 || IsZero()) return;
  // Chosen: a shift to an integer part of more than kMaxShiftedDigits digits
  // is refused and leaves the value as it was, rather than exhausting memory.
  if (static_cast<long long>(m_strInt.GetLength()) + n > vkt::gmp::kMaxShiftedDigits) return;
  if (Digits_IsZero(m_strInt)) m_strInt.Empty();
  const int d = m_strDec.GetLength();
  if (d < n) {
    m_strInt += m_strDec;
    m_strDec.Empty();
    Digits_Pad(m_strInt, n - d);
  } else {
    m_strInt.Append(m_strDec.GetString(), n);
    m_strDec.Delete(0, n);
  }
  Validate();
}

void CGmp::Div_10exp(int n) {
  if (n < 1 || IsZero()) return;
  if (Digits_IsZero(m_strInt)) m_strInt.Empty();
  const int l = m_strInt.GetLength();
  if (n - l >= GetMaxDecLength()) {
    // Every digit lands past the decimal limit: Validate would cut them all
    // and clear the sign. Spares the string of n zeros for a huge n.
    Empty();
    return;
  }
  CString dec;
  if (l < n) {
    dec.Preallocate(n + m_strDec.GetLength());
    Digits_Pad(dec, n - l);
    dec += m_strInt;
    m_strInt.Empty();
  } else {
    dec.Preallocate(n + m_strDec.GetLength());
    dec.Append(m_strInt.GetString() + l - n, n);
    SetLength(m_strInt, l - n);
  }
  dec += m_strDec;
  m_strDec = std::move(dec);
  Validate();
}

void CGmp::add_NoNeg(CGmp* b) {
  if (b != nullptr) vkt::gmp::AddMagnitude(*this, *b);
}

void CGmp::minu_NoNeg(CGmp* b) {
  if (b != nullptr) vkt::gmp::SubtractMagnitude(*this, *b);
}

void CGmp::mul_NoNeg(CGmp* b) {
  if (b != nullptr) vkt::gmp::MultiplyMagnitude(*this, *b);
}

void CGmp::mul_1To9(int k) { vkt::gmp::MultiplyByDigit(*this, k); }

int CGmp::Compare_NotNeg(CGmp& b) { return vkt::gmp::CompareMagnitude(*this, b); }

// Operators. Each reaches the arithmetic through the virtual slots, so a
// subclass that replaces add also changes +=.

CGmp& CGmp::operator+=(const CGmp& b) {
  if (&b == this) {
    CGmp copy(b);
    add(&copy);
  } else {
    add(const_cast<CGmp*>(&b));
  }
  return *this;
}

CGmp& CGmp::operator+=(int b) {
  if (b != 0) {
    CGmp t(b);
    add(&t);
  }
  return *this;
}

CGmp& CGmp::operator+=(const CString& text) {
  CGmp t(text.GetString());
  add(&t);
  return *this;
}

CGmp& CGmp::operator-=(const CGmp& b) {
  if (&b == this) {
    CGmp copy(b);
    minu(&copy);
  } else {
    minu(const_cast<CGmp*>(&b));
  }
  return *this;
}

CGmp& CGmp::operator-=(int b) {
  if (b != 0) {
    CGmp t(b);
    minu(&t);
  }
  return *this;
}

CGmp& CGmp::operator*=(const CGmp& b) {
  if (&b == this) {
    CGmp copy(b);
    mul(&copy);
  } else {
    mul(const_cast<CGmp*>(&b));
  }
  return *this;
}

CGmp& CGmp::operator*=(int b) {
  if (b != 1) {
    CGmp t(b);
    mul(&t);
  }
  return *this;
}

CGmp& CGmp::operator/=(const CGmp& b) {
  if (&b == this) {
    CGmp copy(b);
    div(&copy);
  } else {
    div(const_cast<CGmp*>(&b));
  }
  return *this;
}

CGmp& CGmp::operator/=(int b) {
  if (b != 0) {
    CGmp t(b);
    div(&t);
  }
  return *this;
}

// The comparisons do not change the object; Compare is not const only
// because hosts override it through the interface as it stands.
bool CGmp::operator==(const CGmp& b) const {
  return const_cast<CGmp*>(this)->Compare(const_cast<CGmp*>(&b), 0) == 0;
}

bool CGmp::operator==(int b) const {
  if (b == 0) return IsZero();
  CGmp t(b);
  return const_cast<CGmp*>(this)->Compare(&t, 0) == 0;
}

bool CGmp::operator>(const CGmp& b) const {
  return const_cast<CGmp*>(this)->Compare(const_cast<CGmp*>(&b), 0) > 0;
}

bool CGmp::operator>(int b) const {
  if (b == 0) return m_bNeg == 0 && !IsZero();
  CGmp t(b);
  return const_cast<CGmp*>(this)->Compare(&t, 0) > 0;
}

bool CGmp::operator<(const CGmp& b) const {
  return const_cast<CGmp*>(this)->Compare(const_cast<CGmp*>(&b), 0) < 0;
}

bool CGmp::operator<(int b) const {
  if (b == 0) return m_bNeg != 0;
  CGmp t(b);
  return const_cast<CGmp*>(this)->Compare(&t, 0) < 0;
}

bool CGmp::operator>=(int b) const {
  if (b == 0) return m_bNeg == 0;
  CGmp t(b);
  return const_cast<CGmp*>(this)->Compare(&t, 0) >= 0;
}

bool CGmp::operator<=(int b) const {
  if (b == 0) return m_bNeg != 0 || IsZero();
  CGmp t(b);
  return const_cast<CGmp*>(this)->Compare(&t, 0) <= 0;
}
