// toolbox/Quoting.cpp: the way between a string value and its quoted source
// form. The parser, the tree writer and the function wrapper all pass text
// through here, so a value written out and read back is the same value.
#include <string>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"

namespace {

bool IsQuote(char16_t ch) { return ch == u'\'' || ch == u'"'; }
bool IsEscapable(char16_t ch) { return ch == u'\\' || IsQuote(ch); }

// The quote that encloses `text` of `length` units as a matching pair, or 0.
char16_t EnclosingQuote(const char16_t* text, int length) {
  if (length < 2 || !IsQuote(text[0]) || text[length - 1] != text[0]) return 0;
  return text[0];
}

}  // namespace

char16_t CUtilityCalc::DetectStringQuotes(const char16_t* text) {
  if (text == nullptr) return 0;
  int length = 0;
  while (text[length] != 0) ++length;
  return EnclosingQuote(text, length);
}

int CUtilityCalc::Format_Quates(CString& text) {
  if (text.FindOneOf(u"\\'\"") < 0) return 0;
  std::u16string escaped;
  escaped.reserve(static_cast<std::size_t>(text.GetLength()) * 2);
  for (char16_t ch : text.View()) {
    if (IsEscapable(ch)) escaped.push_back(u'\\');
    escaped.push_back(ch);
  }
  text = CString(std::u16string_view(escaped));
  return 1;
}

int CUtilityCalc::UnFormat_Quates(CString& text) {
  const int length = text.GetLength();
  int first = text.Find(u'\\');
  if (first < 0) return 0;

  // Check every escape before touching the text: one bad backslash leaves
  // the whole text as it was.
  for (int i = first; i >= 0; i = text.Find(u'\\', i + 2)) {
    if (i + 1 >= length || !IsEscapable(text[i + 1])) return 0;
  }

  std::u16string plain;
  plain.reserve(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) {
    if (text[i] == u'\\') ++i;  // keep the escaped unit, which is never looked at
    plain.push_back(text[i]);
  }
  text = CString(std::u16string_view(plain));
  return 1;
}

// The enclosing pairs are counted first and cut once: peeling one pair per
// copy would make a text of a million quote marks quadratic.
char16_t CUtilityCalc::Dettach_Quotes(CString& text, int bUnformat) {
  const char16_t* p = text.GetString();
  int from = 0;
  int length = text.GetLength();
  char16_t last = 0;
  for (char16_t quote; (quote = EnclosingQuote(p + from, length)) != 0;) {
    last = quote;
    ++from;
    length -= 2;
  }
  if (last == 0) return 0;
  text = text.Mid(from, length);
  if (bUnformat) UnFormat_Quates(text);
  return last;
}

void CUtilityCalc::Attach_Quotes(CString& text, int bFormat) {
  if (text.IsEmpty()) {
    text = u"''";
    return;
  }
  if (text.GetLength() == 1) {
    const char16_t only = text[0];
    if (bFormat) Format_Quates(text);
    const char16_t* quote = only == u'\'' ? u"\"" : u"'";
    text = quote + text + quote;
    return;
  }
  if (bFormat)
    Format_Quates(text);
  else
    Dettach_Quotes(text, 0);
  // Only a single quote past the first unit asks for double quotes; one that
  // leads the text stays between single quotes, as ''a' shows.
  const char16_t* quote = text.Find(u'\'', 1) > 0 ? u"\"" : u"'";
  text = quote + text + quote;
}

// The scan is the foundation's, with both quotes and the backslash escape, so
// that the parser and the argument splitter agree on what is quoted.
int CUtilityCalc::FindQuotes(CString& text, CUIntArray& starts, CUIntArray& ends) {
  return CStrKit::FindQuotes(text.GetString(), starts, ends, u"'\"", 0);
}
