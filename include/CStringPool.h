// CStringPool.h: many short strings in one memory block with a table of
// offsets, and the searchable reading side that any indexed string source
// can implement.
//
// The order of the virtual operations and of the fields is part of the
// interface. Indexes count from 0; an index outside the table is ignored and
// reads as null.
#pragma once

#include "VKTCalcExport.h"
#include "foundation/CMem.h"
#include "foundation/StreamIO.h"
#include "platform/Arrays.h"
#include "platform/CString.h"

// The reading side: a source gives GetAt and GetSize, and gets both searches.
// It has no fields, and no virtual destructor: nothing is destroyed through
// it.
class VKTCALC_API ISortedStringQuery {
 public:
  // String `i`, or null outside the source.
  virtual const char16_t* GetAt(int i) = 0;
  virtual int GetSize() = 0;
  // Binary search of a source sorted ascending by CUtilityCalc::StrCmpW(.., ..,
  // 1), that is by the locale's collation with case; the index of a string
  // equal to `text`, or -1 (also for a null text and an empty source).
  virtual int BSearch(const char16_t* text);
  // The first index whose string matches `text`, or -1; null strings are
  // passed over. With zero bPrefix a match compares equal by StrCmpW(text,
  // string, bCase); with nonzero bPrefix a match is a string that `text`
  // begins with, unit by unit, where zero bCase lets ASCII letters differ in
  // case. An empty string is a prefix of every text.
  virtual int Find(const char16_t* text, int bCase, int bPrefix);

 protected:
  ~ISortedStringQuery() = default;
};

// The pool. Each string lies in `mem` as 16-bit units with its terminator, at
// the byte offset that aOffsets holds for it; strings normally follow each
// other, but RemoveAt and a shorter SetAt leave unused bytes behind. aExtras
// is a second table, parallel by index, that the pool keeps in step where it
// can (InsertAt, RemoveAt, Copy, the stream form) but never fills itself.
class VKTCALC_API CStringPool : public ISortedStringQuery {
 public:
  CStringPool();

  // A pointer into the block, valid until the block changes; null outside
  // the table. Chosen: an offset that lies outside the block or is odd (a
  // table from a damaged stream) reads as the empty string.
  const char16_t* GetAt(int i) override;
  int GetSize() override;  // the size of aOffsets

  virtual ~CStringPool();
  // Both tables become empty, the block is cleared.
  virtual void Empty();
  // Both tables and the block's content become copies of `from`'s; null or
  // this pool does nothing.
  virtual void Copy(CStringPool* from);
  // Takes over `src`'s block without copying (src is left empty) and cuts it
  // in place at each unit equal to the first unit of `sep`, or at each 0
  // unit without a sep. A cut is overwritten with 0 and the next string
  // begins behind the whole width of `sep`; a block that ends in a cut has
  // one more, empty, string. Nonzero bLower lower-cases A to Z. Sorting is
  // the caller's duty. 1 when loaded; 0, with nothing changed, when `src`
  // holds no whole unit. aExtras is not touched.
  virtual int LoadSortedBuf(CMem& src, int bLower, const char16_t* sep);
  // The strings become the items, in order; aExtras is not touched.
  virtual void Load(CStringArray& items);
  // Appends a string; its index.
  virtual int Add(CString& text);
  // Puts a string in front of string `i` (and a 0 into aExtras when `i` lies
  // within it); `i` outside the table does nothing.
  virtual void InsertAt(int i, CString& text);
  // Takes `i` out of the tables; its bytes stay in the block.
  virtual void RemoveAt(int i);
  // Replaces string `i`, in place when the new text fits its room.
  virtual void SetAt(int i, CString& text);
  // Writes: the two table sizes (32 bits each), then, only when there is a
  // string, the block and the raw 32-bit elements of both tables.
  virtual void Serialize(IStreamOutput* out);
  // Empties the pool and reads what Serialize wrote. The reads are not
  // checked: a short stream leaves what could be read.
  virtual void Deserialize(IStreamInput* in);

  CMem mem;            // the text block
  CUIntArray aOffsets;  // byte offset of each string in mem; growth step 16
  CUIntArray aExtras;   // filled by hosts; kept in step by index

 private:
  void GuardTail();
};
