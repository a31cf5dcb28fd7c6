// func/CFuncMnger.cpp: the function manager. It looks a name up, first in
// the shared built-in catalogue and then among the host's registered
// functions, runs the body through the common wrapper, holds back gated
// functions, and gives out descriptions and category lists in the host's
// language. The table itself and its one-time set-up are func/BuiltinTable.
#include "CFuncMnger.h"

#include <new>

#include "CErrorCollector.h"
#include "CFuncItem.h"
#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "func/BuiltinTable.h"
#include "func/FuncWrapper.h"
#include "platform/WideRuntime.h"
#include "tree/ErrorNumbers.h"

using vkt::func::BuiltinInfos;
using vkt::func::BuiltinNames;
using vkt::func::kBuiltinCount;

namespace {

constexpr int kItemBase = 1000;  // index of the first registered function

// The row of an already lower-cased name, or -1.
int FindBuiltin(const CString& lowered) { return BuiltinNames().BSearch(lowered.GetString()); }

// A built-in's record; null outside the table.
CFuncInfo* BuiltinAt(int row) {
  if (row < 0 || row >= BuiltinInfos().GetSize()) return nullptr;
  return BuiltinInfos()[row];
}

// The position of the first registered function of that name, or -1.
int FindItemIndex(CArray<CFuncItem*, CFuncItem*>& items, const char16_t* name) {
  const int count = items.GetSize();
  for (int i = 0; i < count; ++i) {
    const CFuncItem* item = items[i];
    if (item != nullptr && vkt::_wcsicmp(item->strName.GetString(), name) == 0) return i;
  }
  return -1;
}

// "group\category", the path of a named category.
CString CategoryPath(const CFuncItem& item) {
  CString path;
  path.Format(u"%s\\%s", item.strGroup.GetString(), item.strCategory.GetString());
  return path;
}

// The road of a function without a body: the calculation asks the host, so
// nothing of this call may stay behind as an error.
int NoBody(CErrorCollector* pErr) {
  if (pErr != nullptr) {
    pErr->SetErrorText(0, nullptr);
    pErr->nError = 0;
  }
  return -1;
}

}  // namespace

CFuncInfo::CFuncInfo()
    : pName(nullptr), nCategory(0), nDescId(0), nParamId(0), nResultKind(0), pfnBody(nullptr) {}

CFuncMnger::CFuncMnger()
    : m_bCallBodied(1), m_bCallUnmarked(1), m_hJsWnd(nullptr), m_nJsMessage(0) {
  vkt::func::BuildBuiltinCatalogue();
}

CFuncMnger::~CFuncMnger() {
  for (CFuncItem* item : m_arrItems) delete item;
  m_arrItems.RemoveAll();
}

