// gmp/CGmpDivide.cpp: CGmp's division and remainder. Division
// turns both operands into whole numbers of the same ratio and writes the
// quotient cut (never rounded) at the decimal limit: through 64 bits when
// both have at most 18 digits, else by long division on base-10^9 limbs.
// The remainder is built from the operators; the root lives in CGmpSqrt.cpp.
#include <algorithm>
#include <utility>

#include "CGmp.h"
#include "gmp/Digits.h"
#include "gmp/GmpOps.h"
#include "gmp/Limbs.h"

using namespace vkt::digits;
using vkt::gmp::kPow10;

namespace {

__extension__ typedef unsigned __int128 Uint128;

bool AllDigits(const CString& s) { return AllDigitUnits(s.GetString(), s.GetLength()); }

// Up to 18 digits; a unit that is no digit counts as 0, as on the long road.
std::uint64_t SmallValue(const CString& s) {
  const char16_t* p = s.GetString();
  std::uint64_t v = 0;
  for (int i = 0, n = s.GetLength(); i < n; ++i) v = v * 10 + (IsDigit(p[i]) ? DigitValue(p[i]) : 0);
  return v;
}

// Writes value as exactly `width` digits, zeros in front.
void WriteFixed(char16_t* out, std::uint64_t value, int width) {
  for (int i = width - 1; i >= 0; --i) {
    out[i] = static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  }
}

// Stores a quotient: its whole digits (none for 0) and maxDec decimal
// digits, then validates. A quotient below 1 keeps an empty integer part
// once a decimal digit came, and the digit 0 when none did, as the
// digit-by-digit division leaves them.
void StoreQuotient(CGmp& x, const char16_t* whole, int wholeLength, const char16_t* frac, int fracLength) {
  while (fracLength > 0 && frac[fracLength - 1] == u'0') --fracLength;
  if (wholeLength > 0) {
    char16_t* p = x.m_strInt.GetBufferSetLength(wholeLength);
    std::copy(whole, whole + wholeLength, p);
  } else if (fracLength > 0) {
    x.m_strInt.Empty();
  } else {
    x.m_strInt = u"0";
  }
  char16_t* p = x.m_strDec.GetBufferSetLength(fracLength);
  std::copy(frac, frac + fracLength, p);
  x.Validate();
}

// x = whole numbers a / d through 64 bits: the whole part by one division,
// the decimals 18 at a time.
void DivideSmall(CGmp& x, std::uint64_t a, std::uint64_t d, int maxDec) {
  const std::uint64_t whole = a / d;
  std::uint64_t rest = a % d;
  char16_t wholeText[20];
  int wholeLength = 0;
  for (std::uint64_t w = whole; w != 0; w /= 10) wholeText[wholeLength++] = static_cast<char16_t>(u'0' + w % 10);
  std::reverse(wholeText, wholeText + wholeLength);
  vkt::limbs::UnitBuffer frac(maxDec);
  int fracLength = 0;
  while (fracLength < maxDec && rest != 0) {
    const int chunk = std::min(18, maxDec - fracLength);
    const Uint128 num = static_cast<Uint128>(rest) * kPow10[chunk];
    const std::uint64_t digits = static_cast<std::uint64_t>(num / d);
    rest = static_cast<std::uint64_t>(num % d);
    WriteFixed(frac.Data() + fracLength, digits, chunk);
    fracLength += chunk;
  }
  StoreQuotient(x, wholeText, wholeLength, frac.Data(), fracLength);
}

// x = whole numbers a / d on limbs: a followed by maxDec zeros, divided.
void DivideLong(CGmp& x, const CString& a, const CString& d, int maxDec) {
  using vkt::limbs::LimbsFor;
  const int nu = LimbsFor(a.GetLength() + maxDec);
  const int nv = LimbsFor(d.GetLength());
  vkt::limbs::LimbBuffer u(nu);
  vkt::limbs::LimbBuffer v(nv);
  const int mu = vkt::limbs::FromDigits(a.GetString(), a.GetLength(), nullptr, 0, maxDec, u.Data());
  const int mv = vkt::limbs::FromDigits(d.GetString(), d.GetLength(), nullptr, 0, 0, v.Data());
  vkt::limbs::LimbBuffer q(std::max(1, mu - mv + 1));
  const int mq = vkt::limbs::Divide(u.Data(), mu, v.Data(), mv, q.Data());
  vkt::limbs::UnitBuffer text(mq * vkt::limbs::kLimbDigits + maxDec);
  char16_t* p = text.Data();
  int t = vkt::limbs::ToDigits(q.Data(), mq, p);
  if (t < maxDec) {
    std::copy_backward(p, p + t, p + maxDec);
    std::fill(p, p + maxDec - t, u'0');
    t = maxDec;
  }
  StoreQuotient(x, p, t - maxDec, p + t - maxDec, maxDec);
}

}  // namespace

