// toolbox/ArraySearch.cpp: the binary search of a sorted CUIntArray, the
// reader of number lists such as 1,3,5-8, and the linear finds and
// repeat-free appends over the framework's arrays.
#include <algorithm>
#include <climits>
#include <vector>

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "platform/WideRuntime.h"

namespace {

// A range that would list more values than this is dropped like a reversed
// one. Row and column sets stay far below it, while a typing slip such as
// 0-2000000000 would otherwise append two billion values.
constexpr long long kMaxRangeValues = 1000000;

// Both ends count: lo <= hi.
struct Range {
  int lo;
  int hi;
  bool Holds(int value) const { return value >= lo && value <= hi; }
};

// Joins ranges until no pair is left whose earlier range has its first or
// last value inside the later one; each join starts the walk again from the
// first range. A later range wholly inside an earlier one passes this test
// and stays apart.
void MergeRanges(std::vector<Range>& ranges) {
  for (std::size_t i = 0, j = 1; i < ranges.size();) {
    if (j >= ranges.size()) {
      ++i;
      j = i + 1;
    } else if (ranges[j].Holds(ranges[i].lo) || ranges[j].Holds(ranges[i].hi)) {
      ranges[i] = {std::min(ranges[i].lo, ranges[j].lo), std::max(ranges[i].hi, ranges[j].hi)};
      ranges.erase(ranges.begin() + static_cast<std::ptrdiff_t>(j));
      i = 0;
      j = 1;
    } else {
      ++j;
    }
  }
}

}  // namespace

// Short arrays are read from the front. Longer ones are halved while more
// than the last two or three candidates are left, which are then compared
// one by one. A probe always lies above low and below high, so the bounds
// cannot cross inside the halving.
int CUtilityCalc::BSearch_CUIntArray(CUIntArray& items, UINT value, int bRemove) {
  const auto hit = [&items, bRemove](int index) {
    if (bRemove) items.RemoveAt(index);
    return index;
  };
  const int size = items.GetSize();
  int low = 0;
  int high = size - 1;
  if (size >= 5) {
    for (int probe = high / 2; probe < high;) {
      const UINT item = items[probe];
      if (item == value) return hit(probe);
      if (value > item)
        low = probe + 1;
      else
        high = probe - 1;
      probe = low + (high - low) / 2;
      if (probe <= low) break;
    }
  }
  for (int i = low; i <= high; ++i) {
    if (items[i] == value) return hit(i);
  }
  return -1;
}

// The pieces are read as they stand: GetLeftRight splits at the first minus,
// so -5 is the range 0 to 5 (an empty end reads 0) and 1- is 1 to 0, dropped;
// a piece that is no number reads 0. Only the singles skip repeats.
int CUtilityCalc::Str2MultiNumberArray(const char16_t* text, CUIntArray& out) {
  CStringArray pieces;
  CStrKit::CString2Array(pieces, text, u',', 1);
  std::vector<Range> ranges;
  CString left;
  CString right;
  for (int i = pieces.GetSize() - 1; i >= 0; --i) {
    if (!CStrKit::GetLeftRight(pieces[i].GetString(), u"-", left, right, 0)) continue;
    pieces.RemoveAt(i);
    const int lo = vkt::_wtoi(left.GetString());
    const int hi = vkt::_wtoi(right.GetString());
    if (lo <= hi && static_cast<long long>(hi) - lo < kMaxRangeValues) ranges.push_back({lo, hi});
  }
  MergeRanges(ranges);
  // Sized once rather than grown value by value, which would copy a large
  // array over and over; like Add, it stops where an array can hold no more.
  // Counted in 64 bits: a range may end at INT_MAX.
  long long total = out.GetSize();
  for (const Range& range : ranges) total += static_cast<long long>(range.hi) - range.lo + 1;
  int at = out.GetSize();
  out.SetSize(static_cast<int>(std::min<long long>(total, INT_MAX)));
  for (const Range& range : ranges) {
    for (long long v = range.lo; v <= range.hi && at < out.GetSize(); ++v) out[at++] = static_cast<UINT>(v);
  }
  for (const CString& piece : pieces) CUIntArrayAppendSingle(out, vkt::_wtoi(piece.GetString()));
  return out.GetSize();
}

int CUtilityCalc::CUIntArraySame(CUIntArray& a, CUIntArray& b) {
  return a.GetSize() == b.GetSize() && std::equal(a.begin(), a.end(), b.begin()) ? 1 : 0;
}

