// func/BuiltinTable.cpp: the 87 built-in functions as one static table, and
// the one-time set-up that turns it into the process-wide catalogue that
// every function manager searches. The bodies come from the families'
// sources through kFamilies; this unit only attaches them by name.
#include "func/BuiltinTable.h"

#include <array>
#include <new>
#include <string_view>

#include "CFuncMnger.h"
#include "func/ProcessState.h"
#include "foundation/CBuffer.h"
#include "platform/Config.h"
#include "platform/Sync.h"

namespace vkt::func {

// Name, category, description, parameter help, result kind, parameter
// kinds; the comment gives the row and the family that brings the body.
// Ascending by lower-cased name: "RMB" stands between "right" and "round".
const BuiltinRow kBuiltinRows[kBuiltinCount] = {
    {u"abs", 1007, 1015, 1057, 6, "2"},                       //  0 math
    {u"average", 1007, 1012, 1056, 6, "2"},                   //  1 math
    {u"ceil", 1007, 1020, 1057, 2, "2"},                      //  2 math
    {u"chineseBankDate", 1008, 1111, 1113, 1, ""},            //  3 amounts
    {u"chineseDate", 1008, 1114, 1113, 1, ""},                //  4 amounts
    {u"chineseNum", 1008, 1037, 631, 1, "2"},                 //  5 amounts
    {u"compare", 1008, 1141, 1143, 2, "112"},                 //  6 string
    {u"compareDate", 1009, 1054, 1059, 2, ""},                //  7 date
    {u"concatenate", 1008, 1334, 1056, 1, ""},                //  8 string
    {u"dateAddDays", 1009, 1045, 1323, 4, "12"},              //  9 date
    {u"dateAddHours", 1009, 1046, 1323, 3, "12"},             // 10 date
    {u"dateAddMinutes", 1009, 1047, 1323, 3, "12"},           // 11 date
    {u"dateAddMonths", 1009, 1044, 1323, 4, "12"},            // 12 date
    {u"dateAddYears", 1009, 1043, 1323, 4, "12"},             // 13 date
    {u"dateDifDays", 1009, 1040, 1064, 2, ""},                // 14 date
    {u"dateDifHours", 1009, 1041, 1064, 2, ""},               // 15 date
    {u"dateDifMinutes", 1009, 1042, 1064, 2, ""},             // 16 date
    {u"dateDifMonths", 1009, 1039, 1064, 2, ""},              // 17 date
    {u"dateDifWorkDays", 1009, 1308, 1309, 2, ""},            // 18 date
    {u"dateDifYears", 1009, 1038, 1064, 2, ""},               // 19 date
    {u"encodeURI", 1008, 1146, 1057, 1, ""},                  // 20 string
    {u"encodeURIComponent", 1008, 1147, 1057, 1, ""},         // 21 string
    {u"endWith", 1008, 1140, 1142, 2, "112"},                 // 22 string
    {u"englishNum", 1008, 1108, 1057, 1, "2"},                // 23 amounts
    {u"exp", 1007, 1022, 1057, 6, "2"},                       // 24 math
    {u"firstDateOfMonth", 1009, 653, 1057, 3, ""},            // 25 date
    {u"firstDateOfSeason", 1009, 654, 1057, 3, ""},           // 26 date
    {u"firstDateOfYear", 1009, 655, 1057, 3, ""},             // 27 date
    {u"floor", 1007, 1019, 1057, 2, "2"},                     // 28 math
    {u"formatDate", 1008, 1110, 1112, 1, ""},                 // 29 string
    {u"formatNum", 1008, 1264, 1265, 1, "21"},                // 30 string
    {u"getDay", 1009, 1050, 1057, 2, ""},                     // 31 date
    {u"getDayOfWeek", 1009, 1318, 1320, 2, ""},               // 32 date
    {u"getDayOfYear", 1009, 1319, 1057, 2, ""},               // 33 date
    {u"getHour", 1009, 1051, 1057, 2, ""},                    // 34 date
    {u"getMinute", 1009, 1052, 1057, 2, ""},                  // 35 date
    {u"getMonth", 1009, 1049, 1057, 2, ""},                   // 36 date
    {u"getWeekNumber", 1009, 1322, 1324, 2, "12"},            // 37 date
    {u"getYear", 1009, 1048, 1057, 2, ""},                    // 38 date
    {u"if", 1006, 1010, 1055, 0, "20"},                       // 39 control
    {u"indexOf", 1008, 1119, 1120, 1, "112"},                 // 40 string
    {u"indexOfArray", 1008, 1306, 1307, 1, "11221"},          // 41 string
    {u"indexOneOf", 1008, 892, 1120, 1, "112"},               // 42 string
    {u"int", 1007, 1018, 1057, 2, "2"},                       // 43 math
    {u"js", 1006, 1144, 1145, 1, ""},                         // 44 control
    {u"lastDateOfMonth", 1009, 656, 1057, 3, ""},             // 45 date
    {u"lastDateOfSeason", 1009, 657, 1057, 3, ""},            // 46 date
    {u"lastDateOfYear", 1009, 658, 1057, 3, ""},              // 47 date
    {u"lastIndexOf", 1008, 1310, 1143, 1, "112"},             // 48 string
    {u"left", 1008, 1029, 1061, 1, "12"},                     // 49 string
    {u"len", 1008, 1027, 1057, 2, ""},                        // 50 string
    {u"like", 1008, 837, 838, 2, "112"},                      // 51 string
    {u"log", 1007, 1024, 1057, 6, "2"},                       // 52 math
    {u"log10", 1007, 1025, 1057, 6, "2"},                     // 53 math
    {u"max", 1007, 1013, 1056, 6, "2"},                       // 54 math
    {u"median", 1007, 967, 1056, 6, "2"},                     // 55 math
    {u"mid", 1008, 1033, 1062, 1, "12"},                      // 56 string
    {u"min", 1007, 1014, 1056, 6, "2"},                       // 57 math
    {u"mod", 1007, 1017, 1059, 6, "2"},                       // 58 math
    {u"now", 1009, 1053, 1065, 3, ""},                        // 59 date
    {u"percent", 1007, 1115, 1058, 6, "2"},                   // 60 math
    {u"phonetic", 1008, 1334, 1335, 1, ""},                   // 61 string
    {u"pow", 1007, 1026, 1060, 6, "2"},                       // 62 math
    {u"rand", 1007, 1023, -1, 6, ""},                         // 63 math
    {u"replace", 1008, 1035, 1063, 1, "1221"},                // 64 string
    {u"replaceAll", 1008, 1035, 1293, 1, ""},                 // 65 string
    {u"replaceOneOf", 1008, 1328, 1329, 1, ""},               // 66 string
    {u"right", 1008, 1031, 1061, 1, "12"},                    // 67 string
    {u"RMB", 1008, 1107, 1057, 1, "2"},                       // 68 amounts
    {u"round", 1007, 1016, 1058, 6, "2"},                     // 69 math
    {u"sqrt", 1007, 1021, 1057, 6, "2"},                      // 70 math
    {u"stdev", 1007, 951, 1056, 6, ""},                       // 71 statistics
    {u"stdeva", 1007, 955, 1056, 6, ""},                      // 72 statistics
    {u"stdevp", 1007, 956, 1056, 6, ""},                      // 73 statistics
    {u"stdevpa", 1007, 952, 1056, 6, ""},                     // 74 statistics
    {u"sum", 1007, 1011, 1056, 6, "2"},                       // 75 math
    {u"sumdim", 1007, 1295, 1056, 1, ""},                     // 76 statistics
    {u"toLowerCase", 1008, 1220, 1057, 1, ""},                // 77 string
    {u"toUpperCase", 1008, 1219, 1057, 1, ""},                // 78 string
    {u"trim", 1008, 1244, 1247, 1, ""},                       // 79 string
    {u"trimLeft", 1008, 1245, 1247, 1, ""},                   // 80 string
    {u"trimRight", 1008, 1246, 1247, 1, ""},                  // 81 string
    {u"trimToNumber", 1008, 797, 1057, 6, ""},                // 82 string
    {u"var", 1007, 953, 1056, 6, ""},                         // 83 statistics
    {u"vara", 1007, 957, 1056, 6, ""},                        // 84 statistics
    {u"varp", 1007, 958, 1056, 6, ""},                        // 85 statistics
    {u"varpa", 1007, 954, 1056, 6, ""},                       // 86 statistics
};

namespace {

// The families of bodies, one entry each: a family's source defines its
// list (declared in func/BuiltinTable.h) and enters it here. A row that no
// family names has no body yet, and a call of it goes to the host.
using FamilyBodies = std::span<const BuiltinBody> (*)();
constexpr FamilyBodies kFamilies[] = {
    &ControlBodies,  // func/FuncControl.cpp
    &MathBodies,     // func/FuncMath.cpp
    &DateBodies,     // func/FuncDate.cpp
    &StatisticsBodies,  // func/FuncStatistics.cpp
    &StringBodies,   // func/FuncString.cpp
    &AmountBodies,   // func/FuncAmounts.cpp
};

// The records live to the end of the process: they are built in place in
// static storage and never destroyed, so that no exit-time destructor takes
// a record from under a late reader. At exit only the pool, the pointer
// array's storage and the lock go (with the process state).
alignas(CFuncInfo) unsigned char g_recordStorage[sizeof(CFuncInfo) * kBuiltinCount];

CFuncInfo* RecordAt(int row) {
  return reinterpret_cast<CFuncInfo*>(g_recordStorage + sizeof(CFuncInfo) * row);
}

// Makes the records in place, the sorted name pool, the parameter kinds and
// the bodies; records counts the records made, for Unbuild.
void BuildRecords(ProcessStateData& state, int& records) {
  CArray<CFuncInfo*, CFuncInfo*>& infos = state.funcInfos;
  infos.SetSize(kBuiltinCount);
  CBuffer names(1024);
  for (int row = 0; row < kBuiltinCount; ++row) {
    const BuiltinRow& source = kBuiltinRows[row];
    CFuncInfo* info = new (RecordAt(row)) CFuncInfo();
    ++records;
    info->pName = source.name;
    info->nCategory = source.nCategory;
    info->nDescId = source.nDescId;
    info->nParamId = source.nParamId;
    info->nResultKind = source.nResultKind;
    infos.SetAt(row, info);
    // The name with its terminator: the pool splits at the terminators. The
    // last one leaves an empty string behind the 87 names, which no search
    // can reach: it is never compared while a probe stays below the high
    // bound, and the empty name sorts first, far from it.
    const int units = static_cast<int>(std::u16string_view(source.name).size()) + 1;
    if (names.AddText(source.name, units) == 0) vkt::platform::ThrowOutOfMemory();
  }
  // The pool lower-cases its copy; the records keep the mixed-case names.
  if (state.funcNames.LoadSortedBuf(names, 1, nullptr) == 0 || state.funcNames.GetSize() < kBuiltinCount)
    vkt::platform::ThrowOutOfMemory();

  for (int row = 0; row < kBuiltinCount; ++row) {
    CFuncInfo* info = infos[row];
    for (const char* kind = kBuiltinRows[row].paraKinds; *kind != 0; ++kind)
      info->arrParaKinds.SetAtGrow(info->arrParaKinds.GetSize(), static_cast<BYTE>(*kind - '0'));
  }
  for (FamilyBodies family : kFamilies) {
    [[maybe_unused]] const int strays = AttachBodies(infos.GetData(), kBuiltinCount, family());
    VKTCALC_ASSERT(strays == 0);  // a family names a function that the table lacks
  }
}

// The records made so far by an attempt that ran out of memory go again,
// with the names, so that the next attempt starts from nothing.
void Unbuild(ProcessStateData& state, int records) {
  for (int row = 0; row < records; ++row) RecordAt(row)->~CFuncInfo();
  state.funcInfos.RemoveAll();
  state.funcNames.Empty();
}

// The set-up proper; runs inside the catalogue's lock. A failed allocation
// (std::bad_alloc) leaves nothing half-built: the catalogue counts as built
// only once every record has its parameter kinds and its body.
void BuildLocked(ProcessStateData& state) {
  if (state.funcBuilt) return;  // built by an earlier manager
  int records = 0;
  try {
    BuildRecords(state, records);
  } catch (...) {
    Unbuild(state, records);
    throw;
  }
  state.funcBuilt = true;
}

}  // namespace

int AttachBodies(CFuncInfo* const* records, int count, std::span<const BuiltinBody> bodies) {
  int strays = 0;
  for (const BuiltinBody& entry : bodies) {
    bool found = false;
    for (int row = 0; row < count && row < kBuiltinCount; ++row) {
      if (records[row] == nullptr || entry.name == nullptr) continue;
      if (std::u16string_view(kBuiltinRows[row].name) != std::u16string_view(entry.name)) continue;
      records[row]->pfnBody = entry.body;
      found = true;
      break;
    }
    if (!found) ++strays;
  }
  return strays;
}

void BuildBuiltinCatalogue() {
  ProcessStateData& state = ProcessState();
  CCritSecGuard guard(state.funcLock);
  BuildLocked(state);
}

CStringPool& BuiltinNames() { return ProcessState().funcNames; }

CArray<CFuncInfo*, CFuncInfo*>& BuiltinInfos() { return ProcessState().funcInfos; }

}  // namespace vkt::func
