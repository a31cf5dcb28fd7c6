// platform/Arrays.h: CArray, the growable array of the framework, and the
// named arrays the interfaces use (CStringArray, CUIntArray, CByteArray,
// CWordArray, CDWordArray, CPtrArray, CObArray). Installed with the public
// headers.
//
// Contract shared by every array:
// - Sizes and indexes are int, from 0. New elements are value-initialised:
//   0 for numbers and pointers, the default (empty) object otherwise.
// - Capacity grows in steps. SetSize(n, growBy) sets the step when growBy is
//   0 or above and keeps the old one when it is -1 (any negative value). A
//   step of 0, the default, means an eighth of the current size, at least 4
//   and at most 1,024. When an array must grow past its capacity, the new
//   capacity is the old one plus the step, or the size needed if that is
//   more; an array without storage first gets the size needed or the step,
//   whichever is more. Size 0 (SetSize(0), RemoveAll) frees the storage.
// - Elements are moved and copied with their own operations, never as raw
//   bytes: a CString that keeps a pointer into itself stays intact.
// - Bad indexes and counts never crash. Reading outside the array gives a
//   default value; writing outside (SetAt, or through a reference that
//   GetAt, ElementAt or operator[] handed out for an index outside) changes
//   nothing in the array. Such a reference is a per-thread scratch object,
//   reset on every access outside, so keep it no longer than one statement.
//   Negative indexes, sizes and counts are ignored; RemoveAt cuts its count
//   at the end; an operation whose result would pass INT_MAX elements is
//   ignored.
// - An element argument may live in the array itself (arr.Add(arr[0])): it
//   is copied before the array moves its elements.
// - Arrays are values: copying copies the elements and the step (capacity is
//   not copied), moving takes the storage and leaves the source empty with
//   its step. Only exhausted memory throws (std::bad_alloc).
#pragma once

#include <algorithm>
#include <climits>
#include <type_traits>
#include <utility>
#include <vector>

#include "VKTCalcExport.h"
#include "platform/CObject.h"
#include "platform/CString.h"
#include "platform/Types.h"

namespace vkt::arrays {

// The capacity that lets an array of `size` elements in `capacity` slots hold
// `needed` elements, following the step rule above; `needed` > `capacity`.
inline int GrowCapacity(int size, int capacity, int growBy, int needed) noexcept {
  if (capacity == 0) return needed > growBy ? needed : growBy;
  int step = growBy;
  if (step == 0) step = std::clamp(size / 8, 4, 1024);
  long long grown = static_cast<long long>(capacity) + step;
  if (grown > INT_MAX) grown = INT_MAX;
  return needed > grown ? needed : static_cast<int>(grown);
}

}  // namespace vkt::arrays

template <class TYPE, class ARG_TYPE = const TYPE&>
class VKTCALC_API CArray : public CObject {
  static_assert(!std::is_same_v<TYPE, bool>, "use BYTE or int elements for flags");

 public:
  CArray() noexcept = default;
  CArray(const CArray& other) : CObject(other), m_items(other.m_items), m_growBy(other.m_growBy) {}
  CArray(CArray&& other) noexcept
      : CObject(std::move(other)), m_items(std::move(other.m_items)), m_growBy(other.m_growBy) {}
  CArray& operator=(const CArray& other) {
    if (this != &other) {
      m_items = other.m_items;
      m_growBy = other.m_growBy;
    }
    return *this;
  }
  CArray& operator=(CArray&& other) noexcept {
    if (this != &other) {
      m_items = std::move(other.m_items);
      other.m_items.clear();
      m_growBy = other.m_growBy;
    }
    return *this;
  }
  ~CArray() override = default;

  // Size.
  int GetSize() const noexcept { return static_cast<int>(m_items.size()); }
  int GetCount() const noexcept { return GetSize(); }
  int GetUpperBound() const noexcept { return GetSize() - 1; }
  bool IsEmpty() const noexcept { return m_items.empty(); }
  int GetGrowBy() const noexcept { return m_growBy; }                          // 0: automatic
  int GetAllocSize() const noexcept { return static_cast<int>(m_items.capacity()); }

