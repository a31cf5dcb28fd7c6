// Tests of the built-in table as the manager shows it: every row where it
// belongs, exact rows at both ends and in each category, the case rules of
// the lookups, the index bounds, and the attaching of bodies by name.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "func/BuiltinTable.h"
#include "tests/func/FuncTestSupport.h"

namespace {

using vkt::test::S;

struct RowCase {
  int row;
  const char16_t* name;
  int category, desc, param, kind;
  std::vector<BYTE> kinds;
};

const RowCase kRows[] = {
    {0, u"abs", 1007, 1015, 1057, 6, {2}},
    {5, u"chineseNum", 1008, 1037, 631, 1, {2}},
    {9, u"dateAddDays", 1009, 1045, 1323, 4, {1, 2}},
    {25, u"firstDateOfMonth", 1009, 653, 1057, 3, {}},
    {39, u"if", 1006, 1010, 1055, 0, {2, 0}},
    {41, u"indexOfArray", 1008, 1306, 1307, 1, {1, 1, 2, 2, 1}},
    {44, u"js", 1006, 1144, 1145, 1, {}},
    {53, u"log10", 1007, 1025, 1057, 6, {2}},
    {61, u"phonetic", 1008, 1334, 1335, 1, {}},
    {63, u"rand", 1007, 1023, -1, 6, {}},
    {64, u"replace", 1008, 1035, 1063, 1, {1, 2, 2, 1}},
    {68, u"RMB", 1008, 1107, 1057, 1, {2}},
    {75, u"sum", 1007, 1011, 1056, 6, {2}},
    {76, u"sumdim", 1007, 1295, 1056, 1, {}},
    {82, u"trimToNumber", 1008, 797, 1057, 6, {}},
    {86, u"varpa", 1007, 954, 1056, 6, {}},
};

TEST(BuiltinTable, ExactRows) {
  CFuncMnger manager;
  for (const RowCase& c : kRows) {
    CFuncInfo* info = manager.GetFuncByIndex(c.row);
    ASSERT_NE(info, nullptr) << c.row;
    EXPECT_EQ(std::u16string(info->pName), c.name) << c.row;
    EXPECT_EQ(info->nCategory, c.category) << c.row;
    EXPECT_EQ(info->nDescId, c.desc) << c.row;
    EXPECT_EQ(info->nParamId, c.param) << c.row;
    EXPECT_EQ(info->nResultKind, c.kind) << c.row;
    EXPECT_EQ(std::vector<BYTE>(info->arrParaKinds.begin(), info->arrParaKinds.end()), c.kinds)
        << c.row;
  }
}

// Every row is found at its own index under every spelling, which holds
// only while the lower-cased names ascend; the categories count as listed.
TEST(BuiltinTable, AllRowsAscendAndAreFound) {
  CFuncMnger manager;
  std::map<int, int> perCategory;
  CString previous;
  for (int row = 0; row < vkt::func::kBuiltinCount; ++row) {
    CFuncInfo* info = manager.GetFuncByIndex(row);
    ASSERT_NE(info, nullptr) << row;
    CString lower(info->pName), upper(info->pName);
    lower.MakeLower();
    upper.MakeUpper();
    if (row > 0) {
      EXPECT_LT(CUtilityCalc::StrCmpW(previous, lower, 1), 0) << lower.ToUtf8();
    }
    previous = lower;
    EXPECT_EQ(manager.FindFunc(info->pName), row) << lower.ToUtf8();
    EXPECT_EQ(manager.FindFunc(lower), row) << lower.ToUtf8();
    EXPECT_EQ(manager.FindFunc(upper), row) << lower.ToUtf8();
    ++perCategory[info->nCategory];
  }
  EXPECT_EQ(manager.GetFuncByIndex(vkt::func::kBuiltinCount), nullptr);
  EXPECT_EQ(perCategory, (std::map<int, int>{{1006, 2}, {1007, 27}, {1008, 31}, {1009, 27}}));
}

struct LookupCase {
  const char16_t* name;
  int expected;
};

constexpr LookupCase kLookups[] = {
    {u"SUM", 75},       {u"Sum", 75},   {u"chinesenum", 5}, {u"rmb", 68},
    {u" sum", -1},      {u"sum ", -1},  {u"su", -1},        {u"summ", -1},
    {u"", -1},          {nullptr, -1},  {u"zzz", -1},       {u"a", -1},
};

TEST(BuiltinTable, LookupCaseRules) {
  CFuncMnger manager;
  for (const LookupCase& c : kLookups)
    EXPECT_EQ(manager.FindFunc(c.name), c.expected) << testing::PrintToString(c.name);
}

TEST(BuiltinTable, ByIndexBounds) {
  CFuncMnger manager;
  manager.m_arrItems.Add(new CFuncItem(u"mine", 0, -1, 1));
  manager.m_arrItems.Add(nullptr);
  const int badIndexes[] = {-1, -1000, 87, 999, 1001, 1002, 2000};
  for (int index : badIndexes) EXPECT_EQ(manager.GetFuncByIndex(index), nullptr) << index;
  EXPECT_EQ(manager.GetFuncByIndex(1000), static_cast<CFuncInfo*>(manager.m_arrItems[0]));
}

int BodyA(CFuncPara*, int) { return 1; }
int BodyB(CFuncPara*, int) { return 1; }

TEST(BuiltinTable, AttachBodiesByExactName) {
  std::vector<CFuncInfo> storage(vkt::func::kBuiltinCount);
  std::vector<CFuncInfo*> records;
  for (CFuncInfo& info : storage) records.push_back(&info);
  const vkt::func::BuiltinBody bodies[] = {
      {u"sum", &BodyA}, {u"RMB", &BodyB}, {u"rmb", &BodyA}, {u"nosuch", &BodyA}};
  EXPECT_EQ(vkt::func::AttachBodies(records.data(), vkt::func::kBuiltinCount, bodies), 2);
  EXPECT_EQ(storage[75].pfnBody, &BodyA);
  EXPECT_EQ(storage[68].pfnBody, &BodyB);  // "rmb" is not the row's spelling
  EXPECT_EQ(storage[0].pfnBody, nullptr);
}

}  // namespace
