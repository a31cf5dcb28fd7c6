// foundation/CStrKit.cpp: the static text, array and date-text operations of
// the foundation library. Case folding and digits come from the platform's
// wide runtime; file access goes through the C library's streams.
#include "foundation/CStrKit.h"

#include "foundation/ListCutting.h"

#include <climits>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "foundation/CGlobalInfo.h"
#include "platform/Utf.h"
#include "platform/WideRuntime.h"

namespace {

int Len(const char16_t* text) {
  std::size_t n = vkt::wcslen(text);
  return n > static_cast<std::size_t>(INT_MAX) ? INT_MAX : static_cast<int>(n);
}

bool SameUnit(char16_t a, char16_t b, bool bCase) {
  return a == b || (!bCase && vkt::towlower(a) == vkt::towlower(b));
}

bool MatchAt(const char16_t* text, int pos, const char16_t* what, int whatLen, bool bCase) {
  for (int j = 0; j < whatLen; ++j)
    if (!SameUnit(text[pos + j], what[j], bCase)) return false;
  return true;
}

// First position at or behind `from` where `what` stands in `text`; -1.
int FindFrom(const char16_t* text, int textLen, const char16_t* what, int whatLen, int from,
             bool bCase) {
  if (text == nullptr || what == nullptr || whatLen <= 0 || whatLen > textLen) return -1;
  for (int i = from; i <= textLen - whatLen; ++i)
    if (MatchAt(text, i, what, whatLen, bCase)) return i;
  return -1;
}

bool IsAsciiDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Reads 1 to maxDigits decimal digits at p into value; false when none.
bool ReadNumber(const char16_t*& p, int minDigits, int maxDigits, int& value) {
  int n = 0;
  value = 0;
  while (n < maxDigits && IsAsciiDigit(*p)) {
    value = value * 10 + (*p - u'0');
    ++p;
    ++n;
  }
  return n >= minDigits && !IsAsciiDigit(*p);
}

bool IsDateSeparator(char16_t c) {
  switch (c) {
    case u'-': case u'/': case u'\\': case u'.': case u':': case u' ': case u'\t':
    case u'\r': case u'\n': case u'T': case u'\u5e74': case u'\u6708': case u'\u65e5':
    case u'\u65f6': case u'\u5206': case u'\u79d2':
      return true;
    default:
      return false;
  }
}

CString Join(CStringArray& items, const char16_t* sep, int sepLen) {
  CString out;
  for (int i = 0; i < items.GetSize(); ++i) {
    if (i > 0 && sepLen > 0) out.Append(sep, sepLen);
    const CString& item = items.GetAt(i);
    out.Append(item.GetString(), item.GetLength());
  }
  return out;
}

}  // namespace

int CStrKit::FindNoCase(const char16_t* text, const char16_t* what) {
  return FindFrom(text, Len(text), what, Len(what), 0, false);
}

int CStrKit::ReverseFindNoCase(const char16_t* text, const char16_t* what) {
  int n = Len(text);
  int m = Len(what);
  if (text == nullptr || m == 0 || m > n) return -1;
  for (int i = n - m; i >= 0; --i)
    if (MatchAt(text, i, what, m, false)) return i;
  return -1;
}

int CStrKit::GetLeftRight(const char16_t* text, const char16_t* sep, CString& left,
                          CString& right, int bTrim) {
  int n = Len(text);
  int m = Len(sep);
  int pos = FindFrom(text, n, sep, m, 0, true);
  if (pos < 0) {
    left.Empty();
    right.Empty();
    return 0;
  }
  // Built aside first: `left` or `right` may be the very string `text` reads.
  CString l(text, pos);
  CString r(text + pos + m, n - pos - m);
  if (bTrim) {
    l.Trim();
    r.Trim();
  }
  left = std::move(l);
  right = std::move(r);
  return 1;
}

