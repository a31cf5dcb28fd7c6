// Tests of the calculator as a host drives it (run codes, answers, the manager's roads and gate, the
// counter, the variable-kind query), of the trace, and of the process-wide exports and settings.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "VKTCalc.h"
#include "tests/support/ScriptHost.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::BodyScript;
using vkt::test::Num;
using vkt::test::Row;
using vkt::test::U;

int SilentBody(CFuncPara*, int) { return 7; }  // fails and says nothing
int BadCallBody(CFuncPara*, int) { return 0; }  // a bad call: text 1003

CFuncItem* Item(const char16_t* name, PFN_FUNCBODY body, BYTE flags = 0) {
  CFuncItem* item = new CFuncItem(name, 0, -1, 6);
  item->pfnBody = body;
  item->nFlags = flags;
  return item;
}

std::u16string GetString(CTraceCollector& trace) {
  CString out(u"<untouched>");
  trace.GetString(out);
  return U(out);
}

class CalcRun : public testing::Test {
 protected:
  CalcRun() {
    for (CFuncItem* item : {Item(u"body", &BodyScript::Body), Item(u"silent", SilentBody),
                            Item(u"hostfn", nullptr), Item(u"badcall", BadCallBody),
                            Item(u"gated", &BodyScript::Body, 1)})
      manager->m_arrItems.Add(item);  // hostfn has no body: the host computes it
    manager->m_bCallBodied = 0;       // gated is held back when the run checks the gate
    BodyScript::Reset(u"done", 1);
  }

  // Parses text (a formula when it starts with "=") and runs it: "code [kind] kind:text of pCurrent".
  std::u16string Calculate(const char16_t* text, CalculatePara& para, CErrorCollector* collector) {
    root.reset(text[0] == u'=' ? CUtilityCalc::ParseExpression_Formula(text, &errors)
                               : CUtilityCalc::ParseExpression(text, &errors));
    para.pRoot = root.get();
    para.pError = collector;
    const int code = calc->Calculate(para);
    const ICalcTreeNode* node = para.pCurrent;
    return Num(code) + u" [" + Num(para.nResultKind) + u"] " +
           (node ? Num(node->GetKind()) + u":" + node->GetTextPtr() : u"-");
  }

  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<CFuncMnger> manager{CFuncMnger::NewFuncMnger()};
  std::unique_ptr<ICalc> calc{NewCalc(manager.get(), nullptr)};
  vkt::test::TestHost host;
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root;
};

// Formula; Summary() of the run; every request of the host, in order.
const std::tuple<const char16_t*, const char16_t*, const char16_t*> kRuns[] = {
    {u"=(A1)*sum(B1,2)", u"[6] 25", u"A1,B1"},          // a bracket around one value goes
    {u"=5", u"[6] 5", u""},                             // no step at all
    {u"=Q1", u"[1] x", u"Q1"},                          // a quoted answer: a text
    {u"=S1+\"b\"", u"[7] ab", u"S1"},                   // joined texts
    {u"=E1", u"[1] ", u"E1"},                           // an empty answer: an empty text
    {u"=X1+1", u"[6] 7", u"X1,B1"},                     // spliced, then precedence: 3*2+1
    {u"=A1+C1", u"[0] 2 0: C1", u"A1,C1"},              // unanswered variable
    {u"=A1-\"a\"", u"[0] -1 1003: Syntax error: 5-'a'", u"A1"},
    {u"=A1+P1", u"[0] -1 1070: Brackets don't match:\r\n5+)(\r\n--^", u"A1,P1"},  // breaks the tree
    {u"=@language", u"[0] 2052", u""},  // answered without a stop; no step wrote a kind
    {u"=@LGG+1", u"[6] 2053", u""},
    {u"=foo(1,\"a\")", u"[0] 3 0: foo\r\n1\r\n'a'", u"foo\r\n1\r\n'a'"},  // unknown: to the host
    {u"=hostfn(\"a b\",B1)", u"[0] 3 0: hostfn\r\n'a b'\r\n3", u"B1,hostfn\r\n'a b'\r\n3"},
    {u"=N1+answered(Q1)", u"[6] 41", u"N1,x,Q1,answered\r\n'x'"},  // a name answers with a name
    {u"=body(A1)", u"[1] done", u"A1"},                 // a registered body: its text
    {u"=silent(1)", u"[0] -1 1072: Function failed", u""},  // no message: 1072 and its text
    {u"=1+badcall(2)", u"[0] -1 1072: Syntax error: badcall(2)", u""},  // the body's text stays
    {u"=1+gated(2)", u"[0] 6 0: ", u""},                // held back: a gated function with a body
};

