// containers/TextCachePage.h: one page of the text cache. Not installed;
// nothing under include/ may include it.
//
// A page is a block of bytes (CMem) that begins with an 808-byte header of
// 32-bit signed fields, followed by the texts as 16-bit units, each with its
// terminator. A slot keeps its number for the text's life, so a handle that
// names page and slot stays valid when the page packs itself. The page has
// no lock: its cache holds one over every call.
#pragma once

#include <cstdint>

#include "foundation/CMem.h"
#include "platform/CString.h"

// The header at the start of every page's block. The block comes from calloc
// (aligned for any field), and the header is read and written in place.
struct CTextCachePageHead {
  std::int32_t nCount;        // slots in use: one above the highest live slot
  std::int32_t nWasted;       // bytes of removed texts below the highest live slot
  std::int32_t aOffset[100];  // byte offset of each slot's text; 0: free slot
  std::int32_t aLength[100];  // byte length with the terminator; 0: free slot
};
static_assert(sizeof(CTextCachePageHead) == 808, "the page header is 808 bytes");

class CTextCachePage : public CMem {
 public:
  static constexpr int kSlots = 100;
  static constexpr int kHeadSize = static_cast<int>(sizeof(CTextCachePageHead));

  // An empty page: one zeroed block of 4,096 bytes with the header in use.
  // When memory runs out there is no block (GetBuf() is null) and the page
  // must not be used.
  CTextCachePage();

  CTextCachePageHead& Head() { return *reinterpret_cast<CTextCachePageHead*>(pBuf); }

  // Stores `units` units of `text` and a terminator in slot nCount. Packs
  // first when the text does not fit the free capacity and some bytes are
  // wasted. Gives the slot, or -1 when the page is full or memory runs out
  // (the page then stays as it was).
  int Store(const char16_t* text, int units);
  // Frees a slot; a slot outside 0..99 or already free is ignored. Freeing
  // the highest slot shortens the page at once; a slot below it only counts
  // its bytes as wasted.
  void RemoveSlot(int slot);
  // True, with the text in `out`, for a live slot.
  bool Read(int slot, CString& out);
  // Moves the live texts down over the wasted bytes, in slot order, and
  // gives back the whole pages of the block that the texts no longer reach.
  void Pack();
  // Finds the highest live slot anew and sets nCount, the used size and
  // nWasted from the slots; no live slot gives the empty state.
  void Measure();

 private:
  void MakeEmpty();  // nCount 0, used size 808, nWasted 0
};
