// cell/CCellname.cpp: reading references with their sheet, alias and macro
// markers, from names and from reference calls, and the page macros.
#include "CCellname.h"

#include <algorithm>
#include <climits>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/WideRuntime.h"

namespace {

constexpr unsigned char kKindArgument = 4;
constexpr unsigned char kKindVariable = 5;
constexpr char16_t kSheetMarker[] = u"@Sheet";
constexpr char16_t kAliasMarker[] = u"@Alias";
constexpr int kMarkerUnits = 6;

bool Holds(const CString& text, char16_t ch) { return text.Find(ch) >= 0; }

// A one-based number of a reference call as a zero-based position; 0 gives
// -1, and no other range check is made.
int ZeroBased(const CString& text) {
  return static_cast<int>(std::max<long long>(INT_MIN, vkt::_wtoi(text) - 1LL));
}

// zeroBased + 1, wrapping in 32 bits rather than overflowing.
int OneBased(int zeroBased) { return static_cast<int>(static_cast<unsigned>(zeroBased) + 1u); }

int IsNumberArg(const CString& text) {
  return CUtilityCalc::IsPureNumber(text, 1, CGmp::CheckStrict_None, 0);
}

// Takes the first item off the front of args.
CString TakeFirst(CStringArray& args) {
  CString first = args[0];
  args.RemoveAt(0);
  return first;
}

const char16_t* const kPageMacros[] = {u"vpages", u"hpages", u"pages", u"vpage",
                                       u"hpage",  u"page",   u"pagesum"};

}  // namespace

CCellname::CCellname(const char16_t* text)
    : pszName(text), nRefType(RefType_None), nType(Cellname_None), bMacro1(0), bMacro2(0) {}
CCellname::CCellname(const CCellname& other) = default;
CCellname& CCellname::operator=(const CCellname& other) = default;
CCellname::~CCellname() = default;

void CCellname::Empty() {
  nRefType = RefType_None;
  nType = Cellname_None;
  bMacro1 = bMacro2 = 0;
  strSheet.Empty();
  strAlias1.Empty();
  strAlias2.Empty();
  strTail.Empty();
}

Enum_RefType CCellname::DetectRefType(const char16_t* name) {
  if (!name || vkt::_wcsnicmp(name, u"ref", 3) != 0) return RefType_None;
  const char16_t* rest = name + 3;
  if (!*rest) return RefType_Ref;
  int type = 0;
  if (vkt::_wcsnicmp(rest, u"alias", 5) == 0) {
    rest += 5;
    if (!*rest) return RefType_Alias;
    type = RefType_Alias;
  }
  if (vkt::_wcsicmp(rest, u"data") == 0) return static_cast<Enum_RefType>(type | RefType_Data);
  if (vkt::_wcsicmp(rest, u"text") == 0) return static_cast<Enum_RefType>(type | RefType_Text);
  return RefType_None;
}

int CCellname::ParseRefFunc(CStringArray& args, int* pCount) {
  Empty();
  if (pCount) *pCount = 0;
  if (args.GetSize() == 0) return 0;
  nRefType = DetectRefType(args[0]);
  if (nRefType == RefType_None) return 0;
  args.RemoveAt(0);
  if (args.GetSize() == 0) return 0;
  for (int i = 0; i < args.GetSize(); ++i) {
    CUtilityCalc::Dettach_Quotes(args[i], 0);
    args[i].TrimLeft();
    args[i].TrimRight();
  }
  int count = 0;
  if (nRefType & RefType_Alias) {
    strAlias1 = TakeFirst(args);
    if (strAlias1.IsEmpty()) return 0;
    nType = Cellname_Alias;
  } else if (!IsNumberArg(args[0])) {
    if (!CUtilityCalc::CellName2RowCols(rowcols, args[0], nullptr, nullptr, 1)) return 0;
    nType = rowcols.IsOneCell() ? Cellname_Cell : Cellname_Range;
    args.RemoveAt(0);
    count = 1;
  } else {
    if (args.GetSize() < 2) return 0;
    int row = ZeroBased(TakeFirst(args)), col = ZeroBased(TakeFirst(args));
    rowcols.Set(row, col, row, col);
    nType = Cellname_Cell;
    count = 2;
    if (args.GetSize() >= 2 && IsNumberArg(args[0]) && IsNumberArg(args[1])) {
      rowcols.nRow2 = ZeroBased(TakeFirst(args));
      rowcols.nCol2 = ZeroBased(TakeFirst(args));
      nType = Cellname_Range;
      count = 4;
    }
  }
  if (pCount) *pCount = count;
  if (args.GetSize() > 0) strSheet = TakeFirst(args);
  if (args.GetSize() > 0) strTail = TakeFirst(args);
  return 1;
}

