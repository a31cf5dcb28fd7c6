// func/BuiltinTable.h: the table of the 87 built-in functions and the
// process-wide catalogue built from it. Internal: nothing under include/
// includes it.
//
// The rows ascend by their lower-cased names under the process collation,
// so that a binary search of the lower-cased pool finds the row's index.
// Bodies are not part of the rows: each family of bodies (one source per
// family, such as func/FuncMath.cpp) hands over a list of {name, body} that
// the set-up attaches by name, and a row that no family names has no body.
#pragma once

#include <span>

#include "CFuncMnger.h"
#include "CStringPool.h"
#include "platform/Arrays.h"
#include "platform/Types.h"

namespace vkt::func {

constexpr int kBuiltinCount = 87;

// One row as the table file gives it, with the parameter kinds that the
// set-up adds by code.
struct BuiltinRow {
  const char16_t* name;   // mixed case, as users read it
  short nCategory;        // text ids for the language interface
  short nDescId;
  short nParamId;         // -1: no parameter help
  BYTE nResultKind;
  const char* paraKinds;  // one digit '0', '1' or '2' per declared parameter; "" for none
};

extern const BuiltinRow kBuiltinRows[kBuiltinCount];

// A body for the built-in of that name (exactly as the row spells it).
struct BuiltinBody {
  const char16_t* name;
  PFN_FUNCBODY body;
};

// The body lists of the families, each defined in its family's source and
// entered in kFamilies of func/BuiltinTable.cpp, for instance:
//   std::span<const BuiltinBody> MathBodies();  // func/FuncMath.cpp
std::span<const BuiltinBody> ControlBodies();  // func/FuncControl.cpp: if, js
std::span<const BuiltinBody> MathBodies();     // func/FuncMath.cpp: sum .. rand
std::span<const BuiltinBody> DateBodies();     // func/FuncDate.cpp: the 27 date functions
std::span<const BuiltinBody> StatisticsBodies();  // func/FuncStatistics.cpp: stdev .. sumdim
std::span<const BuiltinBody> StringBodies();   // func/FuncString.cpp: the 26 text functions
std::span<const BuiltinBody> AmountBodies();   // func/FuncAmounts.cpp: RMB .. englishNum

// Sets pfnBody of each record whose row (same index) bears an entry's name.
// Gives the number of entries that found no row.
int AttachBodies(CFuncInfo* const* records, int count, std::span<const BuiltinBody> bodies);

// Builds the catalogue when no manager has built it yet; the CFuncMnger
// constructor calls it. Afterwards the catalogue is read without a lock.
void BuildBuiltinCatalogue();

// The built catalogue: the lower-cased names in table order (the pool may
// hold one more, empty, string behind the last name) and the records.
CStringPool& BuiltinNames();
CArray<CFuncInfo*, CFuncInfo*>& BuiltinInfos();

}  // namespace vkt::func
