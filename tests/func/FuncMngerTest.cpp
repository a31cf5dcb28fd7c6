// Tests of the function manager and what it stands on: the built-in table, the lookups, CallFunc and
// its gate, the wrapper that runs every body, descriptions and category lists in the host's language.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "VKTCalc.h"
#include "func/BuiltinTable.h"
#include "func/FuncWrapper.h"
#include "tests/support/ScriptHost.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::func::kBuiltinCount;
using vkt::test::BodyScript;
using vkt::test::Num;
using vkt::test::Row;
using vkt::test::U;

CFuncPara Frame(const char16_t* name, std::initializer_list<const char16_t*> args, BYTE kind = 0) {
  CFuncPara para;
  para.strName = name;
  para.nResultKind = kind;
  for (const char16_t* arg : args) para.arrArgs.Add(CString(arg));
  return para;
}

// A registered function; `path` is "group\category" for a named category.
CFuncItem* Item(const char16_t* name, int category = 0, const char16_t* path = u"\\",
                PFN_FUNCBODY body = nullptr, BYTE flags = 0) {
  CFuncItem* item = new CFuncItem(name, 0, -1, 6);
  const CString text(path);
  item->nCategory = category;
  item->strGroup = text.Left(text.Find(u'\\'));
  item->strCategory = text.Mid(text.Find(u'\\') + 1);
  item->pfnBody = body;
  item->nFlags = flags;
  return item;
}

class FuncMnger : public testing::Test {
 protected:
  vkt::test::ScopedFakeLanguage language;  // texts "E<number>", translations "T:<text>"
  CFuncMnger manager;
};

// name|category|description|parameter help|result kind|parameter kinds
const std::map<int, std::u16string> kRows = {
    {0, u"abs|1007|1015|1057|6|2"},
    {39, u"if|1006|1010|1055|0|20"},  // kind 0: the chosen branch keeps its kind
    {68, u"RMB|1008|1107|1057|1|2"},  // upper case sorts as lower: after "right"
    {86, u"varpa|1007|954|1056|6|"},
};

// Every row is found at its own index under every spelling, which holds only
// while the lower-cased names ascend. Every row has a body.
TEST_F(FuncMnger, AllBuiltinRows) {
  std::map<int, int> perCategory;
  std::map<int, std::u16string> shown;  // the rows of kRows
  int bodied = 0;
  CString previous;
  for (int row = 0; row < kBuiltinCount; ++row) {
    CFuncInfo* info = manager.GetFuncByIndex(row);
    ASSERT_NE(info, nullptr) << row;
    CString lower(info->pName), upper(info->pName);
    EXPECT_LT(CUtilityCalc::StrCmpW(previous, lower.MakeLower(), 1), 0) << lower.ToUtf8();
    for (const CString& name : {CString(info->pName), lower, upper.MakeUpper()})
      EXPECT_EQ(manager.FindFunc(name), row) << name.ToUtf8();
    previous = lower;
    ++perCategory[info->nCategory];
    bodied += info->pfnBody != nullptr;
    std::u16string text = info->pName;
    for (int field : {info->nCategory, info->nDescId, info->nParamId, int(info->nResultKind)})
      text += u"|" + Num(field);
    text += u"|";
    for (BYTE kind : info->arrParaKinds) text += Num(kind);
    if (kRows.count(row) != 0) shown[row] = text;
  }
  EXPECT_EQ(shown, kRows);
  EXPECT_EQ(perCategory, (std::map<int, int>{{1006, 2}, {1007, 27}, {1008, 31}, {1009, 27}}));
  EXPECT_EQ(bodied, kBuiltinCount);
}

// FindFunc gives the row, or 1000 + the position of a registered function;
// FindItem the registered function (its position here; -1 for null).
const std::tuple<const char16_t*, int, int> kLookups[] = {
    {u"SUM", 75, 2},       // the built-in wins, but the item is there
    {u"MYFUNC", 1001, 1},  // the earlier of two namesakes
    {u" sum", -1, -1},
    {u"summ", -1, -1},
    {u"a", -1, -1},        // before the first row
    {u"zzz", -1, -1},      // behind the last
    {u"", -1, -1},
    {nullptr, -1, -1},
};

TEST_F(FuncMnger, LookupsAndIndexBounds) {
  for (const char16_t* name : {u"", u"MyFunc", u"sum", u"myfunc"})
    manager.m_arrItems.Add(*name == 0 ? nullptr : new CFuncItem(name, 0, -1, 1));
  for (const auto& [name, found, item] : kLookups) {
    EXPECT_EQ(manager.FindFunc(name), found) << Row(name);
    EXPECT_EQ(manager.FindItem(name), item < 0 ? nullptr : manager.m_arrItems[item]) << Row(name);
  }
  for (int index : {-1, kBuiltinCount, 999, 1000, 1004})  // 1000 is the empty slot
    EXPECT_EQ(manager.GetFuncByIndex(index), nullptr) << index;
  EXPECT_EQ(manager.GetFuncByIndex(1001), static_cast<CFuncInfo*>(manager.m_arrItems[1]));
}

