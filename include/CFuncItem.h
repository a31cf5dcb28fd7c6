// CFuncItem.h: the frame of one function call (CFuncPara) and the record
// with which a host adds a function of its own (CFuncItem).
//
// All values cross a call as text: a body gets its arguments as strings,
// free of quotes, and leaves one string; numbers as decimal digits, dates as
// date text. The common wrapper around every body then turns the body's
// return into an error text or normalises the result:
// - 1 is success. A result that is a pure number stays as it is unless the
//   kind is 1, 3 or 4; any other non-empty result is put into quotes, and a
//   kind 2, 5 or 6 becomes 1 (text).
// - 0 is a bad call, -1 a bad value: unless the body left a message in
//   strResult, the message is language text 1003 or 1004 formatted with the
//   call text "name(arg1, arg2)". Any other return reports only what the
//   body left in strResult.
//
// How a host adds a function: construct a CFuncItem, set its category,
// description, parameter texts or ids, flags, parameter kinds and, if the
// library is to run it, pfnBody; then append the pointer to the manager's
// m_arrItems, which then owns it. An item without a body makes the
// calculation ask the host for the function's value at each call.
//
// The order of the fields and of the virtual operations is part of the
// interface.
#pragma once

#include "CFuncMnger.h"
#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Types.h"

class CGmp;
class IInvokeJS;

// One call, built on the stack by the calculator: it fills pJsHost, the name
// and the arguments; CFuncMnger::CallFunc fills the rest.
class VKTCALC_API CFuncPara {
 public:
  CFuncPara();  // empty strings and arrays, all other fields 0

  // Validates the value and writes it with all its stored decimals and no
  // grouping, replacing strResult. Always 1.
  virtual int SetResult(CGmp& value);
  // Writes the value as "%d", replacing strResult.
  virtual void SetResult(int value);
  // Chosen: the destructor is virtual, and declared behind the two
  // SetResult slots so that those keep the first two places.
  virtual ~CFuncPara();

  // Normalises strResult as number text: trimmed, no trailing zeros of the
  // decimals or trailing point, "-0" as "0". Words pass unchanged; only the
  // length is tested. 1, or 0 (text unchanged) when the digits exceed the
  // CGmp limits.
  int ResetDoubleString_Result();
  // The same for each argument in order; stops with 0 at the first failure,
  // leaving the arguments before it normalised. 1 without arguments.
  int ResetDoubleString_Para();

  IInvokeJS* pJsHost;    // the script host given to NewCalc; may be null
  CString strName;       // the function's name as the expression spells it
  CString strResult;     // the result; a failing body may leave its message here
  CStringArray arrArgs;  // the arguments in order, free of quotes when the body runs
  // 1 at index i when argument i came in quotes; the array ends behind the
  // last quoted argument (empty when none was quoted).
  CByteArray arrQuoted;
  BYTE nResultKind;      // the result kind; a body may overwrite it
  void* hJsWnd;          // copied from CFuncMnger::m_hJsWnd at each call
  UINT nJsMessage;       // copied from CFuncMnger::m_nJsMessage at each call
};

// A registered function, or a description record that GetFuncInfo and
// ListCategory fill. Its CFuncInfo part has a null pName: the name is
// strName.
class VKTCALC_API CFuncItem : public CFuncInfo {
 public:
  CFuncItem();  // all empty and zero, no body
  // strName, nDescId and nResultKind as given; a nParamId other than -1 is
  // appended to arrParamIds (the nParamId field stays 0). Category, flags
  // and body are 0.
  CFuncItem(const char16_t* name, int nDescId, int nParamId, unsigned char nResultKind);
  // An item owns its children; use Copy to copy a description.
  CFuncItem(const CFuncItem&) = delete;
  CFuncItem& operator=(const CFuncItem&) = delete;

  // Deletes each non-null child.
  virtual ~CFuncItem();
  // Copies the description of `other`: pName, nCategory, nDescId, nParamId,
  // nResultKind, strName, strCategory, strGroup, strDesc, arrParamText,
  // arrParamIds, nFlags, strNote1, strNote2. Not arrParaKinds, pfnBody or
  // arrChildren: a copy describes, it does not run. Null or this item: nothing.
  virtual void Copy(CFuncItem* other);

  CString strName;            // the function's name
  CString strCategory;        // category text, used when nCategory is below 1
  CString strGroup;           // group text, the first half of a named category
  CString strDesc;            // description text, used when nDescId is below 1
  CStringArray arrParamText;  // parameter texts
  CUIntArray arrParamIds;     // text ids of further parameter texts
  // Bit 0: the function is gated. Bit 1: it passes the gate's first test
  // (CFuncMnger::CallFunc). The other bits have no meaning.
  BYTE nFlags;
  CString strNote1;           // the host's; GetFuncInfo translates it
  CString strNote2;           // the host's; GetFuncInfo translates it
  // Chosen: the children are items, the form ListCategory delivers. Owned;
  // the library fills none.
  CArray<CFuncItem*, CFuncItem*> arrChildren;
};
