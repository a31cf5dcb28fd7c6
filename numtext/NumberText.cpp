// numtext/NumberText.cpp: what counts as a number in a cell's text, and the
// small conversions between number text and machine integers. IsPureNumber is
// the one judge of number text for the parser, the evaluator and the display;
// the value itself is CGmp's business, and its text rules differ from these.
#include <cstddef>
#include <limits>

#include "CGmp.h"
#include "CUtilityCalc.h"
#include "platform/WideRuntime.h"

namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

bool OnlyBlanksFrom(const char16_t* p) {
  while (*p == u' ') ++p;
  return *p == 0;
}

// exponent := ['+' | '-'] digit* [' ' anything]
// Reads behind the e; false for a character that ends it other than a blank.
bool ExponentIsWellFormed(const char16_t* p) {
  if (*p == u'+' || *p == u'-') ++p;
  while (IsDigit(*p)) ++p;
  return *p == 0 || *p == u' ';
}

}  // namespace

// number := blank* ['-'] { digit | ',' | '.' } [ ('e'|'E') exponent ] blank*
// with the group rules for commas and the strictness rules for points,
// blanks, signs and digit counts.
namespace {

// What IsPureNumber has read so far, and the bounds it reads within. Once a
// count passes its bound the answer is 0 whatever follows, so the scan stops
// there and a long run costs no more than the bound.
struct NumberScan {
  bool full = false;      // CheckStrict_Full
  bool lenient = false;   // CheckStrict_None
  int bComma = 0;
  int bExp = 0;
  int maxInt = 79;
  int maxDec = 79;
  int maxTotal = 79 + 79;
  int intDigits = 0;
  int decDigits = 0;
  bool intNonZero = false;
  bool decNonZero = false;
  bool seenPoint = false;
  bool seenComma = false;
  std::ptrdiff_t lastComma = 0;  // counted from the first character behind the sign
};

enum class ScanStep { Next, Stop, Refuse };

ScanStep ReadDigit(NumberScan& s, char16_t c) {
  if (s.seenPoint) {
    if (++s.decDigits > s.maxDec) return ScanStep::Refuse;
    s.decNonZero = s.decNonZero || c != u'0';
  } else {
    if (++s.intDigits > s.maxInt) return ScanStep::Refuse;
    s.intNonZero = s.intNonZero || c != u'0';
  }
  return s.intDigits + s.decDigits > s.maxTotal ? ScanStep::Refuse : ScanStep::Next;
}

ScanStep ReadPoint(NumberScan& s, const char16_t* p, std::ptrdiff_t pos) {
  if (s.seenPoint) return ScanStep::Refuse;
  if (!s.lenient && (p[1] == 0 || p[1] == u' ')) return ScanStep::Refuse;
  if (s.seenComma && pos - s.lastComma != 4) return ScanStep::Refuse;
  s.seenPoint = true;
  return ScanStep::Next;
}

ScanStep ReadComma(NumberScan& s, const char16_t* p, std::ptrdiff_t pos) {
  if (s.seenPoint || s.bComma == 0) return ScanStep::Refuse;
  if (p[1] == 0 || p[1] == u' ') return ScanStep::Refuse;
  // The first group holds 1 to 3 digits, every later one exactly 3. The
  // integer part that must hold a digit above 0 is read as the first group:
  // 0,123 is no number although 123 follows.
  if (!s.seenComma) {
    if (pos < 1 || pos > 3 || !s.intNonZero) return ScanStep::Refuse;
  } else if (pos - s.lastComma != 4) {
    return ScanStep::Refuse;
  }
  s.seenComma = true;
  s.lastComma = pos;
  return ScanStep::Next;
}

ScanStep ReadUnit(NumberScan& s, const char16_t* p, std::ptrdiff_t pos) {
  const char16_t c = *p;
  if (IsDigit(c)) return ReadDigit(s, c);
  if (c == u'.') return ReadPoint(s, p, pos);
  if (c == u',') return ReadComma(s, p, pos);
  if (c == u'e' || c == u'E') {  // the exponent's digits are not counted
    return s.bExp != 0 && ExponentIsWellFormed(p + 1) ? ScanStep::Stop : ScanStep::Refuse;
  }
  if (c == u' ') return !s.full && OnlyBlanksFrom(p) ? ScanStep::Stop : ScanStep::Refuse;
  return ScanStep::Refuse;  // a plus sign lands here too
}

}  // namespace