TEST(BuiltinTable, AttachBodiesByExactName) {
  std::vector<CFuncInfo> storage(kBuiltinCount);
  std::vector<CFuncInfo*> records;
  for (CFuncInfo& info : storage) records.push_back(&info);
  records[1] = nullptr;  // a missing record is passed over: average finds no row
  const PFN_FUNCBODY body = &BodyScript::Body;
  const vkt::func::BuiltinBody bodies[] = {{u"RMB", body}, {u"rmb", body}, {u"x", body}, {u"average", body}};
  EXPECT_EQ(vkt::func::AttachBodies(records.data(), kBuiltinCount, bodies), 3);  // "rmb" is no row's spelling
  EXPECT_EQ(storage[68].pfnBody, body);
  EXPECT_EQ(storage[67].pfnBody, nullptr);
}

// Name, index and the number in the collector before the call (its text is
// "stale"); afterwards "answer | number text | [kind] second argument |
// strResult". Every call has the arguments 1 and 'a'.
const std::tuple<const char16_t*, int, int, const char16_t*> kCalls[] = {
    {u"foo", -1, 0, u"-1 | 1000 Invalid function name: foo | [0] 'a' | "},
    {u"foo", -1, 1003, u"-1 | 1003 stale | [0] 'a' | "},  // an earlier error stays
    {u"hostfn", -1, 77, u"-1 | 0 <null> | [0] 'a' | "},   // registered without a body: to the host
    {u"TWICE", -1, 0, u"1 | 0 stale | [6] a | 42"},       // the body sees the text unquoted
    {u"any", 39, 0, u"0 | 0 Syntax error: any(1, a) | [0] a | "},  // row 39 is if, whatever the name
    {u"any", 87, 0, u"-1 | 1000 Invalid function name: any | [0] 'a' | "},  // no such row
};

TEST_F(FuncMnger, CallRoads) {
  manager.m_arrItems.Add(Item(u"hostFn"));
  manager.m_arrItems.Add(Item(u"twice", 0, u"\\", &BodyScript::Body));
  manager.m_hJsWnd = &manager;
  manager.m_nJsMessage = 0x8001;
  BodyScript::Reset(u"42", 1);
  for (const auto& [name, index, errorBefore, expected] : kCalls) {
    CFuncPara para = Frame(name, {u"1", u"'a'"});
    para.strResult = u"left over";
    CErrorCollector errors;
    errors.nError = errorBefore;
    errors.SetErrorText(u"stale");
    const int answer = manager.CallFunc(para, 0, &errors, index);
    EXPECT_EQ(Num(answer) + u" | " + Num(errors.nError) + u" " + U(errors.pszErrorText) + u" | [" +
                  Num(para.nResultKind) + u"] " + U(para.arrArgs[1]) + u" | " + U(para.strResult),
              expected);
    EXPECT_TRUE(para.hJsWnd == &manager && para.nJsMessage == 0x8001u) << Row(name);
  }
  EXPECT_EQ(BodyScript::Current().seen, u"TWICE(1|a)");  // once, with the kind already set
  EXPECT_EQ(BodyScript::Current().kind, 6);
  CFuncPara para;
  EXPECT_EQ(manager.CallFunc(para, 0, nullptr, -1), -1);  // no collector, no fault
}

// bCheckGate, the item's flags, m_bCallUnmarked, m_bCallBodied, a body or
// not; CallFunc's answer.
constexpr int kGate[][6] = {
    {0, 1, 0, 0, 1, 1},   // the gate is not looked at
    {1, 2, 0, 0, 1, 1},   // not gated: bit 1 alone does not gate
    {1, 1, 0, 1, 1, -2},  // unmarked held back
    {1, 3, 0, 1, 1, 1},   // bit 1 passes the first test
    {1, 3, 0, 0, 1, -2},  // but a body is held back
    {1, 1, 1, 0, 0, -1},  // without a body it passes, to the host
    {1, 1, 0, 0, 0, -2},
};

