// tests/gmp/GmpReferenceTest.cpp: CGmp against GMP rationals, an exact
// arithmetic that shares no code with it. The reference states CGmp's rules
// (cuts at the limits, decimals compared up to the limit, partial products
// cut before the digit multiplies them) on exact values; many thousand
// seeded operand pairs of 1 to 60 digits must give the same text. A failure
// prints the operands, and the seed replays it.
#include <gmp.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"

using vkt::test::LimitMode;
using vkt::test::Text;

namespace {

// An exact rational with value semantics.
class Q {
 public:
  Q() { mpq_init(m_v); }
  explicit Q(const std::string& text) : Q() { Set(text); }
  Q(const Q& other) : Q() { mpq_set(m_v, other.m_v); }
  Q& operator=(const Q& other) {
    mpq_set(m_v, other.m_v);
    return *this;
  }
  ~Q() { mpq_clear(m_v); }

  // Decimal text: optional '-', digits, optional point and digits.
  void Set(const std::string& text) {
    std::string digits;
    std::string scale = "1";
    bool point = false;
    for (char c : text) {
      if (c == '.') {
        point = true;
      } else if (c != '-') {
        digits += c;
        if (point) scale += '0';
      }
    }
    if (digits.empty()) digits = "0";
    std::string fraction = digits + "/" + scale;
    mpq_set_str(m_v, fraction.c_str(), 10);
    mpq_canonicalize(m_v);
    if (!text.empty() && text[0] == '-') mpq_neg(m_v, m_v);
  }

  int Sign() const { return mpq_sgn(m_v); }
  mpq_ptr Get() { return m_v; }
  mpq_srcptr Get() const { return m_v; }

