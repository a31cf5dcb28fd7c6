// calc/Settings.cpp: the process-wide switches of CUtilityCalc. Hosts
// mostly set them before calculations start, but one thread may flip one
// while another calculates: every read and write is atomic (relaxed; a
// switch orders nothing else), through atomic_ref since the public fields
// are plain ints.
#include <atomic>

#include "CUtilityCalc.h"
#include "func/ProcessState.h"

int CUtilityCalc::m_bCalcEnableChinese = 1;
int CUtilityCalc::m_bCalcEnableComplex = 1;
int CUtilityCalc::m_DeclenCompareCalc = -1;
LONG CUtilityCalc::m_InvokeJsCounter = 0;

namespace {

void Store(int& word, int value) { std::atomic_ref<int>(word).store(value, std::memory_order_relaxed); }
int Load(int& word) { return std::atomic_ref<int>(word).load(std::memory_order_relaxed); }

}  // namespace

void CUtilityCalc::Calc_EnableChinese(int bEnable) { Store(m_bCalcEnableChinese, bEnable); }
int CUtilityCalc::Calc_IsChineseEnabled() { return Load(m_bCalcEnableChinese); }
void CUtilityCalc::Calc_EnableComplex(int bEnable) { Store(m_bCalcEnableComplex, bEnable); }
int CUtilityCalc::Calc_IsComplexEnabled() { return Load(m_bCalcEnableComplex); }
int CUtilityCalc::Calc_GetCompareCalcDeclen() { return m_DeclenCompareCalc; }

// Chosen: the setter only answers the current value. Nothing in the library
// calculates with the setting, so storing into it would promise an effect
// that does not exist.
int CUtilityCalc::Calc_SetCompareCalcDeclen(int /*nDeclen*/) { return m_DeclenCompareCalc; }

int CUtilityCalc::GetCurrentLanguage() {
  return vkt::ProcessState().currentLanguage.load(std::memory_order_relaxed);
}
void CUtilityCalc::SetCurrentLanguage(int nLanguage) {
  vkt::ProcessState().currentLanguage.store(nLanguage, std::memory_order_relaxed);
}

int CUtilityCalc::IsInvokingJS() {
  return std::atomic_ref<LONG>(m_InvokeJsCounter).load() != 0 ? 1 : 0;
}

int CUtilityCalc::FindGetSoapLikeError(CString& text) {
  vkt::SoapLikeErrorFinder finder = vkt::ProcessState().soapFinder.load(std::memory_order_acquire);
  return finder == nullptr ? 0 : finder(text);
}
