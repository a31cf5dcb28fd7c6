// foundation/StreamIO.h: the two abstract stream interfaces that a host
// implements and hands to the library's Serialize and Deserialize operations.
//
// The stream's byte layout (byte order, the form of strings and blocks, the
// meaning of the trailing int flag, which the library always passes as 1)
// belongs to the host's implementation. Only the operations the library calls
// are declared, in this order, after the virtual destructor; the operations
// the host's own streams may have in between are left out.
#pragma once

#include "VKTCalcExport.h"
#include "platform/CString.h"
#include "platform/Types.h"

class CMem;

// Each write gives nonzero on success and 0 on failure.
class VKTCALC_API IStreamOutput {
 public:
  virtual ~IStreamOutput() {}
  virtual int WriteByte(BYTE value) = 0;
  virtual int WriteWord(WORD value, int bFlag) = 0;
  virtual int WriteDWord(DWORD value, int bFlag) = 0;
  virtual int WriteData(const void* data, int size) = 0;
  virtual int WriteString(CString* text, int bFlag) = 0;
  virtual int WriteMem(CMem* block, int bFlag) = 0;
};

// Each read gives nonzero on success and 0 on failure, except ReadRaw, which
// gives the byte (0..255) or -1 at the end of the stream.
class VKTCALC_API IStreamInput {
 public:
  virtual ~IStreamInput() {}
  virtual int ReadRaw() = 0;
  virtual int ReadByte(BYTE* out) = 0;
  virtual int ReadWord(WORD* out, int bFlag) = 0;
  virtual int ReadInt(int* out, int bFlag) = 0;
  virtual int ReadDWord(DWORD* out, int bFlag) = 0;
  virtual int ReadData(void* out, int size) = 0;
  virtual int ReadString(CString* out) = 0;
  virtual int ReadMem(CMem* out) = 0;
};
