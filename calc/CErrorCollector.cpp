// calc/CErrorCollector.cpp: the error collector: texts by number through the
// host's language interface, and the caret display under the position of a
// failure. The numbers and positions themselves are set by the parser, the
// evaluator and the calculator; this unit only stores and renders them.
#include "CErrorCollector.h"

#include <cstdlib>
#include <cstring>

#include "ICalcTreeNode.h"
#include "func/LanguageText.h"
#include "platform/WideRuntime.h"
#include "tree/ErrorNumbers.h"

namespace {

// A heap copy of `length` units and a terminator, or null for empty text.
char16_t* HeapCopy(const char16_t* text, std::size_t length) {
  if (text == nullptr || length == 0) return nullptr;
  void* block = std::calloc(length + 1, sizeof(char16_t));
  if (block == nullptr) return nullptr;
  std::memcpy(block, text, length * sizeof(char16_t));
  return static_cast<char16_t*>(block);
}

}  // namespace

CErrorCollector::CErrorCollector()
    : nError(0),
      nCodePos(-1),
      pFuncCounter(nullptr),
      pCurrentNode(nullptr),
      pszSource(nullptr),
      pszErrorText(nullptr) {}

CErrorCollector::CErrorCollector(const CErrorCollector& other)
    : nError(other.nError),
      nCodePos(other.nCodePos),
      strFuncName(other.strFuncName),
      pFuncCounter(other.pFuncCounter),
      pCurrentNode(other.pCurrentNode),
      pszSource(other.pszSource),
      pszErrorText(HeapCopy(other.pszErrorText, vkt::wcslen(other.pszErrorText))) {}

CErrorCollector& CErrorCollector::operator=(const CErrorCollector& other) {
  if (this == &other) return *this;
  char16_t* text = HeapCopy(other.pszErrorText, vkt::wcslen(other.pszErrorText));
  std::free(pszErrorText);
  pszErrorText = text;
  nError = other.nError;
  nCodePos = other.nCodePos;
  strFuncName = other.strFuncName;
  pFuncCounter = other.pFuncCounter;
  pCurrentNode = other.pCurrentNode;
  pszSource = other.pszSource;
  return *this;
}

CErrorCollector::~CErrorCollector() { std::free(pszErrorText); }

void CErrorCollector::Empty_CalcError() {
  nError = 0;
  nCodePos = -1;
  std::free(pszErrorText);
  pszErrorText = nullptr;
  pCurrentNode = nullptr;
  pszSource = nullptr;
}

const char16_t* CErrorCollector::GetErrorText(const char16_t* fontFace) {
  if (pszErrorText == nullptr) {
    // Built from the number alone; a "%s" in the language text stays, and
    // the caret waits for a call that finds a text.
    if (nError > 0) SetErrorText(vkt::LanguageText(nError).GetString());
    return pszErrorText;
  }
  if (nCodePos == -1) return pszErrorText;

  const CString text(pszErrorText);
  CString display;
  const int colon = text.Find(u':');
  if (colon >= 0 && colon < text.GetLength() - 1) {
    // "message: expression": the expression moves to a line of its own, so
    // that the dashes below it count from its first character.
    display = text.Left(colon + 1);
    display += u"\r\n";
    if (fontFace != nullptr) {
      display += u"<font face='";
      display += fontFace;
      display += u"'>";
    }
    CString expression = text.Mid(colon + 1);
    display += expression.TrimLeft();
  } else {
    display = text;
  }
  display += u"\r\n";
  if (nCodePos > 0) display += CString(u'-', nCodePos);
  display += u'^';
  if (fontFace != nullptr) display += u"</font>";
  nCodePos = -1;  // the display is made once
  SetErrorText(display.GetString());
  return pszErrorText;
}

void CErrorCollector::SetErrorText(int number, const char16_t* param) {
  CString arg;
  if (param != nullptr) {
    arg = param;
  } else if (pszSource != nullptr) {
    arg = pszSource;
  } else if (pCurrentNode != nullptr) {
    pCurrentNode->GetExpression(arg);
  }
  if (number > 0) {
    CString message = vkt::LanguageText(number);
    if (message.Find(u"%s") >= 0 && !arg.IsEmpty()) {
      arg = vkt::FormatOneArgument(message, arg);
    } else {
      message.Replace(u"%s", u"");
      arg = message;
    }
  }
  SetErrorText(arg.GetString());
}

void CErrorCollector::SetErrorText(const char16_t* text) {
  // Copy before freeing: `text` may be our own text (a host that stores
  // what GetErrorText gave it).
  char16_t* copy = HeapCopy(text, vkt::wcslen(text));
  std::free(pszErrorText);
  pszErrorText = copy;
}

void CErrorCollector::SetCodePos(int number, int position) {
  nError = number;
  nCodePos = position;
}

void CErrorCollector::SetErrorSyntax(int position, const char16_t* param) {
  nCodePos = position;
  nError = vkt::kErrSyntax;
  SetErrorText(vkt::kErrSyntax, param);
}
