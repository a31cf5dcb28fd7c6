// containers/CMapProp.cpp: the store of property names that lists share. Each
// distinct text is copied once and handed out as the same pointer to every
// caller, in any thread, for as long as the store lives; lists then compare
// and keep names as plain pointers. Counting owners is the lists' duty.
#include "CProperty2.h"

#include <cstdlib>
#include <cstring>

#include "platform/WideRuntime.h"

namespace {

constexpr UINT kBuckets = 101;  // room for about a hundred names before the table grows

// The map's value is the copy's address. CMapStringToOb can hold nothing but
// CObject*, so the pointer is stored under that type and never used as an
// object; calloc's block is aligned for any type, so it comes back unchanged.
CObject* AsValue(char16_t* copy) { return reinterpret_cast<CObject*>(copy); }
const char16_t* AsCopy(CObject* value) { return reinterpret_cast<const char16_t*>(value); }

// Frees every copy and empties the map; the caller holds the lock.
void FreeCopies(CMapStringToOb& map) {
  POSITION position = map.GetStartPosition();
  while (position != nullptr) {
    CString key;
    CObject* value = nullptr;
    map.GetNextAssoc(position, key, value);
    std::free(reinterpret_cast<char16_t*>(value));
  }
  map.RemoveAll();
}

}  // namespace

CMapProp::CMapProp() : map(10), nRefs(0) { map.InitHashTable(kBuckets); }

CMapProp::~CMapProp() {
  CCritSecGuard guard(lock);
  FreeCopies(map);
}

void CMapProp::RemoveAll() {
  CCritSecGuard guard(lock);
  FreeCopies(map);
}

const char16_t* CMapProp::Intern(const char16_t* text) {
  if (text == nullptr || text[0] == 0) return nullptr;
  const std::size_t length = vkt::wcslen(text);
  const CString key(text, static_cast<int>(length));
  CCritSecGuard guard(lock);
  CObject* found = nullptr;
  if (map.Lookup(key, found)) return AsCopy(found);
  auto* copy = static_cast<char16_t*>(std::calloc(length + 1, sizeof(char16_t)));
  if (copy == nullptr) return nullptr;  // nothing entered: a later call tries again
  std::memcpy(copy, text, length * sizeof(char16_t));
  map.SetAt(key, AsValue(copy));
  return copy;
}

const char16_t* CMapProp::Intern(CString& text) {
  return text.IsEmpty() ? nullptr : this->Intern(text.GetString());
}

const char16_t* CMapProp::Lookup(const char16_t* text) {
  if (text == nullptr || text[0] == 0) return nullptr;
  CCritSecGuard guard(lock);
  CObject* value = nullptr;
  return map.Lookup(CString(text), value) ? AsCopy(value) : nullptr;
}

LONG CMapProp::AddRef() { return nRefs.fetch_add(1) + 1; }

LONG CMapProp::Release() {
  const LONG count = nRefs.fetch_sub(1) - 1;
  if (count == 0) delete this;  // only the last owner gets here
  return count;
}
