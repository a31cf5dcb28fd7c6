// toolbox/Arguments.cpp: reading lines, call-like texts and assignments out
// of a longer text, for the hosts. A line ends at the pair CR LF only.
//
// The buffer forms hold wide text: GetSize() / 2 units, a trailing odd byte
// being no unit. They read the content by nSize alone and never behind it,
// since a plain CMem has no terminator there.
#include <cstring>
#include <string>

#include "CUtilityCalc.h"
#include "foundation/CBuffer.h"
#include "foundation/CStrKit.h"

namespace {

constexpr char16_t kCR = u'\r';
constexpr char16_t kLF = u'\n';

bool IsQuote(char16_t ch) { return ch == u'\'' || ch == u'"'; }
bool IsBlankOrTab(char16_t ch) { return ch == u' ' || ch == u'\t'; }

// The wide text of a block and its length in whole units.
const char16_t* Units(CMem& text) { return reinterpret_cast<const char16_t*>(text.pBuf); }
int UnitLength(CMem& text) { return text.pBuf == nullptr || text.nSize < 0 ? 0 : text.nSize / 2; }

int SkipWhiteSpace(const char16_t* p, int i, int n) {
  while (i < n && CString::IsWhiteSpace(p[i])) ++i;
  return i;
}

// Cuts text at each sep that no quoted stretch holds (the rule of
// CStrKit::ArrayFindBetween); the stretches come in order and separators are
// met in order, so one cursor walks both and the cut stays linear. Empty
// pieces are not kept.
void CutOutsideQuotes(CStringArray& items, const CString& text, char16_t sep) {
  CUIntArray starts, ends;
  const int stretches = CStrKit::FindQuotes(text.GetString(), starts, ends, u"'\"", 0);
  const char16_t* p = text.GetString();
  const int n = text.GetLength();
  int stretch = 0;
  int from = 0;
  for (int i = 0; i < n; ++i) {
    if (p[i] != sep) continue;
    const UINT pos = static_cast<UINT>(i);
    while (stretch < stretches && ends[stretch] < pos) ++stretch;
    if (stretch < stretches && starts[stretch] <= pos) continue;  // quoted
    if (i > from) items.Add(CString(p + from, i - from));
    from = i + 1;
  }
  if (n > from) items.Add(CString(p + from, n - from));
}

// The blank form: a=1 b='2'. Quotes protect nothing here; a quoted value
// loses its pairs and then its escapes.
void ParseBlankExps(CStringArray& names, CStringArray& values, const char16_t* p, int n) {
  int i = 0;
  for (;;) {
    int eq = i;
    while (eq < n && p[eq] != u'=') ++eq;
    if (eq >= n) return;  // what has no = is dropped
    CString name(p + i, eq - i);
    name.Trim();
    i = SkipWhiteSpace(p, eq + 1, n);
    int end = i;
    while (end < n && p[end] != u' ') ++end;
    CString value(p + i, end - i);
    i = end;
    // Pairs come off while DetectStringQuotes sees one, and the escapes go
    // once when any did: the rule of Dettach_Quotes with its flag.
    CUtilityCalc::Dettach_Quotes(value, 1);
    names.Add(name);
    values.Add(value);
  }
}

// The items with sep (sepLength units, -1 up to its NUL) between them.
void JoinInto(CBuffer* out, CStringArray& items, const char16_t* sep, int sepLength) {
  if (out == nullptr) return;
  out->SetGrowBy(16384);
  for (int i = 0; i < items.GetSize(); ++i) {
    if (i > 0) out->AddText(sep, sepLength);
    out->AddText(items[i]);
  }
}

}  // namespace

int CUtilityCalc::GetLeftPara(CString& line, CString& text, int bCut, int bTrim) {
  line.Empty();
  const int pos = text.Find(u"\r\n");
  if (pos < 0) return 0;
  line = text.Left(pos);
  if (bCut) text.Delete(0, pos + 2);
  if (bTrim) {
    line.TrimRight();
    if (bCut) text.TrimLeft();
  }
  return 1;
}

int CUtilityCalc::GetLeftPara(CString& line, CBuffer& text, int bCut, int bTrim) {
  line.Empty();
  const int n = UnitLength(text);
  if (n < 2) return 0;
  const char16_t* p = Units(text);
  int pos = 0;
  while (pos + 1 < n && !(p[pos] == kCR && p[pos + 1] == kLF)) ++pos;
  if (pos + 1 >= n) return 0;
  line = CString(p, pos);
  if (bCut) text.DeleteBytes(0, (pos + 2) * 2);
  if (bTrim) {
    line.TrimRight();
    if (bCut) StrBuffer_TrimLeft(text);
  }
  return 1;
}

int CUtilityCalc::GetRightPara(CString& line, CString& text, int bCut, int bTrim) {
  line.Empty();
  const int pos = CStrKit::ReverseFindNoCase(text.GetString(), u"\r\n");
  if (pos < 0) return 0;
  line = text.Mid(pos + 2);
  if (bCut) text.Delete(pos, text.GetLength() - pos);
  if (bTrim) {
    line.TrimLeft();
    if (bCut) text.TrimRight();
  }
  return 1;
}