int CUtilityCalc::IsPureNumber(const char16_t* text, int bComma,
                               CGmp::Enum_PureDigitCheckStrict strict, int bExp) {
  if (text == nullptr) return 1;
  NumberScan s;
  s.full = strict == CGmp::CheckStrict_Full;
  s.lenient = strict == CGmp::CheckStrict_None;
  s.bComma = bComma;
  s.bExp = bExp;

  const char16_t* p = text;
  if (*p == u' ') {
    if (s.full) return 0;
    while (*p == u' ') ++p;
  }
  if (*p == 0) return 1;

  const bool negative = *p == u'-';
  if (negative) ++p;
  if (s.full) {
    const int maxFull = CGmp::GetMaxFullLength();
    s.maxInt = maxFull + 6;
    s.maxTotal = maxFull + 9;
    s.maxDec = s.maxTotal;
  }

  const char16_t* const start = p;
  for (; *p != 0; ++p) {
    const ScanStep step = ReadUnit(s, p, p - start);
    if (step == ScanStep::Refuse) return 0;
    if (step == ScanStep::Stop) break;
  }

  // The last comma group is not checked: 1,2 is a number. A lone minus takes
  // this path with nothing read: the strictness table refuses it outside
  // CheckStrict_None, so it meets the sign rule here, not only the counts.
  if (!s.intNonZero && !s.lenient && negative && !s.decNonZero) return 0;  // -0, -0.00, -

  if (s.full) return s.intDigits + s.decDigits >= 1 ? 1 : 0;
  return 1;  // the bounds on the counts were enforced while scanning
}

int CUtilityCalc::IsString0To9(const char16_t* text) {
  // Chosen: a null pointer reads as the empty text, as everywhere in the
  // platform layer, and so gives 1 instead of a crash.
  if (text == nullptr) return 1;
  for (const char16_t* p = text; *p != 0; ++p) {
    if (!IsDigit(*p)) return 0;
  }
  return 1;
}

int CUtilityCalc::IsValidNumber(CString& value, CString& low, CString& high) {
  if (low.IsEmpty() && high.IsEmpty()) return 1;
  // A value that is no number is null, and null compares like zero.
  CGmp x(value.GetString());
  if (!low.IsEmpty() && IsPureNumber(low.GetString(), 1, CGmp::CheckStrict_None, 0) != 0) {
    CGmp bound(low.GetString());
    if (x.Compare(&bound, 0) < 0) return 0;
  }
  if (high.IsEmpty() || IsPureNumber(high.GetString(), 1, CGmp::CheckStrict_None, 0) == 0) return 1;
  CGmp bound(high.GetString());
  return x.Compare(&bound, 0) > 0 ? 0 : 1;
}

int CUtilityCalc::ResetPureNumberString(CString& text) {
  CString copy(text);
  copy.Trim();
  copy.TrimRight(u'.');
  if (copy.Find(u'.') >= 0) {
    copy.TrimRight(u'0');
    const int last = copy.GetLength() - 1;
    if (last >= 0 && copy[last] == u'.') copy.Delete(last);
  }
  if (copy == u"-0") copy = u"0";

  // A sign counts as a character of the integer part.
  const int length = copy.GetLength();
  const int point = copy.Find(u'.');
  const int before = point < 0 ? length : point;
  const int after = point < 0 ? 0 : length - point - 1;
  if (before + after > CGmp::GetMaxFullLength() || after > CGmp::GetMaxDecLength()) return 0;
  text = copy;
  return 1;
}

