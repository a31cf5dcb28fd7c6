// Tests of `if` and `js` through whole calculations: the condition, kinds, the branch never asked for;
// the script host, the error finder, the host's window, WrapInvokeJS and the script counter.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <latch>
#include <memory>
#include <string>
#include <thread>

#include "VKTCalc.h"
#include "tests/support/ScriptHost.h"
#include "tests/support/TestHost.h"

namespace {

using vkt::test::Num;
using vkt::test::Row;
using vkt::test::U;

int ScriptedBody(CFuncPara* para, int) { return CUtilityCalc::WrapInvokeJS(para, nullptr) != 0 ? 1 : 7; }

class Control : public testing::Test {
 protected:
  Control() {
    InjectionAPI_FindAndGetSoapLikeError(&vkt::test::FindFault);
    CFuncItem* item = new CFuncItem(u"netPrice", 0, -1, 6);
    item->pfnBody = &ScriptedBody;
    manager.m_arrItems.Add(item);
    manager.m_nJsMessage = 0x8001;
  }

  // What a test installs for the process goes when it ends, pass or fail.
  vkt::test::OnExit uninstall{[] {
    InjectionAPI_FindAndGetSoapLikeError(nullptr);
    CUtilityCalc::SetScriptWindowHook(nullptr);
  }};
  vkt::test::ScopedFakeLanguage language;  // 1003 reads "Syntax error: %s"
  testing::NiceMock<vkt::test::ScriptHost> script;
  CFuncMnger manager;
  std::unique_ptr<ICalc> calc{NewCalc(&manager, &script)};
  vkt::test::TestHost host;
};

// Formula; the road of js: 0 the script host, 1 the host's window (a hook
// is installed for all rows), 2 a calculator without a script host; the
// answer and strResult of the script host or the window; Summary() of the
// run; the host's requests and what the script host (with the counter
// inside the call) or the window saw.
const std::tuple<const char16_t*, int, int, const char16_t*, const char16_t*, const char16_t*> kRuns[] = {
    {u"=if(-1,2,3)", 0, 1, u"", u"[0] 2", u""},
    {u"=if('',2,3)", 0, 1, u"", u"[0] 3", u""},       // the empty text is false
    {u"=if('abc',2,3)", 0, 1, u"", u"[0] 3", u""},    // no number: false
    {u"=if('12abc',2,3)", 0, 1, u"", u"[0] 2", u""},  // a leading number counts
    {u"=if('1',2,3)", 0, 1, u"", u"[0] 2", u""},      // the search and the body read it alike
    {u"=if(0,5,'y')", 0, 1, u"", u"[1] y", u""},
    {u"=if(1,5,'y')", 0, 1, u"", u"[0] 5", u""},
    {u"=if(1,'12',0)", 0, 1, u"", u"[1] 12", u""},    // a quoted number stays text
    {u"=if(1,1/0,2)", 0, 1, u"", u"[0] \u221e", u""}, // no number and not quoted: kind 0 kept
    {u"=if(1,2,3)+1", 0, 1, u"", u"[6] 3", u""},      // the later step writes its own kind
    {u"=if(1,'a',2)+'b'", 0, 1, u"", u"[7] ab", u""},
    {u"=if(1,2)", 0, 1, u"", u"[0] -1 1072: Syntax error: if(1, 2)", u""},
    {u"=If(1,'a',3,4)", 0, 1, u"", u"[0] -1 1072: Syntax error: If(1, a, 0, 4)", u""},  // untaken one gone
    {u"=if()", 0, 1, u"", u"[0] -1 1072: Syntax error: if()", u""},
    {u"=if(X1,B1,C1)", 0, 1, u"", u"[0] 3", u"X1,C1"},  // only the branch taken is asked for
    {u"=if(T1,hostfn(B1),C1)", 0, 1, u"", u"[0] 9", u"T1,B1,hostfn\r\n2"},
    {u"=if(F1,hostfn(B1),C1)", 0, 1, u"", u"[0] 3", u"F1,C1"},
    {u"=if(0,js('f'),3)", 0, 1, u"", u"[0] 3", u""},    // nor is a script run in the other
    {u"=js('f', 1, 'a', 2.5)", 0, 1, u"42", u"[1] 42", u"f(1|a|2.5)#1"},  // a script's result is text
    {u"=JS('', 7)", 0, 5, u"ok", u"[1] ok", u"JS(7)#1"},  // no name: the call's own; any answer but 0
    {u"=1+js('calc', 1)", 0, 0, u"partial", u"[0] -1 1072: JavaScript Function calc Invoking Failure",
     u"calc(1)#1"},
    {u"=js('lookup', 3)", 0, 1, u"<fault>no such row</fault>", u"[0] -1 1072: Script fault: no such row",
     u"lookup(3)#1"},
    {u"=js('lookup')+'!'", 0, 1, u"fine", u"[7] fine!", u"lookup()#1"},  // the finder lets it pass
    {u"=js()", 0, 1, u"", u"[0] -1 1072: Syntax error: js()", u""},     // no name: no script
    {u"=NetPrice(100,'x')*2", 0, 1, u"87.5", u"[6] 175", u"NetPrice(100|x)#1"},  // a body's own name
    {u"=netPrice(1)", 0, 0, u"", u"[0] -1 1072: JavaScript Function netPrice Invoking Failure",
     u"netPrice(1)#1"},
    {u"=js('f', 1)", 1, 1, u"from window", u"[1] from window", u"js(f|1) 32769"},  // the frame as it is
    {u"=js('f', 1)", 1, 0, u"refused", u"[0] -1 1072: refused", u"js(f|1) 32769"},
    {u"=js('f', 1)", 1, 0, u"", u"[0] -1 1072: Syntax error: js(f, 1)", u"js(f|1) 32769"},  // nothing said
    {u"=js('f', 1)", 2, 1, u"", u"[0] -1 1072: Syntax error: js(1)", u""},  // the name has left the arguments
};

TEST_F(Control, IfAndJs) {
  host.variables = {{u"T1", u"1"}, {u"F1", u"0"}, {u"X1", u"'x'"}, {u"B1", u"2"}, {u"C1", u"3"}};
  host.functions = {{u"hostfn", u"9"}};
  manager.m_hJsWnd = &manager;
  script.reply = u"host";
  EXPECT_EQ(host.Run(*calc, u"=js('f')").value, u"host");  // a handle but no hook: the script host
  EXPECT_EQ(CUtilityCalc::SetScriptWindowHook(&vkt::test::ScriptHost::WindowHook), nullptr);
  std::unique_ptr<ICalc> bare(NewCalc(nullptr, nullptr));
  for (const auto& [formula, road, answer, reply, expected, seen] : kRuns) {
    script.calls.clear();
    manager.m_hJsWnd = road == 1 ? &manager : nullptr;  // a hook but no handle: the script host
    script.answer = answer;
    script.reply = reply;
    const vkt::test::RunOutcome out = host.Run(road == 2 ? *bare : *calc, formula);
    EXPECT_EQ(out.Summary(), expected) << Row(formula);
    EXPECT_EQ(out.Asked() + (script.calls.empty() ? u"" : script.calls[0]), seen) << Row(formula);
    EXPECT_EQ(CUtilityCalc::IsInvokingJS(), 0);  // left already when the finder spoke
  }
  EXPECT_EQ(CUtilityCalc::SetScriptWindowHook(nullptr), &vkt::test::ScriptHost::WindowHook);
  // Without a name anywhere WrapInvokeJS refuses and leaves the frame alone.
  CFuncPara para;
  para.pJsHost = &script;
  para.strResult = u"untouched";
  EXPECT_EQ(CUtilityCalc::WrapInvokeJS(&para, u"") + CUtilityCalc::WrapInvokeJS(nullptr, u"f"), 0);
  EXPECT_EQ(U(para.strResult) + Num(script.calls.size()), u"untouched0");
}

TEST_F(Control, NestedScriptCallsCountEachLevel) {
  EXPECT_CALL(script, Invoke)
      .WillOnce([&](CString&, CStringArray&, CString& result) {
        result = vkt::test::TestHost().Run(*calc, u"=js('inner')").value.c_str();
        script.calls.push_back(u"outer#" + Num(CUtilityCalc::m_InvokeJsCounter));
        return 1;
      })
      .WillRepeatedly(testing::DoDefault());
  script.reply = u"deep";
  EXPECT_EQ(host.Run(*calc, u"=js('outer')").value, u"deep");
  EXPECT_EQ(script.calls, (std::vector<std::u16string>{u"inner()#2", u"outer#1"}));
}

// Two threads inside scripts at once: the first leaves while the second is
// still inside, and the second must still see a script call in progress.
TEST_F(Control, CounterStaysUpUntilTheLastScriptLeaves) {
  std::latch bothInside(2), firstLeft(1);
  std::u16string seen[2], values[2];
  EXPECT_CALL(script, Invoke).Times(2).WillRepeatedly([&](CString& name, CStringArray&, CString& out) {
    bothInside.arrive_and_wait();
    const int second = name == u"second" ? 1 : 0;
    if (second) firstLeft.wait();
    seen[second] = U(name) + u"#" + Num(CUtilityCalc::m_InvokeJsCounter) + Num(CUtilityCalc::IsInvokingJS());
    out = name;
    return 1;
  });
  std::unique_ptr<ICalc> other(NewCalc(&manager, &script));
  std::thread a([&] {
    values[0] = vkt::test::TestHost().Run(*calc, u"=js('first')").value;
    firstLeft.count_down();
  });
  std::thread b([&] { values[1] = vkt::test::TestHost().Run(*other, u"=js('second')").value; });
  a.join();
  b.join();
  EXPECT_EQ(values[0] + u"," + values[1], u"first,second");
  EXPECT_EQ(seen[0] + u"," + seen[1], u"first#21,second#11");
  EXPECT_EQ(CUtilityCalc::m_InvokeJsCounter, 0);
}

}  // namespace
