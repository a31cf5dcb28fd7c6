// CErrorCollector.h: where a failed parse or calculation leaves its error:
// a number, a position in the source text and a text for people.
//
// The host owns the collector and passes it by pointer to the parser and the
// calculator, which read and write its public fields directly; their order
// and the order of the virtual operations are part of the interface. Error
// numbers are text numbers of the host's language interface (SetLggInterface):
// the message of error 1003 is what the interface answers for 1003. Numbers
// the library reports: 1000 invalid function name, 1001 digits followed by a
// name, 1003 syntax error, 1004 bad value in a function call, 1005 number
// and text mixed with complex mode off, 1068 invalid variable name, 1070
// brackets that don't match, 1072 a function failed without an error.
#pragma once

#include "VKTCalcExport.h"
#include "platform/CString.h"
#include "platform/Types.h"

class ICalcTreeNode;

class VKTCALC_API CErrorCollector {
 public:
  CErrorCollector();  // no error, no position, no text
  // Copies every field. Chosen: the copy gets a heap copy of the text, so
  // that each collector frees only what it owns.
  CErrorCollector(const CErrorCollector& other);
  CErrorCollector& operator=(const CErrorCollector& other);

  virtual ~CErrorCollector();  // frees the error text

  // No error: nError 0, nCodePos -1, no text, pCurrentNode and pszSource
  // null. strFuncName and pFuncCounter stay.
  virtual void Empty_CalcError();

  // The error text for display, built on first demand:
  // - with no text yet and nError above 0, the language text of nError,
  //   unformatted, becomes the text (null when there is none); nCodePos is
  //   not looked at and stays;
  // - with a text and nCodePos -1, the text as it is;
  // - with a text and any other nCodePos, the text once becomes a caret
  //   display: "message:" CR LF [<font face='fontFace'>] expression CR LF,
  //   nCodePos dashes, "^" [</font>], when the text has a ':' that is not its
  //   last character, else the text CR LF dashes "^"; nCodePos becomes -1.
  // The pointer is valid until the text changes next.
  virtual const char16_t* GetErrorText(const char16_t* fontFace);

  // The text for an error number; does not store the number. The argument
  // is `param`, or when that is null pszSource, else the expression text of
  // pCurrentNode, else empty. For a number above 0 the language text of the
  // number is formatted with the argument when it holds "%s" and the
  // argument is not empty, and has every "%s" removed otherwise; for 0 and
  // below the argument itself is the text.
  virtual void SetErrorText(int number, const char16_t* param);
  // Replaces the text by a copy of `text`; null or empty leaves no text.
  virtual void SetErrorText(const char16_t* text);

  // Stores the number and the position and nothing else.
  void SetCodePos(int number, int position);
  // Syntax error 1003 at `position`, its text through SetErrorText(1003, param).
  void SetErrorSyntax(int position, const char16_t* param);

  int nError;                   // error number; 0 is no error
  int nCodePos;                 // position in the source text, -1 for none
  CString strFuncName;          // the function the calculator called last
  LONG* pFuncCounter;           // the host's word, counted up atomically; may be null
  ICalcTreeNode* pCurrentNode;  // node under examination while a check runs
  const char16_t* pszSource;    // source text while a check runs; not owned
  char16_t* pszErrorText;       // the text, from calloc, owned; null or non-empty
};
