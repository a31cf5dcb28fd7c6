// tests/gmp/SqrtTest.cpp: CGmp::sqrt against Newton's iteration on the operators, which defines its
// digits, over seeded values in both limit modes: fields, sign and return code.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "CGmp.h"
#include "tests/support/GmpText.h"
#include "tests/support/Text.h"

using namespace vkt::test;

namespace {

// At most 40 rounds of x = (x + v / x) / 2 from v itself, stopping when x == the estimate before.
int Reference(CGmp& v) {
  if (v.m_bNeg) return 0;
  if (v.IsZero()) return 1;
  CGmp x(v), previous, t;
  for (int round = 0; round < 40; ++round) {
    previous = x;
    t = v;
    t /= x;
    x += t;
    x /= 2;
    if (x == previous) break;
  }
  v = x;
  v.Validate();
  return 1;
}

// Rows at the edges; the seeded loop adds random values, squares and their neighbours.
constexpr const char16_t* kRows[] = {
    u"+|1|", u"+||0{39}1", u"+|0|0{38}1", u"+|9{20}|9{40}", u"+|9{60}|", u"+|1|0{38}1", u"-|4|",
    u"+|7{61}|",                 // beyond the full length: kept whole
    u"+|007|50", u"+|1|5x", u"+||",  // forms Validate would change, a stray unit, null
    u"+|12345678|9{13}", u"+|99|9{12}", u"+|9{14}|", u"+|2|2{40}",  // past the reduced limits
};

TEST(CGmpSqrt, MatchesTheIteration) {
  std::mt19937 random(20251125u);
  auto digits = [&random](int n) {
    std::u16string s;
    for (int i = 0; i < n; ++i) s += static_cast<char16_t>(u'0' + random() % 10);
    return s;
  };
  for (int bLS : {0, 1}) {
    LimitMode mode(bLS);
    const int maxDec = CGmp::GetMaxDecLength();
    auto check = [](const CGmp& v, const std::u16string& row) {
      CGmp got(v), want(v);
      ASSERT_EQ(got.sqrt(), Reference(want)) << Row(row.c_str());
      ASSERT_EQ(Fields(got), Fields(want)) << Row(row.c_str());
    };
    for (const char16_t* row : kRows) check(Raw(row), Fields(Raw(row)));
    for (int i = 0; i < 3000; ++i) {
      const int total = 1 + static_cast<int>(random() % 60);
      const int whole = static_cast<int>(random() % static_cast<unsigned>(total + 1));
      CGmp v = Raw((u"+|" + digits(whole) + u"|" + digits(total - whole)).c_str());
      if (i % 4 == 1) v.m_strInt = u"0";  // tiny values: 0.000...d
      if (i % 4 == 1) v.m_strDec = CString((std::u16string(random() % maxDec, u'0') + u"1").c_str());
      v.Validate();
      if (i % 4 >= 2) {  // squares of roots of up to half the digits, and their neighbours
        CGmp r = Raw((u"+|" + digits(whole / 2) + u"|" + digits((total - whole) / 2)).c_str());
        v = r;
        v *= r;
        CGmp unit = Raw((u"+||" + std::u16string(random() % maxDec, u'0') + u"1").c_str());
        if (i % 4 == 3) v += unit;
        if (i % 8 == 7) {
          v -= unit;
          v -= unit;
        }
        v.Validate();
      }
      check(v, Fields(v));
    }
  }
}

}  // namespace
