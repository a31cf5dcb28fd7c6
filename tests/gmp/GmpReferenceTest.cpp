// tests/gmp/GmpReferenceTest.cpp: CGmp against GMP rationals, exact arithmetic sharing no code with it,
// over 40,000 seeded operand pairs of 1 to 60 digits; a failure prints the operands, the seed replays it.
#include <gmpxx.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"

using vkt::test::LimitMode;
using vkt::test::Text;
using Q = mpq_class;
using Z = mpz_class;

namespace {

Q Pow10(int n) {  // n may be negative
  Z p;
  mpz_ui_pow_ui(p.get_mpz_t(), 10, static_cast<unsigned long>(n < 0 ? -n : n));
  return n < 0 ? Q(Z(1), p) : Q(p);
}

Q Truncate(const Q& a, int n) { return Q(Z(Q(a * Pow10(n)))) * Pow10(-n); }  // towards zero, n decimals

// The reference states CGmp's rules on exact values: the cuts at the limits, decimals compared up to the
// limit, partial products cut before the digit multiplies them. What Validate keeps: decimals go first.
Q Cut(const Q& a) {
  const Z whole(Q(abs(a)));
  const int digits = whole == 0 ? 0 : static_cast<int>(whole.get_str().size());
  const int full = CGmp::GetMaxFullLength();
  return Truncate(a, digits <= full ? std::min(CGmp::GetMaxDecLength(), full - digits) : 0);
}

// The text GetString(out, -1, 0) gives for a finite decimal.
std::string ToText(const Q& a) {
  std::size_t scale = 0;
  while (Q(a * Pow10(static_cast<int>(scale))).get_den() != 1) ++scale;
  std::string s = Z(Q(abs(a) * Pow10(static_cast<int>(scale)))).get_str();
  if (s.size() <= scale) s.insert(0, scale + 1 - s.size(), '0');
  if (scale > 0) s.insert(s.size() - scale, 1, '.');
  if (sgn(a) < 0) s.insert(0, 1, '-');
  return s;
}

std::u16string Wide(const std::string& s) { return {s.begin(), s.end()}; }

// A canonical operand: the digits before the point ("" below 1) and after it, the sign, the value.
struct Operand { std::string whole, dec; bool negative = false; Q value; };

Operand Parse(const std::string& text) {
  Operand o;
  o.negative = text[0] == '-';
  const std::string body = text.substr(o.negative ? 1 : 0);
  const std::size_t point = body.find('.');
  o.whole = body.substr(0, point);
  if (point != std::string::npos) o.dec = body.substr(point + 1);
  o.whole.erase(0, std::min(o.whole.find_first_not_of('0'), o.whole.size()));
  o.value = Z("0" + o.whole + o.dec, 10) * Pow10(-static_cast<int>(o.dec.size()));
  if (o.negative) o.value = -o.value;
  return o;
}

// Magnitudes equal as CGmp sees them: whole parts equal, decimals equal up to one place before the
// decimal limit.
bool SameMagnitude(const Operand& a, const Operand& b) {
  const std::size_t n = CGmp::GetMaxDecLength() - 1;
  return a.whole == b.whole && a.dec.substr(0, n) == b.dec.substr(0, n);
}

Q RefAddSub(const Operand& a, const Operand& b, bool subtract) {
  if (sgn(b.value) == 0) return a.value;
  if ((a.negative == b.negative) == subtract && SameMagnitude(a, b)) return Q();
  return subtract ? Q(a.value - b.value) : Q(a.value + b.value);
}

int RefCompare(const Operand& a, const Operand& b) {
  if (a.negative != b.negative) return a.negative ? -1 : 1;
  const int c = SameMagnitude(a, b) ? 0 : cmp(abs(a.value), abs(b.value));
  return (a.negative ? -1 : 1) * ((c > 0) - (c < 0));
}

// One partial product per digit of b; those of b's decimals are cut before the digit multiplies
// them, those of its whole digits at power 1 and above after.
Q RefMul(const Operand& a, const Operand& b) {
  const Q m = abs(a.value);
  Q sum;
  for (std::size_t i = 0; i < b.whole.size(); ++i) {
    const int power = static_cast<int>(b.whole.size() - 1 - i);
    const Q partial = m * (b.whole[i] - '0') * Pow10(power);
    sum += power >= 1 ? Cut(partial) : partial;
  }
  for (std::size_t k = 0; k < b.dec.size(); ++k)
    sum += Cut(m * Pow10(-1 - static_cast<int>(k))) * (b.dec[k] - '0');
  sum = Cut(sum);
  return a.negative != b.negative ? Q(-sum) : sum;
}

Q RefDiv(const Q& a, const Q& b) { return Cut(Truncate(a / b, CGmp::GetMaxDecLength())); }

Q RefMod(const Operand& a, const Operand& b) {  // the quotient rounded down, times b, from a
  const Q quotient = RefDiv(a.value, b.value);
  Q whole = Truncate(quotient, 0);
  if (sgn(quotient) < 0 && quotient.get_den() != 1) whole -= 1;
  return RefAddSub(a, Parse(ToText(sgn(whole) == 0 ? Q() : RefMul(Parse(ToText(whole)), b))), true);
}

Q RefRound(const Q& a, int n) {  // half up on the magnitude, judged by the digit behind
  const Q cut = Truncate(a, n);
  return abs(Truncate(a, n + 1)) - abs(cut) >= 5 * Pow10(-n - 1) ? Q(cut + sgn(a) * Pow10(-n)) : cut;
}

void RunDifferential(unsigned seed, int pairs, int maxDigits, int maxDec) {
  std::mt19937 random(seed);
  // 1 to maxDigits significant digits, at most maxDec of them behind the point, a random sign.
  auto next = [&]() {
    const int digits = 1 + static_cast<int>(random() % static_cast<unsigned>(maxDigits));
    const std::size_t dec = random() % static_cast<unsigned>(std::min(digits, maxDec) + 1);
    std::string s(static_cast<std::size_t>(digits), '0');
    for (char& c : s) c = static_cast<char>('0' + random() % 10);
    if (s[0] == '0') s[0] = '1';
    if (dec > 0 && s.back() == '0') s.back() = '7';
    if (dec > 0) s.insert(s.size() - dec, 1, '.');
    if (s[0] == '.') s.insert(0, 1, '0');
    if (random() % 2) s.insert(0, 1, '-');
    return s;
  };
  // A copy of a's leading digits, so that long common prefixes and equal magnitudes occur.
  auto near = [&](const std::string& a) {
    std::string b = a;
    for (std::size_t i = random() % (b.size() + 1); i < b.size(); ++i)
      if (b[i] >= '0' && b[i] <= '9') b[i] = static_cast<char>('0' + random() % 10);
    if (b.back() == '0' && b.find('.') != std::string::npos) b.back() = '3';
    if (random() % 2) b[0] == '-' ? b.erase(0, 1) : b.insert(0, 1, '-');
    return sgn(Parse(b).value) == 0 ? a : b;
  };
  for (int i = 0; i < pairs; ++i) {
    const std::string ta = next();
    const std::string tb = random() % 4 == 0 ? near(ta) : next();
    const Operand a = Parse(ta);
    const Operand b = Parse(tb);
    const CGmp x(Wide(ta).c_str());
    CGmp y(Wide(tb).c_str());
    ASSERT_EQ(Text(x), Wide(ToText(a.value))) << "operand " << ta;
    const std::string where = "seed " + std::to_string(seed) + " a=" + ta + " b=" + tb;
    CGmp r(x);
    r.add(&y);
    ASSERT_EQ(Text(r), Wide(ToText(RefAddSub(a, b, false)))) << "add, " << where;
    (r = x).minu(&y);
    ASSERT_EQ(Text(r), Wide(ToText(RefAddSub(a, b, true)))) << "minu, " << where;
    (r = x).mul(&y);
    ASSERT_EQ(Text(r), Wide(ToText(RefMul(a, b)))) << "mul, " << where;
    ASSERT_EQ((r = x).div(&y), 1) << where;
    ASSERT_EQ(Text(r), Wide(ToText(RefDiv(a.value, b.value)))) << "div, " << where;
    (r = x).mod(y);
    ASSERT_EQ(Text(r), Wide(ToText(RefMod(a, b)))) << "mod, " << where;
    ASSERT_EQ((r = x).Compare(&y, 0), RefCompare(a, b)) << "Compare, " << where;
    const int n = static_cast<int>(random() % static_cast<unsigned>(maxDec + 1));
    (r = x).Round(n);
    ASSERT_EQ(Text(r), Wide(ToText(RefRound(a.value, n)))) << "Round " << n << ", " << where;
  }
}

TEST(GmpReference, FullLimits) { RunDifferential(20240611u, 25000, 60, 40); }

TEST(GmpReference, LimitMode) {
  LimitMode reduced;
  RunDifferential(7u, 15000, 14, 12);
}

}  // namespace
