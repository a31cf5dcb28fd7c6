// Tests of the calculator and its run, driven the way a host drives it: a
// test host with a map of variables and functions of its own loops over
// Calculate and answers codes 2 and 3. Covers each run code, answers that
// are numbers, texts and expressions, the function manager's paths (body,
// no body, gate, failure), the function counter, the variable-kind query
// and the trace in each mode.
#include "VKTCalc.h"
#include "CFuncItem.h"
#include "CFuncMnger.h"
#include "CGmp.h"
#include "ICalc.h"
#include "tests/support/TestHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using vkt::test::RunOutcome;
using vkt::test::Str;
using vkt::test::TestHost;

// ---- Bodies of registered functions -------------------------------------

int TwiceBody(CFuncPara* para, int argc) {
  if (argc != 1) return 0;
  CGmp x(para->arrArgs[0].GetString());
  CGmp y(x);
  x.add(&y);
  return para->SetResult(x);
}

// Gives its first argument back with its length: the body sees it unquoted.
int EchoBody(CFuncPara* para, int argc) {
  if (argc < 1) return 0;
  para->strResult = para->arrArgs[0];
  para->strResult.AppendFormat(u"/%d", para->arrArgs[0].GetLength());
  return 1;
}

int SilentFailureBody(CFuncPara*, int) { return 7; }  // fails and says nothing
int BadCallBody(CFuncPara*, int) { return 0; }        // a bad call: text 1003

// Hands the call to the script host given to NewCalc.
int ScriptBody(CFuncPara* para, int) {
  if (para->pJsHost == nullptr) return 7;
  return para->pJsHost->Invoke(para->strName, para->arrArgs, para->strResult) ? 1 : 7;
}

CFuncItem* Item(const char16_t* name, PFN_FUNCBODY body, unsigned char resultKind = 6) {
  CFuncItem* item = new CFuncItem(name, 0, -1, resultKind);
  item->pfnBody = body;
  return item;
}

class MockScriptHost : public IInvokeJS {
 public:
  MOCK_METHOD(int, Invoke, (CString & strFunc, CStringArray& arrArgs, CString& strResult), (override));
};

class CalcRun : public testing::Test {
 protected:
  void SetUp() override {
    manager = CFuncMnger::NewFuncMnger();
    manager->m_arrItems.Add(Item(u"twice", TwiceBody));
    manager->m_arrItems.Add(Item(u"echo", EchoBody, 1));
    manager->m_arrItems.Add(Item(u"silent", SilentFailureBody));
    manager->m_arrItems.Add(Item(u"badcall", BadCallBody));
    manager->m_arrItems.Add(Item(u"hostfn", nullptr));  // no body: the host computes it
    calc.reset(NewCalc(manager, nullptr));
  }
  void TearDown() override {
    calc.reset();
    delete manager;
  }

  RunOutcome Run(const char16_t* formula, CTraceCollector* trace = nullptr) {
    return host.Run(*calc, formula, trace);
  }

  vkt::test::ScopedFakeLanguage language;
  CFuncMnger* manager = nullptr;
  std::unique_ptr<ICalc> calc;
  TestHost host;
};

// ---- Whole runs --------------------------------------------------------------

struct RunCase {
  const char16_t* formula;
  std::initializer_list<std::pair<const char16_t*, const char16_t*>> variables;
  int code;
  const char16_t* value;     // code 0: the result; codes 2, 3: the request
  unsigned char resultKind;
  int error;
};