// The line runs from behind the pair to the end of the content, whether or
// not a terminator follows it. The cut zeroes the content from the CR on (the
// CR lies inside the content, so a plain CMem always has room for that
// terminator) and sets the size to the bytes in front of the CR; a trailing
// odd byte goes with the line.
int CUtilityCalc::GetRightPara(CString& line, CMem& text, int bCut, int bTrim) {
  line.Empty();
  const int n = UnitLength(text);
  if (n < 2) return 0;
  const char16_t* p = Units(text);
  int lf = n - 1;
  while (lf > 0 && !(p[lf] == kLF && p[lf - 1] == kCR)) --lf;
  if (lf == 0) return 0;
  line = CString(p + lf + 1, n - lf - 1);
  if (bCut) {
    const int cut = (lf - 1) * 2;
    std::memset(text.pBuf + cut, 0, static_cast<std::size_t>(text.nSize - cut));
    text.nSize = cut;
  }
  if (bTrim) {
    line.TrimLeft();
    if (bCut) StrBuffer_TrimRight(text);
  }
  return 1;
}

void CUtilityCalc::StrBuffer_TrimLeft(CBuffer& text) {
  const int n = UnitLength(text);
  const char16_t* p = Units(text);
  int count = 0;
  while (count < n && IsBlankOrTab(p[count])) ++count;
  if (count > 0) text.DeleteBytes(0, count * 2);
}

// Each trailing blank or tab is zeroed and takes 2 bytes off the size, so a
// trailing odd byte keeps the size odd; it is zeroed with them, which keeps a
// CBuffer's terminator whole.
void CUtilityCalc::StrBuffer_TrimRight(CMem& text) {
  const int n = UnitLength(text);
  const char16_t* p = Units(text);
  int keep = n;
  while (keep > 0 && IsBlankOrTab(p[keep - 1])) --keep;
  if (keep == n) return;
  std::memset(text.pBuf + keep * 2, 0, static_cast<std::size_t>(text.nSize - keep * 2));
  text.nSize -= (n - keep) * 2;
}

int CUtilityCalc::ParseFunction(const char16_t* text, CString& name, CStringArray& args) {
  CString body(text);  // copied first: text may be name's own buffer
  name.Empty();
  args.RemoveAll();
  body.Trim();
  if (body.IsEmpty()) return 1;
  const int open = body.Find(u'(');
  int i = 0;
  if (open >= 0) {
    name = body.Left(open);
    i = open + 1;
  }
  const char16_t* p = body.GetString();
  const int n = body.GetLength();
  std::u16string arg;
  while (i < n) {
    i = SkipWhiteSpace(p, i, n);
    const int first = i;
    char16_t quote = 0;
    char16_t last = 0;
    arg.clear();
    for (; i < n; ++i) {
      const char16_t ch = p[i];
      if (i == first && IsQuote(ch)) {
        quote = ch;  // only the very first unit opens a quote
      } else if (quote != 0 && ch == quote) {
        quote = 0;
      } else if (quote == 0 && (ch == u',' || ch == u')')) {
        last = ch;
        ++i;
        break;
      } else {
        arg.push_back(ch);
      }
    }
    CString item{std::u16string_view(arg)};
    item.Trim();
    if (last == u')') {
      if (!item.IsEmpty() || !args.IsEmpty()) args.Add(item);  // f() has no arguments
      break;
    }
    args.Add(item);
  }
  return 1;
}

// Chosen: a negative start, like one at or behind the end, finds nothing, as
// SafeDelete would delete nothing there.
void CUtilityCalc::ParseFunction(CString& text, int start, CString& name, CStringArray& args) {
  name.Empty();
  args.RemoveAll();
  if (start < 0) return;
  const int open = text.Find(u'(', start);
  if (open < 0) return;
  const int n = text.GetLength();
  char16_t quote = 0;
  int close = open + 1;
  for (; close < n; ++close) {
    const char16_t ch = text[close];
    if (quote != 0) {
      if (ch == quote) quote = 0;
    } else if (IsQuote(ch)) {
      quote = ch;
    } else if (ch == u')') {
      break;
    }
  }
  if (close >= n) return;
  const int count = close - start + 1;
  ParseFunction(text.Mid(start, count).GetString(), name, args);
  SafeDelete(text, start, count);
}

// Chosen: the items are kept trimmed, the same trimming that decides which
// items are empty; the values of items without a valid name are therefore
// trimmed as well.
int CUtilityCalc::ParseExps(CStringArray& names, CStringArray& values, const char16_t* text, int bWide,
                            WORD sep) {
  names.RemoveAll();
  values.RemoveAll();
  if (text == nullptr) return 1;
  const CString all(text);
  if (sep == u' ') {
    ParseBlankExps(names, values, all.GetString(), all.GetLength());
    return 1;
  }
  CStringArray items;
  CutOutsideQuotes(items, all, static_cast<char16_t>(sep));  // no sep: the whole text
  for (CString& item : items) item.Trim();
  names.SetSize(0, items.GetSize());
  values.SetSize(0, items.GetSize());
  for (const CString& item : items) {
    if (item.IsEmpty()) continue;
    CString left, right;
    int pos = 0;
    if (!CStrKit::GetLeftRight(item.GetString(), u"=", left, right, 1) ||
        (!left.IsEmpty() && !IsValidVarName(left.GetString(), bWide, 1, 1, pos))) {
      left.Empty();
      right = item;
    }
    names.Add(left);
    values.Add(right);
  }
  return 1;
}

void CUtilityCalc::Array2Buffer(CBuffer* out, CStringArray& items, const char16_t* sep) {
  JoinInto(out, items, sep, -1);
}

void CUtilityCalc::Array2Buffer(CBuffer* out, CStringArray& items, WORD sep) {
  const char16_t unit = static_cast<char16_t>(sep);
  JoinInto(out, items, &unit, 1);  // one unit, a zero one too
}