 private:
  mpq_t m_v;
};

Q Add(const Q& a, const Q& b) {
  Q r;
  mpq_add(r.Get(), a.Get(), b.Get());
  return r;
}
Q Sub(const Q& a, const Q& b) {
  Q r;
  mpq_sub(r.Get(), a.Get(), b.Get());
  return r;
}
Q Mul(const Q& a, const Q& b) {
  Q r;
  mpq_mul(r.Get(), a.Get(), b.Get());
  return r;
}
Q Div(const Q& a, const Q& b) {
  Q r;
  mpq_div(r.Get(), a.Get(), b.Get());
  return r;
}
Q Abs(const Q& a) {
  Q r;
  mpq_abs(r.Get(), a.Get());
  return r;
}
Q Pow10(int n) {  // 10^n, n may be negative
  Q r;
  mpz_ui_pow_ui(mpq_numref(r.Get()), 10, static_cast<unsigned long>(n < 0 ? -n : n));
  if (n < 0) mpq_inv(r.Get(), r.Get());
  return r;
}
Q FromInt(long n) {
  Q r;
  mpq_set_si(r.Get(), n, 1);
  return r;
}

// Cut towards zero to n decimals.
Q Truncate(const Q& a, int n) {
  Q scaled = Mul(Abs(a), Pow10(n));
  mpz_t whole;
  mpz_init(whole);
  mpz_tdiv_q(whole, mpq_numref(scaled.Get()), mpq_denref(scaled.Get()));
  Q r;
  mpq_set_z(r.Get(), whole);
  mpz_clear(whole);
  r = Mul(r, Pow10(-n));
  if (a.Sign() < 0) mpq_neg(r.Get(), r.Get());
  return r;
}

bool IsWhole(const Q& a) { return mpz_cmp_ui(mpq_denref(a.Get()), 1) == 0; }

// Digits of the whole part, 0 for a value below 1.
int WholeDigits(const Q& a) {
  Q whole = Truncate(a, 0);
  if (whole.Sign() == 0) return 0;
  char* s = mpz_get_str(nullptr, 10, mpq_numref(whole.Get()));
  int n = static_cast<int>(std::string(s).size()) - (s[0] == '-' ? 1 : 0);
  void (*freeFn)(void*, size_t);
  mp_get_memory_functions(nullptr, nullptr, &freeFn);
  freeFn(s, std::string(s).size() + 1);
  return n;
}

// What Validate keeps of a value: decimals first, within both limits.
Q Cut(const Q& a) {
  const int whole = WholeDigits(a);
  const int full = CGmp::GetMaxFullLength();
  const int keep = whole <= full ? std::min(CGmp::GetMaxDecLength(), full - whole) : 0;
  return Truncate(a, keep);
}

// The text GetString(out, -1, 0) gives for a finite decimal.
std::u16string ToText(const Q& a) {
  int scale = 0;
  Q scaled = Abs(a);
  while (!IsWhole(scaled)) {
    scaled = Mul(scaled, FromInt(10));
    ++scale;
  }
  char* s = mpz_get_str(nullptr, 10, mpq_numref(scaled.Get()));
  std::string digits(s);
  void (*freeFn)(void*, size_t);
  mp_get_memory_functions(nullptr, nullptr, &freeFn);
  freeFn(s, digits.size() + 1);
  if (static_cast<int>(digits.size()) <= scale)
    digits = std::string(static_cast<std::size_t>(scale) + 1 - digits.size(), '0') + digits;
  std::string out = digits.substr(0, digits.size() - static_cast<std::size_t>(scale));
  if (scale > 0) out += "." + digits.substr(digits.size() - static_cast<std::size_t>(scale));
  if (a.Sign() < 0) out = "-" + out;
  return std::u16string(out.begin(), out.end());
}

// A canonical operand as text, and its parts.
struct Operand {
  std::string text;   // "-12.5"
  std::string whole;  // "12", "" below 1
  std::string dec;    // "5"
  bool negative = false;
  Q value;
};

Operand MakeOperand(const std::string& text) {
  Operand o;
  o.text = text;
  o.negative = text[0] == '-';
  std::string body = o.negative ? text.substr(1) : text;
  std::size_t point = body.find('.');
  o.whole = body.substr(0, point);
  if (point != std::string::npos) o.dec = body.substr(point + 1);
  o.whole.erase(0, std::min(o.whole.find_first_not_of('0'), o.whole.size()));
  o.value.Set(text);
  return o;
}

Operand FromQ(const Q& q) {
  std::u16string t = ToText(q);
  return MakeOperand(std::string(t.begin(), t.end()));
}

// Magnitudes equal as CGmp sees them: whole parts equal, decimals equal up
// to one place before the decimal limit.
bool SameMagnitude(const Operand& a, const Operand& b) {
  if (a.whole != b.whole) return false;
  const std::size_t n = std::min<std::size_t>(std::max(a.dec.size(), b.dec.size()), CGmp::GetMaxDecLength() - 1);
  return a.dec.substr(0, std::min(n, a.dec.size())) == b.dec.substr(0, std::min(n, b.dec.size())) &&
         std::min(n, a.dec.size()) == std::min(n, b.dec.size());
}

Q RefAddSub(const Operand& a, const Operand& b, bool subtract) {
  if (b.value.Sign() == 0) return a.value;
  const bool magnitudesAdd = subtract ? a.negative != b.negative : a.negative == b.negative;
  if (!magnitudesAdd && SameMagnitude(a, b)) return Q();
  return subtract ? Sub(a.value, b.value) : Add(a.value, b.value);
}

int RefCompare(const Operand& a, const Operand& b) {
  if (a.negative != b.negative) return a.negative ? -1 : 1;
  if (SameMagnitude(a, b)) return 0;
  int c = mpq_cmp(Abs(a.value).Get(), Abs(b.value).Get());
  c = c < 0 ? -1 : (c > 0 ? 1 : 0);
  return a.negative ? -c : c;
}

// One partial product per non-zero digit of b; those of b's decimals are
// cut before the digit multiplies them, those of its whole digits at
// power 1 and above after.
Q RefMul(const Operand& a, const Operand& b) {
  const Q magnitude = Abs(a.value);
  Q sum;
  for (std::size_t i = 0; i < b.whole.size(); ++i) {
    const int digit = b.whole[i] - '0';
    if (digit == 0) continue;
    const int power = static_cast<int>(b.whole.size() - 1 - i);
    Q partial = Mul(Mul(magnitude, FromInt(digit)), Pow10(power));
    if (power >= 1) partial = Cut(partial);
    sum = Add(sum, partial);
  }
  for (std::size_t k = 0; k < b.dec.size(); ++k) {
    const int digit = b.dec[k] - '0';
    if (digit == 0) continue;
    sum = Add(sum, Mul(Cut(Mul(magnitude, Pow10(-static_cast<int>(k) - 1))), FromInt(digit)));
  }
  sum = Cut(sum);
  if (a.negative != b.negative) mpq_neg(sum.Get(), sum.Get());
  return sum;
}

Q RefDiv(const Q& a, const Q& b) { return Cut(Truncate(Div(a, b), CGmp::GetMaxDecLength())); }

Q RefMod(const Operand& a, const Operand& b) {
  const Q quotient = RefDiv(a.value, b.value);
  Q whole = Truncate(quotient, 0);
  if (quotient.Sign() < 0 && !IsWhole(quotient)) whole = Sub(whole, FromInt(1));
  const Operand product = FromQ(whole.Sign() == 0 ? Q() : RefMul(FromQ(whole), b));
  return RefAddSub(a, product, true);
}

Q RefRound(const Q& a, int n) {
  Q cut = Truncate(a, n);
  Q next = Sub(Abs(Truncate(a, n + 1)), Abs(cut));  // the digit behind, in units of 10^-(n+1)
  if (mpq_cmp(next.Get(), Mul(FromInt(5), Pow10(-n - 1)).Get()) >= 0) {
    Q unit = Pow10(-n);
    cut = a.Sign() < 0 ? Sub(cut, unit) : Add(cut, unit);
  }
  return cut;
}

class Generator {
 public:
  explicit Generator(unsigned seed) : m_random(seed) {}

