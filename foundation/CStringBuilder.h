// foundation/CStringBuilder.h: text that accumulates through the CWriter
// side and is read or reset through the CBuffer side.
//
// The content is always wide text, terminated as in CBuffer.
#pragma once

#include "VKTCalcExport.h"
#include "foundation/CBuffer.h"
#include "foundation/CWriter.h"
#include "platform/CString.h"
#include "platform/Types.h"

class VKTCALC_API CStringBuilder : public CBuffer, public CWriter {
 public:
  // `size` bytes reserved up front; the library passes 512.
  explicit CStringBuilder(int size = 512);
  ~CStringBuilder() override;

  int Append(const char16_t* text) override;
  int Append(CString& text) override;
  int Append(WORD unit) override;

  // `out` takes the text: GetSize() / 2 units, NUL units included.
  void GetStr(CString& out);
  // The text, valid until the next change; never null.
  const char16_t* GetStr();
};
