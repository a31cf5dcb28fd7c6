// CCellname.h: what a formula refers to in a grid, read from a name in a
// variable position (B7, B7:C9, @B7, B7@Sheet2, total@Alias) or from a call
// of a reference function (ref('B7'), ref(2, 7, 'Sheet2'), refalias('total')),
// and the walk that reports every such reference of a tree to the host.
//
// A usual move of references: walk the tree with a CCellnameRefTraveler; in
// the filter, for a reference call, change rowcols (InsertRows and the like)
// and call UpdateRowColToParser(pNode, nArgCount); then write the tree out
// again. The order of the virtual operations and of the fields is part of
// the interface.
#pragma once

#include "CRowCol.h"
#include "ICalcTreeNode.h"
#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"

// What a parse recognised.
enum Enum_Cellname {
  Cellname_None = 0,        // nothing
  Cellname_Alias = 1,       // one alias, in strAlias1
  Cellname_AliasRange = 2,  // an alias on each side of a colon
  Cellname_Cell = 3,        // one cell: rowcols has equal corners
  Cellname_Range = 4,       // a range of cells
};

// The reference function by its name, as bits: ref 1, refalias 2, refdata 4,
// refaliasdata 6, reftext 8, refaliastext 10; any other name 0.
enum Enum_RefType {
  RefType_None = 0,
  RefType_Ref = 1,
  RefType_Alias = 2,
  RefType_Data = 4,
  RefType_Text = 8,
};

// Page macros: the words a report's text may hold and the values behind them.
enum Enum_PNID : int {
  PNID_VPages = 0,   // "vpages"
  PNID_HPages = 1,   // "hpages"
  PNID_Pages = 2,    // "pages"
  PNID_VPage = 3,    // "vpage"
  PNID_HPage = 4,    // "hpage"
  PNID_Page = 5,     // "page"
  PNID_PageSum = 6,  // "pagesum": a word without a value
};

// Page numbers as the host knows them; the current pages count from 0.
struct PN_INFORMATION {
  int nPages;   // total pages
  int nPage;    // current page
  int nVPages;  // pages down
  int nVPage;   // current page down
  int nHPages;  // pages across
  int nHPage;   // current page across
};

class VKTCALC_API CCellname {
 public:
  const char16_t* pszName;  // the text to parse; not owned, must outlive the parse
  Enum_RefType nRefType;    // which reference function, 0 for none
  Enum_Cellname nType;      // what the last parse recognised
  CRowCols rowcols;         // the cell or range
  int bMacro1;              // the first (or only) cell was written with @
  int bMacro2;              // the second cell of a range was written with @
  CString strSheet;         // a sheet such as Sheet2; empty for none
  CString strAlias1;        // the alias, or that of a range's left end
  CString strAlias2;        // the alias of a range's right end
  CString strTail;          // a reference call's argument behind the sheet, uninterpreted

  explicit CCellname(const char16_t* text = nullptr);  // a null text is allowed
  CCellname(const CCellname& other);  // copies pszName as a pointer
  CCellname& operator=(const CCellname& other);
  virtual ~CCellname();

  // Clears the kinds, the macro flags and the four strings; pszName and
  // rowcols stay.
  virtual void Empty();
  // args: the function name, then the call's arguments as text; consumed
  // from the front, and changed in every case. 1 for a reference call, with
  // nType and rowcols filled and *pCount (may be null) telling how many
  // arguments gave the position: 1 for a name, 2 for row and column, 4 for
  // two corners, 0 for an alias. A failure leaves what it filled.
  virtual int ParseRefFunc(CStringArray& args, int* pCount);
  // The same on a call node of a tree; each argument counts by the first
  // child of its argument node, so ref(1 + 1, 2) reads as ref(1, 2).
  virtual int ParseRefFunc(ICalcTreeNode* node, int* pCount);

  // Bits of the reference function named; 0 for any other name.
  static Enum_RefType DetectRefType(const char16_t* name);
  // Writes rowcols back into the call node's arguments, by the count that
  // ParseRefFunc gave: the cell or range name in quotes for 1, the one-based
  // numbers for 2 and 4. Nothing for other counts or too few children.
  void UpdateRowColToParser(ICalcTreeNode* node, int nCount);
};

// The host's filter of a CCellnameRefTraveler. The traveller sets pNode to
// the node in hand before anything else, writes nArgCount for a reference
// call, and calls OnCell:
//   event 0  each cell of a found reference (pCell set)
//   event 1  a variable's name was parsed into a cell, range or alias
//   event 2  a variable was found, before parsing: only pName->pszName is new
//   event 3  a reference call was parsed
// OnCell answers 1 to end the walk with success, 2 to be done with this node
// (the walk goes on), anything else to go on.
class VKTCALC_API ICellFilter {
 public:
  virtual ~ICellFilter() {}
  virtual int OnCell(int nEvent, CCellname* pName, CRowCol* pCell) = 0;

  ICalcTreeNode* pNode = nullptr;  // the node in hand
  int nArgCount = 0;               // ParseRefFunc's count for a reference call
};

// Hand it to ICalcTreeNode::Travel. It parses every variable and reference
// call into the one CCellname and reports them, and then their cells, to
// the filter. Neither pointer is owned.
class VKTCALC_API CCellnameRefTraveler : public ICalcTreeTraveler {
 public:
  ICellFilter* pFilter;   // the host's filter
  CCellname* pCellname;   // receives every parse

  CCellnameRefTraveler(ICellFilter* filter, CCellname* cellname);
  CCellnameRefTraveler(const CCellnameRefTraveler& other);
  CCellnameRefTraveler& operator=(const CCellnameRefTraveler& other);
  ~CCellnameRefTraveler() override;

  // 1 ends the walk; it does not descend itself.
  int Traveling(ICalcTreeNode* node) override;
  // 1 here; a subclass answers 0 to skip the per-cell events of the node.
  virtual int IsNewCellPass(ICalcTreeNode* node);

 private:
  int SubContinue();  // event 0 for each cell of pCellname->rowcols
};
