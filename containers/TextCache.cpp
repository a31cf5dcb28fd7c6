// containers/TextCache.cpp: the process-wide text cache. Texts go into pages
// of 100 slots, and a handle names page and slot; removal only marks bytes
// as wasted unless it can shorten a page at once, and a compaction after
// every 1,001 removals frees empty pages and packs the ones with much slack.
// The pages' own bookkeeping is here too (TextCachePage.h).
#include "CTextCache.h"

#include <climits>
#include <cstring>
#include <string>

#include "containers/TextCachePage.h"

namespace {

constexpr int kUnit = static_cast<int>(sizeof(char16_t));
constexpr int kSlack = CMem::PageSize;        // free capacity or waste that makes a page pack
constexpr int kRemovalsBeforeCompact = 1000;  // Add compacts first once nRemoved passes it
constexpr int kPagesKept = 65;                // entries kept behind the last page in use
constexpr int kPagesGrowBy = 64;
constexpr int kMaxPages = 0x1000000;  // the 24 bits of a handle's page field

UINT MakeHandle(int page, int slot) {
  return ((static_cast<UINT>(page) & 0xFFFFFFu) << 8 | (static_cast<UINT>(slot) & 0xFFu)) + 1;
}
int PageOf(UINT handle) { return static_cast<int>((handle - 1) >> 8); }
int SlotOf(UINT handle) { return static_cast<int>((handle - 1) & 0xFFu); }

// A page with its block, or null when memory ran out.
CTextCachePage* NewPage() {
  auto* page = new CTextCachePage();
  if (page->GetBuf() != nullptr) return page;
  delete page;
  return nullptr;
}

// The page a handle names, or null for 0, an index outside aPages or a
// freed entry. The caller holds the lock.
CTextCachePage* FindPage(CTextCache& cache, UINT handle) {
  if (handle == 0) return nullptr;
  const int page = PageOf(handle);
  return page < cache.aPages.GetSize() ? cache.aPages[page] : nullptr;
}

// The body of Compact, which Add also runs; the caller holds the lock.
void CompactPages(CTextCache& cache) {
  int last = -1;
  const int size = cache.aPages.GetSize();
  for (int i = 0; i < size; ++i) {
    CTextCachePage* page = cache.aPages[i];
    if (page == nullptr) continue;
    if (page->Head().nCount == 0) {
      delete page;
      cache.aPages[i] = nullptr;
      continue;
    }
    if (page->nAlloc - page->nSize >= kSlack || page->Head().nWasted >= kSlack) page->Pack();
    last = i;
  }
  if (size >= kPagesKept && size > last + kPagesKept) cache.aPages.SetSize(last + kPagesKept, kPagesGrowBy);
  cache.nFirstFree = 0;
  cache.nRemoved = 0;
}

}  // namespace

// --- CTextCachePage ---------------------------------------------------------

CTextCachePage::CTextCachePage() : CMem(PageSize) {
  if (pBuf != nullptr) nSize = kHeadSize;  // calloc zeroed the header
}

void CTextCachePage::MakeEmpty() {
  Head().nCount = 0;
  Head().nWasted = 0;
  nSize = kHeadSize;
}

int CTextCachePage::Store(const char16_t* text, int units) {
  if (Head().nCount >= kSlots) return -1;
  const int bytes = (units + 1) * kUnit;
  if (nAlloc - nSize < bytes && Head().nWasted != 0) Pack();
  const int offset = nSize;
  // Chosen: zeros first and the units over them, so the terminator is ours
  // rather than copied from text[units]; for the exact lengths the callers
  // pass the bytes are the same, and a shorter length stores that prefix.
  if (!Add(static_cast<BYTE*>(nullptr), bytes)) return -1;
  std::memcpy(pBuf + offset, text, static_cast<std::size_t>(units) * kUnit);
  CTextCachePageHead& head = Head();  // after Add, which may move the block
  const int slot = head.nCount++;
  head.aOffset[slot] = offset;
  head.aLength[slot] = bytes;
  return slot;
}

void CTextCachePage::RemoveSlot(int slot) {
  CTextCachePageHead& head = Head();
  if (slot < 0 || slot >= kSlots || head.aOffset[slot] == 0) return;
  const int length = head.aLength[slot];
  head.aOffset[slot] = 0;
  head.aLength[slot] = 0;
  if (slot < head.nCount - 1) {
    head.nWasted += length;
    return;
  }
  // The highest slot: its text ends the used bytes.
  nSize -= length;
  head.nCount -= 1;
  if (head.nCount == 0)
    MakeEmpty();
  else if (head.aOffset[head.nCount - 1] == 0)
    Measure();
}

