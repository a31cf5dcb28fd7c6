// gmp/CGmpMul.cpp: CGmp's multiplication. The product is defined digit by
// digit: one partial product per non-zero digit of b, those for b's
// decimals cut to the limits before the digit multiplies them. Most products
// never meet such a cut, and for them the exact product on base-10^9 limbs
// gives the same digits many times faster; the rest go the long way.
#include <algorithm>
#include <utility>

#include "CGmp.h"
#include "gmp/Digits.h"
#include "gmp/GmpOps.h"
#include "gmp/Limbs.h"

using namespace vkt::digits;
using vkt::limbs::Limb;

namespace vkt::gmp {

namespace {

// Digits of a canonical integer part that count: none for "0".
int SignificantIntDigits(const CString& in) { return in == u"0" ? 0 : in.GetLength(); }

int TrailingZeros(const CString& s) {
  const char16_t* p = s.GetString();
  int n = s.GetLength();
  int z = 0;
  while (z < n && p[n - 1 - z] == u'0') ++z;
  return z;
}

// Would Validate cut a value of `intDigits` integer and `decDigits`
// significant decimal digits?
bool ValidateCuts(int intDigits, int decDigits) {
  if (decDigits <= 0) return false;
  const int maxFull = CGmp::GetMaxFullLength();
  if (decDigits > CGmp::GetMaxDecLength()) return true;
  return intDigits > maxFull || intDigits + decDigits > maxFull;
}

// True when no partial product of x times b is cut on its way into the sum;
// then the sum is the exact product. x and b are canonical and not zero.
bool PartialsAreExact(const CGmp& x, const CGmp& b) {
  const int la = SignificantIntDigits(x.m_strInt);
  const int da = x.m_strDec.GetLength();
  // Partial products of b's integer digits at power p >= 1 pass Validate
  // through Mul_10exp. Each has at most da - p decimals, and at most
  // la + da digits in all, one more where x times the digit can carry out
  // of x's top place (below 1: at most 1 + da).
  const char16_t* bi = b.m_strInt.GetString();
  const int lb = b.m_strInt.GetLength();
  int lowestPower = 0;
  int largestDigit = 0;
  for (int i = lb - 2; i >= 0; --i) {
    const int digit = DigitValue(bi[i]);
    if (digit == 0) continue;
    if (lowestPower == 0) lowestPower = lb - 1 - i;
    largestDigit = std::max(largestDigit, digit);
  }
  if (lowestPower > 0 && da - lowestPower > 0) {
    if (da - lowestPower > CGmp::GetMaxDecLength()) return false;
    int digits = 1 + da;
    if (la > 0) {
      // x lies below (its first two digits + 1) units of their place; times
      // the digit that stays below 100 units, or 10 for a one-digit x.
      const char16_t* xi = x.m_strInt.GetString();
      const int head = la >= 2 ? 10 * DigitValue(xi[0]) + DigitValue(xi[1]) : DigitValue(xi[0]);
      const bool carries = (head + 1) * largestDigit > (la >= 2 ? 100 : 10);
      digits = la + da + (carries ? 1 : 0);
    }
    if (digits > CGmp::GetMaxFullLength()) return false;
  }
  // Partial products of b's decimals: x moved k places right, then
  // validated. The digits kept only grow with k, so the last decimal of b
  // (non-zero, b being canonical) decides for all.
  const int k = b.m_strDec.GetLength();
  if (k > 0) {
    const int intDigits = std::max(0, la - k);
    const int decDigits = da > 0 ? da + k : std::max(0, k - TrailingZeros(x.m_strInt));
    if (ValidateCuts(intDigits, decDigits)) return false;
  }
  return true;
}

void AssignUnits(CString& s, const char16_t* p, int n) {
  char16_t* out = s.GetBufferSetLength(n);
  std::copy(p, p + n, out);
}

// Integer part that the digit-by-digit sum leaves for a product below 1: the
// one the last partial product brought. None after a decimal of b; after an
// integer digit at power 0 that of x; at power 1 the lone 0 that Mul_10exp
// leaves; at higher powers none.
bool ZeroIntStaysDigit(const CGmp& x, const CGmp& b) {
  if (!b.m_strDec.IsEmpty()) return false;
  const int lastPower = TrailingZeros(b.m_strInt);
  return lastPower == 1 || (lastPower == 0 && !x.m_strInt.IsEmpty());
}

// Stores the product digits p[0, count), of which the last `scale` are
// decimals, and validates.
void StoreProduct(CGmp& x, char16_t* p, int count, int scale, bool zeroIntStaysDigit) {
  if (count < scale) {
    std::copy_backward(p, p + count, p + scale);
    std::fill(p, p + scale - count, u'0');
    count = scale;
  }
  int whole = count - scale;
  int lead = 0;
  while (lead < whole && p[lead] == u'0') ++lead;
  int decEnd = count;
  while (decEnd > whole && p[decEnd - 1] == u'0') --decEnd;
  AssignUnits(x.m_strInt, p + lead, whole - lead);
  AssignUnits(x.m_strDec, p + whole, decEnd - whole);
  x.Validate();
  if (x.m_strInt.IsEmpty() && zeroIntStaysDigit) x.m_strInt = u"0";
}

// The exact product on limbs: right when no partial product is cut.
void MultiplyOnLimbs(CGmp& x, const CGmp& b) {
  const int la = SignificantIntDigits(x.m_strInt);
  const int da = x.m_strDec.GetLength();
  const int lb = SignificantIntDigits(b.m_strInt);
  const int db = b.m_strDec.GetLength();
  const int na = vkt::limbs::LimbsFor(la + da);
  const int nb = vkt::limbs::LimbsFor(lb + db);
  vkt::limbs::LimbBuffer a(na);
  vkt::limbs::LimbBuffer c(nb);
  vkt::limbs::LimbBuffer product(na + nb);
  const int ma = vkt::limbs::FromDigits(x.m_strInt.GetString(), la, x.m_strDec.GetString(), da, 0, a.Data());
  const int mb = vkt::limbs::FromDigits(b.m_strInt.GetString(), lb, b.m_strDec.GetString(), db, 0, c.Data());
  const int np = vkt::limbs::Multiply(a.Data(), ma, c.Data(), mb, product.Data());
  const int scale = da + db;
  vkt::limbs::UnitBuffer digits(np * vkt::limbs::kLimbDigits + scale + 1);
  const int t = vkt::limbs::ToDigits(product.Data(), np, digits.Data());
  StoreProduct(x, digits.Data(), t, scale, ZeroIntStaysDigit(x, b));
}

}  // namespace

// The partial products row by row into column sums, each cut where
// Validate would cut it, and the carries run once at the end. Column j holds
// the place 10^(j - decPlaces).
void MultiplyByRows(CGmp& x, const CGmp& b) {
  const int maxDec = CGmp::GetMaxDecLength();
  const int maxFull = CGmp::GetMaxFullLength();
  const int la = SignificantIntDigits(x.m_strInt);
  const int da = x.m_strDec.GetLength();
  const int n = la + da;  // digits of x, place of digit j is la - 1 - j
  const char16_t* pi = x.m_strInt.GetString();
  const char16_t* pd = x.m_strDec.GetString();
  const int lb = b.m_strInt.GetLength();
  const int decPlaces = std::max(da, maxDec);
  const int columns = decPlaces + la + lb + 2;
  vkt::limbs::LimbBuffer sums(columns);
  Limb* acc = sums.Data();
  std::fill(acc, acc + columns, 0);
  vkt::limbs::LimbBuffer digitsOfX(n + 1);
  Limb* a = digitsOfX.Data();
  for (int j = 0; j < n; ++j) a[j] = static_cast<Limb>(DigitValue(j < la ? pi[j] : pd[j - la]));
  // Highest place of x with a digit other than 0.
  int lead = 0;
  while (lead < n && a[lead] == 0) ++lead;
  const int leadPlace = la - 1 - lead;
  // Decimals that Validate keeps of a value whose top digit sits at place
  // `top` (negative: below 1).
  auto kept = [&](int top) {
    const int whole = top >= 0 ? top + 1 : 0;
    return whole <= maxFull ? std::min(maxDec, maxFull - whole) : 0;
  };

  // Integer digits of b: x times the digit, with its carries, then moved up
  // `power` places and, from power 1 on, cut.
  vkt::limbs::LimbBuffer rowBuffer(n + 1);
  Limb* row = rowBuffer.Data();  // row[0] is the carry place above x's top
  const char16_t* bi = b.m_strInt.GetString();
  for (int i = 0; i < lb; ++i) {
    const int digit = DigitValue(bi[i]);
    if (digit < 1 || digit > 9) continue;
    const int power = lb - 1 - i;
    Limb carry = 0;
    for (int j = n - 1; j >= 0; --j) {
      const Limb t = a[j] * static_cast<Limb>(digit) + carry;
      row[j + 1] = t % 10;
      carry = t / 10;
    }
    row[0] = carry;
    int last = n;  // row index of the lowest digit that is kept
    if (power >= 1) {
      int top = 0;
      while (top <= n && row[top] == 0) ++top;
      const int topPlace = la - top;  // place of row[r] is la - r
      if (top <= n) last = std::min(n, la + kept(topPlace + power) + power);
    }
    Limb* column = acc + decPlaces + power + la;  // column of row[0]
    for (int r = 0; r <= last; ++r) column[-r] += row[r];
  }
  // Decimal digits of b: x moved k places down and cut, then times the digit.
  const char16_t* bd = b.m_strDec.GetString();
  const int db = b.m_strDec.GetLength();
  for (int i = 0; i < db; ++i) {
    const int digit = DigitValue(bd[i]);
    if (digit < 1 || digit > 9) continue;
    const int k = i + 1;
    // Digit j lands at place la - 1 - j - k and stays while that is not
    // below -kept.
    const int last = std::min(n - 1, la - 1 - k + kept(leadPlace - k));
    Limb* column = acc + decPlaces + la - 1 - k;  // column of digit 0
    for (int j = 0; j <= last; ++j) column[-j] += a[j] * static_cast<Limb>(digit);
  }

  Limb carry = 0;
  for (int c = 0; c < columns; ++c) {
    const Limb t = acc[c] + carry;
    acc[c] = t % 10;
    carry = t / 10;
  }
  vkt::limbs::UnitBuffer text(columns);
  char16_t* p = text.Data();
  for (int c = columns - 1; c >= 0; --c) *p++ = static_cast<char16_t>(u'0' + acc[c]);
  StoreProduct(x, text.Data(), columns, decPlaces, ZeroIntStaysDigit(x, b));
}

bool MultiplyFast(CGmp& x, const CGmp& b) {
  if (!IsCanonical(x) || !IsCanonical(b) || b.IsZero()) return false;
  if (x.IsZero()) {
    // Every partial product is zero and hands its integer part, x's own,
    // to the sum: "0" stays zero, "" stays null.
    x.Validate();
  } else if (PartialsAreExact(x, b)) {
    MultiplyOnLimbs(x, b);
  } else {
    MultiplyByRows(x, b);
  }
  return true;
}

void MultiplyStepwise(CGmp& x, const CGmp& b) {
  if (&x == &b) {
    CGmp copy(b);
    MultiplyStepwise(x, copy);
    return;
  }
  CGmp multiplicand;
  multiplicand.m_strInt = std::move(x.m_strInt);
  multiplicand.m_strDec = std::move(x.m_strDec);
  x.m_strInt.Empty();
  x.m_strDec.Empty();
  CGmp partial;
  const char16_t* bi = b.m_strInt.GetString();
  const int lb = b.m_strInt.GetLength();
  for (int i = 0; i < lb; ++i) {
    const int digit = DigitValue(bi[i]);
    if (digit < 1 || digit > 9) continue;
    partial = multiplicand;
    MultiplyByDigit(partial, digit);
    const int power = lb - 1 - i;
    if (power >= 1) partial.Mul_10exp(power);
    AddMagnitude(x, partial);
  }
  const char16_t* bd = b.m_strDec.GetString();
  const int db = b.m_strDec.GetLength();
  for (int i = 0; i < db; ++i) {
    const int digit = DigitValue(bd[i]);
    if (digit < 1 || digit > 9) continue;
    // Cut to the limits first, multiplied afterwards: digits that fall off
    // here are lost before the digit could carry them back.
    partial = multiplicand;
    partial.Div_10exp(i + 1);
    MultiplyByDigit(partial, digit);
    AddMagnitude(x, partial);
  }
  x.Validate();
}

void MultiplyMagnitude(CGmp& x, const CGmp& b) {
  if (!MultiplyFast(x, b)) MultiplyStepwise(x, b);
}

}  // namespace vkt::gmp

void CGmp::mul(CGmp* b) {
  if (b == nullptr) return;
  if (b->IsZero()) {
    Empty();  // the product by zero is the null value
    return;
  }
  CGmp copy;
  if (b == this) {
    copy = *b;
    b = &copy;
  }
  m_bNeg = (m_bNeg != 0) == (b->m_bNeg != 0) ? 0 : 1;
  mul_NoNeg(b);
}