const RunCase kRuns[] = {
    {u"=A1+sum(B1,2)", {{u"A1", u"5"}, {u"B1", u"3"}}, 0, u"10", 6, 0},
    {u"=A1+B1*2", {{u"A1", u"1"}, {u"B1", u"3"}}, 0, u"7", 6, 0},
    {u"=5", {}, 0, u"5", 6, 0},                          // no step at all
    {u"=\"a\"", {}, 0, u"a", 1, 0},                       // a text root: kind 1
    {u"=A1", {{u"A1", u"7"}}, 0, u"7", 6, 0},
    {u"=A1", {{u"A1", u"'x'"}}, 0, u"x", 1, 0},           // quoted answer: a text
    {u"=A1+\"b\"", {{u"A1", u"\"a\""}}, 0, u"ab", 7, 0},  // joined texts
    {u"=A1", {{u"A1", u""}}, 0, u"", 1, 0},               // empty answer: empty text
    {u"=A1*2", {{u"A1", u"1,234"}}, 0, u"2468", 6, 0},    // grouped number answer
    {u"=A1+1", {{u"A1", u"B1*2"}, {u"B1", u"3"}}, 0, u"7", 6, 0},  // spliced, then precedence
    {u"=A1", {{u"A1", u"x"}, {u"x", u"4"}}, 0, u"4", 6, 0},        // a name answers with a name
    {u"=A1+C1", {{u"A1", u"1"}}, 2, u"C1", 0, 0},         // unanswered variable
    {u"=1/A1", {{u"A1", u"0"}}, 0, u"\u221e", 1, 0},     // division by zero
    {u"=A1-\"a\"", {{u"A1", u"1"}}, -1, nullptr, 0, 1003},
    {u"=A1+1", {{u"A1", u")("}}, -1, nullptr, 0, 1070},   // answer that breaks the tree
    {u"=A1+1", {{u"A1", u"1+"}}, -1, nullptr, 0, 1003},
    // Answered without a stop; that answer was a step, and no step wrote a kind.
    {u"=@language", {}, 0, u"0", 0, 0},
    {u"=@LGG+1", {}, 0, u"1", 6, 0},
    {u"=foo(1,\"a\")", {}, 3, u"foo\r\n1\r\n'a'", 0, 0},  // unknown function: to the host
    {u"=hostfn(\"a b\",A1)", {{u"A1", u"2"}}, 3, u"hostfn\r\n'a b'\r\n2", 0, 0},
    {u"=twice(A1)+1", {{u"A1", u"2.5"}}, 0, u"6", 6, 0},  // registered body
    {u"=echo(\"it's\")", {}, 0, u"it's/4", 1, 0},        // body sees the text unquoted
    {u"=silent(1)", {}, -1, nullptr, 0, 1072},           // failure without a message
    {u"=badcall(1)", {}, -1, nullptr, 0, 1072},
};

TEST_F(CalcRun, Table) {
  for (const RunCase& c : kRuns) {
    host.variables.clear();
    // sum may have its body or go to the host: the result is the same.
    host.functions = {{u"sum", u"5"}};
    for (const auto& [name, value] : c.variables) host.variables[name] = value;
    RunOutcome out = Run(c.formula);
    const std::string row = testing::PrintToString(std::u16string(c.formula));
    EXPECT_EQ(out.code, c.code) << row;
    EXPECT_EQ(out.resultKind, c.resultKind) << row;
    EXPECT_EQ(out.error, c.error) << row;
    if (c.code == 0) {
      EXPECT_EQ(out.value, c.value) << row;
    } else if (c.code == 2 || c.code == 3) {
      EXPECT_EQ(out.request, c.value) << row;
    }
  }
}

TEST_F(CalcRun, VariablesAndFunctionsAreAskedInSourceOrder) {
  host.variables = {{u"A1", u"x"}, {u"x", u"4"}, {u"B1", u"'b'"}};
  host.functions = {{u"hostfn", u"1"}};
  RunOutcome out = Run(u"=A1+hostfn(B1)");
  EXPECT_EQ(out.value, u"5");
  EXPECT_EQ(out.asked, (std::vector<std::u16string>{u"A1", u"x", u"B1", u"hostfn\r\n'b'"}));
}

TEST_F(CalcRun, OnlyTheTakenBranchIsAskedFor) {
  host.variables = {{u"A1", u"0"}, {u"C1", u"3"}};
  // if may have its body or go to the host: the result is the same.
  host.onFunction = [](const std::u16string&, const std::vector<std::u16string>& args,
                       std::u16string& value) {
    value = args.at(0) != u"0" ? args.at(1) : args.at(2);
    return true;
  };
  RunOutcome out = Run(u"=if(A1,B1,C1)");
  EXPECT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"3");
  ASSERT_GE(out.asked.size(), 2u);
  EXPECT_EQ(out.asked[0], u"A1");
  EXPECT_EQ(out.asked[1], u"C1");
  for (const std::u16string& request : out.asked) EXPECT_NE(request, u"B1");
}

