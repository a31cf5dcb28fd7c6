// platform/Maps.h: CMap, the framework's hash map, the named maps the
// interfaces use (CMapStringToOb, CMapStringToString, CMapStringToPtr) and
// POSITION, the handle that walks them. Installed with the public headers.
//
// Contract shared by every map:
// - Keys compare exactly: text keys with case, unit by unit.
// - operator[] inserts the key with a value-initialised value (null, 0 or
//   empty text) when it is missing, and gives the stored value. A value's
//   address stays valid until its key is removed.
// - Walking: GetStartPosition, then GetNextAssoc until the position is null,
//   gives every pair once. The order is unspecified, but stays the same as
//   long as the map does not change. Removing the pair that GetNextAssoc has
//   just given is allowed during a walk; any other change (adding a key,
//   removing another, InitHashTable, RemoveAll) ends the walk: a position
//   from before it must not be used. A null position is ignored.
// - The block size of the constructors and the table size of InitHashTable
//   are hints: the table grows by itself and lookups stay fast at any size.
// - Maps are values: copying copies the pairs (for pointer values only the
//   pointers), moving leaves the source empty. A map owns none of the
//   objects its pointer values point to. Only exhausted memory throws.
#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>

#include "VKTCalcExport.h"
#include "platform/CObject.h"
#include "platform/CString.h"
#include "platform/Types.h"

// The walking handle; null ends a walk. Its target is never defined.
struct PositionTag;
typedef PositionTag* POSITION;

namespace vkt::maps {

// The hash a CMap uses for its keys: std::hash, which CString has too.
template <class KEY>
struct KeyHash {
  std::size_t operator()(const KEY& key) const noexcept(noexcept(std::hash<KEY>()(key))) {
    return std::hash<KEY>()(key);
  }
};

}  // namespace vkt::maps

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class VKTCALC_API CMap : public CObject {
 public:
  explicit CMap(int nBlockSize = 10) noexcept { (void)nBlockSize; }
  CMap(const CMap& other) : CObject(other), m_table(other.m_table) {}
  CMap(CMap&& other) noexcept : CObject(std::move(other)), m_table(std::move(other.m_table)) {}
  CMap& operator=(const CMap& other) {
    if (this != &other) m_table = other.m_table;
    return *this;
  }
  CMap& operator=(CMap&& other) noexcept {
    if (this != &other) {
      m_table = std::move(other.m_table);
      other.m_table.clear();
    }
    return *this;
  }
  ~CMap() override = default;

  int GetCount() const noexcept { return static_cast<int>(m_table.size()); }
  int GetSize() const noexcept { return GetCount(); }
  bool IsEmpty() const noexcept { return m_table.empty(); }

  // True, with the value copied to `value`, when the key is present;
  // otherwise false and `value` untouched.
  bool Lookup(ARG_KEY key, VALUE& value) const {
    const KEY& k = key;
    auto found = m_table.find(k);
    if (found == m_table.end()) return false;
    value = found->second;
    return true;
  }
  VALUE& operator[](ARG_KEY key) {
    const KEY& k = key;
    return m_table[k];
  }
  void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }
  // True when the key was present.
  bool RemoveKey(ARG_KEY key) {
    const KEY& k = key;
    return m_table.erase(k) != 0;
  }
  void RemoveAll() noexcept { m_table.clear(); }

  // Prepares room for about `hashSize` keys; the map may hold more.
  void InitHashTable(UINT hashSize, bool bAllocNow = true) {
    (void)bAllocNow;
    m_table.rehash(hashSize);
  }
  UINT GetHashTableSize() const noexcept { return static_cast<UINT>(m_table.bucket_count()); }

  // Null for an empty map.
  POSITION GetStartPosition() const {
    return m_table.empty() ? nullptr : Encode(*m_table.begin());
  }
  // Gives the pair at `position` and moves it on to the next pair, or to
  // null behind the last one.
  void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
    if (position == nullptr) return;
    const Pair& pair = *reinterpret_cast<const Pair*>(position);
    auto next = m_table.find(pair.first);
    if (next != m_table.end()) ++next;  // a position always names a pair of this map
    position = next == m_table.end() ? nullptr : Encode(*next);
    key = pair.first;
    value = pair.second;
  }

 private:
  using Table = std::unordered_map<KEY, VALUE, vkt::maps::KeyHash<KEY>>;
  using Pair = typename Table::value_type;

  // A position is the address of a pair inside the table: stable while the
  // pair lives, and the key it holds finds the next pair.
  static POSITION Encode(const Pair& pair) noexcept {
    return reinterpret_cast<POSITION>(const_cast<Pair*>(&pair));
  }

  Table m_table;
};

// The named maps are classes of their own, so that hosts can declare them
// ahead; their destructors are defined once, in the library.
class VKTCALC_API CMapStringToOb : public CMap<CString, const CString&, CObject*, CObject*> {
 public:
  explicit CMapStringToOb(int nBlockSize = 10) noexcept : CMap(nBlockSize) {}
  CMapStringToOb(const CMapStringToOb&) = default;
  CMapStringToOb(CMapStringToOb&&) noexcept = default;
  CMapStringToOb& operator=(const CMapStringToOb&) = default;
  CMapStringToOb& operator=(CMapStringToOb&&) noexcept = default;
  ~CMapStringToOb() override;
};

class VKTCALC_API CMapStringToString : public CMap<CString, const CString&, CString, const CString&> {
 public:
  explicit CMapStringToString(int nBlockSize = 10) noexcept : CMap(nBlockSize) {}
  CMapStringToString(const CMapStringToString&) = default;
  CMapStringToString(CMapStringToString&&) noexcept = default;
  CMapStringToString& operator=(const CMapStringToString&) = default;
  CMapStringToString& operator=(CMapStringToString&&) noexcept = default;
  ~CMapStringToString() override;
};

class VKTCALC_API CMapStringToPtr : public CMap<CString, const CString&, void*, void*> {
 public:
  explicit CMapStringToPtr(int nBlockSize = 10) noexcept : CMap(nBlockSize) {}
  CMapStringToPtr(const CMapStringToPtr&) = default;
  CMapStringToPtr(CMapStringToPtr&&) noexcept = default;
  CMapStringToPtr& operator=(const CMapStringToPtr&) = default;
  CMapStringToPtr& operator=(CMapStringToPtr&&) noexcept = default;
  ~CMapStringToPtr() override;
};
