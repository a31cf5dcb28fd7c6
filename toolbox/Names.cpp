// toolbox/Names.cpp: what the parser accepts as the name of a variable or a
// function. With the wide switch, code units from 129 up count as name
// characters, which admits Chinese names; 128 is refused in every mode.
#include "CUtilityCalc.h"

namespace {

constexpr char16_t kFirstWide = 129;

bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

}  // namespace

int CUtilityCalc::isAlpha(WORD c) {
  return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') ? 1 : 0;
}

int CUtilityCalc::IsValidVarName(const char16_t* name, int bWide, int bDot, int bHash, int& nPos) {
  nPos = 0;
  CString trimmed(name);
  trimmed.Trim();
  const int length = trimmed.GetLength();
  if (length == 0) return 0;

  int underscores = 0;
  int ats = 0;
  int dollars = 0;
  for (int i = 0; i < length; ++i) {
    const char16_t ch = trimmed[i];
    bool accepted;
    if (ch >= kFirstWide) {
      accepted = bWide != 0;
    } else if (ch == u'#') {
      accepted = bHash && i == 0 && length > 1;
    } else if (isAlpha(ch)) {
      accepted = true;
    } else if (ch == u':') {
      accepted = length > 1;
    } else if (ch == u'_' || ch == u'@' || ch == u'$') {
      accepted = true;
      underscores += ch == u'_';
      ats += ch == u'@';
      dollars += ch == u'$';
    } else if (ch == u'.') {
      accepted = bDot && i > 0 && i < length - 1;
    } else if (IsDigit(ch)) {
      nPos = i;
      accepted = i > 0;
    } else {
      accepted = false;
    }
    // Every refusal names its position, so that the parser can point at the
    // character itself; only digits leave their mark on a valid name.
    if (!accepted) {
      nPos = i;
      return 0;
    }
  }
  if (underscores == length || ats == length || dollars == length) return 0;
  return 1;
}

int CUtilityCalc::IsValidFuncName(CString& name, int bWide) {
  name.Trim();
  const int length = name.GetLength();
  if (length == 0) return 0;
  int underscores = 0;
  for (int i = 0; i < length; ++i) {
    const char16_t ch = name[i];
    if (ch == u'_') {
      ++underscores;
    } else if (!(isAlpha(ch) || (IsDigit(ch) && i > 0) || (ch >= kFirstWide && bWide))) {
      return 0;
    }
  }
  return underscores == length ? 0 : 1;
}