void CUtilityCalc::TrimToNumber(CString& text, int bKeepGroups) {
  if (text.IsEmpty()) return;

  int first = 0;
  const int length = text.GetLength();
  while (first < length && !vkt::iswdigit(text[first])) ++first;
  if (first == length) {
    text.Empty();
    return;
  }
  if (first > 0 && text[first - 1] == u'-') --first;

  // The longest start of digits, commas and one point, a minus only at its
  // front and no comma behind the point.
  int end = first;
  bool seenPoint = false;
  for (; end < length; ++end) {
    const char16_t c = text[end];
    if (vkt::iswdigit(c)) continue;
    if (c == u'-' && end == first) continue;
    if (c == u'.' && !seenPoint) {
      seenPoint = true;
      continue;
    }
    if (c == u',' && !seenPoint) continue;
    break;
  }
  text = text.Mid(first, end - first);
  if (bKeepGroups != 0 || text.IsEmpty()) return;

  const bool negative = text[0] == u'-';
  const CString body = negative ? text.Mid(1) : text;
  const int point = body.Find(u'.');
  CString intPart = point < 0 ? body : body.Left(point);
  CString decPart = point < 0 ? CString() : body.Mid(point);
  intPart.TrimLeft(u'0');

  // Groups must be 3 digits each behind a first group of at most 3; a text
  // that breaks the pattern keeps only its first group and loses its decimals.
  if (intPart.Find(u',') >= 0) {
    int pieceStart = 0;
    int comma = intPart.Find(u',');
    CString joined = intPart.Left(comma);
    if (joined.GetLength() > 3) {
      decPart.Empty();
    } else {
      while (comma >= 0) {
        pieceStart = comma + 1;
        comma = intPart.Find(u',', pieceStart);
        const int pieceEnd = comma < 0 ? intPart.GetLength() : comma;
        if (pieceEnd - pieceStart != 3) {
          joined = intPart.Left(intPart.Find(u','));
          decPart.Empty();
          break;
        }
        joined.Append(intPart.GetString() + pieceStart, 3);
      }
    }
    intPart = joined;
  }

  if (intPart.IsEmpty() && !decPart.IsEmpty()) intPart = u"0";
  text = intPart + decPart;
  if (negative && !text.IsEmpty()) text.Insert(0, u'-');
}

int CUtilityCalc::GetDecLen(CString& text) {
  const int point = text.Find(u'.');
  return point < 0 ? 0 : text.GetLength() - point - 1;
}

void CUtilityCalc::Int64Str(CString& out, LONGLONG value) {
  out.Format(u"%I64d", static_cast<long long>(value));
}

void CUtilityCalc::UInt64Str(CString& out, LONGLONG value) {
  out.Format(u"%I64u", static_cast<unsigned long long>(value));
}

LONGLONG CUtilityCalc::Str2Int64(const char16_t* text) {
  if (text == nullptr) return 0;
  const char16_t* p = text;
  while (*p == u' ') ++p;
  if (*p == 0) return 0;

  LONGLONG value = vkt::_wtoi64(p);
  const char16_t* point = p;
  while (*point != 0 && *point != u'.') ++point;
  if (*point == u'.' && point[1] >= u'5' && point[1] <= u'9') {
    // Chosen: a value already saturated by the conversion stays at its limit.
    if (*p == u'-') {
      if (value > std::numeric_limits<LONGLONG>::min()) --value;
    } else if (value < std::numeric_limits<LONGLONG>::max()) {
      ++value;
    }
  }
  return value;
}

int CUtilityCalc::Double2Int(double value) {
  if (value == 0.0) return 0;
  // Chosen: NaN gives 0 and magnitudes past the 32-bit range saturate; a
  // plain cast of those would be undefined.
  if (value != value) return 0;
  const double magnitude = value < 0 ? -value : value;
  constexpr int kMax = std::numeric_limits<int>::max();
  if (magnitude >= static_cast<double>(kMax)) {
    return value < 0 ? std::numeric_limits<int>::min() : kMax;
  }
  int whole = static_cast<int>(magnitude);
  if ((magnitude - whole) * 100.0 >= 50.0) ++whole;
  return value < 0 ? -whole : whole;
}
