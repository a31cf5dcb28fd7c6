// calc/FuncCounter.h: counting delivered function results into the host's
// word behind CErrorCollector::pFuncCounter. Internal.
//
// The word is the host's and may be shared by runs on several threads, so
// it is only ever changed by an atomic increment.
#pragma once

#include <atomic>

#include "CErrorCollector.h"

namespace vkt {

static_assert(sizeof(LONG) == 4 && std::atomic_ref<LONG>::required_alignment <= alignof(LONG),
              "the host's counter is a plain, naturally aligned 32-bit word");

// Adds 1 to the host's counter when `errors` has one; nothing otherwise.
inline void CountFunctionResult(CErrorCollector* errors) {
  if (errors == nullptr || errors->pFuncCounter == nullptr) return;
  std::atomic_ref<LONG>(*errors->pFuncCounter).fetch_add(1, std::memory_order_relaxed);
}

}  // namespace vkt