TEST_F(CalcRun, Table) {
  vkt::test::OnExit restore([] { CUtilityCalc::SetCurrentLanguage(0); });
  CUtilityCalc::SetCurrentLanguage(2052);
  host.variables = {{u"A1", u"5"}, {u"B1", u"3"},    {u"Q1", u"'x'"}, {u"S1", u"\"a\""}, {u"E1", u""},
                    {u"X1", u"B1*2"}, {u"N1", u"x"}, {u"x", u"4"},   {u"P1", u")("}};
  host.functions = {{u"answered", u"37"}};
  host.checkGate = 1;
  for (const auto& [formula, expected, asked] : kRuns) {
    const vkt::test::RunOutcome out = host.Run(*calc, formula);
    EXPECT_EQ(out.Summary(), expected) << Row(formula);
    EXPECT_EQ(out.Asked(), asked) << Row(formula);
  }
  EXPECT_EQ(host.Run(*calc, u"=1+badcall(2)").funcName + u"," + host.Run(*calc, u"=foo(1)").funcName,
            u"badcall,foo");
  vkt::test::OnExit mixed([] { CUtilityCalc::Calc_EnableComplex(1); });
  CUtilityCalc::Calc_EnableComplex(0);
  EXPECT_EQ(host.Run(*calc, u"=Q1+1").Summary(), u"[0] -1 1005: Number and text mixed:\r\n'x'+1\r\n---^");
  EXPECT_EQ(host.Run(*calc, u"=1+body()").Summary(),  // a body's text that clashes
            u"[0] -1 1005: Number and text mixed:\r\n1+'done'\r\n--^");
}

// Runs on a para of the test's own: the node of a failed step, no step at
// all, a para used again, no collector.
TEST_F(CalcRun, ParaAfterTheRun) {
  CalculatePara para;
  EXPECT_EQ(Calculate(u"=1+silent(2)", para, &errors), u"-1 [0] 3:silent");
  EXPECT_EQ(Calculate(u"", para, &errors), u"0 [0] -");  // a root without children
  EXPECT_EQ(Calculate(u"\"a\"+\"b\"", para, &errors), u"0 [7] -");
  EXPECT_EQ(Calculate(u"5", para, &errors), u"0 [7] -");  // no step writes a kind: the host clears it
  EXPECT_EQ(Calculate(u"1+1", para, nullptr), u"-1 [0] -");
  EXPECT_EQ(root->GetChildCount(), 3);  // nothing was computed
}

TEST_F(CalcRun, CounterCountsDeliveredFunctionResults) {
  LONG counter = 0;
  errors.pFuncCounter = &counter;
  CalculatePara para;
  host.variables = {{u"A1", u"1"}, {u"B1", u"2"}};
  host.functions = {{u"foo", u"10"}};
  Calculate(u"=body(1)+foo(A1)+body(B1)", para, &errors);
  EXPECT_EQ(host.Drive(*calc, para), 0);
  EXPECT_EQ(counter, 3);  // two bodies and one host answer; variables don't count
}

// A calculator without a manager makes its own at the first function, once, and frees it.
TEST(CalcManager, OwnManager) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> own(NewCalc(nullptr, nullptr));
  EXPECT_EQ(vkt::test::TestHost().Run(*own, u"=sum(1,2)").value, u"3");
  CFuncMnger* made = own->GetFuncMnger();
  EXPECT_EQ(own->GetFuncMnger(), made);
  made->m_arrItems.Add(Item(u"body", &BodyScript::Body));  // freed with the calculator; the sanitizers watch
}

// The expression; the kind GetVarExpectedKind gives for its variable A1.
const std::pair<const char16_t*, int> kKinds[] = {
    {u"A1+\"x\"", 0},           // "+" asks for nothing, and the top has no parent
    {u"(A1+2-3)", 2},           // but any other operator in the run does, through the bracket
    {u"left(A1,2)", 1},
    {u"left(\"abc\",A1)", 2},
    {u"sum(1,2,3,4,A1)", 2},    // the last entry repeats
    {u"if(1,A1,2)*3", 2},       // kind 0: the surroundings of the call decide
    {u"foo(A1)", 0},            // unknown function
    {u"body(A1)", 1},           // no kinds: text everywhere
};

TEST_F(CalcRun, VariableKinds) {
  for (const auto& [text, expected] : kKinds) {
    root.reset(CUtilityCalc::ParseExpression(text, &errors));
    CCalcTreeNodeArray vars;
    ASSERT_EQ(root->CollectByKind(vars, 5), 1) << Row(text);
    EXPECT_EQ(calc->GetVarExpectedKind(vars[0]), expected) << Row(text);
  }
  EXPECT_EQ(calc->GetVarExpectedKind(nullptr), 0);
}