TEST_F(CalcRun, HostAnswersUnknownFunctionsWithTheirTextArguments) {
  std::vector<std::u16string> seen;
  host.onFunction = [&](const std::u16string& name, const std::vector<std::u16string>& args,
                        std::u16string& value) {
    seen.push_back(name);
    for (const std::u16string& arg : args) seen.push_back(arg);
    value = u"40";
    return true;
  };
  RunOutcome out = Run(u"=foo(1,\"a\")+2");
  EXPECT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"42");
  EXPECT_EQ(seen, (std::vector<std::u16string>{u"foo", u"1", u"'a'"}));
  EXPECT_EQ(out.funcName, u"foo");
}

TEST_F(CalcRun, FailingFunctionReportsItsNameAndText) {
  RunOutcome out = Run(u"=1+badcall(2)");
  EXPECT_EQ(out.code, -1);
  EXPECT_EQ(out.error, 1072);
  EXPECT_EQ(out.funcName, u"badcall");
  EXPECT_EQ(out.errorText, u"Syntax error: badcall(2)");  // the body's text stays
}

TEST_F(CalcRun, FailedRunPointsAtTheFailingCall) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression_Formula(u"=1+silent(2)", &errors));
  ASSERT_NE(root, nullptr);
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  EXPECT_EQ(calc->Calculate(para), -1);
  ASSERT_NE(para.pCurrent, nullptr);
  EXPECT_EQ(para.pCurrent->GetKind(), 3);
  EXPECT_EQ(std::u16string(para.pCurrent->GetTextPtr()), u"silent");
  EXPECT_EQ(para.nResultKind, 0);
}

TEST_F(CalcRun, EmptyRootIsDoneAndKeepsTheKind) {
  CErrorCollector errors;
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(u"", &errors));
  ASSERT_NE(root, nullptr);
  ASSERT_EQ(root->GetChildCount(), 0);
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  EXPECT_EQ(calc->Calculate(para), 0);
  EXPECT_EQ(para.nResultKind, 0);
  EXPECT_EQ(para.pCurrent, nullptr);
}

TEST_F(CalcRun, NoCollectorFailsTheRun) {
  std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(u"1+1", nullptr));
  CalculatePara para;
  para.pRoot = root.get();
  para.nResultKind = 6;
  EXPECT_EQ(calc->Calculate(para), -1);
  EXPECT_EQ(para.nResultKind, 0);
  EXPECT_EQ(root->GetChildCount(), 3);  // nothing was computed
}

TEST_F(CalcRun, ReusedParaKeepsAnOldKindWhenNoStepIsTaken) {
  CErrorCollector errors;
  CalculatePara para;
  para.pError = &errors;
  std::unique_ptr<ICalcTreeNode> joined(CUtilityCalc::ParseExpression(u"\"a\"+\"b\"", &errors));
  para.pRoot = joined.get();
  ASSERT_EQ(calc->Calculate(para), 0);
  EXPECT_EQ(para.nResultKind, 7);
  std::unique_ptr<ICalcTreeNode> number(CUtilityCalc::ParseExpression(u"5", &errors));
  para.pRoot = number.get();
  ASSERT_EQ(calc->Calculate(para), 0);
  EXPECT_EQ(para.nResultKind, 7);  // not cleared: a host clears the field
}

TEST_F(CalcRun, MixedAnswerWithComplexModeOffFails) {
  const int saved = CUtilityCalc::m_bCalcEnableComplex;
  CUtilityCalc::m_bCalcEnableComplex = 0;
  host.variables = {{u"A1", u"'x'"}};
  RunOutcome out = Run(u"=A1+1");
  CUtilityCalc::m_bCalcEnableComplex = saved;
  EXPECT_EQ(out.code, -1);
  EXPECT_EQ(out.error, 1005);
}

TEST_F(CalcRun, LanguageVariableGivesTheCurrentLanguage) {
  const int saved = CUtilityCalc::GetCurrentLanguage();
  CUtilityCalc::SetCurrentLanguage(2052);
  RunOutcome out = Run(u"=@Language*1");
  CUtilityCalc::SetCurrentLanguage(saved);
  EXPECT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"2052");
  EXPECT_TRUE(out.asked.empty());
}