bool CTextCachePage::Read(int slot, CString& out) {
  const CTextCachePageHead& head = Head();
  if (slot < 0 || slot >= head.nCount || head.aOffset[slot] <= 0) return false;
  const int units = head.aLength[slot] / kUnit - 1;
  char16_t* to = out.GetBufferSetLength(units);
  std::memcpy(to, pBuf + head.aOffset[slot], static_cast<std::size_t>(units) * kUnit);
  out.ReleaseBuffer(units);
  return true;
}

void CTextCachePage::Pack() {
  CTextCachePageHead& head = Head();
  int used = kHeadSize;
  for (int slot = 0; slot < head.nCount; ++slot) {
    if (head.aOffset[slot] == 0) continue;
    if (head.aOffset[slot] != used) {
      std::memmove(pBuf + used, pBuf + head.aOffset[slot], static_cast<std::size_t>(head.aLength[slot]));
      head.aOffset[slot] = used;
    }
    used += head.aLength[slot];
  }
  nSize = used;
  head.nWasted = 0;
  Trim();
}

void CTextCachePage::Measure() {
  CTextCachePageHead& head = Head();
  int top = kSlots - 1;
  while (top >= 0 && head.aOffset[top] == 0) --top;
  if (top < 0) {
    MakeEmpty();
    return;
  }
  head.nCount = top + 1;
  nSize = head.aOffset[top] + head.aLength[top];
  int live = 0;
  for (int slot = 0; slot <= top; ++slot) live += head.aLength[slot];
  head.nWasted = nSize - kHeadSize - live;
}

// --- CTextCache -------------------------------------------------------------

CTextCache::CTextCache() : nRemoved(0), nFirstFree(0) { aPages.SetSize(0, kPagesGrowBy); }

CTextCache::~CTextCache() {
  for (int i = aPages.GetSize() - 1; i >= 0; --i) delete aPages[i];
}

UINT CTextCache::Add(const char16_t* text, int length) {
  if (text == nullptr || length == 0 || text[0] == 0) return 0;
  const std::size_t units =
      length < 0 ? std::char_traits<char16_t>::length(text) : static_cast<std::size_t>(length);
  if (units > static_cast<std::size_t>(INT_MAX / kUnit - 1)) return 0;
  CCritSecGuard guard(lock);
  if (nRemoved > kRemovalsBeforeCompact) CompactPages(*this);
  int index = nFirstFree < 0 ? 0 : nFirstFree;
  CTextCachePage* page = nullptr;
  for (; index < aPages.GetSize(); ++index) {
    page = aPages[index];
    if (page == nullptr) {
      if ((page = NewPage()) == nullptr) return 0;
      aPages[index] = page;
    }
    if (page->Head().nCount < CTextCachePage::kSlots) break;
  }
  if (index == aPages.GetSize()) {
    if (index >= kMaxPages || (page = NewPage()) == nullptr) return 0;
    aPages.Add(page);
  }
  nFirstFree = index;  // every full page passed moved it on by one
  const int slot = page->Store(text, static_cast<int>(units));
  return slot < 0 ? 0 : MakeHandle(index, slot);
}

void CTextCache::Remove(UINT handle) {
  if (handle == 0) return;
  CCritSecGuard guard(lock);
  CTextCachePage* page = FindPage(*this, handle);
  if (page == nullptr) return;
  ++nRemoved;
  page->RemoveSlot(SlotOf(handle));
  const int index = PageOf(handle);
  if (page->Head().nCount == 0 && index < aPages.GetSize() - 1) {
    delete page;
    aPages[index] = nullptr;
    if (nFirstFree > index) nFirstFree = index;
  }
}

int CTextCache::Get(UINT handle, CString& out) {
  CCritSecGuard guard(lock);
  CTextCachePage* page = FindPage(*this, handle);
  if (page != nullptr && page->Read(SlotOf(handle), out)) return 1;
  out.Empty();
  return 0;
}

void CTextCache::Compact() {
  CCritSecGuard guard(lock);
  CompactPages(*this);
}

// Chosen: a function-local static, whose construction the language makes
// thread-safe and once only; it is destroyed with the other statics at exit.
CTextCache* GetCache() {
  static CTextCache cache;
  return &cache;
}

namespace {

// The first call happens at library load, so that the cache outlives every
// static object of a host (which is made after the library and destroyed
// before it) that may still remove its handles at exit.
[[maybe_unused]] CTextCache* const g_cacheAtLoad = GetCache();

}  // namespace
