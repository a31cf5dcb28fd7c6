// numtext/NumberDisplay.cpp: what a cell shows for a number text: thousands
// grouping and the compact one-byte display format. Rounding is CGmp's;
// these only move characters and ask CGmp whether a text is zero.
#include "numtext/NumberDisplay.h"

#include "CGmp.h"
#include "CUtilityCalc.h"

namespace {

constexpr BYTE kDecimalsMask = 63;  // low six bits; 63 itself means "as many as there are"
constexpr BYTE kShowZero = 64;
constexpr BYTE kGroupThousands = 128;

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

}  // namespace

namespace vkt::numtext {

void FitDecimals(CString& text, int n) {
  const int point = text.Find(u'.');
  if (n < 0) {
    if (point < 0) return;
    text.TrimRight(u'0');
    const int last = text.GetLength() - 1;
    if (last >= 0 && text[last] == u'.') text.Delete(last);
    return;
  }
  if (text.IsEmpty()) return;
  if (point < 0) {
    if (n > 0) {
      text += u'.';
      text += CString(u'0', n);
    }
    return;
  }
  if (n == 0) {
    text.Delete(point, text.GetLength() - point);
    return;
  }
  const int have = text.GetLength() - point - 1;
  if (have > n) {
    text.Delete(point + 1 + n, have - n);
  } else if (have < n) {
    text += CString(u'0', n - have);
  }
}

}  // namespace vkt::numtext

void CUtilityCalc::SepNumber(CString& text, int bCheck) {
  if (bCheck != 0) {
    if (IsPureNumber(text.GetString(), 1, CGmp::CheckStrict_None, 0) == 0) return;
  } else if (text.GetLength() < 4) {
    return;
  }

  // A minus or blanks before the first digit or point stay in front as they are.
  const int length = text.GetLength();
  const char16_t* const s = text.GetString();
  int prefix = 0;
  while (prefix < length && !IsDigit(s[prefix]) && s[prefix] != u'.') ++prefix;
  if (prefix == length) return;

  CString rest;
  rest.Preallocate(length - prefix);
  for (int i = prefix; i < length; ++i) {
    if (s[i] != u',') rest += s[i];
  }
  int e = rest.Find(u'.');
  if (e < 0) e = rest.GetLength();

  CString out;
  out.Preallocate(prefix + rest.GetLength() + e / 3);
  out.Append(s, prefix);
  // The first group takes what is left over by the groups of three.
  int group = e % 3;
  if (group == 0) group = 3;
  const char16_t* const r = rest.GetString();
  out.Append(r, group < e ? group : e);
  for (int i = group; i < e; i += 3) {
    out += u',';
    out.Append(r + i, 3);
  }
  out.Append(r + e, rest.GetLength() - e);
  text = out;
}

void CUtilityCalc::ConvertToDispFormat(CString& text, BYTE format, int bRound, int bKeepBlanks) {
  if (IsPureNumber(text.GetString(), 1, CGmp::CheckStrict_None, 0) == 0) return;

  // Chosen: the blanks at both ends come off here whatever bRound says, and
  // bKeepBlanks puts the leading ones back at the end. Rounding would drop
  // them anyway; without it the kept ones would otherwise stand twice, and
  // trailing ones would sit between the digits and the added decimals.
  int blanks = 0;
  if (bKeepBlanks != 0) {
    while (blanks < text.GetLength() && text[blanks] == u' ') ++blanks;
  }
  text.Trim(u' ');
  text.Remove(u',');

  const bool showZero = (format & kShowZero) != 0;
  if (!showZero && CGmp::IsZero(text.GetString())) {
    text.Empty();
    return;
  }

  const int decimals = (format & kDecimalsMask) == kDecimalsMask ? -1 : (format & kDecimalsMask);
  if (bRound != 0) CGmp::Round(text, decimals);
  vkt::numtext::FitDecimals(text, decimals);
  if ((format & kGroupThousands) != 0) SepNumber(text, 0);
  // A negative number can display as zero only now, after rounding or cutting.
  if (!showZero && CGmp::IsZero(text.GetString())) text.Empty();

  // Only the early return above loses the blanks; a text emptied just now
  // still gets them back.
  if (blanks > 0) text.Insert(0, CString(u' ', blanks).GetString());
}