  void SetSize(int newSize, int growBy = -1) {
    if (growBy >= 0) m_growBy = growBy;
    if (newSize < 0) return;
    if (newSize == 0) {
      std::vector<TYPE>().swap(m_items);
      return;
    }
    Reserve(newSize);
    m_items.resize(static_cast<std::size_t>(newSize));
  }
  void RemoveAll() { SetSize(0); }
  // Drops the capacity above the size.
  void FreeExtra() {
    if (m_items.size() == m_items.capacity()) return;
    std::vector<TYPE> tight;
    tight.reserve(m_items.size());
    for (TYPE& item : m_items) tight.push_back(std::move(item));
    m_items.swap(tight);
  }

  // Access.
  const TYPE& GetAt(int index) const { return Inside(index) ? m_items[Pos(index)] : Outside(); }
  TYPE& GetAt(int index) { return ElementAt(index); }
  TYPE& ElementAt(int index) { return Inside(index) ? m_items[Pos(index)] : Outside(); }
  const TYPE& ElementAt(int index) const { return GetAt(index); }
  const TYPE& operator[](int index) const { return GetAt(index); }
  TYPE& operator[](int index) { return ElementAt(index); }
  void SetAt(int index, ARG_TYPE value) {
    if (Inside(index)) m_items[Pos(index)] = value;
  }
  // The elements in order; null for an empty array. Valid until the size or
  // the capacity changes.
  const TYPE* GetData() const noexcept { return m_items.empty() ? nullptr : m_items.data(); }
  TYPE* GetData() noexcept { return m_items.empty() ? nullptr : m_items.data(); }
  TYPE* begin() noexcept { return m_items.data(); }
  TYPE* end() noexcept { return m_items.data() + m_items.size(); }
  const TYPE* begin() const noexcept { return m_items.data(); }
  const TYPE* end() const noexcept { return m_items.data() + m_items.size(); }

  // Growing. SetAtGrow past the end fills the gap with default elements.
  void SetAtGrow(int index, ARG_TYPE value) {
    if (index < 0) return;
    if (index < GetSize()) {
      m_items[Pos(index)] = value;
      return;
    }
    if (index == INT_MAX) return;
    TYPE copy(value);  // value may live in this array, which is about to move
    SetSize(index + 1);
    m_items[Pos(index)] = std::move(copy);
  }
  // The index of the new element; -1 when the array is full.
  int Add(ARG_TYPE value) {
    int index = GetSize();
    if (index == INT_MAX) return -1;
    SetAtGrow(index, value);
    return index;
  }
  int Add(TYPE&& value)
    requires std::is_reference_v<ARG_TYPE>
  {
    int index = GetSize();
    if (index == INT_MAX) return -1;
    TYPE moved(std::move(value));  // value may live in this array
    Reserve(index + 1);
    m_items.push_back(std::move(moved));
    return index;
  }
  // Appends the elements of `source` (this array too); the old size.
  int Append(const CArray& source) {
    int oldSize = GetSize();
    int count = source.GetSize();
    if (count == 0 || static_cast<long long>(oldSize) + count > INT_MAX) return oldSize;
    SetSize(oldSize + count);
    // By index: when source is this array its first elements did not move.
    for (int i = 0; i < count; ++i) m_items[Pos(oldSize + i)] = source.m_items[Pos(i)];
    return oldSize;
  }
  // Makes this array equal to `source`, keeping this array's step.
  void Copy(const CArray& source) {
    if (this == &source) return;
    SetSize(source.GetSize());
    std::copy(source.m_items.begin(), source.m_items.end(), m_items.begin());
  }

  // Inserting and removing. At or past the end, InsertAt grows the array so
  // that the new elements start at `index`.
  void InsertAt(int index, ARG_TYPE value, int count = 1) {
    if (index < 0 || count <= 0) return;
    TYPE copy(value);  // value may live in this array
    if (!OpenGap(index, count)) return;
    std::fill_n(m_items.begin() + index, count, copy);
  }
  void InsertAt(int startIndex, const CArray* source) {
    if (source == nullptr || startIndex < 0 || source->IsEmpty()) return;
    if (source == this) {
      CArray copy(*this);
      InsertAt(startIndex, &copy);
      return;
    }
    if (!OpenGap(startIndex, source->GetSize())) return;
    std::copy(source->m_items.begin(), source->m_items.end(), m_items.begin() + startIndex);
  }
  // Removes up to `count` elements from `index`; an index outside does nothing.
  void RemoveAt(int index, int count = 1) {
    int size = GetSize();
    if (index < 0 || index >= size || count <= 0) return;
    if (count > size - index) count = size - index;
    m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
  }

