// gmp/CGmpText.cpp: the ways in and out of CGmp as text. SetString reads a
// number (or finds one inside other text) in one pass over the units;
// GetString writes one, rounded half up, with optional grouping. Both are on
// the path of every value, so they work on raw buffers and allocate only
// for numbers longer than CString keeps inline.
#include <algorithm>
#include <utility>

#include "CGmp.h"
#include "gmp/Digits.h"

using namespace vkt::digits;

namespace {

constexpr int kRunDigits = 79;  // digits gathered per part; the 80th is a fault
// Chosen: an exponent above 1000 is a fault and the mantissa stays as read;
// 1e1000 already has an integer part of 1001 digits.
constexpr int kMaxExponent = 1000;

// The number inside a text, for CheckStrict_None: narrows [begin, end) to a
// span that the reader then takes as it stands. False when there is no digit.
bool FindNumberSpan(const char16_t*& begin, const char16_t*& end) {
  const char16_t* first = begin;
  while (first < end && !IsDigit(*first)) ++first;
  if (first == end) return false;
  const char16_t* start = (first > begin && first[-1] == u'-') ? first - 1 : first;
  bool point = false;
  bool exponent = false;
  const char16_t* stop = start;
  for (; stop < end; ++stop) {
    const char16_t c = *stop;
    if (IsDigit(c)) continue;
    if (c == u',' && !point) continue;
    if (c == u'-' && stop == start) continue;
    if (c == u'.' && !point) {
      point = true;
      continue;
    }
    if ((c == u'e' || c == u'E') && !exponent && !point && stop + 1 < end && IsDigit(stop[1])) {
      exponent = true;
      continue;
    }
    break;
  }
  // A point right before the first digit belongs to the number (.5), but a
  // minus before that point is not looked at.
  if (start == first && first > begin && first[-1] == u'.' && !point && !exponent) start = first - 1;
  begin = start;
  end = stop;
  return true;
}

// exponent := { digit | '+' | '-' } [ ' ' ...]
// Reads behind the e and applies the exponent. Returns false on a fault;
// *applied tells whether an exponent was applied.
bool ReadExponent(CGmp& x, const char16_t* p, const char16_t* end, bool* applied) {
  bool ok = true;
  bool sign = false;
  bool minus = false;
  int digits = 0;
  long long value = 0;
  for (; p < end; ++p) {
    const char16_t c = *p;
    if (IsDigit(c)) {
      ++digits;
      if (value <= kMaxExponent) value = value * 10 + DigitValue(c);
      continue;
    }
    if (c == u'+' || c == u'-') {
      if (sign) break;  // a second sign ends the reading, without a fault
      sign = true;
      minus = c == u'-';
      continue;
    }
    if (c == u' ') break;  // what follows a blank is not looked at
    ok = false;
    break;
  }
  *applied = false;
  if (digits == 0) return false;  // the number keeps its mantissa
  if (value > kMaxExponent) return false;
  const int n = static_cast<int>(value);
  if (minus) {
    x.Div_10exp(n);
  } else {
    x.Mul_10exp(n);
  }
  StripTrailingZeros(x.m_strDec);
  *applied = true;
  return ok;
}

// number := ['-'] { digit | ',' } ['.' { digit }] ( [ 'e' exponent ] | { ' ' } )
// Reads [p, end) into the emptied x and returns SetString's result.
int ReadNumber(CGmp& x, const char16_t* p, const char16_t* end) {
  bool fault = false;
  bool exponent = false;
  bool decimalNonZero = false;
  if (*p == u'-') {
    x.m_bNeg = 1;
    ++p;
  }
  char16_t run[kRunDigits];
  int runLength = 0;
  bool inDecimals = false;
  bool ended = false;        // a blank closed the number
  bool digitOrPoint = false;
  auto flush = [&]() {
    (inDecimals ? x.m_strDec : x.m_strInt).Append(run, runLength);
    runLength = 0;
  };
  for (; p < end && !fault; ++p) {
    const char16_t c = *p;
    if (ended) {
      fault = c != u' ';
      continue;
    }
    if (IsDigit(c)) {
      if (runLength == kRunDigits) {
        fault = true;
        continue;
      }
      run[runLength++] = c;
      digitOrPoint = true;
      if (inDecimals && c != u'0') decimalNonZero = true;
      continue;
    }
    switch (c) {
      case u',':
        fault = inDecimals;  // no rule for groups before the point
        break;
      case u'.':
        if (inDecimals) {
          fault = true;
          break;
        }
        if (runLength == 0) {
          x.m_strInt = u"0";
        } else {
          flush();
        }
        inDecimals = true;
        digitOrPoint = true;
        break;
      case u' ':
        if (!digitOrPoint) {
          fault = true;  // a blank right behind the minus
          break;
        }
        flush();
        ended = true;
        break;
      case u'e':
      case u'E':
        flush();
        fault = !ReadExponent(x, p + 1, end, &exponent);
        p = end - 1;  // the exponent read the rest
        break;
      default:
        fault = true;
        break;
    }
  }
  flush();
  if (!decimalNonZero && !exponent) x.m_strDec.Empty();
  int result = fault ? 0 : 1;
  if (x.m_bNeg && x.IsZero()) result = 0;  // a negative zero counts as no number
  x.Validate();
  return result;
}

}  // namespace

