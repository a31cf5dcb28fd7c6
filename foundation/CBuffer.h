// foundation/CBuffer.h: a CMem that holds text and keeps it terminated.
//
// Behind the content there are always zero bytes that GetSize does not count
// (two, or three when the byte count is odd), so that GetStr and the raw
// block read as a NUL-terminated string of 16-bit units, or of bytes after a
// conversion to UTF-8. A wide text of n units has a size of 2n bytes. Every
// changing operation restores the terminator; only Empty and MoveOut leave
// the object without a block, and GetStr then gives empty text.
#pragma once

#include "VKTCalcExport.h"
#include "foundation/CMem.h"
#include "platform/CString.h"
#include "platform/Types.h"

class VKTCALC_API CBuffer : public CMem {
 public:
  explicit CBuffer(int size = 0);
  ~CBuffer() override;

  // CMem's operations, each leaving the terminator behind the content.
  int Set(BYTE* data, int size) override;
  int Add(BYTE value) override;
  int Add(WORD value) override;
  int Add(BYTE* data, int size) override;
  int Insert(BYTE* data, int pos, int size) override;
  int MoveIn(CMem* from) override;
  int MoveIn(BYTE* data, int size) override;
  // With a growth hint set, a block that must grow grows by at least the
  // hint, rounded up to whole pages.
  int Reserve(int size) override;
  void Clear() override;
  void Trim() override;

  // Chosen: text store; the content becomes the text (as Set).
  virtual int SetText(CString& text);
  // Chosen: add text; appends `len` units of `text`, or up to its NUL when
  // `len` is negative. No terminator of its own is added to the content.
  virtual int AddText(const char16_t* text, int len = -1);
  virtual int AddText(CString& text);
  // Chosen: growth hint; the number of bytes by which the block widens when
  // it must grow (0, the default, grows to the whole pages needed).
  virtual void SetGrowBy(int bytes);
  // Chosen: delete bytes; removes `count` bytes at byte position `pos` and
  // closes the gap. Counts past the end are cut; a bad position does nothing.
  virtual int DeleteBytes(int pos, int count);

  // One 16-bit unit; keeps Add(u'x') from being ambiguous between the BYTE
  // and the WORD overloads.
  int Add(char16_t unit) { return Add(static_cast<WORD>(unit)); }

  // The content as text, valid until the next change; never null.
  const char16_t* GetStr();
  // The content becomes the text (null gives empty text).
  int Set(const char16_t* text);
  int Set(CString& text);

  // Conversions of the whole content; each gives 1, or 0 when memory runs
  // out (the content is then unchanged). Chosen: a lone surrogate becomes
  // U+FFFD (EF BF BD), and each malformed UTF-8 sequence becomes one U+FFFD.
  // A trailing odd byte of wide content is ignored.
  int UTF16ToUTF8();
  int UTF8ToUTF16();
  // Chosen: the narrow code page of this platform is UTF-8, so this is
  // UTF16ToUTF8.
  int UTF16ToAnsi();

 protected:
  // Makes room for and writes the zero bytes behind the content.
  int Terminate();

  int m_nGrowBy;  // bytes, the growth hint; 0 for none
};

// A buffer of the same family that some host interfaces take; the library
// only stores text into it through SetText.
class VKTCALC_API CBufferEx : public CBuffer {
 public:
  explicit CBufferEx(int size = 0);
  ~CBufferEx() override;
};