namespace vkt::gmp {

void div_Prepare(CGmp& x, CGmp& y) {
  if (Digits_IsZero(x.m_strInt)) x.m_strInt.Empty();
  if (Digits_IsZero(y.m_strInt)) y.m_strInt.Empty();
  StripTrailingZeros(x.m_strDec);
  StripTrailingZeros(y.m_strDec);
  const int places = std::max(x.m_strDec.GetLength(), y.m_strDec.GetLength());
  Digits_Pad(x.m_strDec, places - x.m_strDec.GetLength());
  Digits_Pad(y.m_strDec, places - y.m_strDec.GetLength());
  for (CGmp* v : {&x, &y}) {
    v->m_strInt += v->m_strDec;
    v->m_strDec.Empty();
    StripLeadingZeros(v->m_strInt);
  }
  const char16_t* px = x.m_strInt.GetString();
  const char16_t* py = y.m_strInt.GetString();
  int lx = x.m_strInt.GetLength();
  int ly = y.m_strInt.GetLength();
  while (lx > 0 && ly > 0 && px[lx - 1] == u'0' && py[ly - 1] == u'0') {
    --lx;
    --ly;
  }
  SetLength(x.m_strInt, lx);
  SetLength(y.m_strInt, ly);
  // Halving a long dividend together with the divisor may bring it under
  // the 19 digits of the 64-bit road.
  if (lx > 18) {
    for (int i = 0; i < 5; ++i) {
      if (Digits_IsOdd(x.m_strInt) || Digits_IsOdd(y.m_strInt)) break;
      Digits_Half(x.m_strInt);
      Digits_Half(y.m_strInt);
    }
  }
}

}  // namespace vkt::gmp

int CGmp::div(CGmp* b) {
  if (b == nullptr || b->IsZero()) return 0;
  // Chosen: a divisor holding a unit that is no digit divides like zero.
  if (!AllDigits(b->m_strInt) || !AllDigits(b->m_strDec)) return 0;
  CGmp divisor(*b);  // also a copy when b is this
  // The work is done on a copy and moved in at the end, so that exhausted
  // memory (std::bad_alloc) leaves this value as it was.
  CGmp x(*this);
  x.m_bNeg = (x.m_bNeg != 0) == (divisor.m_bNeg != 0) ? 0 : 1;
  auto divide = [&divisor](CGmp& q) {
    if (divisor.IsOne()) return;  // the digits stay as they are, unvalidated
    vkt::gmp::div_Prepare(q, divisor);
    if (divisor.m_strInt == u"1") return;  // the whole number stands in m_strInt
    const int maxDec = GetMaxDecLength();
    if (Digits_IsZero(q.m_strInt)) {
      q.m_strInt = u"0";
      q.Validate();
      return;
    }
    if (q.m_strInt.GetLength() <= 18 && divisor.m_strInt.GetLength() <= 18) {
      const std::uint64_t d = SmallValue(divisor.m_strInt);
      if (d != 0) DivideSmall(q, SmallValue(q.m_strInt), d, maxDec);
      return;
    }
    CString dividend(std::move(q.m_strInt));
    // Chosen: units of the dividend that are no digit count as 0 (the limbs
    // need digits).
    if (!AllDigits(dividend)) {
      char16_t* p = dividend.GetBuffer();
      for (int i = 0, n = dividend.GetLength(); i < n; ++i)
        if (!IsDigit(p[i])) p[i] = u'0';
    }
    DivideLong(q, dividend, divisor.m_strInt, maxDec);
  };
  divide(x);
  m_strInt = std::move(x.m_strInt);
  m_strDec = std::move(x.m_strDec);
  m_bNeg = x.m_bNeg;
  return 1;
}

void CGmp::mod(CGmp& b) {
  if (b.IsZero()) return;  // a null value counts as zero
  CGmp t(*this);
  t /= b;
  const bool negative = t.m_bNeg != 0;
  const bool fraction = !Digits_IsZero(t.m_strDec);
  t.m_strDec.Empty();
  t.Validate();
  if (negative && fraction) {
    // Towards zero above, rounded down here.
    t -= 1;
    t.Validate();
  }
  t *= b;
  *this -= t;
}