CFuncMnger* CFuncMnger::NewFuncMnger() {
  // The constructor may run out of memory building the shared catalogue;
  // the header promises null for that, not an exception.
  try {
    return new CFuncMnger();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

int CFuncMnger::CallFunc(CFuncPara& para, int bCheckGate, CErrorCollector* pErr, int nIndex) {
  const CString name(para.strName);
  para.strResult.Empty();
  para.hJsWnd = m_hJsWnd;
  para.nJsMessage = m_nJsMessage;

  CFuncInfo* row = nullptr;
  CFuncItem* item = nullptr;
  if (nIndex >= 0) {
    // Chosen: an index that is no row of the table counts as an unknown
    // function, rather than falling back to the name.
    row = BuiltinAt(nIndex);
  } else {
    CString lowered(name);
    lowered.MakeLower();
    row = BuiltinAt(FindBuiltin(lowered));
    if (row == nullptr) {
      const int position = FindItemIndex(m_arrItems, lowered.GetString());
      if (position >= 0) item = m_arrItems[position];
    }
  }

  if (row == nullptr && item == nullptr) {
    // Chosen: an error already in the collector keeps its number and text.
    if (pErr != nullptr && pErr->nError == 0) {
      pErr->nError = vkt::kErrBadFuncName;
      pErr->SetErrorText(vkt::kErrBadFuncName, name.GetString());
    }
    return -1;
  }

  if (item != nullptr) {
    if (bCheckGate && (item->nFlags & 1) != 0) {
      if (!m_bCallUnmarked && (item->nFlags & 2) == 0) return -2;
      if (!m_bCallBodied && item->pfnBody != nullptr) return -2;
    }
    if (item->pfnBody == nullptr) return NoBody(pErr);
    para.nResultKind = item->nResultKind;
    return vkt::func::RunBody(para, item->pfnBody, pErr);
  }

  para.nResultKind = row->nResultKind;
  // A built-in whose family has brought no body yet goes to the host, as a
  // registered function without a body does.
  if (row->pfnBody == nullptr) return NoBody(pErr);
  return vkt::func::RunBody(para, row->pfnBody, pErr);
}

int CFuncMnger::GetFuncInfo(const char16_t* name, CFuncItem& out) {
  using vkt::func::LanguageText;
  using vkt::func::TranslateText;

  CString lowered(name);
  lowered.Trim();
  lowered.MakeLower();

  if (CFuncInfo* row = BuiltinAt(FindBuiltin(lowered))) {
    out.strName = row->pName;
    out.nCategory = row->nCategory;
    out.strCategory = LanguageText(row->nCategory);
    out.strDesc = LanguageText(row->nDescId);
    if (row->nParamId > 0) out.arrParamText.Add(LanguageText(row->nParamId));
    out.nResultKind = row->nResultKind;
    return 1;
  }

  const int position = FindItemIndex(m_arrItems, lowered.GetString());
  if (position < 0) return 0;
  out.Copy(m_arrItems[position]);

  // Texts with an id come from the language file; the host's own texts are
  // translated.
  if (out.nCategory > 0)
    out.strCategory = LanguageText(out.nCategory);
  else
    TranslateText(out.strCategory);
  if (out.nDescId > 0)
    out.strDesc = LanguageText(out.nDescId);
  else
    TranslateText(out.strDesc);
  const int idCount = out.arrParamIds.GetSize();
  for (int i = 0; i < idCount; ++i)
    out.arrParamText.Add(LanguageText(static_cast<int>(out.arrParamIds[i])));
  const int textCount = out.arrParamText.GetSize();
  for (int i = 0; i < textCount; ++i) TranslateText(out.arrParamText.ElementAt(i));
  TranslateText(out.strNote1);
  TranslateText(out.strNote2);
  return 1;
}

int CFuncMnger::FindFunc(const char16_t* name) {
  CString lowered(name);
  lowered.MakeLower();
  const int row = FindBuiltin(lowered);
  if (BuiltinAt(row) != nullptr) return row;
  const int position = FindItemIndex(m_arrItems, lowered.GetString());
  return position < 0 ? -1 : kItemBase + position;
}

CFuncInfo* CFuncMnger::GetFuncByIndex(int nIndex) {
  if (nIndex < kItemBase) return BuiltinAt(nIndex);
  const int position = nIndex - kItemBase;
  if (position >= m_arrItems.GetSize()) return nullptr;
  return m_arrItems[position];  // null for an empty slot
}

CFuncItem* CFuncMnger::FindItem(const char16_t* name) {
  if (name == nullptr) return nullptr;
  const int position = FindItemIndex(m_arrItems, name);
  return position < 0 ? nullptr : m_arrItems[position];
}

int CFuncMnger::ListCategory(int nCategory, CArray<CFuncItem*, CFuncItem*>& out) {
  if (nCategory < 0) return 0;
  CArray<CFuncInfo*, CFuncInfo*>& rows = BuiltinInfos();
  const int rowCount = rows.GetSize();
  const int itemCount = m_arrItems.GetSize();

  // The list is built anew at each call: the ids first, ascending.
  CUIntArray ids;
  for (int row = 0; row < rowCount; ++row) CUtilityCalc::CUIntArrayAppendSingle(ids, rows[row]->nCategory);
  for (int i = 0; i < itemCount; ++i) {
    const CFuncItem* item = m_arrItems[i];
    if (item != nullptr && item->nCategory > 0)
      CUtilityCalc::CUIntArrayAppendSingle(ids, item->nCategory);
  }
  CUtilityCalc::Sort_CUIntArray(ids);

  auto appendRecord = [&](const char16_t* name) {
    CFuncItem* record = new CFuncItem();
    GetFuncInfo(name, *record);
    out.Add(record);
  };

  if (nCategory < ids.GetSize()) {
    const int id = static_cast<int>(ids[nCategory]);
    for (int row = 0; row < rowCount; ++row) {
      if (rows[row]->nCategory == id) appendRecord(rows[row]->pName);
    }
    for (int i = 0; i < itemCount; ++i) {
      CFuncItem* item = m_arrItems[i];
      if (item != nullptr && item->nCategory == id) appendRecord(item->strName.GetString());
    }
    return 1;
  }

  // Behind the ids: the named categories, in order of first appearance.
  const int wanted = nCategory - ids.GetSize();
  CStringArray paths;
  for (int i = 0; i < itemCount && wanted >= paths.GetSize(); ++i) {
    const CFuncItem* item = m_arrItems[i];
    if (item == nullptr || item->nCategory >= 1) continue;
    const CString path = CategoryPath(*item);
    if (CStrKit::ArrayCompareNoCase(paths, path.GetString(), 0) < 0) paths.Add(path);
  }
  if (wanted >= paths.GetSize()) return 0;

  const CString path = paths[wanted];
  for (int i = 0; i < itemCount; ++i) {
    CFuncItem* item = m_arrItems[i];
    if (item != nullptr && item->nCategory < 1 && CategoryPath(*item) == path)
      appendRecord(item->strName.GetString());
  }
  return 1;
}