 private:
  bool Inside(int index) const noexcept { return index >= 0 && index < GetSize(); }
  static std::size_t Pos(int index) noexcept { return static_cast<std::size_t>(index); }

  // The object handed out for an index outside the array.
  static TYPE& Outside() {
    static thread_local TYPE scratch{};
    scratch = TYPE();
    return scratch;
  }

  // Makes room for `needed` elements by the step rule.
  void Reserve(int needed) {
    int capacity = GetAllocSize();
    if (needed <= capacity) return;
    m_items.reserve(static_cast<std::size_t>(
        vkt::arrays::GrowCapacity(GetSize(), capacity, m_growBy, needed)));
  }

  // Leaves `count` default or moved-from elements at [index, index + count),
  // shifting the elements from `index` on; false (and nothing changed) when
  // the array would pass INT_MAX elements.
  bool OpenGap(int index, int count) {
    int oldSize = GetSize();
    long long newSize = static_cast<long long>(index >= oldSize ? index : oldSize) + count;
    if (newSize > INT_MAX) return false;
    SetSize(static_cast<int>(newSize));
    if (index < oldSize)
      std::move_backward(m_items.begin() + index, m_items.begin() + oldSize, m_items.begin() + oldSize + count);
    return true;
  }

  std::vector<TYPE> m_items;  // capacity managed by Reserve, never left to the vector
  int m_growBy = 0;           // the step; 0 means automatic
};

// The named arrays are classes of their own, so that hosts can declare them
// ahead; their destructors are defined once, in the library.
class VKTCALC_API CStringArray : public CArray<CString, const CString&> {
 public:
  CStringArray() noexcept = default;
  CStringArray(const CStringArray&) = default;
  CStringArray(CStringArray&&) noexcept = default;
  CStringArray& operator=(const CStringArray&) = default;
  CStringArray& operator=(CStringArray&&) noexcept = default;
  ~CStringArray() override;
};

class VKTCALC_API CUIntArray : public CArray<UINT, UINT> {
 public:
  CUIntArray() noexcept = default;
  CUIntArray(const CUIntArray&) = default;
  CUIntArray(CUIntArray&&) noexcept = default;
  CUIntArray& operator=(const CUIntArray&) = default;
  CUIntArray& operator=(CUIntArray&&) noexcept = default;
  ~CUIntArray() override;
};

class VKTCALC_API CByteArray : public CArray<BYTE, BYTE> {
 public:
  CByteArray() noexcept = default;
  CByteArray(const CByteArray&) = default;
  CByteArray(CByteArray&&) noexcept = default;
  CByteArray& operator=(const CByteArray&) = default;
  CByteArray& operator=(CByteArray&&) noexcept = default;
  ~CByteArray() override;
};

class VKTCALC_API CWordArray : public CArray<WORD, WORD> {
 public:
  CWordArray() noexcept = default;
  CWordArray(const CWordArray&) = default;
  CWordArray(CWordArray&&) noexcept = default;
  CWordArray& operator=(const CWordArray&) = default;
  CWordArray& operator=(CWordArray&&) noexcept = default;
  ~CWordArray() override;
};

class VKTCALC_API CDWordArray : public CArray<DWORD, DWORD> {
 public:
  CDWordArray() noexcept = default;
  CDWordArray(const CDWordArray&) = default;
  CDWordArray(CDWordArray&&) noexcept = default;
  CDWordArray& operator=(const CDWordArray&) = default;
  CDWordArray& operator=(CDWordArray&&) noexcept = default;
  ~CDWordArray() override;
};

// Pointer arrays do not own what they point to.
class VKTCALC_API CPtrArray : public CArray<void*, void*> {
 public:
  CPtrArray() noexcept = default;
  CPtrArray(const CPtrArray&) = default;
  CPtrArray(CPtrArray&&) noexcept = default;
  CPtrArray& operator=(const CPtrArray&) = default;
  CPtrArray& operator=(CPtrArray&&) noexcept = default;
  ~CPtrArray() override;
};

class VKTCALC_API CObArray : public CArray<CObject*, CObject*> {
 public:
  CObArray() noexcept = default;
  CObArray(const CObArray&) = default;
  CObArray(CObArray&&) noexcept = default;
  CObArray& operator=(const CObArray&) = default;
  CObArray& operator=(CObArray&&) noexcept = default;
  ~CObArray() override;
};
