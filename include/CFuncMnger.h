// CFuncMnger.h: the function manager, where a function name in an expression
// becomes a call, and CFuncInfo, the record that describes a function.
//
// A manager knows two catalogues. The 87 built-ins form one process-wide
// table, built once under a lock by the first manager's constructor and read
// without a lock afterwards; every manager shares it. The host's registered
// functions (CFuncItem, see CFuncItem.h) are this manager's own: a host
// appends them to m_arrItems, and the manager deletes them with itself.
//
// Names compare without regard to case, and a built-in always wins over a
// registered function of the same name. Index numbers: 0 to 86 is a row of
// the built-in table, 1000 + i is position i of m_arrItems.
//
// Result kinds (nResultKind): 0 not fixed (a body may set it), 1 text,
// 2 whole number, 3 date and time, 4 date, 5 number, 6 decimal number.
// Parameter kinds (arrParaKinds, one byte per declared parameter, the last
// one repeating): 0 no expectation of its own, 1 text, 2 number; an empty
// list expects text everywhere.
//
// Texts come from the host's language interface (SetLggInterface), which
// must be installed before GetFuncInfo, ListCategory or a failing call. The
// order of the fields and of the virtual operations is part of the interface.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Types.h"

class CErrorCollector;
class CFuncItem;
class CFuncPara;

// A function's body: reads para->arrArgs (argc of them, free of quotes),
// leaves its result in para->strResult and returns 1 for success, 0 for a bad
// call, -1 for a bad value, anything else for a failure without a message of
// the library's own (see CFuncItem.h).
typedef int (*PFN_FUNCBODY)(CFuncPara* para, int argc);

// The plain record of a function, built-in or registered.
class VKTCALC_API CFuncInfo {
 public:
  CFuncInfo();  // all ids and kinds 0, no name, no body, no parameter kinds

  const char16_t* pName;    // a built-in's mixed-case name; null in a CFuncItem
  int nCategory;            // text id of the category (1006 to 1009 for built-ins)
  int nDescId;              // text id of the one-line description
  int nParamId;             // text id of the parameter help; -1: none
  BYTE nResultKind;         // the kind of result, 0 to 6
  CByteArray arrParaKinds;  // expected kind of each declared parameter
  PFN_FUNCBODY pfnBody;     // null: the host computes the function itself
};

class VKTCALC_API CFuncMnger {
 public:
  // Sets the fields below and builds the process-wide built-in table if no
  // manager has built it yet.
  CFuncMnger();
  CFuncMnger(const CFuncMnger&) = delete;
  CFuncMnger& operator=(const CFuncMnger&) = delete;

  // Deletes each non-null item of m_arrItems.
  virtual ~CFuncMnger();

  // Finds and runs a function. nIndex is a row of the built-in table, or -1
  // to look the function up by para.strName. Empties para.strResult and
  // copies m_hJsWnd and m_nJsMessage into the frame first. Results:
  //  1  the body ran; para holds the result text and kind;
  //  0  the body failed; the error text is in pErr, para.strResult is empty;
  // -1  no body here: a function without one (the host computes it), or an
  //     unknown name, which sets error 1000 when pErr has no error yet;
  // -2  the gate held the call back: with bCheckGate non-zero, an item whose
  //     nFlags has bit 0 set is refused when m_bCallUnmarked is 0 and bit 1
  //     is clear, or when m_bCallBodied is 0 and the item has a body.
  virtual int CallFunc(CFuncPara& para, int bCheckGate, CErrorCollector* pErr, int nIndex);
  // Fills `out` as a description record in the current language; 1 when the
  // function exists (white space around the name is ignored), else 0 with
  // `out` as it was. A built-in fills strName, nCategory, strCategory,
  // strDesc, one parameter text (for a parameter id above 0) and
  // nResultKind, and touches nothing else. A registered function is copied
  // (CFuncItem::Copy) and its texts are looked up by id or translated.
  virtual int GetFuncInfo(const char16_t* name, CFuncItem& out);
  // The index of the name, or -1.
  virtual int FindFunc(const char16_t* name);
  // The record of an index, or null for an index outside both catalogues,
  // a negative one and an empty slot.
  virtual CFuncInfo* GetFuncByIndex(int nIndex);
  // The first registered function of that name, or null (also for a null
  // name). Built-ins are not looked at.
  virtual CFuncItem* FindItem(const char16_t* name);
  // Appends new description records of the category at position nCategory
  // of the category list to `out` (the caller owns them); 1 when that
  // position exists, else 0 with `out` as it was. The list holds the
  // category ids in ascending order (1006 to 1009 when no registered
  // function has an id of its own), then the named categories
  // "group\category" of registered functions with a category id below 1,
  // in order of first appearance.
  virtual int ListCategory(int nCategory, CArray<CFuncItem*, CFuncItem*>& out);

  // A new manager, or null when memory runs out. Destroy it with delete.
  static CFuncMnger* NewFuncMnger();

  CArray<CFuncItem*, CFuncItem*> m_arrItems;  // registered functions, owned; hosts append
  int m_bCallBodied;    // 0: the gate holds back gated items with a body; starts at 1
  int m_bCallUnmarked;  // 0: the gate holds back gated items without bit 1; starts at 1
  // Chosen: a window handle is an opaque pointer on this platform.
  void* m_hJsWnd;       // the host's script window for js; starts null
  UINT m_nJsMessage;    // the message sent to m_hJsWnd; starts at 0
};
