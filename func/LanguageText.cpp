// func/LanguageText.cpp: the library's only readers of the language
// interface's texts; errors, function information and call messages all
// come through here.
#include "func/LanguageText.h"

#include "func/ProcessState.h"

namespace vkt {

CString LanguageText(int id) {
  ILggInterface* lgg = LanguageInterface();
  if (lgg == nullptr) return CString();
  return CString(lgg->GetText(id));  // a null text reads as empty
}

void TranslateLanguageText(CString& text) {
  ILggInterface* lgg = LanguageInterface();
  if (lgg != nullptr) lgg->TranslateText(text);
}

CString FormatOneArgument(const CString& format, const CString& arg) {
  CString out;
  bool used = false;
  const int length = format.GetLength();
  for (int i = 0; i < length; ++i) {
    const char16_t ch = format[i];
    if (ch == u'%' && i + 1 < length && (format[i + 1] == u'%' || format[i + 1] == u's')) {
      if (format[i + 1] == u'%') {
        out += u'%';
      } else {
        if (!used) out += arg;
        used = true;
      }
      ++i;
      continue;
    }
    out += ch;
  }
  return out;
}

}  // namespace vkt