int CGmp::SetString(const char16_t* text, Enum_PureDigitCheckStrict strict) {
  Empty();
  if (text == nullptr) return 1;
  const char16_t* begin = text;
  while (*begin == u' ') ++begin;
  if (*begin == 0) return 1;
  const char16_t* end = begin;
  while (*end) ++end;
  if (strict == CheckStrict_None && !FindNumberSpan(begin, end)) return 1;
  return ReadNumber(*this, begin, end);
}

void CGmp::GetString(CString& out, int nDec, int bSep) {
  const int n = std::min(nDec, GetMaxDecLength());
  const char16_t* dec = m_strDec.GetString();
  const int decLength = m_strDec.GetLength();
  if (n >= 0 && n < decLength && dec[n] >= u'5') {
    // Round a copy: the value itself must stay as it is.
    CGmp copy(*this);
    copy.Round(n);
    copy.GetString(out, n, bSep);
    return;
  }
  if (&out == &m_strInt || &out == &m_strDec) {
    CString text;
    GetString(text, nDec, bSep);
    out = std::move(text);
    return;
  }
  if (IsZero()) {
    if (n >= 1) {
      char16_t* p = out.GetBufferSetLength(n + 2);
      p[0] = u'0';
      p[1] = u'.';
      std::fill(p + 2, p + 2 + n, u'0');
    } else if (IsNull()) {
      out.Empty();
    } else {
      out = u"0";
    }
    return;
  }

  static const char16_t kZero[] = u"0";
  const char16_t* in = m_strInt.IsEmpty() ? kZero : m_strInt.GetString();
  const int inLength = m_strInt.IsEmpty() ? 1 : m_strInt.GetLength();
  const int commas = (bSep && inLength >= 4) ? (inLength - 1) / 3 : 0;
  int shown = 0;  // decimals taken from m_strDec
  int padding = 0;
  if (n < 0) {
    shown = decLength;
    while (shown > 0 && dec[shown - 1] == u'0') --shown;
  } else if (n >= decLength) {
    shown = decLength;
    padding = n - decLength;
  } else {
    shown = n;
  }
  // The sign only goes with a digit from 1 to 9: a value that rounds away to
  // nothing has none.
  bool sign = false;
  if (m_bNeg) {
    for (int i = 0; i < inLength && !sign; ++i) sign = in[i] >= u'1' && in[i] <= u'9';
    for (int i = 0; i < shown && !sign; ++i) sign = dec[i] >= u'1' && dec[i] <= u'9';
  }
  const int decimals = shown + padding;
  const int total = (sign ? 1 : 0) + inLength + commas + (decimals > 0 ? decimals + 1 : 0);
  char16_t* p = out.GetBufferSetLength(total);
  if (sign) *p++ = u'-';
  for (int i = 0; i < inLength; ++i) {
    if (commas != 0 && i != 0 && (inLength - i) % 3 == 0) *p++ = u',';
    *p++ = in[i];
  }
  if (decimals > 0) {
    *p++ = u'.';
    p = std::copy(dec, dec + shown, p);
    std::fill(p, p + padding, u'0');
  }
}

void CGmp::Round(CString& text, int n) {
  CGmp value(text.GetString());
  value.GetString(text, n, 0);
}