// ---- The gate, the counter, the script host -------------------------------------

TEST_F(CalcRun, GateHoldsAGatedBodiedFunctionBack) {
  CFuncItem* gated = Item(u"gated", TwiceBody);
  gated->nFlags = 1;
  manager->m_arrItems.Add(gated);
  manager->m_bCallBodied = 0;

  host.checkGate = 1;
  RunOutcome held = Run(u"=1+gated(2)");
  EXPECT_EQ(held.code, 6);
  EXPECT_EQ(held.request, u"");
  EXPECT_EQ(held.resultKind, 0);

  host.checkGate = 0;  // the same call without the gate runs
  RunOutcome ran = Run(u"=1+gated(2)");
  EXPECT_EQ(ran.code, 0);
  EXPECT_EQ(ran.value, u"5");
}

TEST_F(CalcRun, CounterCountsDeliveredFunctionResults) {
  LONG counter = 0;
  CErrorCollector errors;
  errors.pFuncCounter = &counter;
  std::unique_ptr<ICalcTreeNode> root(
      CUtilityCalc::ParseExpression_Formula(u"=twice(1)+foo(A1)+twice(B1)", &errors));
  ASSERT_NE(root, nullptr);
  CalculatePara para;
  para.pError = &errors;
  para.pRoot = root.get();
  host.variables = {{u"A1", u"1"}, {u"B1", u"2"}};
  host.functions = {{u"foo", u"10"}};
  ASSERT_EQ(host.Drive(*calc, para), 0);
  EXPECT_EQ(counter, 3);  // two bodies and one host answer; variables don't count
  CString value;
  root->GetValue(value, 0, 0);
  EXPECT_EQ(Str(value), u"16");
}

TEST_F(CalcRun, ScriptHostReachesTheBody) {
  MockScriptHost script;
  std::unique_ptr<ICalc> scripted(NewCalc(manager, &script));
  manager->m_arrItems.Add(Item(u"script", ScriptBody));
  EXPECT_CALL(script, Invoke(testing::_, testing::_, testing::_))
      .WillOnce([](CString& name, CStringArray& args, CString& result) {
        EXPECT_EQ(Str(name), u"script");
        EXPECT_EQ(args.GetSize(), 1);
        result = u"9";
        return 1;
      });
  RunOutcome out = host.Run(*scripted, u"=script(1)+1");
  EXPECT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"10");
}

// ---- Managers --------------------------------------------------------------------

TEST(CalcManager, SharedManagerOutlivesItsCalculators) {
  vkt::test::ScopedFakeLanguage language;
  CFuncMnger* shared = CFuncMnger::NewFuncMnger();
  shared->m_arrItems.Add(Item(u"twice", TwiceBody));
  ICalc* first = NewCalc(shared, nullptr);
  ICalc* second = NewCalc(shared, nullptr);
  EXPECT_EQ(first->GetFuncMnger(), shared);
  EXPECT_EQ(second->GetFuncMnger(), shared);
  TestHost host;
  EXPECT_EQ(host.Run(*first, u"=twice(2)").value, u"4");
  EXPECT_EQ(host.Run(*second, u"=twice(3)").value, u"6");
  delete first;
  delete second;
  EXPECT_EQ(shared->FindFunc(u"twice"), 1000);  // still there; the sanitizers watch it
  delete shared;
}

TEST(CalcManager, OwnManagerIsMadeOnceAndDestroyedWithTheCalculator) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  ASSERT_NE(calc, nullptr);
  CFuncMnger* own = calc->GetFuncMnger();
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(calc->GetFuncMnger(), own);
  own->m_arrItems.Add(Item(u"twice", TwiceBody));  // freed with the calculator
  TestHost host;
  EXPECT_EQ(host.Run(*calc, u"=twice(21)").value, u"42");
}

TEST(CalcManager, OwnManagerIsMadeAtTheFirstFunction) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  TestHost host;
  host.functions = {{u"foo", u"1"}};
  EXPECT_EQ(host.Run(*calc, u"=foo()+1").value, u"2");
}

// ---- The variable-kind query ----------------------------------------------

struct KindCase {
  const char16_t* formula;
  const char16_t* variable;
  unsigned char expected;
};

