// containers/Locks.cpp: the text that carries its own lock, and the one set
// of host stores that a ticket on the stack locks. The library makes the
// stores and their lock at load and never reads or writes the stores.
#include "CTextCache.h"

namespace {

// Made at load, the lock before the object it guards (statics of one file
// are built in order of definition and destroyed in the reverse order).
CCritSec g_singleDataLock;
CSingleData g_singleData;

}  // namespace

// --- CLockText ----------------------------------------------------------------

CLockText::CLockText() = default;

CLockText::~CLockText() = default;

int CLockText::IsEmpty() {
  CCritSecGuard guard(m_lock);
  return m_text.IsEmpty() ? 1 : 0;
}

void CLockText::Get(CString& out) {
  CCritSecGuard guard(m_lock);
  out = m_text;
}

// The copy is taken under other's lock and stored under ours, one after the
// other: with itself as source the text is read and written back unchanged.
int CLockText::Set(CLockText& other) {
  CString copy;
  other.Get(copy);
  return Set(copy.GetString());
}

int CLockText::Set(const char16_t* text) {
  CCritSecGuard guard(m_lock);
  m_text = text;
  return 0;
}

// --- CSingleData --------------------------------------------------------------

// Chosen: the key maps hash as the platform's map does for every key; the
// block sizes and table sizes given here are hints to it.
CSingleData::CSingleData() : mapNames1(10), mapKeys1(10), mapNames2(10), mapKeys2(10), nValue(0) {
  mapNames1.InitHashTable(71);
  mapKeys1.InitHashTable(17);
  mapKeys2.InitHashTable(17);
}

CSingleData::~CSingleData() = default;

// --- CSingleDataLock ----------------------------------------------------------

CSingleDataLock::CSingleDataLock() { g_singleDataLock.Lock(); }

CSingleDataLock::~CSingleDataLock() { g_singleDataLock.Unlock(); }

CSingleData* CSingleDataLock::GetLowerData() { return &g_singleData; }
