// func/ProcessState.cpp: the one instance of the process-wide state.
#include "func/ProcessState.h"

namespace vkt {

ProcessStateData& ProcessState() {
  static ProcessStateData state;
  return state;
}

}  // namespace vkt
