// tests/support/GmpText.h: small helpers for tests that look at CGmp values.
//
// Text(x) is the value as GetString(out, -1, 0) prints it (all decimals, no
// grouping), as a std::u16string that EXPECT_EQ compares and prints.
// Fields(x) shows the raw fields, for tests that care about the form:
// "-|12|5" is m_bNeg 1, m_strInt "12", m_strDec "5"; Raw() builds a value
// from that form. Expand() writes long texts short: "0.3{40}" is "0." and
// forty 3s. LimitMode sets g_bLS for one scope.
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

// A unit followed by {n} stands for n of that unit; null gives "".
inline std::u16string Expand(const char16_t* text) {
  std::u16string out;
  for (const char16_t* p = text; p != nullptr && *p != 0; ++p) {
    if (*p != u'{') {
      out += *p;
      continue;
    }
    std::size_t n = 0;
    while (*++p != u'}') n = n * 10 + static_cast<std::size_t>(*p - u'0');
    out.append(n - 1, out.back());
  }
  return out;
}

// A CGmp with exactly the fields that Fields() would show, runs expanded,
// unvalidated: Raw(u"-|007|50").
inline CGmp Raw(const char16_t* fields) {
  const std::u16string f = Expand(fields);
  const std::size_t bar = f.find(u'|', 2);
  CGmp x;
  x.m_bNeg = f[0] == u'-' ? 1 : 0;
  x.m_strInt = CString(std::u16string_view(f).substr(2, bar - 2));
  x.m_strDec = CString(std::u16string_view(f).substr(bar + 1));
  return x;
}

// The value a table row names: fields as Raw() reads them when the text
// holds a '|', else the text constructor's value (runs expanded).
inline CGmp Value(const char16_t* text) {
  const std::u16string t = Expand(text);
  return t.find(u'|') != std::u16string::npos ? Raw(text) : CGmp(text == nullptr ? nullptr : t.c_str());
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
