// Tests of the manager's catalogue side: registered functions next to the
// built-ins, the description records in the host's language, and the
// category list with its ids and named categories.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VKTCalc.h"
#include "tests/func/FuncTestSupport.h"

namespace {

using testing::NiceMock;
using vkt::test::MockLanguage;
using vkt::test::S;
using vkt::test::ScopedLanguage;

CFuncItem* Item(const char16_t* name, int category = 0, const char16_t* group = u"",
                const char16_t* categoryText = u"") {
  CFuncItem* item = new CFuncItem(name, 0, -1, 1);
  item->nCategory = category;
  item->strGroup = group;
  item->strCategory = categoryText;
  return item;
}

std::vector<std::u16string> Names(CArray<CFuncItem*, CFuncItem*>& records) {
  std::vector<std::u16string> names;
  for (CFuncItem* record : records) names.push_back(S(record->strName));
  return names;
}

void DeleteAll(CArray<CFuncItem*, CFuncItem*>& records) {
  for (CFuncItem* record : records) delete record;
  records.RemoveAll();
}

TEST(FuncMnger, RegisteredFunctionsBehindTheBuiltins) {
  CFuncMnger manager;
  EXPECT_EQ(manager.FindItem(u"a"), nullptr);  // empty list
  CFuncItem* first = Item(u"MyFunc");
  CFuncItem* sum = Item(u"sum");
  manager.m_arrItems.Add(nullptr);
  manager.m_arrItems.Add(first);
  manager.m_arrItems.Add(sum);
  manager.m_arrItems.Add(Item(u"myfunc"));

  EXPECT_EQ(manager.FindFunc(u"MYFUNC"), 1001);  // the earlier of two namesakes
  EXPECT_EQ(manager.FindItem(u"myFUNC"), first);
  EXPECT_EQ(manager.FindFunc(u"sum"), 75);  // the built-in wins
  EXPECT_EQ(manager.FindItem(u"sum"), sum);  // but the item is there
  EXPECT_EQ(manager.FindFunc(u"other"), -1);
  EXPECT_EQ(manager.FindItem(u"other"), nullptr);
  EXPECT_EQ(manager.FindItem(nullptr), nullptr);
}

TEST(FuncMnger, GetFuncInfoOfABuiltin) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  CFuncMnger manager;
  CFuncItem out;
  out.nDescId = 5;
  out.arrParamText.Add(CString(u"kept"));
  EXPECT_EQ(manager.GetFuncInfo(u"  chinesenum\t", out), 1);
  EXPECT_EQ(S(out.strName), u"chineseNum");  // the table's spelling
  EXPECT_EQ(out.nCategory, 1008);
  EXPECT_EQ(S(out.strCategory), u"T1008");
  EXPECT_EQ(S(out.strDesc), u"T1037");
  ASSERT_EQ(out.arrParamText.GetSize(), 2);
  EXPECT_EQ(S(out.arrParamText[1]), u"T631");
  EXPECT_EQ(out.nResultKind, 1);
  EXPECT_EQ(out.nDescId, 5);  // untouched, as are the kinds and the body
  EXPECT_TRUE(out.arrParaKinds.IsEmpty());

  CFuncItem rand;
  EXPECT_EQ(manager.GetFuncInfo(u"rand", rand), 1);
  EXPECT_TRUE(rand.arrParamText.IsEmpty());  // parameter id -1

  CFuncItem none;
  none.strName = u"before";
  EXPECT_EQ(manager.GetFuncInfo(u"nosuch", none), 0);
  EXPECT_EQ(S(none.strName), u"before");
}

TEST(FuncMnger, GetFuncInfoOfARegisteredFunction) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  CFuncMnger manager;
  CFuncItem* item = new CFuncItem(u"Mine", 0, 700, 2);
  item->strCategory = u"cat";
  item->strDesc = u"desc";
  item->arrParamText.Add(CString(u"p"));
  item->arrParamIds.Add(701);
  item->strNote1 = u"n1";
  item->nFlags = 3;
  item->arrParaKinds.Add(2);
  item->pfnBody = &vkt::test::BodyScript::Body;
  manager.m_arrItems.Add(item);

  CFuncItem out;
  EXPECT_EQ(manager.GetFuncInfo(u" MINE ", out), 1);
  EXPECT_EQ(S(out.strName), u"Mine");
  EXPECT_EQ(S(out.strCategory), u"~cat");  // no id: translated
  EXPECT_EQ(S(out.strDesc), u"~desc");
  std::vector<std::u16string> params;
  for (const CString& p : out.arrParamText) params.push_back(S(p));
  EXPECT_EQ(params, (std::vector<std::u16string>{u"~p", u"~T700", u"~T701"}));
  EXPECT_EQ(S(out.strNote1), u"~n1");
  EXPECT_EQ(S(out.strNote2), u"~");
  EXPECT_EQ(out.nFlags, 3);
  EXPECT_EQ(out.pfnBody, nullptr);  // a description does not run
  EXPECT_TRUE(out.arrParaKinds.IsEmpty());

  item->nCategory = 1007;
  item->nDescId = 1011;
  CFuncItem byId;
  EXPECT_EQ(manager.GetFuncInfo(u"mine", byId), 1);
  EXPECT_EQ(S(byId.strCategory), u"T1007");
  EXPECT_EQ(S(byId.strDesc), u"T1011");
}