// The mode, the formula, Summary() and the trace's string. Mode 1 records the expression after each
// value put in (an answer stands as text); mode 2 the functions and the host's answers, with the
// arguments of bodies run here unquoted; mode 0 nothing.
const std::tuple<int, const char16_t*, const char16_t*, const char16_t*> kTraces[] = {
    {1, u"=A1+body(2)+@lgg", u"[7] 6done0",
     u"B1*2+body(2)+@lgg\r\n3*2+body(2)+@lgg\r\n3*2+'done'+@lgg\r\n3*2+'done'+0\r\n"},
    {2, u"=C1+foo(1,\"a\")+body(\"q\")", u"[7] 5zdone",
     u"C1!AbCbE+-/*5!+-/*AbCbEfoo(1, 'a')!AbCbE+-/*'z'!+-/*AbCbE"
     u"body(q)!AbCbE+-/*'done'"},
    {0, u"=C1+body(1)", u"[7] 5done", u"<untouched>"},  // and a new trace is in mode 0
};

TEST_F(CalcRun, TraceByMode) {
  host.variables = {{u"A1", u"B1*2"}, {u"B1", u"3"}, {u"C1", u"5"}};
  host.functions = {{u"foo", u"'z'"}};
  for (const auto& [mode, formula, expected, text] : kTraces) {
    CTraceCollector trace;
    if (mode != 0) trace.nMode = mode;
    EXPECT_EQ(host.Run(*calc, formula, &trace).Summary(), expected) << mode;
    EXPECT_EQ(GetString(trace), text) << mode;
    EXPECT_EQ(trace.arrNames.GetSize() == 0, mode != 2) << mode;
    EXPECT_EQ(trace.sbLines.GetSize() == 0, mode != 1) << mode;
  }
}

// Records by the text of code 3 (the name and the arguments on lines), by a frame, by name and
// arguments, and of a variable; an empty name adds no function but a variable.
TEST(TraceCollector, RecordsOfMode2) {
  CTraceCollector trace;
  trace.nMode = 2;
  CString value(u"v"), empty;
  for (const char16_t* text : {u"g\r\n\r\n 'a' ", u"now", u"", u"\r\n1"}) {
    CString call(text);
    trace.Func_Calced(call, value);
  }
  CFuncPara frame;
  frame.strName = u"f";
  frame.arrArgs.Add(CString(u"1"));
  frame.strResult = u"2";
  trace.Func_Calced(frame);
  trace.Func_Calced(frame.strName, frame.arrArgs, value);
  trace.Func_Calced(empty, frame.arrArgs, value);
  trace.Var_Calced(empty, value);
  // No trimming, an empty argument keeps its place, no arguments leave a blank.
  EXPECT_EQ(GetString(trace), u"g(,  'a' )!AbCbE+-/*v!+-/*AbCbEnow( )!AbCbE+-/*v!+-/*AbCbEf(1)!AbCbE+-/*2"
                              u"!+-/*AbCbEf(1)!AbCbE+-/*v!+-/*AbCbE!AbCbE+-/*v");
}

// Records of mode 2 as one string: one without the separator of the sides, one with it twice.
const char16_t kTwo[] = u"a(1, 2)!AbCbE+-/*3!+-/*AbCbEB1!AbCbE+-/*4";
const char16_t kOdd[] = u"junk!+-/*AbCbEx!AbCbE+-/*1!AbCbE+-/*2!+-/*AbCbE!+-/*AbCbEy!AbCbE+-/*";

// The mode and the text for InitString, given to a trace that holds a record and a line; the records
// afterwards, and what GetString gives.
const std::tuple<int, const char16_t*, const char16_t*, const char16_t*> kInits[] = {
    {2, kTwo, u"a(1, 2)=3 B1=4 ", kTwo},  // the round trip
    {2, kOdd, u"x=1!AbCbE+-/*2 y= ", u"x!AbCbE+-/*1!AbCbE+-/*2!+-/*AbCbEy!AbCbE+-/*"},  // the first split
    {2, nullptr, u"", u""},               // no text empties
    {1, kTwo, u"", kTwo},                 // mode 1 takes the text as its lines
    {0, kTwo, u"", u"<untouched>"},       // mode 0 only empties
};

