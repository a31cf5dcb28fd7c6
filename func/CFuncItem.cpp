// func/CFuncItem.cpp: the call frame that carries one call's name, arguments
// and result as text, and the record of a host's registered function. The
// wrapper that runs a body on a frame is func/FuncWrapper.cpp; the lookup
// that picks the body is CFuncMnger's.
#include "CFuncItem.h"

#include "CGmp.h"
#include "CUtilityCalc.h"

CFuncPara::CFuncPara() : pJsHost(nullptr), nResultKind(0), hJsWnd(nullptr), nJsMessage(0) {}

CFuncPara::~CFuncPara() = default;

int CFuncPara::SetResult(CGmp& value) {
  value.Validate();
  value.GetString(strResult, -1, 0);
  return 1;
}

void CFuncPara::SetResult(int value) { strResult.Format(u"%d", value); }

int CFuncPara::ResetDoubleString_Result() { return CUtilityCalc::ResetPureNumberString(strResult); }

int CFuncPara::ResetDoubleString_Para() {
  const int count = arrArgs.GetSize();
  for (int i = 0; i < count; ++i) {
    if (!CUtilityCalc::ResetPureNumberString(arrArgs.ElementAt(i))) return 0;
  }
  return 1;
}

CFuncItem::CFuncItem() : nFlags(0) {}

CFuncItem::CFuncItem(const char16_t* name, int descId, int paramId, unsigned char resultKind)
    : strName(name), nFlags(0) {
  nDescId = descId;
  nResultKind = resultKind;
  // The id goes to the list of parameter texts, not to nParamId, which a
  // built-in's record uses and GetFuncInfo never reads for an item.
  if (paramId != -1) arrParamIds.Add(static_cast<UINT>(paramId));
}

CFuncItem::~CFuncItem() {
  for (CFuncItem* child : arrChildren) delete child;
  arrChildren.RemoveAll();
}

void CFuncItem::Copy(CFuncItem* other) {
  if (other == nullptr || other == this) return;
  pName = other->pName;
  nCategory = other->nCategory;
  nDescId = other->nDescId;
  nParamId = other->nParamId;
  nResultKind = other->nResultKind;
  strName = other->strName;
  strCategory = other->strCategory;
  strGroup = other->strGroup;
  strDesc = other->strDesc;
  arrParamText.Copy(other->arrParamText);
  arrParamIds.Copy(other->arrParamIds);
  nFlags = other->nFlags;
  strNote1 = other->strNote1;
  strNote2 = other->strNote2;
}
