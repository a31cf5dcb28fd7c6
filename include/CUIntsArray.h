// CUIntsArray.h: an owning list of groups of numbers (CUIntArray), with the
// set-like operations hosts use on sets of rows and columns.
//
// Index errors are ignored. An entry may be null (SetAt and Deserialize can
// make one); the operations that go into every group expect none.
#pragma once

#include "VKTCalcExport.h"
#include "platform/Arrays.h"
#include "platform/Types.h"

class CStringBuilder;
class IStreamInput;
class IStreamOutput;

class VKTCALC_API CUIntsArray {
 public:
  CUIntsArray();
  CUIntsArray(const CUIntsArray&) = delete;
  CUIntsArray& operator=(const CUIntsArray&) = delete;
  virtual ~CUIntsArray();  // deletes every group

  int GetSize();
  CUIntArray* GetAt(int i);  // null outside the list
  CUIntArray* New();         // a new empty group at the end
  // Deletes the groups from n on; every null entry below n gets an empty group.
  void SetSize(int n);
  void Empty();
  void SetAt(int i, CUIntArray* p);  // inside the list: takes ownership of p
  void DeleteAt(int i);
  void Append(CUIntArray* a);  // a copy
  void Append(CUIntsArray& from);
  // A copy unless an equal group is there already.
  void AppendSingle(CUIntArray& a);
  void AppendUnique(CUIntArray* a);
  void AppendUnique(CUIntsArray& from);
  void Copy(CUIntsArray* from);
  // Moves from's groups to the end of this list (emptied first with
  // bEmptyFirst); from is left empty.
  void MoveIn(CUIntsArray* from, int bEmptyFirst);
  int Find(int value);        // the first group holding value, or -1
  int FindOffset(int value);  // value's position in that group, or -1
  // 1 when all values have the same offset (missing ones count as -1).
  int IsInSameOffset(CUIntArray& values);
  void AddElementToAll(int value);
  // Takes the first occurrence of each value that every group holds out of
  // every group.
  void RemoveSameElement();
  // Stable, by the groups' sizes: largest first unless bAscending.
  void Sort_ByElements(int bAscending);
  // Elements "%d" joined by ",", groups by CR LF.
  void Report(CStringBuilder& out);
  // The count, then per entry a flag byte and the group by
  // CUtilityCalc::SerializeUIntArray(.., 4).
  void Serialize(IStreamOutput* out);
  int Deserialize(IStreamInput* in);  // 0 when the count cannot be read

  CArray<CUIntArray*, CUIntArray*> aGroups;  // growth step 10
};
