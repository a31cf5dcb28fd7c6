// tests/support/GmpText.h: small helpers for tests that look at CGmp values.
//
// Text(x) is the value as GetString(out, -1, 0) prints it (all decimals, no
// grouping), as a std::u16string that EXPECT_EQ compares and prints.
// Fields(x) shows the raw fields, for tests that care about the form:
// "-|12|5" is m_bNeg 1, m_strInt "12", m_strDec "5". LimitMode sets
// g_bLS for one scope.
#pragma once

#include <string>

#include "CGmp.h"

namespace vkt::test {

inline std::u16string Text(const CGmp& x) {
  CGmp copy(x);
  CString out;
  copy.GetString(out, -1, 0);
  return std::u16string(out.View());
}

inline std::u16string Text(const char16_t* text) { return Text(CGmp(text)); }

inline std::u16string Fields(const CGmp& x) {
  std::u16string out = x.m_bNeg ? u"-|" : u"+|";
  out += x.m_strInt.View();
  out += u'|';
  out += x.m_strDec.View();
  return out;
}

// A CGmp with exactly these fields, unvalidated.
inline CGmp Raw(const char16_t* in, const char16_t* dec, int neg = 0) {
  CGmp x;
  x.m_strInt = in;
  x.m_strDec = dec;
  x.m_bNeg = neg;
  return x;
}

// Sets g_bLS for one scope (1: the reduced limits) and puts the old value
// back, also when the test fails.
class LimitMode {
 public:
  explicit LimitMode(int bLS = 1) : m_saved(g_bLS) { g_bLS = bLS; }
  ~LimitMode() { g_bLS = m_saved; }
  LimitMode(const LimitMode&) = delete;
  LimitMode& operator=(const LimitMode&) = delete;

 private:
  int m_saved;
};

}  // namespace vkt::test
