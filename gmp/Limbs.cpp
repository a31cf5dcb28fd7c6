// gmp/Limbs.cpp: schoolbook multiplication and Knuth's long division on
// base-10^9 limbs. Nine digits per 32-bit limb keep every partial product and
// every trial quotient inside 64 bits, and make the way to and from digit
// text a matter of grouping, not of radix conversion.
#include "gmp/Limbs.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vkt::limbs {

namespace {

int Normalised(const Limb* a, int n) {
  while (n > 0 && a[n - 1] == 0) --n;
  return n;
}

Limb UnitValue(char16_t ch) { return static_cast<Limb>(ch - u'0'); }

// Four digit units as a number. On little-endian machines the four 16-bit
// units are combined in one register: pairs by one multiply, then the two
// pairs by another.
Limb Parse4(const char16_t* p) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t x;
    std::memcpy(&x, p, sizeof x);
    x -= 0x0030003000300030ULL;
    x = (x * 10 + (x >> 16)) & 0x0000FFFF0000FFFFULL;  // d0d1 in unit 0, d2d3 in unit 2
    return static_cast<Limb>((x * 100 + (x >> 32)) & 0xFFFFu);
  } else {
    return ((UnitValue(p[0]) * 10 + UnitValue(p[1])) * 10 + UnitValue(p[2])) * 10 + UnitValue(p[3]);
  }
}

// "00" to "99" as unit pairs.
struct PairTable {
  char16_t units[200];
  constexpr PairTable() : units() {
    for (int i = 0; i < 100; ++i) {
      units[2 * i] = static_cast<char16_t>(u'0' + i / 10);
      units[2 * i + 1] = static_cast<char16_t>(u'0' + i % 10);
    }
  }
};
constexpr PairTable kPairs;

// Writes v (below 10000) as four digit units.
void Write4(char16_t* out, Limb v) {
  std::memcpy(out, kPairs.units + 2 * (v / 100), 2 * sizeof(char16_t));
  std::memcpy(out + 2, kPairs.units + 2 * (v % 100), 2 * sizeof(char16_t));
}

// a *= m over n limbs; returns the carry out of the top limb.
Limb MultiplySmall(Limb* a, int n, Limb m) {
  std::uint64_t carry = 0;
  for (int i = 0; i < n; ++i) {
    std::uint64_t t = static_cast<std::uint64_t>(a[i]) * m + carry;
    a[i] = static_cast<Limb>(t % kBase);
    carry = t / kBase;
  }
  return static_cast<Limb>(carry);
}

int DivideSmall(const Limb* u, int nu, Limb v, Limb* q) {
  std::uint64_t rem = 0;
  for (int i = nu - 1; i >= 0; --i) {
    std::uint64_t cur = rem * kBase + u[i];
    q[i] = static_cast<Limb>(cur / v);
    rem = cur % v;
  }
  return Normalised(q, nu);
}

}  // namespace

int FromDigits(const char16_t* hi, int nHi, const char16_t* lo, int nLo, int zeros, Limb* out) {
  const int total = nHi + nLo + zeros;
  const int count = LimbsFor(total);
  if (count == 0) return 0;
  // Digit k of the number, wherever it lies.
  auto digit = [&](int k) -> Limb {
    if (k < nHi) return UnitValue(hi[k]);
    if (k < nHi + nLo) return UnitValue(lo[k - nHi]);
    return 0;
  };
  const int head = total - (count - 1) * kLimbDigits;
  Limb v = 0;
  for (int k = 0; k < head; ++k) v = v * 10 + digit(k);
  out[count - 1] = v;
  // Whole groups of nine straight from the text; only the groups that
  // straddle a border go digit by digit. Parsing from the text itself, not
  // from a copy just written, keeps the wide loads clear of pending stores.
  int k = head;
  for (int li = count - 2; li >= 0; --li, k += kLimbDigits) {
    const char16_t* p = nullptr;
    if (k + kLimbDigits <= nHi) {
      p = hi + k;
    } else if (k >= nHi && k + kLimbDigits <= nHi + nLo) {
      p = lo + (k - nHi);
    }
    if (p != nullptr) {
      out[li] = UnitValue(p[0]) * 100000000u + Parse4(p + 1) * 10000u + Parse4(p + 5);
    } else if (k >= nHi + nLo) {
      out[li] = 0;
    } else {
      v = 0;
      for (int d = 0; d < kLimbDigits; ++d) v = v * 10 + digit(k + d);
      out[li] = v;
    }
  }
  return Normalised(out, count);
}