int CStrKit::memmems(BYTE* data, BYTE* what, int dataBytes, int whatBytes) {
  if (data == nullptr || what == nullptr || dataBytes <= 0 || whatBytes <= 0) return 0;
  int count = 0;
  for (int i = 0; i <= dataBytes - whatBytes;) {
    int j = 0;
    while (j < whatBytes && data[i + j] == what[j]) ++j;
    if (j == whatBytes) {
      ++count;
      i += whatBytes;
    } else {
      ++i;
    }
  }
  return count;
}

void CStrKit::CString2Array(CStringArray& out, const char16_t* text, WORD sep, int bTrim) {
  const char16_t unit = static_cast<char16_t>(sep);
  vkt::CutList(out, text, &unit, sep == 0 ? 0 : 1, bTrim != 0);
}

int CStrKit::File2CString(CString& out, const char16_t* path) {
  out.Empty();
  if (path == nullptr || path[0] == 0) return 0;
  std::string name = CString(path).ToUtf8();
  std::FILE* file = std::fopen(name.c_str(), "rb");
  if (file == nullptr) return 0;
  std::string bytes;
  char chunk[16384];
  bool ok = true;
  for (;;) {
    std::size_t got = std::fread(chunk, 1, sizeof chunk, file);
    bytes.append(chunk, got);
    if (got < sizeof chunk) {
      ok = std::ferror(file) == 0;
      break;
    }
    // A text that no CString can hold is refused rather than cut.
    if (bytes.size() > static_cast<std::size_t>(INT_MAX / 2)) {
      ok = false;
      break;
    }
  }
  std::fclose(file);
  if (!ok) return 0;

  auto byte = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  if (bytes.size() >= 2 && ((byte(0) == 0xFF && byte(1) == 0xFE) || (byte(0) == 0xFE && byte(1) == 0xFF))) {
    bool little = byte(0) == 0xFF;
    int units = static_cast<int>((bytes.size() - 2) / 2);
    char16_t* buf = out.GetBufferSetLength(units);
    for (int i = 0; i < units; ++i) {
      unsigned lo = byte(2 + 2 * static_cast<std::size_t>(i) + (little ? 0 : 1));
      unsigned hi = byte(2 + 2 * static_cast<std::size_t>(i) + (little ? 1 : 0));
      buf[i] = static_cast<char16_t>(lo | (hi << 8));
    }
    out.ReleaseBuffer(units);
    return 1;
  }
  std::string_view narrow(bytes);
  if (narrow.size() >= 3 && byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) narrow.remove_prefix(3);
  std::u16string wide = vkt::platform::Utf8ToUtf16(narrow);
  out = CString(std::u16string_view(wide));
  return 1;
}

// xml-date-time := yyyy '-' m[m] '-' d[d] [ 'T' h[h] ':' m[m] [ ':' s[s] [ ('.'|',') digits ] ] [ zone ] ] [ zone ]
// zone := 'Z' | ('+'|'-') hh [ [':'] mm ]
int CStrKit::XMLString2Time(CString& text, COleDateTime* out) {
  if (out != nullptr) out->SetStatus(COleDateTime::null);
  const char16_t* p = text.GetString();
  while (*p != 0 && vkt::iswspace(*p)) ++p;

  int year, month, day, hour = 0, minute = 0, second = 0;
  if (!ReadNumber(p, 4, 4, year) || *p++ != u'-') return 0;
  if (!ReadNumber(p, 1, 2, month) || *p++ != u'-') return 0;
  if (!ReadNumber(p, 1, 2, day)) return 0;
  bool hasTime = false;
  if (*p == u'T') {
    ++p;
    hasTime = true;
    if (!ReadNumber(p, 1, 2, hour) || *p++ != u':') return 0;
    if (!ReadNumber(p, 1, 2, minute)) return 0;
    if (*p == u':') {
      ++p;
      if (!ReadNumber(p, 1, 2, second)) return 0;
      if (*p == u'.' || *p == u',') {
        ++p;
        if (!IsAsciiDigit(*p)) return 0;
        while (IsAsciiDigit(*p)) ++p;  // fractions of a second are dropped
      }
    }
  }
  bool hasZone = false;
  int zoneMinutes = 0;  // east of Greenwich positive
  if (*p == u'Z') {
    ++p;
    hasZone = true;
  } else if (*p == u'+' || *p == u'-') {
    int sign = *p++ == u'-' ? -1 : 1;
    int zh = 0, zm = 0;
    if (!IsAsciiDigit(p[0]) || !IsAsciiDigit(p[1])) return 0;
    zh = (p[0] - u'0') * 10 + (p[1] - u'0');
    p += 2;
    if (*p == u':') ++p;
    if (IsAsciiDigit(p[0])) {
      if (!ReadNumber(p, 2, 2, zm)) return 0;
    } else if (p[-1] == u':') {
      return 0;
    }
    if (zh > 23 || zm > 59) return 0;
    hasZone = true;
    zoneMinutes = sign * (zh * 60 + zm);
  }
  while (*p != 0 && vkt::iswspace(*p)) ++p;
  if (*p != 0) return 0;

  COleDateTime value;
  if (value.SetDateTime(year, month, day, hour, minute, second) != 0) return 0;
  // A plain date names a day, not a moment: its zone is not applied.
  if (hasZone && hasTime) {
    COleDateTimeSpan zone(0, 0, zoneMinutes, 0);
    value -= zone;  // now UTC
    value -= *CGlobalInfo::GetInstance()->GetLocalDateTimeSpan();  // now local
    if (value.GetStatus() != COleDateTime::valid) return 0;
  }
  if (out != nullptr) *out = value;
  return 1;
}