TEST(FuncMngerGate, Table) {
  for (const auto& c : kGate) {
    CFuncMnger manager;
    manager.m_arrItems.Add(Item(u"g", 0, u"\\", c[4] ? &BodyScript::Body : nullptr, static_cast<BYTE>(c[1])));
    manager.m_bCallUnmarked = c[2];
    manager.m_bCallBodied = c[3];
    BodyScript::Reset();
    CFuncPara para = Frame(u"g", {});
    EXPECT_EQ(manager.CallFunc(para, c[0], nullptr, -1), c[5]) << testing::PrintToString(c);
    EXPECT_EQ(BodyScript::Current().calls, c[5] == 1 ? 1 : 0) << testing::PrintToString(c);
  }
}

// The arguments, the kind when the body runs and the text it leaves;
// afterwards "the call as the body saw it, arrQuoted as digits -> strResult
// [kind]".
struct RunCase {
  std::initializer_list<const char16_t*> args;
  BYTE kind;
  const char16_t *result, *expected;
};

const RunCase kRuns[] = {
    {{u"'a'", u"1", u"'b'"}, 6, u"12.5%", u"f(a|1|b) 101 -> '12.5%' [1]"},  // no number: text
    {{u"1", u"'a'"}, 6, u"-0.25", u"f(1|a) 01 -> -0.25 [6]"},
    {{u"1", u"2"}, 1, u"12", u"f(1|2)  -> '12' [1]"},  // nothing quoted; text stays text
    {{u"\"'x'\""}, 0, u"abc", u"f(x) 1 -> 'abc' [0]"},  // both layers go; kind 0 keeps its 0
    {{u"'it\\'s'"}, 0, u"5", u"f(it's) 1 -> 5 [0]"},    // escapes undone
    {{u"''", u"'"}, 2, u"'x'", u"f(|') 1 -> 'x' [1]"},  // a lone quote is no pair
    {{}, 2, u"1,000", u"f()  -> '1,000' [1]"},           // no thousand commas
    {{}, 5, u"1e5", u"f()  -> '1e5' [1]"},               // no exponent
    {{}, 3, u"2024.01.02", u"f()  -> '2024.01.02' [3]"},
    {{}, 4, u"\"d\"", u"f()  -> 'd' [4]"},               // one pair, whoever quoted
    {{}, 1, u"it's", u"f()  -> \"it\\'s\" [1]"},
    {{}, 6, u"", u"f()  ->  [6]"},                       // nothing to quote
};

TEST(FuncWrapper, ArgumentsInResultOut) {
  for (const auto& [args, kind, result, expected] : kRuns) {
    BodyScript::Reset(result, 1);
    CFuncPara para = Frame(u"f", args, kind);
    EXPECT_EQ(vkt::func::RunBody(para, &BodyScript::Body, nullptr), 1) << Row(result);
    std::u16string seen = BodyScript::Current().seen + u" ";
    for (BYTE flag : para.arrQuoted) seen += static_cast<char16_t>(u'0' + flag);
    EXPECT_EQ(seen + u" -> " + U(para.strResult) + u" [" + Num(para.nResultKind) + u"]", expected);
  }
  CFuncPara para;
  para.SetResult(-17);
  EXPECT_EQ(U(para.strResult), u"-17");
}

// Asks the fake for its texts; a test counts which numbers were read.
class SpyLanguage : public vkt::test::FakeLanguage {
 public:
  SpyLanguage() { ON_CALL(*this, GetText).WillByDefault([this](int n) { return FakeLanguage::GetText(n); }); }
  MOCK_METHOD(const char16_t*, GetText, (int nID), (override));
};

// The body's answer and what it leaves in strResult; afterwards "the
// collector's text | its number | strResult".
const std::tuple<int, const char16_t*, const char16_t*> kErrors[] = {
    {0, u"", u"Syntax error: f(1, a) | 0 | "},
    {-1, u"", u"Bad value: f(1, a) | 0 | "},
    {-2, u"", u"<null> | 0 | "},  // no message of the library's own
    {0, u"own words", u"own words | 0 | "},
    {7, u"own words", u"own words | 0 | "},
};

TEST(FuncWrapper, ErrorTextsByAnswer) {
  testing::NiceMock<SpyLanguage> language;
  SetLggInterface(&language);
  vkt::test::OnExit uninstall([] { SetLggInterface(nullptr); });
  EXPECT_CALL(language, GetText(1003)).Times(1);
  EXPECT_CALL(language, GetText(1004)).Times(1);
  for (const auto& [answer, left, expected] : kErrors) {
    BodyScript::Reset(left, answer);
    CFuncPara para = Frame(u"f", {u"1", u"'a'"});
    CErrorCollector errors;
    errors.SetErrorText(u"old");
    EXPECT_EQ(vkt::func::RunBody(para, &BodyScript::Body, &errors), 0) << answer;
    EXPECT_EQ(U(errors.pszErrorText) + u" | " + Num(errors.nError) + u" | " + U(para.strResult), expected)
        << answer;
  }
  // "%%" is a percent sign, a second "%s" is dropped, other codes stand.
  EXPECT_EQ(U(vkt::func::FormatOneArgument(u"100%% %d %s and %s%", u"x")), u"100% %d x and %");
}

