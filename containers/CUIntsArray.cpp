// containers/CUIntsArray.cpp: an owning list of number groups with the
// set-like operations the hosts use on sets of rows and columns: which group
// holds a number, where in it, the numbers all groups share, appending a
// group unless an equal one is there.
//
// A null entry (from SetAt or Deserialize) never crashes an operation: the
// searches and AddElementToAll pass it over, it holds no shared value, a copy
// of it is an empty group, the sort counts it as empty and Report writes it
// as an empty line.
#include "CUIntsArray.h"

#include "CUtilityCalc.h"
#include "foundation/CStrKit.h"
#include "foundation/CStringBuilder.h"
#include "foundation/CWriter.h"
#include "foundation/StreamIO.h"

namespace {

constexpr int kListGrowBy = 10;   // the step of the list of groups
constexpr int kGroupGrowBy = 20;  // the step of groups made by New, Append, Copy, AppendUnique
constexpr int kCountWidth = 4;    // a group's count travels as 32 bits
constexpr int kFlag = 1;          // the trailing flag of the stream operations

// A new group with the step 20 holding `from`'s values; a null `from` gives an empty one.
CUIntArray* CopyOf(CUIntArray* from) {
  auto* group = new CUIntArray;
  group->SetSize(0, kGroupGrowBy);
  if (from != nullptr) group->Copy(*from);
  return group;
}

int SizeOf(CUIntArray* group) { return group != nullptr ? group->GetSize() : 0; }

}  // namespace

CUIntsArray::CUIntsArray() { aGroups.SetSize(0, kListGrowBy); }

CUIntsArray::~CUIntsArray() { Empty(); }

int CUIntsArray::GetSize() { return aGroups.GetSize(); }

CUIntArray* CUIntsArray::GetAt(int i) { return aGroups.GetAt(i); }  // null outside

CUIntArray* CUIntsArray::New() {
  CUIntArray* group = CopyOf(nullptr);
  aGroups.Add(group);
  return group;
}

void CUIntsArray::SetSize(int n) {
  if (n < 0) return;
  for (int i = n; i < GetSize(); ++i) delete aGroups[i];
  aGroups.SetSize(n);
  for (int i = 0; i < n; ++i) {
    if (aGroups[i] == nullptr) aGroups[i] = new CUIntArray;
  }
}

void CUIntsArray::Empty() {
  for (CUIntArray* group : aGroups) delete group;
  aGroups.RemoveAll();
}

// Outside the list p stays the caller's. Storing the group already there
// again must not delete it.
void CUIntsArray::SetAt(int i, CUIntArray* p) {
  if (i < 0 || i >= GetSize()) return;
  if (aGroups[i] != p) delete aGroups[i];
  aGroups[i] = p;
}

void CUIntsArray::DeleteAt(int i) {
  if (i < 0 || i >= GetSize()) return;
  delete aGroups[i];
  aGroups.RemoveAt(i);
}

void CUIntsArray::Append(CUIntArray* a) { aGroups.Add(CopyOf(a)); }

// The size is taken first, so that appending the list to itself doubles it once.
void CUIntsArray::Append(CUIntsArray& from) {
  const int count = from.GetSize();
  for (int i = 0; i < count; ++i) Append(from.aGroups[i]);
}

void CUIntsArray::AppendSingle(CUIntArray& a) {
  for (CUIntArray* group : aGroups) {
    if (group != nullptr && CStrKit::CUIntArrayCompare(*group, a) == 0) return;
  }
  auto* group = new CUIntArray;  // the default step: a copy constructor would take a's
  group->Copy(a);
  aGroups.Add(group);
}

// A null a stands for an empty group, as in Copy.
void CUIntsArray::AppendUnique(CUIntArray* a) {
  CUIntArray empty;
  CUIntArray& values = a != nullptr ? *a : empty;
  for (CUIntArray* group : aGroups) {
    if (group != nullptr && CStrKit::CUIntArrayCompare(*group, values) == 0) return;
  }
  aGroups.Add(CopyOf(a));
}

void CUIntsArray::AppendUnique(CUIntsArray& from) {
  const int count = from.GetSize();
  for (int i = 0; i < count; ++i) AppendUnique(from.aGroups[i]);
}

void CUIntsArray::Copy(CUIntsArray* from) {
  if (from == nullptr || from == this) return;
  Empty();
  for (CUIntArray* group : from->aGroups) aGroups.Add(CopyOf(group));
}

// Moving a list into itself would leave it empty with its groups lost:
// that does nothing, as does a null from.
void CUIntsArray::MoveIn(CUIntsArray* from, int bEmptyFirst) {
  if (from == nullptr || from == this) return;
  if (bEmptyFirst) Empty();
  aGroups.Append(from->aGroups);
  from->aGroups.RemoveAll();
}

int CUIntsArray::Find(int value) {
  for (int i = 0; i < GetSize(); ++i) {
    if (aGroups[i] != nullptr && CStrKit::CUIntArrayFind(*aGroups[i], value) >= 0) return i;
  }
  return -1;
}

