// func/ProcessState.h: the process-wide objects of the library, built in one
// fixed order and destroyed in the reverse order. Internal.
//
// Chosen: the objects live in one function-local static, built at the first
// call of ProcessState() (thread-safe by the language) and destroyed at exit
// in the reverse order of their fields. No export reads them before that
// call, so hosts see them as built at load, and no static of another unit
// can observe one half-built.
#pragma once

#include <atomic>

#include "CStringPool.h"
#include "VKTCalcEntry.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Sync.h"

class CFuncInfo;

namespace vkt {

using SoapLikeErrorFinder = int (*)(CString&);

struct ProcessStateData {
  CString dateFormat{u"%Y.%m.%d"};                      // SetDateTimeFormat(.., non-zero); under formatLock
  CString dateTimeFormat{u"%Y.%m.%d %H:%M:%S"};         // SetDateTimeFormat(.., 0); under formatLock
  CCritSec formatLock;                                  // a reader never sees half a format
  std::atomic<ILggInterface*> language{nullptr};        // the host's; never deleted here
  std::atomic<SoapLikeErrorFinder> soapFinder{nullptr}; // the host's; null: none
  std::atomic<int> currentLanguage{0};                  // SetCurrentLanguage
  // Last in the load order: the built-in function catalogue, filled once by
  // func/BuiltinTable.cpp under funcLock and read without it afterwards.
  CStringPool funcNames;                                // the built-in names, lower-cased
  CArray<CFuncInfo*, CFuncInfo*> funcInfos;             // their records, which are never freed
  CCritSec funcLock;                                    // guards the one-time set-up
  bool funcBuilt = false;                               // set under funcLock once all is built
};

ProcessStateData& ProcessState();

// The installed language interface, or null before SetLggInterface.
inline ILggInterface* LanguageInterface() {
  return ProcessState().language.load(std::memory_order_acquire);
}

}  // namespace vkt
