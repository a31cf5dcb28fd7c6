// gmp/CGmpConvert.cpp: where CGmp meets binary numbers and streams: doubles
// in (the one door of floating point into the decimal world) and out,
// machine integers, the static text conversions, arrays of heap numbers and
// the stream form.
//
// Doubles are written and read in the C locale whatever the host's locale
// says: a host that sets a locale with a decimal comma must still get 0.5
// from 0.5, not 5 or 0.
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

#include "CGmp.h"
#include "foundation/StreamIO.h"
#include "gmp/Digits.h"
#include "platform/WideRuntime.h"

namespace {

bool IsCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The rough decimal exponent of a number text that the double type cannot
// hold: above 0 for an overflow, else an underflow.
long long RoughExponent(const char* p, const char* end, char exponentMark) {
  const char upperMark = static_cast<char>(exponentMark - 32);
  long long wholeDigits = 0;   // before the point, leading zeros aside
  long long leadingZeros = 0;  // behind the point, before the first other digit
  bool point = false;
  bool significant = false;
  for (; p < end && *p != exponentMark && *p != upperMark; ++p) {
    if (*p == '.') {
      point = true;
    } else if (!point) {
      if (*p != '0' || wholeDigits > 0) ++wholeDigits;
    } else if (!significant) {
      if (*p == '0') {
        ++leadingZeros;
      } else {
        significant = true;
      }
    }
  }
  long long magnitude = wholeDigits > 0 ? wholeDigits : -leadingZeros;
  if (p < end) {
    ++p;
    bool negative = false;
    if (p < end && (*p == '+' || *p == '-')) negative = *p++ == '-';
    long long e = 0;
    for (; p < end && *p >= '0' && *p <= '9'; ++p)
      if (e < 100000000) e = e * 10 + (*p - '0');
    magnitude += negative ? -e : e;
  }
  return magnitude;
}

// The C library's atof in the C locale: leading white space, a sign, then
// the longest prefix that reads as a decimal or hexadecimal float, infinity
// or NaN; 0 when there is none.
double ParseDouble(const char* p, const char* end) {
  while (p < end && IsCSpace(*p)) ++p;
  bool negative = false;
  if (p < end && (*p == '+' || *p == '-')) negative = *p++ == '-';
  if (p < end && (*p == '+' || *p == '-')) return 0.0;
  double value = 0.0;
  const bool hex = end - p >= 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X');
  const char* from = hex ? p + 2 : p;
  const std::chars_format format = hex ? std::chars_format::hex : std::chars_format::general;
  const std::from_chars_result r = std::from_chars(from, end, value, format);
  if (r.ec == std::errc::invalid_argument) {
    value = 0.0;
  } else if (r.ec == std::errc::result_out_of_range) {
    value = RoughExponent(from, r.ptr, hex ? 'p' : 'e') > 0 ? HUGE_VAL : 0.0;
  }
  return negative ? -value : value;
}

double ParseDouble(const std::string& text) { return ParseDouble(text.data(), text.data() + text.size()); }

}  // namespace

void CGmp::Set(double value) {
  Empty();
  // As "%16.16f" prints it; the width never pads, sixteen decimals make
  // every text longer. Chosen: infinities and NaN print as words and so give
  // a null value.
  char narrow[400];
  const std::to_chars_result r =
      std::to_chars(narrow, narrow + sizeof(narrow) - 1, value, std::chars_format::fixed, 16);
  const int length = r.ec == std::errc() ? static_cast<int>(r.ptr - narrow) : 0;
  char16_t text[400];
  for (int i = 0; i < length; ++i) text[i] = static_cast<char16_t>(narrow[i]);
  text[length] = 0;
  SetString(text, CheckStrict_Full);
  // Fifteen digits at most, the lone 0 of a value below 1 among them; only
  // decimals are rounded away, never integer digits.
  const int whole = m_strInt.GetLength();
  if (whole + m_strDec.GetLength() > 15) Round(whole < 15 ? 15 - whole : 0);
}

std::int64_t CGmp::GetInt64() const {
  std::int64_t value = vkt::_wtoi64(m_strInt.GetString());
  if (!m_strDec.IsEmpty()) {
    const char16_t first = m_strDec.GetString()[0];
    if (first >= u'5' && first <= u'9' && value < INT64_MAX) ++value;
  }
  return m_bNeg ? -value : value;
}

double CGmp::GetDouble() const {
  if (IsZero()) return 0.0;
  CString text;
  const_cast<CGmp*>(this)->GetString(text, -1, 0);
  return ParseDouble(text.ToUtf8());
}

double CGmp::Str2Double(const char16_t* text, int bStripComma) {
  if (text == nullptr || *text == 0) return 0.0;
  CString copy(text);
  if (bStripComma) copy.Remove(u',');
  return ParseDouble(copy.ToUtf8());
}

int CGmp::Str2Int(const char16_t* text) {
  if (text == nullptr || *text == 0) return 0;
  CGmp value(text);
  if (!value.m_strDec.IsEmpty()) value.Round(0);
  const int magnitude = vkt::_wtoi(value.m_strInt.GetString());
  return value.m_bNeg ? -magnitude : magnitude;
}

void CGmp::Double2Str(CString& out, double value, int nDec, int bLimit, int bKeepZeros,
                      int bKeepZeroValue) {
  CGmp number(value);
  if (nDec < 0) nDec = number.m_strDec.GetLength();
  if (bLimit && nDec > 8) nDec = 8;
  number.GetString(out, nDec, 0);
  if (!bKeepZeros && out.Find(u'.') >= 0) {
    out.TrimRight(u'0');
    out.TrimRight(u'.');
  }
  if (!bKeepZeroValue) {
    const char16_t* p = out.GetString();
    bool onlyZero = true;
    for (int i = 0, n = out.GetLength(); i < n && onlyZero; ++i) onlyZero = p[i] == u'0' || p[i] == u'.';
    if (onlyZero) out.Empty();
  }
}

void CGmp::InitGmpArray(CArray<CGmp*, CGmp*>& array, int n) {
  DestroyGmpArray(array);
  array.SetSize(n);
  if (n < 1) return;
  for (int i = 0; i < n; ++i) array.SetAt(i, new CGmp());
}

void CGmp::DestroyGmpArray(CArray<CGmp*, CGmp*>& array) {
  for (int i = array.GetSize() - 1; i >= 0; --i) {
    CGmp* item = array.GetAt(i);
    if (item == nullptr) continue;
    delete item;
    array.SetAt(i, nullptr);
  }
}

void CGmp::Serialize(IStreamOutput* out) {
  if (out == nullptr) return;
  out->WriteByte(m_bNeg ? 1 : 0);
  out->WriteString(&m_strInt, 1);
  out->WriteString(&m_strDec, 1);
}

int CGmp::Deserialize(IStreamInput* in) {
  if (in == nullptr) return 0;
  BYTE sign = 0;
  if (!in->ReadByte(&sign)) return 0;
  m_bNeg = sign ? 1 : 0;
  if (!in->ReadString(&m_strInt)) return 0;
  if (!in->ReadString(&m_strDec)) return 0;
  return 1;
}