int CStrKit::ArrayFindBetween(CUIntArray& starts, CUIntArray& ends, UINT pos) {
  int n = starts.GetSize() < ends.GetSize() ? starts.GetSize() : ends.GetSize();
  for (int i = 0; i < n; ++i)
    if (starts.GetAt(i) <= pos && pos <= ends.GetAt(i)) return i;
  return -1;
}

int CStrKit::FindQuotes(const char16_t* text, CUIntArray& starts, CUIntArray& ends,
                        const char16_t* quotes, int bNoEscape) {
  starts.RemoveAll();
  ends.RemoveAll();
  if (text == nullptr) return 0;
  if (quotes == nullptr || quotes[0] == 0) quotes = u"'\"";
  auto isQuote = [quotes](char16_t c) {
    for (const char16_t* q = quotes; *q != 0; ++q)
      if (*q == c) return true;
    return false;
  };
  char16_t open = 0;
  UINT openAt = 0;
  for (int i = 0; text[i] != 0; ++i) {
    char16_t c = text[i];
    if (c == u'\\' && !bNoEscape) {
      if (text[i + 1] == 0) break;
      ++i;
      continue;
    }
    if (open == 0) {
      if (isQuote(c)) {
        open = c;
        openAt = static_cast<UINT>(i);
      }
    } else if (c == open) {
      starts.Add(openAt);
      ends.Add(static_cast<UINT>(i));
      open = 0;
    }
  }
  return starts.GetSize();
}

CString CStrKit::Array2CString(CStringArray& items, WORD sep) {
  char16_t unit = static_cast<char16_t>(sep);
  return Join(items, &unit, sep == 0 ? 0 : 1);
}

CString CStrKit::Array2CString(CStringArray& items, const char16_t* sep) {
  return Join(items, sep, Len(sep));
}

int CStrKit::IsDigit(WORD c) { return IsAsciiDigit(static_cast<char16_t>(c)) ? 1 : 0; }

int CStrKit::strstr(const char16_t* text, const char16_t* what, int textLen, int whatLen,
                    int bCase) {
  if (textLen < 0) textLen = Len(text);
  if (whatLen < 0) whatLen = Len(what);
  return FindFrom(text, textLen, what, whatLen, 0, bCase != 0);
}

int CStrKit::strstrs(const char16_t* text, const char16_t* what, int textLen, int whatLen,
                     int bCase) {
  if (textLen < 0) textLen = Len(text);
  if (whatLen < 0) whatLen = Len(what);
  int count = 0;
  for (int pos = FindFrom(text, textLen, what, whatLen, 0, bCase != 0); pos >= 0;
       pos = FindFrom(text, textLen, what, whatLen, pos + whatLen, bCase != 0))
    ++count;
  return count;
}

