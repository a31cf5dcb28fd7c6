// Tests of the control family through whole calculations: `if` with its
// reading of the condition, its result kinds and the branch that is never
// asked for; `js` through the script host (working, failing, with the
// SOAP-like error finder) and through the window hook; WrapInvokeJS from a
// registered body; and the script counter, nested and from two threads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "VKTCalc.h"
#include "tests/support/TestHost.h"

namespace {

using testing::_;
using testing::NiceMock;
using vkt::test::RunOutcome;
using vkt::test::Str;
using vkt::test::TestHost;

class MockScriptHost : public IInvokeJS {
 public:
  MOCK_METHOD(int, Invoke, (CString & strFunc, CStringArray& arrArgs, CString& strResult), (override));
};

std::vector<std::u16string> Texts(const CStringArray& items) {
  std::vector<std::u16string> out;
  for (int i = 0; i < items.GetSize(); ++i) out.emplace_back(items[i].View());
  return out;
}

std::string Row(const char16_t* formula) { return CString(formula).ToUtf8(); }

// Leaves no finder and no window hook behind, whatever a test installed.
class ControlRun : public testing::Test {
 protected:
  ControlRun() : calc(NewCalc(nullptr, &script)) {}
  ~ControlRun() override {
    InjectionAPI_FindAndGetSoapLikeError(nullptr);
    CUtilityCalc::SetScriptWindowHook(nullptr);
  }

  RunOutcome Run(const char16_t* formula) { return host.Run(*calc, formula); }

