// gmp/CGmpSqrt.cpp: CGmp's square root. The root is defined by Newton's
// iteration on CGmp values: from the number itself, at most 40 rounds of
// x = (x + this / x) / 2, each division cut at the limits, stopping when an
// estimate equals the one before (decimals compared up to the 39th place).
// SqrtFast runs those very rounds on binary whole numbers, every value scaled
// by 10^maxDec, so that each cut, sum and comparison matches the operators'
// digit for digit; values outside its bounds take the operators themselves.
#include <cstdint>
#include <utility>

#include "CGmp.h"
#include "gmp/Digits.h"
#include "gmp/GmpOps.h"

using namespace vkt::digits;
using vkt::gmp::kPow10;

namespace {

using U64 = std::uint64_t;
__extension__ typedef unsigned __int128 U128;

// Room for 10^140, the largest dividend: 60 digits scaled twice by 10^40.
constexpr int kCap = 9;
constexpr int kMaxPow = 101;  // 10^(maxFull + maxDec) is the largest power compared
constexpr int kChunk = 19;    // decimal digits per 64-bit step

// A natural number in base 2^64, least significant limb first; n counts the
// limbs without zero limbs on top (0 for the number 0).
struct Big {
  U64 w[kCap];
  int n;
};

void Trim(Big& a) {
  while (a.n > 0 && a.w[a.n - 1] == 0) --a.n;
}

// (hi * 2^64 + lo) / d for hi below d, the remainder in rest: one machine
// division where the processor has it.
inline U64 Div2By1(U64 hi, U64 lo, U64 d, U64& rest) {
#if defined(__x86_64__)
  U64 q;
  __asm__("divq %4" : "=a"(q), "=d"(rest) : "a"(lo), "d"(hi), "rm"(d));
  return q;
#else
  const U128 n = (static_cast<U128>(hi) << 64) | lo;
  rest = static_cast<U64>(n % d);
  return static_cast<U64>(n / d);
#endif
}

// a = a * m + add.
void MulAdd(Big& a, U64 m, U64 add) {
  U64 carry = add;
  for (int i = 0; i < a.n; ++i) {
    const U128 p = static_cast<U128>(a.w[i]) * m + carry;
    a.w[i] = static_cast<U64>(p);
    carry = static_cast<U64>(p >> 64);
  }
  if (carry != 0) a.w[a.n++] = carry;
}

// a = a / d; returns the remainder.
U64 DivSmall(Big& a, U64 d) {
  U64 rest = 0;
  for (int i = a.n - 1; i >= 0; --i) a.w[i] = Div2By1(rest, a.w[i], d, rest);
  Trim(a);
  return rest;
}

void MulPow10(Big& a, int k) {
  for (; k > 0; k -= kChunk) MulAdd(a, kPow10[k < kChunk ? k : kChunk], 0);
}

void DivPow10(Big& a, int k) {
  for (; k > 0; k -= kChunk) DivSmall(a, kPow10[k < kChunk ? k : kChunk]);
}

int Cmp(const Big& a, const Big& b) {
  if (a.n != b.n) return a.n < b.n ? -1 : 1;
  for (int i = a.n - 1; i >= 0; --i)
    if (a.w[i] != b.w[i]) return a.w[i] < b.w[i] ? -1 : 1;
  return 0;
}

void Add(Big& a, const Big& b) {
  U64 carry = 0;
  int i = 0;
  for (; i < b.n || (carry != 0 && i < a.n); ++i) {
    const U128 s = static_cast<U128>(i < a.n ? a.w[i] : 0) + (i < b.n ? b.w[i] : 0) + carry;
    a.w[i] = static_cast<U64>(s);
    carry = static_cast<U64>(s >> 64);
  }
  if (i > a.n) a.n = i;
  if (carry != 0) a.w[a.n++] = carry;
}

// |a - b| when it is below 10, else 10.
U64 SmallDistance(const Big& a, const Big& b) {
  const bool aBig = Cmp(a, b) >= 0;
  const Big& hi = aBig ? a : b;
  const Big& lo = aBig ? b : a;
  U64 borrow = 0;
  U64 low = 0;
  for (int i = 0; i < hi.n; ++i) {
    const U64 x = hi.w[i];
    const U64 y = i < lo.n ? lo.w[i] : 0;
    const U64 d = x - y - borrow;
    borrow = (x < y || (x == y && borrow != 0)) ? 1 : 0;
    if (i == 0) {
      low = d;
    } else if (d != 0) {
      return 10;
    }
  }
  return low < 10 ? low : 10;
}

void ShiftRight1(Big& a) {
  for (int i = 0; i < a.n; ++i) a.w[i] = (a.w[i] >> 1) | (i + 1 < a.n ? a.w[i + 1] << 63 : 0);
  Trim(a);
}

// q = u div v, v not zero (Knuth's algorithm D).
void Divide(const Big& u, const Big& v, Big& q) {
  if (Cmp(u, v) < 0) {
    q.n = 0;
    return;
  }
  if (v.n == 1) {
    q = u;
    DivSmall(q, v.w[0]);
    return;
  }
  const int n = v.n;
  const int m = u.n - n;
  const int s = __builtin_clzll(v.w[n - 1]);
  U64 vn[kCap];
  U64 un[kCap + 1];
  for (int i = n - 1; i > 0; --i) vn[i] = (v.w[i] << s) | (s ? v.w[i - 1] >> (64 - s) : 0);
  vn[0] = v.w[0] << s;
  un[u.n] = s ? u.w[u.n - 1] >> (64 - s) : 0;
  for (int i = u.n - 1; i > 0; --i) un[i] = (u.w[i] << s) | (s ? u.w[i - 1] >> (64 - s) : 0);
  un[0] = u.w[0] << s;
  for (int j = m; j >= 0; --j) {
    const U128 top = (static_cast<U128>(un[j + n]) << 64) | un[j + n - 1];
    U128 qhat = ~U64{0};  // the top limbs are equal: the digit is at most B - 1
    if (un[j + n] < vn[n - 1]) {
      U64 rest = 0;
      qhat = Div2By1(un[j + n], un[j + n - 1], vn[n - 1], rest);
    }
    U128 rhat = top - qhat * vn[n - 1];
    while ((rhat >> 64) == 0 && qhat * vn[n - 2] > ((rhat << 64) | un[j + n - 2])) {
      --qhat;
      rhat += vn[n - 1];
    }
    const U64 qd = static_cast<U64>(qhat);
    U64 carry = 0;
    U64 borrow = 0;
    for (int i = 0; i <= n; ++i) {
      U64 sub = carry;
      if (i < n) {
        const U128 p = static_cast<U128>(qd) * vn[i] + carry;
        sub = static_cast<U64>(p);
        carry = static_cast<U64>(p >> 64);
      }
      const U64 x = un[i + j];
      const U64 t = x - sub;
      const U64 b1 = x < sub ? 1 : 0;
      un[i + j] = t - borrow;
      borrow = b1 + (t < borrow ? 1 : 0);
    }
    q.w[j] = qd;
    if (borrow != 0) {  // qhat was one too large: add the divisor back
      q.w[j] = qd - 1;
      U64 c = 0;
      for (int i = 0; i < n; ++i) {
        const U128 t = static_cast<U128>(un[i + j]) + vn[i] + c;
        un[i + j] = static_cast<U64>(t);
        c = static_cast<U64>(t >> 64);
      }
      un[j + n] += c;
    }
  }
  q.n = m + 1;
  Trim(q);
}

// 10^k for k up to kMaxPow, built once.
const Big* Powers() {
  static const struct Table {
    Big p[kMaxPow + 1];
    Table() : p() {
      p[0].w[0] = 1;
      p[0].n = 1;
      for (int k = 1; k <= kMaxPow; ++k) {
        p[k] = p[k - 1];
        MulAdd(p[k], 10, 0);
      }
    }
  } table;
  return table.p;
}

// The cut of Validate on a value scaled by 10^maxDec: the decimals beyond
// maxFull minus the count of integer digits go.
void Cut(Big& x, int maxFull, int maxDec) {
  const Big* pow = Powers();
  int cut = 0;
  while (cut < maxDec && Cmp(x, pow[maxFull + cut]) >= 0) ++cut;
  if (cut == 0) return;
  DivPow10(x, cut);
  MulPow10(x, cut);
}

// The digits at p..p+count read into a.
void ReadDigits(Big& a, const char16_t* p, int count) {
  while (count > 0) {
    const int k = count < kChunk ? count : kChunk;
    U64 chunk = 0;
    for (int i = 0; i < k; ++i) chunk = chunk * 10 + static_cast<U64>(DigitValue(p[i]));
    MulAdd(a, kPow10[k], chunk);
    p += k;
    count -= k;
  }
}

// Writes a's digits, exactly `width` of them with zeros in front, backwards
// from end; a becomes 0.
void WriteDigits(Big& a, char16_t* end, int width) {
  while (width > 0) {
    const int k = width < kChunk ? width : kChunk;
    U64 chunk = DivSmall(a, kPow10[k]);
    for (int i = 0; i < k; ++i) {
      *--end = static_cast<char16_t>(u'0' + chunk % 10);
      chunk /= 10;
    }
    width -= k;
  }
}

// The estimates agree as x == previous sees them: equal integer parts and
// decimal strings (trailing zeros gone) equal over the first maxDec - 1
// places, where a place past the end differs from every digit.
bool SameEstimate(const Big& a, const Big& b) {
  const U64 distance = SmallDistance(a, b);
  if (distance == 0) return true;
  if (distance >= 10) return false;
  Big qa = a;
  Big qb = b;
  const U64 ra = DivSmall(qa, 10);
  const U64 rb = DivSmall(qb, 10);
  if (Cmp(qa, qb) != 0) return false;
  // Only the last place differs: one of them has all maxDec places, and the
  // other must reach the place before it.
  return (ra != 0 && rb != 0) || DivSmall(qa, 10) != 0;
}

}  // namespace

