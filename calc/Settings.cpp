// calc/Settings.cpp: the process-wide switches of CUtilityCalc. They are
// plain words that a host sets before calculations start; only the script
// counter changes while calculations run, and only atomically.
#include <atomic>

#include "CUtilityCalc.h"
#include "func/ProcessState.h"

int CUtilityCalc::m_bCalcEnableChinese = 1;
int CUtilityCalc::m_bCalcEnableComplex = 1;
int CUtilityCalc::m_DeclenCompareCalc = -1;
LONG CUtilityCalc::m_InvokeJsCounter = 0;

void CUtilityCalc::Calc_EnableChinese(int bEnable) { m_bCalcEnableChinese = bEnable; }
int CUtilityCalc::Calc_IsChineseEnabled() { return m_bCalcEnableChinese; }
void CUtilityCalc::Calc_EnableComplex(int bEnable) { m_bCalcEnableComplex = bEnable; }
int CUtilityCalc::Calc_IsComplexEnabled() { return m_bCalcEnableComplex; }
int CUtilityCalc::Calc_GetCompareCalcDeclen() { return m_DeclenCompareCalc; }

// Chosen: the setter only answers the current value. Nothing in the library
// calculates with the setting, so storing into it would promise an effect
// that does not exist.
int CUtilityCalc::Calc_SetCompareCalcDeclen(int /*nDeclen*/) { return m_DeclenCompareCalc; }

int CUtilityCalc::GetCurrentLanguage() { return vkt::ProcessState().currentLanguage; }
void CUtilityCalc::SetCurrentLanguage(int nLanguage) { vkt::ProcessState().currentLanguage = nLanguage; }

int CUtilityCalc::IsInvokingJS() {
  return std::atomic_ref<LONG>(m_InvokeJsCounter).load() != 0 ? 1 : 0;
}

int CUtilityCalc::FindGetSoapLikeError(CString& text) {
  vkt::SoapLikeErrorFinder finder = vkt::ProcessState().soapFinder.load(std::memory_order_acquire);
  return finder == nullptr ? 0 : finder(text);
}