// out is emptied first and gets one text for each element.
void CUtilityCalc::UIntArray2CStringArray(CStringArray& out, CUIntArray& from) {
  const int size = from.GetSize();
  out.RemoveAll();
  out.SetSize(size);
  for (int i = 0; i < size; ++i) out[i].Format(u"%u", from[i]);
}

// out is emptied first; its growth step becomes the size of from.
void CUtilityCalc::CStringArray2UIntArray(CUIntArray& out, CStringArray& from, int bKeepEmpty) {
  out.RemoveAll();
  out.SetSize(0, from.GetSize());
  for (const CString& item : from) {
    if (item.IsEmpty() && !bKeepEmpty) continue;
    out.Add(static_cast<UINT>(vkt::_wtoi(item.GetString())));
  }
}

// Counted as unsigned, so a run that passes INT_MAX goes on without overflow.
void CUtilityCalc::UIntArrayBuild(CUIntArray& out, int count, int first) {
  if (count < 0) return;
  out.SetSize(count);
  for (int i = 0; i < count; ++i) out[i] = static_cast<UINT>(first) + static_cast<UINT>(i);
}

int CUtilityCalc::CHandleArrayFind(CArray<void*, void*>& items, void* value) {
  return CHandleArrayFind(items, value, 0, items.GetSize());
}

// Chosen: a negative start counts as 0.
int CUtilityCalc::CHandleArrayFind(CArray<void*, void*>& items, void* value, int start, int stop) {
  const int end = std::min(stop, items.GetSize());
  for (int i = std::max(start, 0); i < end; ++i) {
    if (items[i] == value) return i;
  }
  return -1;
}

int CUtilityCalc::CHandleArrayFindOneOf(CArray<void*, void*>& items, CArray<void*, void*>& set) {
  const int size = items.GetSize();
  for (int i = 0; i < size; ++i) {
    if (CHandleArrayFind(set, items[i]) >= 0) return i;
  }
  return -1;
}

int CUtilityCalc::CHandleArrayFindSameSingle(CArray<void*, void*>& items, CArray<void*, void*>& set) {
  return CHandleArrayFindOneOf(items, set);
}

int CUtilityCalc::CHandleArrayAppendSingle(CArray<void*, void*>& items, void* value) {
  return CHandleArrayFind(items, value) >= 0 ? -1 : items.Add(value);
}

// Walked by index, so from may be items itself (nothing is then added).
int CUtilityCalc::CHandleArrayAppendSingle(CArray<void*, void*>& items, CArray<void*, void*>& from) {
  int added = 0;
  for (int i = 0; i < from.GetSize(); ++i) {
    if (CHandleArrayAppendSingle(items, from[i]) >= 0) ++added;
  }
  return added;
}

int CUtilityCalc::CInt64ArrayFind(CArray<LONGLONG, LONGLONG>& items, LONGLONG value) {
  const int size = items.GetSize();
  for (int i = 0; i < size; ++i) {
    if (items[i] == value) return i;
  }
  return -1;
}

int CUtilityCalc::CInt64ArrayAppendSingle(CArray<LONGLONG, LONGLONG>& items, LONGLONG value) {
  const int found = CInt64ArrayFind(items, value);
  return found >= 0 ? found : items.Add(value);
}

// An empty array first gets a growth step of the size of from, at least 80.
void CUtilityCalc::CInt64ArrayAppendSingle(CArray<LONGLONG, LONGLONG>& items,
                                           CArray<LONGLONG, LONGLONG>& from) {
  constexpr int kLeastStep = 80;
  if (items.IsEmpty()) items.SetSize(0, std::max(from.GetSize(), kLeastStep));
  for (int i = 0; i < from.GetSize(); ++i) CInt64ArrayAppendSingle(items, from[i]);
}

// out is emptied first; its growth step becomes the map's count.
void CUtilityCalc::CMapUInt2Array(CMap<DWORD, DWORD, DWORD, DWORD>& map, CUIntArray& out, int bSort) {
  out.RemoveAll();
  out.SetSize(0, map.GetCount());
  DWORD key = 0;
  DWORD value = 0;
  for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
    map.GetNextAssoc(pos, key, value);
    out.Add(static_cast<UINT>(key));
  }
  if (bSort) Sort_CUIntArray(out);
}

int CUtilityCalc::SafeSetAt(CByteArray* items, int index, BYTE value) {
  if (items == nullptr || index < 0 || index >= items->GetSize()) return 0;
  items->SetAt(index, value);
  return 1;
}