namespace vkt::gmp {

bool SqrtFast(CGmp& x) {
  const int maxDec = CGmp::GetMaxDecLength();
  const int maxFull = CGmp::GetMaxFullLength();
  const int l = x.m_strInt.GetLength();
  const int d = x.m_strDec.GetLength();
  // Only values in the form Validate leaves, within the limits.
  if (!IsCanonical(x) || d > maxDec || l + d > maxFull || x.IsZero()) return false;
  Big a{};
  ReadDigits(a, x.m_strInt.GetString(), l);
  ReadDigits(a, x.m_strDec.GetString(), d);
  MulPow10(a, maxDec - d);
  Big dividend = a;
  MulPow10(dividend, maxDec);
  Big estimate = a;
  Big t;
  for (int round = 0; round < 40; ++round) {
    Divide(dividend, estimate, t);
    Cut(t, maxFull, maxDec);
    Add(t, estimate);
    ShiftRight1(t);
    Cut(t, maxFull, maxDec);
    if (t.n == 0) return false;  // cannot happen for a positive value
    const bool same = SameEstimate(t, estimate);
    estimate = t;
    if (same) break;
  }
  // Digits out: maxDec decimals, then the integer part ("" below 1, as the
  // division leaves it).
  char16_t decimals[kMaxPow];
  WriteDigits(estimate, decimals + maxDec, maxDec);
  int decLength = maxDec;
  while (decLength > 0 && decimals[decLength - 1] == u'0') --decLength;
  char16_t whole[kMaxPow];
  int wholeLength = 0;
  while (estimate.n != 0 && wholeLength + kChunk <= kMaxPow) {
    WriteDigits(estimate, whole + kMaxPow - wholeLength, kChunk);
    wholeLength += kChunk;
  }
  const char16_t* first = whole + kMaxPow - wholeLength;
  while (wholeLength > 0 && *first == u'0') {
    ++first;
    --wholeLength;
  }
  x.m_strInt = CString(std::u16string_view(first, static_cast<std::size_t>(wholeLength)));
  x.m_strDec = CString(std::u16string_view(decimals, static_cast<std::size_t>(decLength)));
  x.m_bNeg = 0;
  return true;
}

}  // namespace vkt::gmp

int CGmp::sqrt() {
  if (m_bNeg) return 0;
  if (IsZero()) return 1;
  if (vkt::gmp::SqrtFast(*this)) return 1;
  // The iteration on the operators, for values SqrtFast does not take.
  // Large numbers are not done in 40 rounds and keep the last estimate,
  // which lies above the root.
  CGmp x(*this);
  CGmp previous;
  CGmp t;
  for (int round = 0; round < 40; ++round) {
    previous = x;
    t = *this;
    t /= x;
    x += t;
    x /= 2;
    if (x == previous) break;
  }
  m_strInt = std::move(x.m_strInt);
  m_strDec = std::move(x.m_strDec);
  m_bNeg = x.m_bNeg;
  Validate();
  return 1;
}
