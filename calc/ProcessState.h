// calc/ProcessState.h: the process-wide objects of the library, built in one
// fixed order and destroyed in the reverse order. Internal.
//
// Chosen: the objects live in one function-local static, built at the first
// call of ProcessState() (thread-safe by the language) and destroyed at exit
// in the reverse order of their fields. No export reads them before that
// call, so hosts see them as built at load, and no static of another unit
// can observe one half-built.
#pragma once

#include <atomic>

#include "VKTCalcEntry.h"
#include "platform/CString.h"

namespace vkt {

using SoapLikeErrorFinder = int (*)(CString&);

struct ProcessStateData {
  CString dateFormat{u"%Y.%m.%d"};                      // SetDateTimeFormat(.., non-zero)
  CString dateTimeFormat{u"%Y.%m.%d %H:%M:%S"};         // SetDateTimeFormat(.., 0)
  std::atomic<ILggInterface*> language{nullptr};        // the host's; never deleted here
  std::atomic<SoapLikeErrorFinder> soapFinder{nullptr}; // the host's; null: none
  int currentLanguage = 0;                              // SetCurrentLanguage
};

ProcessStateData& ProcessState();

// The installed language interface, or null before SetLggInterface.
inline ILggInterface* LanguageInterface() {
  return ProcessState().language.load(std::memory_order_acquire);
}

}  // namespace vkt