int CStrKit::ArrayCompare(CStringArray& items, const char16_t* text, int start) {
  if (text == nullptr) text = u"";
  for (int i = start < 0 ? 0 : start; i < items.GetSize(); ++i)
    if (items.GetAt(i).Compare(text) == 0) return i;
  return -1;
}

int CStrKit::ArrayCompareNoCase(CStringArray& items, const char16_t* text, int start) {
  if (text == nullptr) text = u"";
  for (int i = start < 0 ? 0 : start; i < items.GetSize(); ++i)
    if (vkt::_wcsicmp(items.GetAt(i).GetString(), text) == 0) return i;
  return -1;
}

int CStrKit::ParseDate(CString& text, CStringArray& parts) {
  parts.RemoveAll();
  const char16_t* s = text.GetString();
  int n = text.GetLength();
  int start = -1;  // first digit of the field being read
  for (int i = 0; i <= n; ++i) {
    char16_t c = i < n ? s[i] : 0;
    if (i < n && IsAsciiDigit(c)) {
      if (start < 0) start = i;
      continue;
    }
    if (i < n && !IsDateSeparator(c)) {
      parts.RemoveAll();
      return 0;
    }
    if (start >= 0) parts.Add(CString(s + start, i - start));
    start = -1;
  }
  if (parts.GetSize() == 1 && parts.GetAt(0).GetLength() == 8) {
    CString whole = parts.GetAt(0);
    parts.RemoveAll();
    parts.Add(whole.Left(4));
    parts.Add(whole.Mid(4, 2));
    parts.Add(whole.Mid(6, 2));
  }
  if (parts.GetSize() < 3) {
    parts.RemoveAll();
    return 0;
  }
  return 1;
}

int CStrKit::Str2Bool(const char16_t* text) {
  CString t(text);
  t.Trim();
  static const char16_t* const kTrue[] = {u"true", u"yes", u"y", u"on", u"t"};
  for (const char16_t* word : kTrue)
    if (t.CompareNoCase(word) == 0) return 1;
  // number := [+|-] digits [ '.' digits ] | [+|-] '.' digits
  const char16_t* p = t.GetString();
  if (*p == u'+' || *p == u'-') ++p;
  bool digits = false;
  bool nonZero = false;
  bool point = false;
  for (; *p != 0; ++p) {
    if (IsAsciiDigit(*p)) {
      digits = true;
      nonZero = nonZero || *p != u'0';
    } else if (*p == u'.' && !point) {
      point = true;
    } else {
      return 0;
    }
  }
  return digits && nonZero ? 1 : 0;
}

int CStrKit::CUIntArrayCompare(CUIntArray& a, CUIntArray& b) {
  int n = a.GetSize() < b.GetSize() ? a.GetSize() : b.GetSize();
  for (int i = 0; i < n; ++i) {
    if (a.GetAt(i) != b.GetAt(i)) return a.GetAt(i) < b.GetAt(i) ? -1 : 1;
  }
  if (a.GetSize() == b.GetSize()) return 0;
  return a.GetSize() < b.GetSize() ? -1 : 1;
}

int CStrKit::CUIntArrayAppendSingle(CUIntArray& to, CUIntArray& from) {
  // A copy, so that appending an array to itself reads a stable source.
  CUIntArray source(from);
  int added = 0;
  for (int i = 0; i < source.GetSize(); ++i) {
    UINT v = source.GetAt(i);
    if (CUIntArrayFind(to, static_cast<int>(v)) < 0) {
      to.Add(v);
      ++added;
    }
  }
  return added;
}

int CStrKit::CUIntArrayFind(CUIntArray& items, int value) {
  UINT v = static_cast<UINT>(value);
  for (int i = 0; i < items.GetSize(); ++i)
    if (items.GetAt(i) == v) return i;
  return -1;
}