  vkt::test::ScopedFakeLanguage language;  // 1003 reads "Syntax error: %s"
  NiceMock<MockScriptHost> script;
  std::unique_ptr<ICalc> calc;
  TestHost host;
};

// ---- if ----------------------------------------------------------------------

struct IfCase {
  const char16_t* formula;
  const char16_t* value;     // on success; else the error text
  unsigned char resultKind;  // on success
};

const IfCase kIf[] = {
    {u"=if(1,2,3)", u"2", 0},
    {u"=if(0,2,3)", u"3", 0},
    {u"=if('',2,3)", u"3", 0},       // the empty text is false
    {u"=if('abc',2,3)", u"3", 0},    // no number: false
    {u"=if('12abc',2,3)", u"2", 0},  // a leading number counts
    {u"=if(-1,2,3)", u"2", 0},
    {u"=if(0.00,2,3)", u"3", 0},
    {u"=if('1',2,3)", u"2", 0},      // the search and the body read it alike
    {u"=IF(1-1,2,3)", u"3", 0},      // a computed condition; any case of the name
    {u"=if(1,'x','y')", u"x", 1},
    {u"=if(1,5,'y')", u"5", 0},
    {u"=if(0,5,'y')", u"y", 1},
    {u"=if(1,'12',0)", u"12", 1},    // a quoted number stays text
    {u"=if(1,1/0,2)", u"\u221e", 0}, // no number and not quoted: quoted, kind 0 kept
    {u"=if(1,2,3)+1", u"3", 6},      // the later step writes its own kind
    {u"=if(1,'a',2)+'b'", u"ab", 7},
    {u"=if(1,2)", nullptr, 0},
    {u"=if(1,2,3,4)", nullptr, 0},
    {u"=if()", nullptr, 0},
};

TEST_F(ControlRun, IfTable) {
  for (const IfCase& c : kIf) {
    RunOutcome out = Run(c.formula);
    const std::string row = Row(c.formula);
    if (c.value == nullptr) {
      EXPECT_EQ(out.code, -1) << row;
      EXPECT_EQ(out.error, 1072) << row;
      continue;
    }
    EXPECT_EQ(out.code, 0) << row;
    EXPECT_EQ(out.value, c.value) << row;
    EXPECT_EQ(out.resultKind, c.resultKind) << row;
    EXPECT_EQ(out.error, 0) << row;
  }
}

TEST_F(ControlRun, IfWithoutThreeArgumentsIsABadCall) {
  const struct {
    const char16_t* formula;
    const char16_t* text;
    const char16_t* funcName;
  } cases[] = {
      {u"=if(1,2)", u"Syntax error: if(1, 2)", u"if"},
      // The search drops the branch not taken before the body refuses the
      // call, and the arguments show unquoted.
      {u"=If(1,'a',3,4)", u"Syntax error: If(1, a, 0, 4)", u"If"},
  };
  for (const auto& c : cases) {
    RunOutcome out = Run(c.formula);
    EXPECT_EQ(out.errorText, c.text) << Row(c.formula);
    EXPECT_EQ(out.funcName, c.funcName) << Row(c.formula);
  }
}

struct AskCase {
  const char16_t* formula;
  std::vector<std::pair<std::u16string, std::u16string>> variables;
  const char16_t* value;
  std::vector<std::u16string> asked;  // exactly these, in this order
};

TEST_F(ControlRun, IfNeverAsksForTheBranchNotTaken) {
  const AskCase cases[] = {
      {u"=if(A1,B1,C1)", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"2", {u"A1", u"B1"}},
      {u"=if(A1,B1,C1)", {{u"A1", u"0"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"3", {u"A1", u"C1"}},
      {u"=if(A1,B1,C1)", {{u"A1", u"'x'"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"3", {u"A1", u"C1"}},
      {u"=if(A1,hostfn(B1),C1)", {{u"A1", u"1"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"9",
       {u"A1", u"B1", u"hostfn\r\n2"}},
      {u"=if(A1,hostfn(B1),C1)", {{u"A1", u"0"}, {u"B1", u"2"}, {u"C1", u"3"}}, u"3", {u"A1", u"C1"}},
      {u"=if(A1,B1,if(C1,D1,E1))", {{u"A1", u"0"}, {u"C1", u"1"}, {u"D1", u"4"}}, u"4",
       {u"A1", u"C1", u"D1"}},
      {u"=if(A1>1,B1*2,C1)+1", {{u"A1", u"2"}, {u"B1", u"5"}}, u"11", {u"A1", u"B1"}},
  };
  host.functions = {{u"hostfn", u"9"}};
  for (const AskCase& c : cases) {
    host.variables.clear();
    for (const auto& [name, value] : c.variables) host.variables[name] = value;
    RunOutcome out = Run(c.formula);
    EXPECT_EQ(out.code, 0) << Row(c.formula);
    EXPECT_EQ(out.value, c.value) << Row(c.formula);
    EXPECT_EQ(out.asked, c.asked) << Row(c.formula);
  }
}

TEST_F(ControlRun, IfNeverRunsAScriptInTheBranchNotTaken) {
  EXPECT_CALL(script, Invoke(_, _, _)).Times(0);
  RunOutcome out = Run(u"=if(0,js('f'),3)");
  EXPECT_EQ(out.value, u"3");
}

// ---- js through the script host ----------------------------------------------------

TEST_F(ControlRun, JsRunsTheNamedScriptWithUnquotedArguments) {
  EXPECT_CALL(script, Invoke(_, _, _)).WillOnce([](CString& name, CStringArray& args, CString& result) {
    EXPECT_EQ(Str(name), u"f");
    EXPECT_EQ(Texts(args), (std::vector<std::u16string>{u"1", u"a", u"2.5"}));
    EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 1);
    result = u"42";
    return 1;
  });
  RunOutcome out = Run(u"=js('f', 1, 'a', 2.5)");
  EXPECT_EQ(out.code, 0);
  EXPECT_EQ(out.value, u"42");
  EXPECT_EQ(out.resultKind, 1);  // the row's kind: a script's result is text
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
}

TEST_F(ControlRun, JsWithAnEmptyNameRunsTheScriptOfTheCallsOwnName) {
  EXPECT_CALL(script, Invoke(_, _, _)).WillOnce([](CString& name, CStringArray& args, CString& result) {
    EXPECT_EQ(Str(name), u"JS");  // as the expression spells it
    EXPECT_EQ(Texts(args), (std::vector<std::u16string>{u"7"}));
    result = u"ok";
    return 5;  // any non-zero answer is success
  });
  EXPECT_EQ(Run(u"=JS('', 7)").value, u"ok");
}

TEST_F(ControlRun, FailingScriptHostReportsTheFunction) {
  EXPECT_CALL(script, Invoke(_, _, _)).WillOnce([](CString&, CStringArray&, CString& result) {
    EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 1);
    result = u"partial";  // overwritten by the failure message
    return 0;
  });
  RunOutcome out = Run(u"=1+js('calc', 1)");
  EXPECT_EQ(out.code, -1);
  EXPECT_EQ(out.error, 1072);
  EXPECT_EQ(out.errorText, u"JavaScript Function calc Invoking Failure");
  EXPECT_EQ(out.funcName, u"js");
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
}

TEST(ControlNoHost, JsWithoutAScriptHostOrArgumentsIsABadCall) {
  vkt::test::ScopedFakeLanguage language;
  std::unique_ptr<ICalc> calc(NewCalc(nullptr, nullptr));
  TestHost host;
  const struct {
    const char16_t* formula;
    const char16_t* text;
  } cases[] = {
      {u"=js('f', 1)", u"Syntax error: js(1)"},  // the name has left the arguments
      {u"=js('f')", u"Syntax error: js()"},
      {u"=js()", u"Syntax error: js()"},
  };
  for (const auto& c : cases) {
    RunOutcome out = host.Run(*calc, c.formula);
    EXPECT_EQ(out.code, -1) << Row(c.formula);
    EXPECT_EQ(out.error, 1072) << Row(c.formula);
    EXPECT_EQ(out.errorText, c.text) << Row(c.formula);
  }
}

TEST_F(ControlRun, JsWithoutArgumentsNeverReachesTheScriptHost) {
  EXPECT_CALL(script, Invoke(_, _, _)).Times(0);
  EXPECT_EQ(Run(u"=js()").errorText, u"Syntax error: js()");
}

// ---- The SOAP-like error finder ----------------------------------------------------

// Finds a fault envelope and leaves its message; other texts pass.
int FindFault(CString& text) {
  const int start = text.Find(u"<fault>");
  if (start < 0) return 0;
  text = CString(u"Script fault: ") + text.Mid(start + 7, text.GetLength() - start - 15);
  return 1;
}

TEST_F(ControlRun, FinderTurnsAFaultIntoTheErrorText) {
  InjectionAPI_FindAndGetSoapLikeError(&FindFault);
  EXPECT_CALL(script, Invoke(_, _, _)).WillOnce([](CString&, CStringArray&, CString& result) {
    result = u"<fault>no such row</fault>";
    return 1;
  });
  RunOutcome out = Run(u"=js('lookup', 3)");
  EXPECT_EQ(out.code, -1);
  EXPECT_EQ(out.error, 1072);
  EXPECT_EQ(out.errorText, u"Script fault: no such row");
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);  // already left when the finder spoke
}

TEST_F(ControlRun, FinderLetsAPlainResultPass) {
  InjectionAPI_FindAndGetSoapLikeError(&FindFault);
  EXPECT_CALL(script, Invoke(_, _, _)).WillOnce([](CString&, CStringArray&, CString& result) {
    result = u"fine";
    return 1;
  });
  RunOutcome out = Run(u"=js('lookup')+'!'");
  EXPECT_EQ(out.value, u"fine!");
}

// ---- WrapInvokeJS on its own and from a registered body --------------------------

TEST(WrapInvokeJS, RefusesWithoutAHostOrAName) {
  NiceMock<MockScriptHost> script;
  EXPECT_CALL(script, Invoke(_, _, _)).Times(0);
  EXPECT_EQ(CUtilityCalc::WrapInvokeJS(nullptr, u"f"), 0);

  CFuncPara para;
  para.strResult = u"untouched";
  EXPECT_EQ(CUtilityCalc::WrapInvokeJS(&para, u"f"), 0);  // no host
  EXPECT_EQ(Str(para.strResult), u"untouched");

  para.pJsHost = &script;
  EXPECT_EQ(CUtilityCalc::WrapInvokeJS(&para, nullptr), 0);  // no name anywhere
  EXPECT_EQ(CUtilityCalc::WrapInvokeJS(&para, u""), 0);
  EXPECT_EQ(Str(para.strResult), u"untouched");
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
}

int ScriptedBody(CFuncPara* para, int) { return CUtilityCalc::WrapInvokeJS(para, nullptr) != 0 ? 1 : 7; }

TEST(WrapInvokeJS, RegisteredBodyRunsTheScriptOfItsOwnName) {
  vkt::test::ScopedFakeLanguage language;
  NiceMock<MockScriptHost> script;
  CFuncMnger manager;
  CFuncItem* item = new CFuncItem(u"netPrice", 0, -1, 6);
  item->pfnBody = &ScriptedBody;
  manager.m_arrItems.Add(item);
  std::unique_ptr<ICalc> calc(NewCalc(&manager, &script));
  EXPECT_CALL(script, Invoke(_, _, _))
      .WillOnce([](CString& name, CStringArray& args, CString& result) {
        EXPECT_EQ(Str(name), u"NetPrice");
        EXPECT_EQ(Texts(args), (std::vector<std::u16string>{u"100", u"x"}));
        result = u"87.5";
        return 1;
      })
      .WillOnce([](CString&, CStringArray&, CString&) { return 0; });
  TestHost host;
  RunOutcome out = host.Run(*calc, u"=NetPrice(100,'x')*2");
  EXPECT_EQ(out.value, u"175");  // kind 6: the number stays a number
  out = host.Run(*calc, u"=netPrice(1)");
  EXPECT_EQ(out.errorText, u"JavaScript Function netPrice Invoking Failure");
}

// ---- js through the host's window --------------------------------------------------

// What the window hook saw, and how it answers.
struct WindowScript {
  int calls = 0;
  void* window = nullptr;
  UINT message = 0;
  std::u16string name;
  std::vector<std::u16string> args;
  const char16_t* result = u"";
  int answer = 1;

  static WindowScript& Current() {
    static WindowScript state;
    return state;
  }
  static int Hook(void* hJsWnd, CFuncPara* para) {
    WindowScript& state = Current();
    ++state.calls;
    state.window = hJsWnd;
    state.message = para->nJsMessage;
    state.name = Str(para->strName);
    state.args = Texts(para->arrArgs);
    para->strResult = state.result;
    return state.answer;
  }
};

class ControlWindow : public ControlRun {
 protected:
  ControlWindow() {
    WindowScript::Current() = WindowScript();
    manager.m_hJsWnd = &window;
    manager.m_nJsMessage = 0x8001;
    calc.reset(NewCalc(&manager, &script));
  }
  ~ControlWindow() override { calc.reset(); }

  CFuncMnger manager;
  int window = 0;  // stands for the handle
};

TEST_F(ControlWindow, WindowGetsTheFrameWithTheNameFirst) {
  EXPECT_EQ(CUtilityCalc::SetScriptWindowHook(&WindowScript::Hook), nullptr);
  EXPECT_CALL(script, Invoke(_, _, _)).Times(0);
  WindowScript::Current().result = u"from window";
  RunOutcome out = Run(u"=js('f', 1, 'a')");
  EXPECT_EQ(out.value, u"from window");
  EXPECT_EQ(out.resultKind, 1);
  const WindowScript& seen = WindowScript::Current();
  EXPECT_EQ(seen.calls, 1);
  EXPECT_EQ(seen.window, &window);
  EXPECT_EQ(seen.message, 0x8001u);
  EXPECT_EQ(seen.name, u"js");
  EXPECT_EQ(seen.args, (std::vector<std::u16string>{u"f", u"1", u"a"}));
  EXPECT_EQ(CUtilityCalc::SetScriptWindowHook(nullptr), &WindowScript::Hook);
}

TEST_F(ControlWindow, WindowThatAnswersZeroFails) {
  CUtilityCalc::SetScriptWindowHook(&WindowScript::Hook);
  WindowScript::Current().answer = 0;
  WindowScript::Current().result = u"window refused";
  EXPECT_EQ(Run(u"=js('f', 1)").errorText, u"window refused");
  WindowScript::Current().result = u"";  // nothing said: the bad-call text
  EXPECT_EQ(Run(u"=js('f', 1)").errorText, u"Syntax error: js(f, 1)");
}

TEST_F(ControlWindow, WithoutAHookOrAWindowTheScriptHostAnswers) {
  EXPECT_CALL(script, Invoke(_, _, _)).Times(2).WillRepeatedly([](CString&, CStringArray&, CString& result) {
    result = u"host";
    return 1;
  });
  EXPECT_EQ(Run(u"=js('f')").value, u"host");  // a handle but no hook
  CUtilityCalc::SetScriptWindowHook(&WindowScript::Hook);
  manager.m_hJsWnd = nullptr;
  EXPECT_EQ(Run(u"=js('f')").value, u"host");  // a hook but no handle
  EXPECT_EQ(WindowScript::Current().calls, 0);
}

// ---- The script counter -------------------------------------------------------------

TEST_F(ControlRun, NestedScriptCallsCountEachLevel) {
  LONG inner = -1;
  LONG outerAfterInner = -1;
  EXPECT_CALL(script, Invoke(_, _, _)).WillRepeatedly([&](CString& name, CStringArray&, CString& result) {
    if (name == u"outer") {
      TestHost nested;
      result = nested.Run(*calc, u"=js('inner')").value.c_str();
      outerAfterInner = CUtilityCalc::m_InvokeJsCounter;
    } else {
      inner = CUtilityCalc::m_InvokeJsCounter;
      result = u"deep";
    }
    return 1;
  });
  EXPECT_EQ(Run(u"=js('outer')").value, u"deep");
  EXPECT_EQ(inner, 2);
  EXPECT_EQ(outerAfterInner, 1);
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
}

// Two threads inside scripts at once: the first leaves while the second is
// still inside, and the second must still see a script call in progress.
class TwoThreadScript : public IInvokeJS {
 public:
  int Invoke(CString& name, CStringArray&, CString& result) override {
    bothInside.arrive_and_wait();
    if (name == u"first") {
      countWithBoth = CUtilityCalc::m_InvokeJsCounter;
      firstInvoking = CUtilityCalc::IsInvokingJS();
    } else {
      firstLeft.wait();
      countAlone = CUtilityCalc::m_InvokeJsCounter;
      secondInvoking = CUtilityCalc::IsInvokingJS();
    }
    result = name;
    return 1;
  }

  std::latch bothInside{2};
  std::latch firstLeft{1};  // counted down once the first calculation is over
  std::atomic<LONG> countWithBoth{-1};
  std::atomic<LONG> countAlone{-1};
  std::atomic<int> firstInvoking{-1};
  std::atomic<int> secondInvoking{-1};
};

TEST(ControlThreads, CounterStaysUpUntilTheLastScriptLeaves) {
  vkt::test::ScopedFakeLanguage language;
  TwoThreadScript script;
  std::unique_ptr<ICalc> first(NewCalc(nullptr, &script));
  std::unique_ptr<ICalc> second(NewCalc(nullptr, &script));
  std::u16string firstValue, secondValue;
  std::thread a([&] {
    TestHost host;
    firstValue = host.Run(*first, u"=js('first')").value;
    script.firstLeft.count_down();
  });
  std::thread b([&] {
    TestHost host;
    secondValue = host.Run(*second, u"=js('second')").value;
  });
  a.join();
  b.join();
  EXPECT_EQ(firstValue, u"first");
  EXPECT_EQ(secondValue, u"second");
  EXPECT_EQ(script.countWithBoth.load(), 2);
  EXPECT_EQ(script.firstInvoking.load(), 1);
  EXPECT_EQ(script.countAlone.load(), 1);
  EXPECT_EQ(script.secondInvoking.load(), 1);
  EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);
  EXPECT_EQ(CUtilityCalc::m_InvokeJsCounter, 0);
}

}  // namespace
