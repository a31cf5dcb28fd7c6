// foundation/CWriter.h: the abstract text writer that builders implement.
//
// Each operation gives an int; callers in the library ignore it, and the
// builders of this library give 1 on success and 0 when memory runs out.
#pragma once

#include "VKTCalcExport.h"
#include "platform/CString.h"
#include "platform/Types.h"

class VKTCALC_API CWriter {
 public:
  virtual ~CWriter();
  virtual int Append(const char16_t* text) = 0;  // up to its NUL; null appends nothing
  virtual int Append(CString& text) = 0;
  virtual int Append(WORD unit) = 0;
};