  // 1 to maxDigits significant digits, at most maxDec of them behind the
  // point, with a random sign.
  std::string Next(int maxDigits, int maxDec) {
    const int digits = 1 + static_cast<int>(m_random() % static_cast<unsigned>(maxDigits));
    const int dec = static_cast<int>(m_random() % static_cast<unsigned>(std::min(digits, maxDec) + 1));
    std::string s(static_cast<std::size_t>(digits), '0');
    for (char& c : s) c = static_cast<char>('0' + m_random() % 10);
    if (s[0] == '0') s[0] = '1';
    if (dec > 0 && s.back() == '0') s.back() = '7';
    std::string text = s.substr(0, s.size() - static_cast<std::size_t>(dec));
    if (text.empty()) text = "0";
    if (dec > 0) text += "." + s.substr(s.size() - static_cast<std::size_t>(dec));
    if (m_random() % 2) text = "-" + text;
    return text;
  }

  // Now and then b copies a's leading digits, so that long common prefixes
  // and equal magnitudes occur.
  std::string Near(const std::string& a) {
    std::string b = a;
    const std::size_t keep = m_random() % (b.size() + 1);
    for (std::size_t i = keep; i < b.size(); ++i)
      if (b[i] >= '0' && b[i] <= '9') b[i] = static_cast<char>('0' + m_random() % 10);
    if (b.back() == '0' && b.find('.') != std::string::npos) b.back() = '3';
    if (m_random() % 2) b = b[0] == '-' ? b.substr(1) : "-" + b;
    return MakeOperand(b).value.Sign() == 0 ? a : b;
  }

  unsigned Pick(unsigned n) { return static_cast<unsigned>(m_random() % n); }

 private:
  std::mt19937 m_random;
};

std::u16string U(const std::string& s) { return std::u16string(s.begin(), s.end()); }

void RunDifferential(unsigned seed, int pairs, int maxDigits, int maxDec) {
  Generator gen(seed);
  for (int i = 0; i < pairs; ++i) {
    const std::string ta = gen.Next(maxDigits, maxDec);
    const std::string tb = gen.Pick(4) == 0 ? gen.Near(ta) : gen.Next(maxDigits, maxDec);
    const Operand a = MakeOperand(ta);
    const Operand b = MakeOperand(tb);
    const CGmp x(U(ta).c_str());
    const CGmp y(U(tb).c_str());
    ASSERT_EQ(Text(x), ToText(a.value)) << "operand " << ta;
    const std::string where = "seed " + std::to_string(seed) + " a=" + ta + " b=" + tb;

    CGmp r(x);
    r.add(const_cast<CGmp*>(&y));
    ASSERT_EQ(Text(r), ToText(RefAddSub(a, b, false))) << "add, " << where;
    r = x;
    r.minu(const_cast<CGmp*>(&y));
    ASSERT_EQ(Text(r), ToText(RefAddSub(a, b, true))) << "minu, " << where;
    r = x;
    r.mul(const_cast<CGmp*>(&y));
    ASSERT_EQ(Text(r), ToText(RefMul(a, b))) << "mul, " << where;
    r = x;
    ASSERT_EQ(r.div(const_cast<CGmp*>(&y)), 1) << where;
    ASSERT_EQ(Text(r), ToText(RefDiv(a.value, b.value))) << "div, " << where;
    r = x;
    r.mod(const_cast<CGmp&>(y));
    ASSERT_EQ(Text(r), ToText(RefMod(a, b))) << "mod, " << where;
    r = x;
    ASSERT_EQ(r.Compare(const_cast<CGmp*>(&y), 0), RefCompare(a, b)) << "Compare, " << where;
    const int n = static_cast<int>(gen.Pick(static_cast<unsigned>(maxDec + 1)));
    r = x;
    r.Round(n);
    ASSERT_EQ(Text(r), ToText(RefRound(a.value, n))) << "Round " << n << ", " << where;
  }
}

TEST(GmpReference, FullLimits) { RunDifferential(20240611u, 25000, 60, 40); }

TEST(GmpReference, LimitMode) {
  LimitMode reduced;
  RunDifferential(7u, 15000, 14, 12);
}

}  // namespace