// name|category: text|description (id)|parameter texts|kind, flags|notes|a body
std::u16string Describe(const CFuncItem& out) {
  return U(out.strName) + u"|" + Num(out.nCategory) + u": " + U(out.strCategory) + u"|" + U(out.strDesc) +
         u" (" + Num(out.nDescId) + u")|" + vkt::test::Seen(u"", out.arrParamText) + u"|" +
         Num(out.nResultKind) + u", " + Num(out.nFlags) + u"|" + U(out.strNote1) + u", " + U(out.strNote2) +
         u"|" + Num(out.pfnBody != nullptr);
}

// Each description starts from a record that holds the name "before" and
// the text "kept" with id 5: what a lookup does not set stays.
const std::pair<const char16_t*, const char16_t*> kDescriptions[] = {
    {u"  chinesenum\t", u"chineseNum|1008: E1008|E1037 (5)|(kept|E631)|1, 0|, |0"},  // the table's spelling
    {u"rand", u"rand|1007: E1007|E1023 (5)|(kept)|6, 0|, |0"},  // parameter id -1: no text
    {u" MINE ", u"Mine|0: T:cat|T:desc (0)|(T:p|T:E700|T:E701)|2, 3|T:n1, T:|0"},  // no ids: translated
    {u"byid", u"ById|1007: E1007|E1011 (1011)|()|6, 0|T:, T:|0"},
    {u"nosuch", u"before|0: | (5)|(kept)|0, 0|, |0"},
};

TEST_F(FuncMnger, Descriptions) {
  CFuncItem* mine = new CFuncItem(u"Mine", 0, 700, 2);  // 700 goes to the parameter ids
  mine->strCategory = u"cat";
  mine->strDesc = u"desc";
  mine->arrParamText.Add(CString(u"p"));
  mine->arrParamIds.Add(701);
  mine->strNote1 = u"n1";
  mine->nFlags = 3;
  mine->pfnBody = &BodyScript::Body;  // a description does not run
  manager.m_arrItems.Add(mine);
  manager.m_arrItems.Add(Item(u"ById", 1007));
  manager.m_arrItems[1]->nDescId = 1011;
  for (const auto& [name, expected] : kDescriptions) {
    CFuncItem out;
    out.strName = u"before";
    out.nDescId = 5;
    out.arrParamText.Add(CString(u"kept"));
    EXPECT_EQ(manager.GetFuncInfo(name, out), std::u16string(name) != u"nosuch") << Row(name);
    out.Copy(nullptr);
    out.Copy(&out);
    EXPECT_EQ(Describe(out), expected);
  }
}

TEST_F(FuncMnger, CategoriesOfIdsThenNamedOnes) {
  CArray<CFuncItem*, CFuncItem*> out;
  EXPECT_EQ(manager.ListCategory(4, out), 0);  // four ids and no named category
  for (CFuncItem* item : {Item(u"myIf", 1006), Item(u"sum", 1006), Item(u"first", 1001),
                          Item(u"f1", 0, u"a\\b"), Item(u"f2", 0, u"A\\B"), Item(u"f3", -5, u"x\\y"),
                          Item(u"f4", 0, u"a\\b")})
    manager.m_arrItems.Add(item);  // f2's path is f1's without regard to case
  // The index; the names in its list and the last record's category text.
  const std::pair<int, const char16_t*> lists[] = {
      {0, u"first: E1001"},
      {1, u"if,js,myIf,sum: E1007"},  // sum is described as the built-in
      {4, u"compareDate,...: E1009"},
      {5, u"f1,f4: T:b"},             // members by exact path
      {6, u"f3: T:y"},
      {7, u""},
      {-1, u""},
  };
  for (const auto& [index, expected] : lists) {
    std::u16string names;
    EXPECT_EQ(manager.ListCategory(index, out), expected[0] != 0) << index;
    for (CFuncItem* record : out) names += (names.empty() ? u"" : u",") + U(record->strName);
    if (out.GetSize() == 27) names = U(out[0]->strName) + u",...";  // the dates
    if (!out.IsEmpty()) names += u": " + U(out[out.GetSize() - 1]->strCategory);
    EXPECT_EQ(names, expected) << index;
    for (CFuncItem* record : out) delete record;
    out.RemoveAll();
  }
}

}  // namespace
