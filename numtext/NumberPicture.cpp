// numtext/NumberPicture.cpp: number pictures, the display text that a grid
// format or the formatNum function asks for. A picture only places digits:
// it never rounds, scales or picks a section by sign. ConvertToDispFormat
// rounds through CGmp first; FormatNum cuts whatever the picture has no room
// for. Grouping by threes is SepNumber's.
#include "CGmp.h"
#include "CUtilityCalc.h"

namespace {

constexpr int kMaxShownDecimals = 8;

bool InIntegerRun(char16_t c) { return c == u'#' || c == u','; }

// The integer section: each 0 takes one character of the digits from the
// right, then the first run of # and commas takes what is left. A section
// without # drops what is left, the sign included (0.00 shows 1234.5 as
// 4.50). A minus or comma of the digits counts like a digit.
// Chosen: the run is looked for in the section as the walk left it, so in a
// picture that mixes commas, zeros and # (0,000#) a placed comma may join
// the run; no reading of such a picture places groups sensibly.
void PlaceInteger(CString& section, CString digits, bool negative) {
  int zeros = 0;
  int hashes = 0;
  bool comma = false;
  for (int i = 0; i < section.GetLength(); ++i) {
    zeros += section[i] == u'0' ? 1 : 0;
    hashes += section[i] == u'#' ? 1 : 0;
    comma = comma || section[i] == u',';
  }
  // A comma among zeros alone stays a literal (0,000 shows 12 as 0,012):
  // grouping wants a # beside it, or a section with no 0 at all.
  if (comma && (hashes > 0 || zeros == 0)) CUtilityCalc::SepNumber(digits, 0);
  if (negative) {
    if (digits.IsEmpty()) digits = u"0";
    digits.Insert(0, u'-');
  }

  int left = digits.GetLength();
  for (int i = section.GetLength() - 1; i >= 0 && left > 0; --i) {
    if (section[i] == u'0') section.SetAt(i, digits[--left]);
  }
  if (hashes == 0) return;
  const int first = section.FindOneOf(u"#,");
  int end = first;
  while (end < section.GetLength() && InIntegerRun(section[end])) ++end;
  section.Delete(first, end - first);
  section.Insert(first, digits.Left(left).GetString());
}

// The decimal section: from its first 0 on, each 0 takes the next digit from
// the left; the first run of # takes the rest, wherever it stands, so #0
// shows .12 as 21. Without a # the rest is cut, never rounded.
void PlaceDecimals(CString& section, const CString& digits) {
  const int hash = section.Find(u'#');
  int next = 0;
  for (int i = 0; i < section.GetLength() && next < digits.GetLength(); ++i) {
    if (section[i] == u'0') section.SetAt(i, digits[next++]);
  }
  if (hash < 0) return;
  int end = hash;
  while (end < section.GetLength() && section[end] == u'#') ++end;
  section.Delete(hash, end - hash);
  section.Insert(hash, digits.Mid(next).GetString());
}

}  // namespace

void CUtilityCalc::FormatNum(CString& text, CString& picture) {
  if (picture.IsEmpty()) return;
  // Text that is no number gives the digits read before the fault, or none;
  // the picture's own zeros and literals then stand alone.
  const CGmp number(text.GetString());
  const int point = picture.Find(u'.');
  CString integer = point < 0 ? picture : picture.Left(point);
  CString decimals = point < 0 ? CString() : picture.Mid(point + 1);
  if (!integer.IsEmpty()) PlaceInteger(integer, number.m_strInt, number.m_bNeg != 0);
  if (!decimals.IsEmpty()) PlaceDecimals(decimals, number.m_strDec);

  // A decimal section that took no digits vanishes with its point: 12 in #.##
  // shows as 12.
  text = integer;
  if (!decimals.IsEmpty()) {
    text += u'.';
    text += decimals;
  }
}

void CUtilityCalc::ConvertToDispFormat(CGmp& value, CString& out, CString& picture) {
  // An empty picture, or one with a point and a # last, shows the value's
  // own decimals (a lone # has no point: none). Any other counts every
  // character behind its point, literals included, so 0.0% rounds to two
  // places and the picture then cuts one of them.
  const int point = picture.Find(u'.');
  const int length = picture.GetLength();
  const bool natural = length == 0 || (point >= 0 && picture[length - 1] == u'#');
  int decimals = natural ? value.m_strDec.GetLength() : GetDecLen(picture);
  if (decimals > kMaxShownDecimals) decimals = kMaxShownDecimals;
  value.GetString(out, decimals, 0);
  FormatNum(out, picture);
}