constexpr KindCase kKinds[] = {
    {u"A1*2", u"A1", 2},
    {u"A1+\"x\"", u"A1", 0},     // "+" asks for nothing, and the top has no parent
    {u"A1+2-3", u"A1", 2},       // but any other operator in the run does
    {u"left(A1,2)", u"A1", 1},
    {u"left(\"abc\",A1)", u"A1", 2},
    {u"sum(1,2,3,4,A1)", u"A1", 2},  // the last entry repeats
    {u"concatenate(1,A1)", u"A1", 1},  // no kinds: text everywhere
    {u"if(1,A1,2)*3", u"A1", 2},  // kind 0: the surroundings of the call decide
    {u"if(1,A1,2)", u"A1", 0},
    {u"foo(A1)", u"A1", 0},       // unknown function
    {u"twice(A1)", u"A1", 1},     // registered, no kinds
    {u"(A1)*2", u"A1", 2},        // through the bracket
    {u"A1", u"A1", 0},
};

TEST_F(CalcRun, VariableKinds) {
  for (const KindCase& c : kKinds) {
    CErrorCollector errors;
    std::unique_ptr<ICalcTreeNode> root(CUtilityCalc::ParseExpression(c.formula, &errors));
    ASSERT_NE(root, nullptr) << testing::PrintToString(std::u16string(c.formula));
    CCalcTreeNodeArray vars;
    root->CollectByKind(vars, 5);
    ICalcTreeNode* node = nullptr;
    for (ICalcTreeNode* v : vars) {
      if (std::u16string(v->GetTextPtr()) == c.variable) node = v;
    }
    ASSERT_NE(node, nullptr) << testing::PrintToString(std::u16string(c.formula));
    EXPECT_EQ(calc->GetVarExpectedKind(node), c.expected)
        << testing::PrintToString(std::u16string(c.formula));
  }
  EXPECT_EQ(calc->GetVarExpectedKind(nullptr), 0);
}

// ---- Trace -----------------------------------------------------------------------

TEST_F(CalcRun, TraceModeOneRecordsTheExpressionAfterEachValue) {
  CTraceCollector trace;
  trace.nMode = 1;
  trace.InitString(nullptr);
  host.variables = {{u"A1", u"B1*2"}, {u"B1", u"3"}};
  RunOutcome out = Run(u"=A1+twice(2)+@lgg", &trace);
  ASSERT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"10");
  CString lines;
  trace.GetString(lines);
  EXPECT_EQ(Str(lines),
            u"B1*2+twice(2)+@lgg\r\n"  // the answer stands as text in the tree
            u"3*2+twice(2)+@lgg\r\n"
            u"3*2+4+@lgg\r\n"
            u"3*2+4+0\r\n");
  EXPECT_EQ(trace.arrNames.GetSize(), 0);
}

TEST_F(CalcRun, TraceModeTwoRecordsFunctionsAndTheHostsAnswers) {
  CTraceCollector trace;
  trace.nMode = 2;
  host.variables = {{u"A1", u"5"}};
  host.functions = {{u"foo", u"'z'"}};
  RunOutcome out = Run(u"=twice(A1)+foo(1,\"a\")+echo(\"q\")", &trace);
  ASSERT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"10zq/1");
  CString pairs;
  trace.GetString(pairs);
  // Bodies run by the library are recorded with their arguments unquoted.
  EXPECT_EQ(Str(pairs),
            u"A1!AbCbE+-/*5!+-/*AbCbE"
            u"twice(5)!AbCbE+-/*10!+-/*AbCbE"
            u"foo(1, 'a')!AbCbE+-/*'z'!+-/*AbCbE"
            u"echo(q)!AbCbE+-/*'q/1'");
  EXPECT_EQ(trace.sbLines.GetSize(), 0);
}

TEST_F(CalcRun, TraceModeZeroRecordsNothing) {
  CTraceCollector trace;
  host.variables = {{u"A1", u"5"}};
  ASSERT_EQ(Run(u"=twice(A1)+1", &trace).code, 0);
  EXPECT_EQ(trace.arrNames.GetSize(), 0);
  EXPECT_EQ(trace.sbLines.GetSize(), 0);
}

}  // namespace
