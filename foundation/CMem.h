// foundation/CMem.h: a growable block of bytes, zeroed on allocation.
//
// The block grows in whole pages of 4,096 bytes, is allocated with calloc and
// released with free. Derived classes (text buffers, cache pages) read and
// write nSize and pBuf directly, so the three fields stay public and in this
// order. The order of the virtual operations is part of the interface.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Types.h"

class VKTCALC_API CMem {
 public:
  // The page size by which blocks grow and shrink.
  static constexpr int PageSize = 4096;

  // A block with `size` bytes reserved (rounded up to whole pages); 0 or less
  // makes no block until something is added.
  explicit CMem(int size = 0);
  // Chosen: a block is not copyable; MoveIn hands a block over.
  CMem(const CMem&) = delete;
  CMem& operator=(const CMem&) = delete;

  virtual ~CMem();
  virtual int GetSize();
  virtual int GetAllocSize();
  virtual BYTE* GetBuf();
  // Zeroes the allocated bytes behind the content.
  virtual void ClearTail();
  // The content becomes a copy of `size` bytes from `data` (null or size <= 0
  // makes it empty). Gives 1, or 0 on a negative size.
  virtual int Set(BYTE* data, int size);
  virtual int Add(BYTE value);
  virtual int Add(WORD value);
  // Appends `size` bytes; a null `data` with a positive size appends zeros.
  virtual int Add(BYTE* data, int size);
  // Opens `size` bytes at byte position `pos` (clamped into 0..nSize) and
  // copies `data` into them (zeros when `data` is null).
  virtual int Insert(BYTE* data, int pos, int size);
  // Takes over the block of `from` without copying; `from` is left empty
  // with no block. Moving a block into itself does nothing.
  virtual int MoveIn(CMem* from);
  // Takes over `data`, which must come from calloc/malloc, as the block with
  // `size` bytes in use and `size` bytes allocated.
  virtual int MoveIn(BYTE* data, int size);
  // Gives the block away to the caller (who frees it with free) and leaves
  // this object empty with no block.
  virtual BYTE* MoveOut();
  // Makes room for `size` more bytes behind the content (Reserve).
  virtual int Increase(int size);
  // Makes nAlloc at least `size`, rounded up to whole pages, keeping the
  // content; a first block has at least one page. Gives 1, or 0 (and the
  // block unchanged) when memory runs out or the size cannot be rounded.
  virtual int Reserve(int size);
  // Empties the content and zeroes the used bytes; the block is kept.
  virtual void Clear();
  // Empties the content and frees the block.
  virtual void Empty();
  // When more than one page is allocated, gives back the whole pages that
  // the content does not reach; an empty block keeps one page.
  virtual void Trim();
  // Chosen: there is no global-memory handle on this platform; gives null.
  virtual void* ToGHND();

  int nAlloc;
  int nSize;
  BYTE* pBuf;
};