int CUIntsArray::FindOffset(int value) {
  for (CUIntArray* group : aGroups) {
    if (group == nullptr) continue;
    const int offset = CStrKit::CUIntArrayFind(*group, value);
    if (offset >= 0) return offset;
  }
  return -1;
}

// Missing values all have the offset -1, so they agree with one another.
int CUIntsArray::IsInSameOffset(CUIntArray& values) {
  if (values.GetSize() < 2) return 1;
  const int first = FindOffset(static_cast<int>(values[0]));
  for (int i = 1; i < values.GetSize(); ++i) {
    if (FindOffset(static_cast<int>(values[i])) != first) return 0;
  }
  return 1;
}

void CUIntsArray::AddElementToAll(int value) {
  for (CUIntArray* group : aGroups) {
    if (group != nullptr) group->Add(static_cast<UINT>(value));
  }
}

// The candidates are a copy of group 0, repeats included, then the other
// groups' values that are new. A value repeated in group 0 is therefore tried
// once per repeat, and (1,1),(1,1) loses both ones. Reading "each value once"
// would keep one of them; the copy of group 0 as it stands is taken instead.
void CUIntsArray::RemoveSameElement() {
  const int count = GetSize();
  if (count < 2) return;
  CUIntArray candidates;
  if (aGroups[0] != nullptr) candidates.Copy(*aGroups[0]);
  for (int i = 1; i < count; ++i) {
    if (aGroups[i] != nullptr) CStrKit::CUIntArrayAppendSingle(candidates, *aGroups[i]);
  }
  CUIntArray offsets;
  offsets.SetSize(count);
  for (UINT value : candidates) {
    int i = 0;
    for (; i < count; ++i) {
      const int offset =
          aGroups[i] != nullptr ? CStrKit::CUIntArrayFind(*aGroups[i], static_cast<int>(value)) : -1;
      if (offset < 0) break;  // a null group holds nothing
      offsets[i] = static_cast<UINT>(offset);
    }
    if (i < count) continue;
    for (i = 0; i < count; ++i) aGroups[i]->RemoveAt(static_cast<int>(offsets[i]));
  }
}

// A selection sort on sizes taken once: strict comparisons let the earlier of
// two equal groups win, which keeps the sort stable.
void CUIntsArray::Sort_ByElements(int bAscending) {
  if (GetSize() < 2) return;
  CArray<CUIntArray*, CUIntArray*> pending(aGroups);
  CUIntArray sizes;
  sizes.SetSize(pending.GetSize());
  for (int i = 0; i < pending.GetSize(); ++i) sizes[i] = static_cast<UINT>(SizeOf(pending[i]));
  aGroups.RemoveAll();
  while (pending.GetSize() > 0) {
    int pick = 0;
    for (int i = 1; i < pending.GetSize(); ++i) {
      if (bAscending ? sizes[i] < sizes[pick] : sizes[i] > sizes[pick]) pick = i;
    }
    aGroups.Add(pending[pick]);
    pending.RemoveAt(pick);
    sizes.RemoveAt(pick);
  }
}

void CUIntsArray::Report(CStringBuilder& out) {
  CWriter& writer = out;
  for (int i = 0; i < GetSize(); ++i) {
    if (i > 0) writer.Append(u"\r\n");
    const int count = SizeOf(aGroups[i]);
    for (int j = 0; j < count; ++j) {
      if (j > 0) writer.Append(u",");
      CString number;
      number.Format(u"%d", static_cast<int>(aGroups[i]->GetAt(j)));
      writer.Append(number);
    }
  }
}

void CUIntsArray::Serialize(IStreamOutput* out) {
  if (out == nullptr) return;
  out->WriteDWord(static_cast<DWORD>(GetSize()), kFlag);
  for (CUIntArray* group : aGroups) {
    out->WriteByte(group != nullptr ? 1 : 0);
    if (group != nullptr) CUtilityCalc::SerializeUIntArray(out, *group, kCountWidth);
  }
}

// The count is not trusted. A negative one fails like an unreadable one,
// with the list empty. The list grows as entries arrive rather than being
// sized to the count, and reading stops at the first flag that cannot be
// read: a short stream keeps the entries it held, and a huge count costs
// nothing it does not deliver. A group's own short read is not looked at.
int CUIntsArray::Deserialize(IStreamInput* in) {
  Empty();
  int count = 0;
  if (in == nullptr || !in->ReadInt(&count, kFlag) || count < 0) return 0;
  for (int i = 0; i < count; ++i) {
    BYTE flag = 0;
    if (!in->ReadByte(&flag)) break;
    CUIntArray* group = nullptr;
    if (flag != 0) {
      group = new CUIntArray;
      CUtilityCalc::DeserializeUIntArray(in, *group, kCountWidth);
    }
    aGroups.Add(group);
  }
  return 1;
}