TEST(TraceCollector, InitStringByMode) {
  for (const auto& [mode, text, records, string] : kInits) {
    CTraceCollector trace;
    trace.arrNames.Add(CString(u"n"));
    trace.arrValues.Add(CString(u"v"));
    trace.sbLines.Append(u"old\r\n");
    trace.nMode = mode;
    trace.InitString(text);
    std::u16string pairs;
    for (int i = 0; i < trace.arrNames.GetSize(); ++i)
      pairs += U(trace.arrNames[i]) + u"=" + U(trace.arrValues[i]) + u" ";
    EXPECT_EQ(pairs, records) << mode << " " << vkt::test::Row(text);
    EXPECT_EQ(GetString(trace), string) << mode << " " << vkt::test::Row(text);
  }
}

// The date formats (date only, with the time), the switches (Chinese names, complex rules, the
// comparison's decimals, the language, a script call, g_bLS) and a date in both formats.
std::u16string Settings() {
  CString date, dateTime;
  GetDateTimeFormat(date, 1);
  GetDateTimeFormat(dateTime, 0);
  const COleDateTime time(2024, 3, 3, 14, 5, 6);
  return U(date) + u" " + U(dateTime) + u" | " + Num(CUtilityCalc::Calc_IsChineseEnabled()) +
         Num(CUtilityCalc::Calc_IsComplexEnabled()) + u" " + Num(CUtilityCalc::Calc_GetCompareCalcDeclen()) +
         u" " + Num(CUtilityCalc::GetCurrentLanguage()) + Num(CUtilityCalc::IsInvokingJS()) + Num(g_bLS) +
         u" | " + U(TimeToString(time, 1)) + u" " + U(TimeToString(time, 0));
}

TEST(Entry, ProcessSettings) {
  vkt::test::OnExit restore([] {  // as at load, pass or fail
    SetDateTimeFormat(u"%Y.%m.%d", 1);
    CUtilityCalc::Calc_EnableChinese(1);
    CUtilityCalc::Calc_EnableComplex(1);
    CUtilityCalc::SetCurrentLanguage(0);
    InjectionAPI_FindAndGetSoapLikeError(nullptr);
  });
  EXPECT_EQ(Settings(), u"%Y.%m.%d %Y.%m.%d %H:%M:%S | 11 -1 000 | 2024.03.03 2024.03.03 14:05:06");
  SetDateTimeFormat(u"%d/%m/%Y", 1);
  CUtilityCalc::Calc_EnableChinese(7);  // stored as given
  CUtilityCalc::Calc_EnableComplex(0);
  CUtilityCalc::SetCurrentLanguage(2052);
  EXPECT_EQ(CUtilityCalc::Calc_SetCompareCalcDeclen(3), -1);  // only reports; the setting stays
  EXPECT_EQ(Settings(), u"%d/%m/%Y %Y.%m.%d %H:%M:%S | 70 -1 205200 | 03/03/2024 2024.03.03 14:05:06");
  SetDateTimeFormat(nullptr, 1);  // null stores the empty format
  EXPECT_EQ(Settings(), u" %Y.%m.%d %H:%M:%S | 70 -1 205200 |  2024.03.03 14:05:06");

  CString text(u"<fault>x</fault>");
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 0);  // no finder installed
  InjectionAPI_FindAndGetSoapLikeError(&vkt::test::FindFault);
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 1);
  EXPECT_EQ(U(text), u"Script fault: x");
  text = u"<fault>y</fault>";
  InjectionAPI_FindAndGetSoapLikeError(nullptr);
  EXPECT_EQ(CUtilityCalc::FindGetSoapLikeError(text), 0);
  EXPECT_EQ(U(text), u"<fault>y</fault>");  // the finder is gone, not merely silent

  const ULONGLONG now = GetTickTime();  // ms since 1601; 1 January 2020 UTC is 13,222,310,400,000
  EXPECT_TRUE(now > 13222310400000ull && now < 13222310400000ull + 200ull * 365 * 86400000ull) << now;
}

TEST(Entry, DateChecks) {
  COleDateTime dates[] = {{1900, 6, 1, 0, 0, 0}, {1901, 1, 1, 0, 0, 0}, {}};
  dates[2].SetStatus(COleDateTime::null);
  std::u16string answers;  // isdt's answer and the status chkdt leaves (1 invalid, 2 null)
  for (COleDateTime& date : dates) {
    const double before = date.m_dt;
    answers += Num(isdt(&date, 1901));
    chkdt(&date, 1901);
    answers += Num(date.GetStatus()) + (date.m_dt == before ? u" " : u" changed ");  // only the status
  }
  EXPECT_EQ(answers, u"01 10 02 ");
}

}  // namespace