int ToDigits(const Limb* a, int n, char16_t* out) {
  n = Normalised(a, n);
  if (n == 0) return 0;
  char16_t top[kLimbDigits];
  int t = 0;
  for (Limb v = a[n - 1]; v != 0; v /= 10) top[t++] = static_cast<char16_t>(u'0' + v % 10);
  int written = 0;
  while (t > 0) out[written++] = top[--t];
  for (int i = n - 2; i >= 0; --i) {
    const Limb v = a[i];
    const Limb rest = v % 100000000u;
    out[written] = static_cast<char16_t>(u'0' + v / 100000000u);
    Write4(out + written + 1, rest / 10000u);
    Write4(out + written + 5, rest % 10000u);
    written += kLimbDigits;
  }
  return written;
}

int Multiply(const Limb* a, int na, const Limb* b, int nb, Limb* out) {
  if (na > nb) return Multiply(b, nb, a, na, out);
  if (na == 0) return 0;
  if (na <= 18) {
    // Column by column: a column sums at most 18 products below 10^18, which
    // stays below 2^64, so no carry is needed inside it.
    std::uint64_t carry = 0;
    for (int c = 0; c < na + nb - 1; ++c) {
      const int first = c < nb ? 0 : c - nb + 1;
      const int last = c < na ? c : na - 1;
      std::uint64_t sum = 0;
      for (int i = first; i <= last; ++i) sum += static_cast<std::uint64_t>(a[i]) * b[c - i];
      const std::uint64_t low = sum % kBase + carry;  // sum + carry may pass 2^64
      out[c] = static_cast<Limb>(low % kBase);
      carry = sum / kBase + low / kBase;
    }
    out[na + nb - 1] = static_cast<Limb>(carry);
    return Normalised(out, na + nb);
  }
  std::fill(out, out + na + nb, 0);
  for (int i = 0; i < na; ++i) {
    const std::uint64_t ai = a[i];
    if (ai == 0) continue;
    std::uint64_t carry = 0;
    for (int j = 0; j < nb; ++j) {
      std::uint64_t t = out[i + j] + ai * b[j] + carry;
      out[i + j] = static_cast<Limb>(t % kBase);
      carry = t / kBase;
    }
    out[i + nb] = static_cast<Limb>(carry);
  }
  return Normalised(out, na + nb);
}

int Divide(const Limb* u, int nu, const Limb* v, int nv, Limb* q) {
  nu = Normalised(u, nu);
  if (nv < 1 || nu < nv) return 0;
  if (nv == 1) return DivideSmall(u, nu, v[0], q);

  // Scale both so that the divisor's top limb is at least half the base;
  // then each trial quotient from the top two limbs is at most 2 too large.
  const Limb scale = kBase / (v[nv - 1] + 1);
  LimbBuffer un(nu + 1);
  LimbBuffer vn(nv);
  Limb* x = un.Data();
  Limb* y = vn.Data();
  std::copy(u, u + nu, x);
  std::copy(v, v + nv, y);
  x[nu] = MultiplySmall(x, nu, scale);
  MultiplySmall(y, nv, scale);

  const std::uint64_t top = y[nv - 1];
  const std::uint64_t next = y[nv - 2];
  for (int j = nu - nv; j >= 0; --j) {
    const std::uint64_t num = static_cast<std::uint64_t>(x[j + nv]) * kBase + x[j + nv - 1];
    std::uint64_t qhat = num / top;
    std::uint64_t rhat = num % top;
    while (qhat >= kBase || qhat * next > rhat * kBase + x[j + nv - 2]) {
      --qhat;
      rhat += top;
      if (rhat >= kBase) break;
    }
    // x[j .. j+nv] -= qhat * y
    std::int64_t borrow = 0;
    std::uint64_t carry = 0;
    for (int i = 0; i < nv; ++i) {
      std::uint64_t p = qhat * y[i] + carry;
      carry = p / kBase;
      std::int64_t t = static_cast<std::int64_t>(x[i + j]) - static_cast<std::int64_t>(p % kBase) - borrow;
      borrow = t < 0 ? 1 : 0;
      x[i + j] = static_cast<Limb>(borrow ? t + kBase : t);
    }
    std::int64_t t = static_cast<std::int64_t>(x[j + nv]) - static_cast<std::int64_t>(carry) - borrow;
    if (t < 0) {
      // The trial quotient was one too large: add the divisor back.
      --qhat;
      Limb c = 0;
      for (int i = 0; i < nv; ++i) {
        Limb s = x[i + j] + y[i] + c;
        c = s >= kBase ? 1 : 0;
        x[i + j] = c ? s - kBase : s;
      }
      t += c;  // the carry out of the top cancels the borrow
    }
    x[j + nv] = static_cast<Limb>(t);
    q[j] = static_cast<Limb>(qhat);
  }
  return Normalised(q, nu - nv + 1);
}

}  // namespace vkt::limbs