int CCellname::ParseRefFunc(ICalcTreeNode* node, int* pCount) {
  nRefType = RefType_None;
  if (pCount) *pCount = 0;
  if (!node || DetectRefType(node->GetTextPtr()) == RefType_None) return 0;
  int children = node->GetChildCount();
  if (children == 0) return 0;
  CStringArray args;
  args.SetSize(0, children + 1);
  args.Add(CString(node->GetTextPtr()));
  for (int i = 0; i < children; ++i) {
    ICalcTreeNode* arg = node->GetChild(i);
    if (arg->GetKind() != kKindArgument || arg->GetChildCount() == 0) return 0;
    CString text;
    arg->GetChild(0)->GetValue(text, 0, 0);  // the argument's first term stands for it
    args.Add(text);
  }
  return ParseRefFunc(args, pCount);
}

void CCellname::UpdateRowColToParser(ICalcTreeNode* node, int nCount) {
  if (!node || node->GetChildCount() < nCount) return;
  auto setArg = [node](int index, const CString& text) {
    ICalcTreeNode* arg = node->GetChild(index);
    if (arg->GetChildCount() > 0) arg->GetChild(0)->SetText(text);
  };
  auto setNumber = [&setArg](int index, int zeroBased) {
    CString text;
    text.Format(u"%d", OneBased(zeroBased));
    setArg(index, text);
  };
  if (nCount == 1) {
    CString name;
    CUtilityCalc::RowCols2CellName(rowcols, name, 0, 0, nType == Cellname_Cell ? 1 : 2);
    setArg(0, u"'" + name + u"'");
  } else if (nCount == 2 || nCount == 4) {
    setNumber(0, rowcols.nRow1);
    setNumber(1, rowcols.nCol1);
    if (nCount == 4) {
      setNumber(nCount - 2, rowcols.nRow2);
      setNumber(nCount - 1, rowcols.nCol2);
    }
  }
}

// ---- The marker grammar and the names ------------------------------------

int CUtilityCalc::ParseCellname_SheetAliasMacro(CString& text, int& bMacro, CString* pSheet,
                                                CString* pAlias) {
  if (text.GetLength() < 3 || !Holds(text, u'@')) return 0;
  if (pSheet) pSheet->Empty();
  if (pAlias) pAlias->Empty();
  bMacro = 0;
  CString rest = text;

  // @SheetN, at the very start or the very end; the word keeps its case.
  int at = CStrKit::FindNoCase(rest, kSheetMarker);
  if (at >= 0) {
    CString sheet = rest.Mid(at + 1, kMarkerUnits - 1);
    rest.Delete(at, kMarkerUnits);
    int digits = 0;
    while (CStrKit::IsDigit(rest.GetAt(at + digits))) ++digits;
    sheet += rest.Mid(at, digits);
    rest.Delete(at, digits);
    if (digits == 0 || rest.IsEmpty() || (at != 0 && at != rest.GetLength())) return 0;
    if (pSheet) *pSheet = sheet;
  }

  // @Alias: what is left is the alias, whatever it holds.
  at = CStrKit::FindNoCase(rest, kAliasMarker);
  if (at >= 0) {
    rest.Delete(at, kMarkerUnits);
    if ((at != 0 && at != rest.GetLength()) || rest.IsEmpty()) return 0;
    text.Empty();
    if (pAlias) *pAlias = rest;
    return 1;
  }

  // A macro cell: one bare @ in front.
  at = rest.Find(u'@');
  if (at > 0) return 0;
  if (at == 0) {
    bMacro = 1;
    rest.Delete(0, 1);
    if (rest.IsEmpty() || Holds(rest, u'@')) return 0;
  }
  text = rest;
  return 1;
}