TEST(FuncMnger, ListCategoryOfIds) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  CFuncMnger manager;
  manager.m_arrItems.Add(Item(u"myIf", 1006));
  manager.m_arrItems.Add(Item(u"sum", 1006));  // described as the built-in
  manager.m_arrItems.Add(Item(u"first", 1001));

  CArray<CFuncItem*, CFuncItem*> out;
  EXPECT_EQ(manager.ListCategory(1, out), 1);  // 1001, 1006, 1007, ...
  EXPECT_EQ(Names(out), (std::vector<std::u16string>{u"if", u"js", u"myIf", u"sum"}));
  EXPECT_EQ(S(out[3]->strDesc), u"T1011");
  DeleteAll(out);

  EXPECT_EQ(manager.ListCategory(0, out), 1);
  EXPECT_EQ(Names(out), (std::vector<std::u16string>{u"first"}));
  DeleteAll(out);

  EXPECT_EQ(manager.ListCategory(4, out), 1);
  EXPECT_EQ(out.GetSize(), 27);  // the dates
  EXPECT_EQ(S(out[0]->strName), u"compareDate");
  DeleteAll(out);
  EXPECT_EQ(manager.ListCategory(5, out), 0);
  EXPECT_EQ(manager.ListCategory(-1, out), 0);
  EXPECT_TRUE(out.IsEmpty());
}

TEST(FuncMnger, ListCategoryOfNamedCategories) {
  NiceMock<MockLanguage> lgg;
  ScopedLanguage scope(&lgg);
  CFuncMnger manager;
  CArray<CFuncItem*, CFuncItem*> out;
  EXPECT_EQ(manager.ListCategory(4, out), 0);  // no registered function

  manager.m_arrItems.Add(Item(u"f1", 0, u"a", u"b"));
  manager.m_arrItems.Add(Item(u"f2", 0, u"A", u"B"));  // same path without regard to case
  manager.m_arrItems.Add(Item(u"f3", -5, u"x", u"y"));
  manager.m_arrItems.Add(Item(u"f4", 0, u"a", u"b"));
  EXPECT_EQ(manager.ListCategory(4, out), 1);
  EXPECT_EQ(Names(out), (std::vector<std::u16string>{u"f1", u"f4"}));  // members by exact path
  EXPECT_EQ(S(out[0]->strCategory), u"~b");
  DeleteAll(out);
  EXPECT_EQ(manager.ListCategory(5, out), 1);
  EXPECT_EQ(Names(out), (std::vector<std::u16string>{u"f3"}));
  DeleteAll(out);
  EXPECT_EQ(manager.ListCategory(6, out), 0);
  EXPECT_TRUE(out.IsEmpty());
}

TEST(FuncMnger, ItemCopyIsADescription) {
  CFuncItem source(u"f", 12, 13, 6);
  EXPECT_EQ(source.nParamId, 0);  // the id went to the list
  EXPECT_EQ(std::vector<UINT>(source.arrParamIds.begin(), source.arrParamIds.end()),
            std::vector<UINT>{13});
  source.nCategory = 7;
  source.strGroup = u"g";
  source.strNote2 = u"n";
  source.pfnBody = &vkt::test::BodyScript::Body;
  source.arrParaKinds.Add(1);
  source.arrChildren.Add(new CFuncItem());

  CFuncItem copy;
  copy.Copy(&source);
  copy.Copy(nullptr);
  copy.Copy(&copy);
  EXPECT_EQ(S(copy.strName), u"f");
  EXPECT_EQ(copy.nDescId, 12);
  EXPECT_EQ(copy.nCategory, 7);
  EXPECT_EQ(copy.nResultKind, 6);
  EXPECT_EQ(S(copy.strGroup), u"g");
  EXPECT_EQ(S(copy.strNote2), u"n");
  EXPECT_EQ(copy.arrParamIds.GetSize(), 1);
  EXPECT_EQ(copy.pfnBody, nullptr);
  EXPECT_TRUE(copy.arrParaKinds.IsEmpty());
  EXPECT_TRUE(copy.arrChildren.IsEmpty());
}

}  // namespace
