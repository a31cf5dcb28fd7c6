// CTextCache.h: the library's small locking classes and the process-wide
// text cache, which turns texts into 32-bit handles packed in 4 KB pages.
//
// The order of the virtual operations and of the fields is part of the
// interface. The lock itself, CCritSec, is the platform's (platform/Sync.h).
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/CString.h"
#include "platform/Maps.h"
#include "platform/Sync.h"
#include "platform/Types.h"

// A text that several threads read and write, each access under its lock.
class VKTCALC_API CLockText {
 public:
  CLockText();
  CLockText(const CLockText&) = delete;
  CLockText& operator=(const CLockText&) = delete;

  virtual ~CLockText();
  virtual int IsEmpty();              // 1 when the text is empty
  virtual void Get(CString& out);     // a copy of the text
  // Reads other by its Get, then stores by Set: the two locks are never held
  // together, so copies in opposite directions cannot block. Always 0.
  virtual int Set(CLockText& other);
  virtual int Set(const char16_t* text);  // always 0

  CCritSec m_lock;
  CString m_text;
};

// Stores that the library makes once for the process and leaves to hosts;
// nothing in the library reads or writes them. Reach them through a
// CSingleDataLock.
class VKTCALC_API CSingleData {
 public:
  CSingleData();
  CSingleData(const CSingleData&) = delete;
  CSingleData& operator=(const CSingleData&) = delete;
  ~CSingleData();

  CMapStringToOb mapNames1;
  CMap<LONGLONG, LONGLONG, LONGLONG, LONGLONG> mapKeys1;
  CMapStringToOb mapNames2;
  CMap<LONGLONG, LONGLONG, LONGLONG, LONGLONG> mapKeys2;
  CString strText;
  int nValue;
};

// A ticket on the stack: it holds the lock of the one CSingleData from its
// construction to its destruction.
class VKTCALC_API CSingleDataLock {
 public:
  CSingleDataLock();
  CSingleDataLock(const CSingleDataLock&) = delete;
  CSingleDataLock& operator=(const CSingleDataLock&) = delete;

  virtual ~CSingleDataLock();
  virtual CSingleData* GetLowerData();
};

class CTextCachePage;

// Texts by handle: ((page & 0xFFFFFF) << 8 | slot) + 1, with 100 slots a
// page; 0 is the empty text. A handle stays valid from Add to Remove, across
// any number of compactions. One lock guards all of it.
class VKTCALC_API CTextCache {
 public:
  CTextCache();
  CTextCache(const CTextCache&) = delete;
  CTextCache& operator=(const CTextCache&) = delete;

  virtual ~CTextCache();
  // length units of text (negative: up to its terminator; otherwise it must
  // be the text's exact length). 0 for null or empty text.
  virtual UINT Add(const char16_t* text, int length);
  // Frees the handle's slot; unknown handles and 0 do nothing.
  virtual void Remove(UINT handle);
  // 1 with the text in out; 0 with out emptied for 0 or an unknown handle.
  virtual int Get(UINT handle, CString& out);
  // Frees empty pages, packs pages with much slack, trims the page list.
  virtual void Compact();

  int nRemoved;    // removals that found a page since the last compaction
  int nFirstFree;  // the first page that may have a free slot
  CArray<CTextCachePage*, CTextCachePage*> aPages;  // entries may be null
  CCritSec lock;
};

// The process's one cache, built on the first call (thread-safely) and
// destroyed at process exit.
VKTCALC_API CTextCache* GetCache();