int CUtilityCalc::ParseCellname(CCellname& cellname) {
  cellname.Empty();
  if (!cellname.pszName) return Cellname_None;
  const CString text(cellname.pszName);
  if (!Holds(text, u'@')) {
    if (CellName2RowCols(cellname.rowcols, text, nullptr, nullptr, 1)) {
      cellname.nType = Holds(text, u':') ? Cellname_Range : Cellname_Cell;
    }
    return cellname.nType;
  }

  if (!Holds(text, u':')) {
    CString rest = text;
    if (!ParseCellname_SheetAliasMacro(rest, cellname.bMacro1, &cellname.strSheet,
                                       &cellname.strAlias1)) {
      return Cellname_None;
    }
    if (!cellname.strAlias1.IsEmpty()) return cellname.nType = Cellname_Alias;
    CRowCol cell;
    if (CellName2RowCol(cell, rest, 1)) {
      cellname.rowcols.Set(cell);
      cellname.nType = Cellname_Cell;
    }
    return cellname.nType;
  }

  CString left, right, sheet1, sheet2;
  CStrKit::GetLeftRight(text, u":", left, right, 0);
  if (Holds(left, u'@') &&
      !ParseCellname_SheetAliasMacro(left, cellname.bMacro1, &sheet1, &cellname.strAlias1)) {
    return Cellname_None;
  }
  if (Holds(right, u'@') &&
      !ParseCellname_SheetAliasMacro(right, cellname.bMacro2, &sheet2, &cellname.strAlias2)) {
    return Cellname_None;
  }
  // A range lies on one sheet.
  if (!sheet1.IsEmpty() && !sheet2.IsEmpty() && vkt::_wcsicmp(sheet1, sheet2) != 0) {
    return Cellname_None;
  }
  cellname.strSheet = sheet2.IsEmpty() ? sheet1 : sheet2;
  bool alias1 = !cellname.strAlias1.IsEmpty(), alias2 = !cellname.strAlias2.IsEmpty();
  if (alias1 && alias2) return cellname.nType = Cellname_AliasRange;
  if (alias1 || alias2) return Cellname_None;
  CRowCol first, second;
  if (CellName2RowCol(first, left, 1) && CellName2RowCol(second, right, 1)) {
    cellname.rowcols.Set(first, second);
    cellname.nType = Cellname_Range;
  }
  return cellname.nType;
}

int CUtilityCalc::Var2RowCols_NoMacroSheet(ICalcTreeNode* node, CRowCols& out, CString& text,
                                           int* pMacro1, int* pMacro2, int bBothCorners) {
  if (!node || node->GetKind() != kKindVariable) return 0;
  node->GetValue(text, 0, 0);
  if (IsMacroSheetCellName(text)) return 0;
  return CellName2RowCols(out, text, pMacro1, pMacro2, bBothCorners);
}

// ---- Page macros ---------------------------------------------------------

const char16_t* CUtilityCalc::GetPNMacro(Enum_PNID id) {
  int index = static_cast<int>(id);
  return index >= 0 && index <= PNID_PageSum ? kPageMacros[index] : nullptr;
}

int CUtilityCalc::GetPN(Enum_PNID id, PN_INFORMATION* info) {
  if (!info) return 0;
  switch (id) {
    case PNID_VPages: return info->nVPages;
    case PNID_HPages: return info->nHPages;
    case PNID_Pages: return info->nPages;
    case PNID_VPage: return OneBased(info->nVPage);
    case PNID_HPage: return OneBased(info->nHPage);
    case PNID_Page: return OneBased(info->nPage);
    default: return 0;  // pagesum has no value
  }
}
